#include "base64.h"

#include <string_view>

namespace morvane::tool {

std::string to_base64(std::span<const std::uint8_t> bytes) {
    constexpr std::string_view kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        const auto byte = [=](std::size_t at) { return at < bytes.size() ? std::uint32_t{bytes[at]} : 0; };
        const std::uint32_t group = byte(i) << 16 | byte(i + 1) << 8 | byte(i + 2);
        for (std::size_t k = 0; k < 4; ++k) text += k > bytes.size() - i ? '=' : kDigits[group >> (18 - 6 * k) & 63];
    }
    return text;
}

}  // namespace morvane::tool
