// What every file on ENUM records uses: looking at one, and the operations that programs do not get.
#pragma once

#include "bignum/limb.h"

#include <morvane/bignum.h>

#include <span>

namespace morvane::bignum {

inline std::size_t words_in(const ENUM& x) noexcept { return x.length > 0 ? static_cast<std::size_t>(x.length) : 0; }

inline std::span<const Word> magnitude(const ENUM& x) noexcept { return {x.words, words_in(x)}; }

// Words of the value, whatever its length says.
inline std::size_t significant_words(const ENUM& x) noexcept { return significant(x.words, words_in(x)); }

inline bool is_zero(const ENUM& x) noexcept { return significant_words(x) == 0; }

inline void set_length(ENUM& x, std::size_t words) noexcept { x.length = static_cast<std::int32_t>(words); }

inline void set_normalised_length(ENUM& x, std::size_t words) noexcept { set_length(x, significant(x.words, words)); }

// The sign and the words of a result.
inline void set(ENUM& x, std::uint32_t sign, std::span<const Word> words) noexcept {
    x.sign = sign;
    set_length(x, words.size());
    if (!words.empty() && x.words != words.data()) std::memmove(x.words, words.data(), words.size_bytes());
}

}  // namespace morvane::bignum

extern "C" {

// r = a + u on the magnitude, with the sign of a. The words above the carry are not copied: r is a. Room: the words of a,
// and one more if all of them carry.
void EN_AddU32(ENUM* r, const ENUM* a, std::uint32_t u) noexcept;

// r = |a| + |b|, a being at least as long as b; the sign of r is left alone. Not normalised.
void EN_UAdd(ENUM* r, const ENUM* a, const ENUM* b) noexcept;

// r = |a| - |b|, |a| being at least |b|; the sign of r is left alone. Normalised.
void EN_USub(ENUM* r, const ENUM* a, const ENUM* b) noexcept;
}
