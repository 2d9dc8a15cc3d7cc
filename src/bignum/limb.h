// Limbs: the words of a magnitude as the processor likes to multiply them.
//
// A 64-bit processor takes two words for one limb: the words lie least significant first, so that a pair of them is a
// 64-bit word in memory. Kernels work on limbs; records hold words.
#pragma once

#include "base/known.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace morvane::bignum {

using Word = std::uint32_t;

#if UINTPTR_MAX > 0xffffffffU
using Limb = std::uint64_t;
__extension__ using DoubleLimb = unsigned __int128;
#else
using Limb = std::uint32_t;
using DoubleLimb = std::uint64_t;
#endif
static_assert(std::endian::native == std::endian::little, "pairs of words are read as limbs");

// A limb in an array of words, wherever it lies.
using LimbInWords [[gnu::may_alias, gnu::aligned(4)]] = Limb;

inline constexpr unsigned kLimbBits = 8 * sizeof(Limb);
inline constexpr std::size_t kWordsPerLimb = sizeof(Limb) / sizeof(Word);

constexpr std::size_t limbs_for(std::size_t words) noexcept { return (words + kWordsPerLimb - 1) / kWordsPerLimb; }

// `words` words as limbs_for(words) limbs, zero-extended.
inline void load_limbs(Limb* limbs, const Word* words, std::size_t count) noexcept {
    if (count == 0) return;
    limbs[limbs_for(count) - 1] = 0;
    std::memcpy(limbs, words, count * sizeof(Word));
}

inline void store_limbs(Word* words, const Limb* limbs, std::size_t count) noexcept {
    if (count != 0) std::memcpy(words, limbs, count * sizeof(Word));
}

// The words of so many limbs whose top limb is not 0.
constexpr std::size_t words_of(const Limb* limbs, std::size_t count) noexcept {
    const bool half = count != 0 && std::bit_width(limbs[count - 1]) <= 32;
    return count * kWordsPerLimb - static_cast<std::size_t>(kWordsPerLimb == 2 && half);
}

// Of a word that is not 0; without a branch for the one that is.
inline std::size_t leading_zeros(Word word) noexcept { return static_cast<std::size_t>(__builtin_clz(word)); }

// The count without the zeros at the top. That is known of every number, also of a secret one.
template <typename Item>
constexpr std::size_t significant(const Item* items, std::size_t count) noexcept {
    while (count != 0 && known(items[count - 1] == 0)) --count;
    return count;
}

}  // namespace morvane::bignum
