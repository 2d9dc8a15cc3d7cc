// Memory that is cleared before it is given back.
#pragma once

#include <cstdint>
#include <cstring>
#include <span>
#include <vector>

namespace morvane::tool {

inline void wipe(std::span<std::uint8_t> bytes) {
    if (bytes.empty()) return;
    std::memset(bytes.data(), 0, bytes.size());
    asm volatile("" : : "r"(bytes.data()) : "memory");  // pretends to read the zeros, so that they must be written
}

// Bytes that are cleared at the end of their life.
class Secret {
public:
    Secret() = default;
    explicit Secret(std::vector<std::uint8_t> bytes) : bytes_(std::move(bytes)) {}
    Secret(Secret&&) = default;  // leaves the other one empty
    Secret(const Secret&) = delete;
    Secret& operator=(const Secret&) = delete;
    Secret& operator=(Secret&&) = delete;
    ~Secret() { wipe(bytes_); }

    std::vector<std::uint8_t>& operator*() { return bytes_; }
    const std::vector<std::uint8_t>& operator*() const { return bytes_; }

private:
    std::vector<std::uint8_t> bytes_;
};

}  // namespace morvane::tool
