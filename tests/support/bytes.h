// Byte strings for tests: hex, random content, filled buffers.
#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace morvane::test {

using Bytes = std::vector<std::uint8_t>;

Bytes from_hex(std::string_view hex);
std::string to_hex(const std::uint8_t* bytes, std::size_t size);
inline std::string to_hex(const Bytes& bytes) { return to_hex(bytes.data(), bytes.size()); }
Bytes from_text(std::string_view text);
Bytes repeated(std::string_view text, std::size_t times);

// A repeatable source of test data; a test names its seed in a SCOPED_TRACE.
class Random {
public:
    explicit Random(std::uint32_t seed) : engine_(seed) {}
    std::uint32_t below(std::uint32_t bound) { return static_cast<std::uint32_t>(engine_() % bound); }
    Bytes bytes(std::size_t size);

private:
    std::mt19937 engine_;
};

// The length of a 32-bit interface.
inline std::uint32_t size32(const Bytes& bytes) { return static_cast<std::uint32_t>(bytes.size()); }

}  // namespace morvane::test
