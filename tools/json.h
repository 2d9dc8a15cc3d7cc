// What `--json` prints: one value, put together from front to back.
#pragma once

#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>

namespace morvane::tool {

class Json {
public:
    Json& open_object() { return open('{'); }
    Json& close_object() { return close('}'); }
    Json& open_array() { return open('['); }
    Json& close_array() { return close(']'); }
    // Of the value that follows.
    Json& key(std::string_view name);

    // In UTF-8; bytes that are none become U+FFFD.
    Json& value(std::string_view text);
    Json& value(const char* text) { return value(std::string_view(text)); }
    Json& value(double number);
    template <std::integral Number>
    Json& value(Number number) {
        if constexpr (std::same_as<Number, bool>) {
            return word(number ? "true" : "false");
        } else {
            return word(std::to_string(number));
        }
    }

    template <typename Value>
    Json& member(std::string_view name, const Value& of) {
        return key(name).value(of);
    }
    // A file's name; where it is no UTF-8, its bytes too, in hexadecimal digits under the name with "_hex" behind it.
    Json& file_member(std::string_view name, std::string_view file);

    // Prints the value and a line end.
    void print() const;

private:
    Json& open(char bracket);
    Json& close(char bracket);
    Json& word(std::string_view text);
    void separate();

    std::string text_;
    bool first_ = true;  // of its array or object, or behind a key
};

}  // namespace morvane::tool
