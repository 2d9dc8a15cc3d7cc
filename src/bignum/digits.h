// Magnitudes in digits of fewer bits than a word's double, as vector units multiply them.
#pragma once

#include "bignum/limb.h"

#include <span>

namespace morvane::bignum {

// `count` digits of Bits bits, least significant first, from the bits of `words` on from bit `first`; zeros follow the
// last.
template <unsigned Bits>
void to_digits(std::uint64_t* digits, std::size_t count, std::span<const Word> words, std::size_t first = 0) noexcept {
    const auto word = [words](std::size_t i) { return i < words.size() ? std::uint64_t{words[i]} : 0; };
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t bit = first + i * Bits;
        const std::size_t at = bit / 32;
        const auto shift = static_cast<unsigned>(bit % 32);
        std::uint64_t digit = (word(at) | word(at + 1) << 32) >> shift;
        if constexpr (Bits > 32) {
            if (shift != 0) digit |= word(at + 2) << (64 - shift);
        }
        digits[i] = digit & ((std::uint64_t{1} << Bits) - 1);
    }
}

// The first `count` words of digits that have Bits bits each.
template <unsigned Bits>
void from_digits(Word* words, std::size_t count, const std::uint64_t* digits, std::size_t digit_count) noexcept {
    const auto digit = [=](std::size_t i) { return i < digit_count ? digits[i] : 0; };
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t at = 32 * i / Bits;
        const auto shift = static_cast<unsigned>(32 * i % Bits);
        std::uint64_t word = digit(at) >> shift | digit(at + 1) << (Bits - shift);
        if constexpr (2 * Bits < 63) word |= digit(at + 2) << (2 * Bits - shift);
        words[i] = static_cast<Word>(word);
    }
}

}  // namespace morvane::bignum
