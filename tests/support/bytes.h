// Byte strings for tests: hex, random content, filled buffers.
#pragma once

#include <cstdint>
#include <random>
#include <span>
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

// A repeatable source of test data; a test names its seed in a SCOPED_TRACE. A fuzzer's choices are octets of its input, as
// long as there are any.
class Random {
public:
    explicit Random(std::uint32_t seed) : engine_(seed) {}
    explicit Random(std::span<const std::uint8_t> input) : engine_(1), input_(input) {}
    std::uint32_t below(std::uint32_t bound) { return draw(bound <= 0x100 ? 1 : bound <= 0x10000 ? 2 : 4) % bound; }
    Bytes bytes(std::size_t size);
    std::span<const std::uint8_t> left() const { return input_; }

private:
    std::uint32_t draw(int octets);

    std::mt19937 engine_;
    std::span<const std::uint8_t> input_;
};

// The length of a 32-bit interface.
inline std::uint32_t size32(const Bytes& bytes) { return static_cast<std::uint32_t>(bytes.size()); }

}  // namespace morvane::test
