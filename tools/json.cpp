#include "json.h"

#include "hex.h"
#include "output.h"

#include <charconv>
#include <cstdio>

namespace morvane::tool {
namespace {

constexpr std::string_view kReplacement = "\xef\xbf\xbd";

bool continues(std::string_view text, std::size_t at) {
    return at < text.size() && (static_cast<unsigned char>(text[at]) & 0xc0U) == 0x80;
}

// Bytes of the character that the text begins with; 0 where they are no UTF-8: overlong forms, surrogates and what is above
// U+10FFFF are none (RFC 3629).
std::size_t character_bytes(std::string_view text) {
    const auto first = static_cast<unsigned char>(text[0]);
    const auto second = text.size() > 1 ? static_cast<unsigned char>(text[1]) : 0U;
    if (first < 0x80) return 1;
    const std::size_t bytes = first >= 0xf0 ? 4 : first >= 0xe0 ? 3 : 2;
    for (std::size_t i = 1; i < bytes; ++i) {
        if (!continues(text, i)) return 0;
    }
    const bool overlong = first < 0xc2 || (first == 0xe0 && second < 0xa0) || (first == 0xf0 && second < 0x90);
    const bool surrogate = first == 0xed && second >= 0xa0;
    const bool beyond = first > 0xf4 || (first == 0xf4 && second >= 0x90);
    return overlong || surrogate || beyond ? 0 : bytes;
}

std::string escaped(char c) {
    switch (c) {
        case '"':
            return "\\\"";
        case '\\':
            return "\\\\";
        case '\n':
            return "\\n";
        case '\r':
            return "\\r";
        case '\t':
            return "\\t";
        default:
            break;
    }
    const auto octet = static_cast<std::uint8_t>(c);
    return octet < 0x20 || octet == 0x7f ? "\\u00" + to_hex({&octet, 1}) : std::string(1, c);
}

struct Text {
    std::string quoted;
    bool is_utf8 = true;
};

Text quote(std::string_view text) {
    Text result{"\""};
    while (!text.empty()) {
        const std::size_t bytes = character_bytes(text);
        if (bytes == 0) {
            result.is_utf8 = false;
            result.quoted += kReplacement;
        } else if (bytes == 1) {
            result.quoted += escaped(text[0]);
        } else {
            result.quoted += text.substr(0, bytes);
        }
        text.remove_prefix(bytes == 0 ? 1 : bytes);
    }
    result.quoted += '"';
    return result;
}

}  // namespace

void Json::separate() {
    if (!first_) text_ += ", ";
    first_ = false;
}

Json& Json::open(char bracket) {
    separate();
    text_ += bracket;
    first_ = true;
    return *this;
}

Json& Json::close(char bracket) {
    text_ += bracket;
    first_ = false;
    return *this;
}

Json& Json::word(std::string_view text) {
    separate();
    text_ += text;
    return *this;
}

Json& Json::key(std::string_view name) {
    separate();
    text_ += quote(name).quoted + ": ";
    first_ = true;
    return *this;
}

Json& Json::value(std::string_view text) { return word(quote(text).quoted); }

Json& Json::value(double number) {
    char digits[32];  // not std::to_string, which would write a comma in some locales
    const auto end = std::to_chars(digits, digits + sizeof digits, number, std::chars_format::general, 6).ptr;
    return word({digits, end});
}

Json& Json::file_member(std::string_view name, std::string_view file) {
    const Text text = quote(file);
    key(name).word(text.quoted);
    if (text.is_utf8) return *this;
    const auto* const bytes = reinterpret_cast<const std::uint8_t*>(file.data());
    return member(std::string(name) + "_hex", to_hex({bytes, file.size()}));
}

void Json::print() const {
    tool::print(text_);
    tool::print("\n");
}

}  // namespace morvane::tool
