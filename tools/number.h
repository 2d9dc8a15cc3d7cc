// Integers of any size, in the library's record, and their digits.
#pragma once

#include <morvane/types.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace morvane::tool {

// The value is cleared at the end of its life.
class Number {
public:
    // 0, with room for so many words. Throws std::bad_alloc.
    explicit Number(std::uint32_t words);

    ENUM* get() const { return record_.get(); }
    // Bits of the value.
    std::uint32_t bits() const;

private:
    struct Destroy {
        void operator()(ENUM* x) const;
    };
    std::unique_ptr<ENUM, Destroy> record_;
};

// Decimal digits, or hexadecimal ones after 0x, in any case. Nothing when it is neither, or longer than kMostDigits.
std::optional<Number> read_number(std::string_view text);
inline constexpr std::size_t kMostDigits = 20000;

std::string to_hexadecimal(const Number& x);  // with 0x
std::string to_decimal(const Number& x);

}  // namespace morvane::tool
