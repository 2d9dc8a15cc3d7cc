#include "json.h"

#include "hex.h"
#include "output.h"

#include <charconv>
#include <nlohmann/json.hpp>

namespace morvane::tool {
namespace {

using Errors = nlohmann::json::error_handler_t;

std::string quoted(std::string_view text, Errors errors) { return nlohmann::json(text).dump(-1, ' ', false, errors); }

bool is_utf8(std::string_view text) {
    try {
        quoted(text, Errors::strict);
        return true;
    } catch (const nlohmann::json::exception&) {
        return false;
    }
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
    text_ += quoted(name, Errors::strict) + ": ";
    first_ = true;
    return *this;
}

Json& Json::value(std::string_view text) { return word(quoted(text, Errors::replace)); }

Json& Json::value(double number) {
    char digits[32];  // not std::to_string, which would write a comma in some locales
    const auto end = std::to_chars(digits, digits + sizeof digits, number, std::chars_format::general, 6).ptr;
    return word({digits, end});
}

Json& Json::file_member(std::string_view name, std::string_view file) {
    member(name, file);
    if (is_utf8(file)) return *this;
    const auto* const bytes = reinterpret_cast<const std::uint8_t*>(file.data());
    return member(std::string(name) + "_hex", to_hex({bytes, file.size()}));
}

void Json::print() const {
    tool::print(text_);
    tool::print("\n");
}

}  // namespace morvane::tool
