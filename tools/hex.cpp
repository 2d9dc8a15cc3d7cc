#include "hex.h"

namespace morvane::tool {
namespace {

constexpr std::string_view kDigits = "0123456789abcdef";

// -1 for no digit.
int digit_value(char c) {
    if (c >= 'A' && c <= 'F') c = static_cast<char>(c - 'A' + 'a');
    const std::size_t value = kDigits.find(c);
    return value == std::string_view::npos ? -1 : static_cast<int>(value);
}

}  // namespace

std::string to_hex(std::span<const std::uint8_t> bytes) {
    std::string hex;
    for (const std::uint8_t byte : bytes) {
        hex += kDigits[byte >> 4];
        hex += kDigits[byte & 15];
    }
    return hex;
}

std::optional<std::vector<std::uint8_t>> from_hex(std::string_view hex) {
    if (hex.size() % 2 != 0) return std::nullopt;
    std::vector<std::uint8_t> bytes;
    bytes.reserve(hex.size() / 2);  // bytes that are a key leave no copy behind where the vector grew
    for (std::size_t i = 0; i < hex.size(); i += 2) {
        const int high = digit_value(hex[i]), low = digit_value(hex[i + 1]);
        if (high < 0 || low < 0) return std::nullopt;
        bytes.push_back(static_cast<std::uint8_t>(high << 4 | low));
    }
    return bytes;
}

}  // namespace morvane::tool
