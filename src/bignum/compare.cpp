#include "bignum/record.h"

#include <bit>

using namespace morvane::bignum;

std::int32_t EN_UComp(const ENUM* a, const ENUM* b) {
    const std::size_t words = words_in(*a);
    if (words != words_in(*b)) return static_cast<std::int32_t>(words) - static_cast<std::int32_t>(words_in(*b));
    for (std::size_t i = words; i-- > 0;) {
        if (a->words[i] != b->words[i]) return a->words[i] > b->words[i] ? 1 : -1;
    }
    return 0;
}

std::int32_t EN_Comp(const ENUM* a, const ENUM* b) {
    if ((a->sign != 0) != (b->sign != 0)) return a->sign == 0 ? 1 : -1;
    const std::int32_t order = a->sign == 0 ? EN_UComp(a, b) : EN_UComp(b, a);
    return static_cast<std::int32_t>(order > 0) - static_cast<std::int32_t>(order < 0);
}

std::uint32_t EN_GetFilledBitNum(const ENUM* x) {
    const std::size_t words = words_in(*x);
    if (words == 0) return 0;
    const auto top_bits = static_cast<std::uint32_t>(std::bit_width(x->words[words - 1]));
    return 32 * static_cast<std::uint32_t>(words - 1) + top_bits;
}

std::int32_t EN_IsBitSet(const ENUM* x, std::int32_t i) {
    if (i < 0) return 0;
    const auto bit = static_cast<std::uint32_t>(i);
    return bit / 32 < words_in(*x) ? static_cast<std::int32_t>(x->words[bit / 32] >> bit % 32 & 1) : 0;
}

std::int32_t EN_MaskBit(ENUM* x, std::int32_t i) {
    if (i < 0 || static_cast<std::uint32_t>(i) / 32 >= words_in(*x)) return 0;
    const std::size_t whole = static_cast<std::uint32_t>(i) / 32;
    const unsigned rest = static_cast<std::uint32_t>(i) % 32;
    if (rest == 0) {
        set_length(*x, whole);
    } else {
        x->words[whole] &= (Word{1} << rest) - 1;
        set_normalised_length(*x, whole + 1);
    }
    return 1;
}
