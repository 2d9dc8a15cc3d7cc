#include "bignum/record.h"

#include <algorithm>

using namespace morvane::bignum;

namespace {

std::uint32_t bit_count(std::int32_t n) noexcept { return static_cast<std::uint32_t>(std::max(n, 0)); }

// The upper half of `upper` and `lower` joined and shifted left.
constexpr Word upper_after_shift(Word upper, Word lower, unsigned bits) noexcept {
    return static_cast<Word>((std::uint64_t{upper} << 32 | lower) << bits >> 32);
}

}  // namespace

void EN_LShift1(ENUM* r, const ENUM* a) {
    const std::size_t words = words_in(*a);
    Word below = 0;
    for (std::size_t i = 0; i < words; ++i) {
        const Word word = a->words[i];
        r->words[i] = upper_after_shift(word, below, 1);
        below = word;
    }
    const std::size_t carry = below >> 31;
    if (carry != 0) r->words[words] = 1;
    r->sign = a->sign;
    set_length(*r, words + carry);
}

void EN_RShift1(ENUM* r, const ENUM* a) { EN_RShift(r, a, 1); }

void EN_LShift(ENUM* r, const ENUM* a, std::int32_t n) {
    const std::size_t words = words_in(*a);
    const std::size_t whole = bit_count(n) / 32;
    const unsigned bits = bit_count(n) % 32;
    // From the top, so that the result may be the operand.
    for (std::size_t i = words + 1; i-- > 0;) {
        const Word word = i < words ? a->words[i] : 0;
        r->words[i + whole] = upper_after_shift(word, i > 0 ? a->words[i - 1] : 0, bits);
    }
    std::fill_n(r->words, whole, 0);
    r->sign = a->sign;
    set_normalised_length(*r, words + whole + 1);
}

void EN_RShift(ENUM* r, const ENUM* a, std::int32_t n) {
    const std::size_t words = words_in(*a);
    const std::size_t whole = bit_count(n) / 32;
    const unsigned bits = bit_count(n) % 32;
    if (whole > words) return EN_U32ToENUM(r, 0);
    for (std::size_t i = whole; i < words; ++i) {
        const std::uint64_t pair = std::uint64_t{i + 1 < words ? a->words[i + 1] : 0} << 32 | a->words[i];
        r->words[i - whole] = static_cast<Word>(pair >> bits);
    }
    r->sign = a->sign;
    set_normalised_length(*r, words - whole);
}
