// Arithmetic modulo m: products, sums and differences followed by a division.
#include "bignum/kernels.h"
#include "bignum/product.h"
#include "bignum/record.h"
#include "bignum/work_record.h"

#include <algorithm>

namespace morvane::bignum {
namespace {

std::int32_t multiply_mod(ENUM* r, const ENUM* a, const ENUM* b, const ENUM* m) noexcept {
    WorkRecord product(words_in(*a) + words_in(*b));
    if (!product) return 0;
    if (a == b) {
        EN_Sqr(product.get(), a);
    } else {
        EN_Mul(product.get(), a, b);
    }
    return EN_Div(nullptr, r, product.get(), m);
}

// r = (a mod m) b mod m.
std::int32_t reduce_and_multiply(ENUM* r, const ENUM* a, const ENUM* b, const ENUM* m) noexcept {
    WorkRecord reduced(words_in(*a));
    if (!reduced || EN_Div(nullptr, reduced.get(), a, m) == 0) return 0;
    return multiply_mod(r, reduced.get(), a == b ? reduced.get() : b, m);
}

}  // namespace
}  // namespace morvane::bignum

using namespace morvane::bignum;

std::int32_t EN_Mod(ENUM* r, const ENUM* a, const ENUM* m) {
    const std::int32_t status = EN_Div(nullptr, r, a, m);
    if (status != 0) set_normalised_length(*r, words_in(*r));
    return status;
}

std::int32_t EN_Mod_Add(ENUM* r, const ENUM* a, const ENUM* b, const ENUM* m) {
    WorkRecord sum(std::max(words_in(*a), words_in(*b)) + 1);
    if (!sum) return 0;
    EN_Add(sum.get(), a, b);
    return EN_Div(nullptr, r, sum.get(), m);
}

void EN_Mod_Sub(ENUM* r, const ENUM* a, const ENUM* b, const ENUM* m) {
    if (EN_Comp(a, b) >= 0) return EN_Sub(r, a, b);
    WorkRecord difference(std::max(words_in(*a), words_in(*b)) + 1);
    if (!difference) return;
    EN_Sub(difference.get(), b, a);
    EN_Sub(r, m, difference.get());
}

std::int32_t EN_Mod_Mul(ENUM* r, const ENUM* a, const ENUM* b, const ENUM* m) { return multiply_mod(r, a, b, m); }

std::int32_t EN_Mod_MulA(ENUM* r, const ENUM* a, const ENUM* b, const ENUM* m) { return reduce_and_multiply(r, a, b, m); }

std::int32_t EN_Mod_MulB(ENUM* r, const ENUM* a, const ENUM* b, const ENUM* m) { return reduce_and_multiply(r, b, a, m); }

std::int32_t EN_Mod_MulAB(ENUM* r, const ENUM* a, const ENUM* b, const ENUM* m) {
    if (a == b) return reduce_and_multiply(r, a, a, m);
    WorkRecord reduced(words_in(*b));
    if (!reduced || EN_Div(nullptr, reduced.get(), b, m) == 0) return 0;
    return reduce_and_multiply(r, a, reduced.get(), m);
}

std::int32_t EN_Mod_Sqr(ENUM* r, const ENUM* a, const ENUM* m) { return multiply_mod(r, a, a, m); }

std::int32_t EN_Mod_SqrA(ENUM* r, const ENUM* a, const ENUM* m) { return reduce_and_multiply(r, a, a, m); }

std::uint32_t EN_ModU32(const ENUM* a, std::uint32_t d) {
    if (d == 0) return 0;
    std::uint64_t rest = 0;
    for (std::size_t i = words_in(*a); i-- > 0;) rest = (rest << 32 | a->words[i]) % d;
    return static_cast<std::uint32_t>(rest);
}
