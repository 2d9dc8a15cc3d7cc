// Memory that is cleared before it is given back.
#pragma once

#include <cstdint>
#include <cstring>
#include <vector>

namespace morvane::tool {

// Bytes that are cleared at the end of their life.
class Secret {
public:
    Secret() = default;
    explicit Secret(std::vector<std::uint8_t> bytes) : bytes_(std::move(bytes)) {}
    Secret(Secret&&) = default;  // leaves the other one empty
    Secret(const Secret&) = delete;
    Secret& operator=(const Secret&) = delete;
    Secret& operator=(Secret&&) = delete;
    ~Secret() {
        if (bytes_.empty()) return;
        std::memset(bytes_.data(), 0, bytes_.size());
        asm volatile("" : : "r"(bytes_.data()) : "memory");  // pretends to read the zeros, so that they must be written
    }

    std::vector<std::uint8_t>& operator*() { return bytes_; }
    const std::vector<std::uint8_t>& operator*() const { return bytes_; }

private:
    std::vector<std::uint8_t> bytes_;
};

}  // namespace morvane::tool
