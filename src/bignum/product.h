// Division of magnitudes in words, for records and for what has none.
#pragma once

#include "bignum/limb.h"

#include <algorithm>
#include <span>

namespace morvane::bignum {

// Whether a is below b; neither has zero words at the top.
inline bool is_below(std::span<const Word> a, std::span<const Word> b) noexcept {
    if (a.size() != b.size()) return a.size() < b.size();
    return std::lexicographical_compare(a.rbegin(), a.rend(), b.rbegin(), b.rend());
}

// q = a / d, of the words of a less those of d plus 1; r = a mod d, of the words of d. Either may be null, and either may
// be the words of an operand. The top word of d is not 0; a has at least the words of d. False if there is no memory for
// the work: nothing is written then.
bool divide_words(Word* q, Word* r, std::span<const Word> a, std::span<const Word> d) noexcept;

}  // namespace morvane::bignum
