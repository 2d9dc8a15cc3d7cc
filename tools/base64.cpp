#include "base64.h"

namespace morvane::tool {
namespace {

constexpr std::string_view kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::string_view kSpace = " \t\r\n";

}  // namespace

std::string to_base64(std::span<const std::uint8_t> bytes) {
    std::string text;
    text.reserve((bytes.size() + 2) / 3 * 4);
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        const auto byte = [=](std::size_t at) { return at < bytes.size() ? std::uint32_t{bytes[at]} : 0; };
        const std::uint32_t group = byte(i) << 16 | byte(i + 1) << 8 | byte(i + 2);
        for (std::size_t k = 0; k < 4; ++k) text += k > bytes.size() - i ? '=' : kDigits[group >> (18 - 6 * k) & 63];
    }
    return text;
}

std::optional<std::vector<std::uint8_t>> from_base64(std::string_view text) {
    std::vector<std::uint8_t> bytes;
    bytes.reserve(text.size() / 4 * 3);
    std::uint32_t group = 0;
    std::size_t digits = 0, padding = 0;
    for (const char c : text) {
        if (kSpace.find(c) != std::string_view::npos) continue;
        const std::size_t value = c == '=' ? 0 : kDigits.find(c);
        padding += c == '=' ? 1 : 0;
        if (value == std::string_view::npos || padding > 2 || (padding != 0 && c != '=')) return std::nullopt;
        group = group << 6 | static_cast<std::uint32_t>(value);
        if (++digits % 4 != 0) continue;
        for (std::size_t i = 0; i < 3 - padding; ++i) bytes.push_back(static_cast<std::uint8_t>(group >> (16 - 8 * i)));
    }
    if (digits % 4 != 0) return std::nullopt;
    return bytes;
}

}  // namespace morvane::tool
