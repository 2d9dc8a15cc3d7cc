#include "bignum/record.h"

using namespace morvane::bignum;

namespace {

// r = a - b on magnitudes, the greater first, with the sign that the order gives: `sign` if it is |a|.
void subtract_magnitudes(ENUM* r, const ENUM* a, const ENUM* b, std::uint32_t sign) noexcept {
    const bool a_first = EN_UComp(a, b) >= 0;
    EN_USub(r, a_first ? a : b, a_first ? b : a);
    r->sign = a_first ? sign : sign ^ 1;
    if (r->length == 0) r->sign = 0;
}

void add_magnitudes(ENUM* r, const ENUM* a, const ENUM* b, std::uint32_t sign) noexcept {
    const bool a_first = words_in(*a) >= words_in(*b);
    EN_UAdd(r, a_first ? a : b, a_first ? b : a);
    r->sign = is_zero(*r) ? 0 : sign;
}

std::uint32_t sign_of(const ENUM* x) noexcept { return x->sign != 0 ? 1 : 0; }

}  // namespace

void EN_UAdd(ENUM* r, const ENUM* a, const ENUM* b) noexcept {
    const std::size_t words = words_in(*a);
    const std::size_t common = words_in(*b);
    std::uint64_t carry = 0;
    for (std::size_t i = 0; i < words; ++i) {
        carry += std::uint64_t{a->words[i]} + (i < common ? b->words[i] : 0);
        r->words[i] = static_cast<Word>(carry);
        carry >>= 32;
    }
    if (carry != 0) r->words[words] = 1;
    set_length(*r, words + static_cast<std::size_t>(carry));
}

void EN_USub(ENUM* r, const ENUM* a, const ENUM* b) noexcept {
    const std::size_t words = words_in(*a);
    const std::size_t common = words_in(*b);
    std::uint64_t borrow = 0;
    for (std::size_t i = 0; i < words; ++i) {
        const std::uint64_t difference = std::uint64_t{a->words[i]} - (i < common ? b->words[i] : 0) - borrow;
        r->words[i] = static_cast<Word>(difference);
        borrow = difference >> 63;
    }
    set_normalised_length(*r, words);
}

void EN_Add(ENUM* r, const ENUM* a, const ENUM* b) {
    if (sign_of(a) == sign_of(b)) {
        add_magnitudes(r, a, b, sign_of(a));
    } else {
        subtract_magnitudes(r, a, b, sign_of(a));
    }
}

void EN_Sub(ENUM* r, const ENUM* a, const ENUM* b) {
    if (sign_of(a) != sign_of(b)) {
        add_magnitudes(r, a, b, sign_of(a));
    } else {
        subtract_magnitudes(r, a, b, sign_of(a));
    }
}

void EN_AddU32(ENUM* r, const ENUM* a, std::uint32_t u) noexcept {
    const std::size_t words = words_in(*a);
    Word carry = u;
    std::size_t i = 0;
    for (; i < words && (carry != 0 || i == 0); ++i) {
        r->words[i] = a->words[i] + carry;
        carry = r->words[i] < carry ? 1 : 0;
    }
    if (carry != 0) r->words[words] = carry;
    r->sign = a->sign;
    set_length(*r, words + (carry != 0 ? 1 : 0));
}

void EN_SubU32(ENUM* r, const ENUM* a, std::uint32_t u) {
    const std::size_t words = words_in(*a);
    bool wrapped = true;  // as if from a word below
    for (std::size_t i = 0; i < words; ++i) {
        const Word word = a->words[i];
        r->words[i] = wrapped ? word - u : word;  // u again, not 1: the answers for other u than 1 are kept
        wrapped = wrapped && word < u;
    }
    r->sign = a->sign;
    set_normalised_length(*r, words);
}
