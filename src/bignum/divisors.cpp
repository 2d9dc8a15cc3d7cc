// EN_Mod_Inv, EN_GCD and EN_LCM.
#include "bignum/kernels.h"
#include "bignum/product.h"
#include "bignum/record.h"
#include "bignum/work.h"

#include <algorithm>

using namespace morvane::bignum;

void EN_Mod_Inv(ENUM* r, const ENUM* a, const ENUM* m) {
    if (a->sign != 0 || m->sign != 0) return;
    const std::span<const Word> modulus = magnitude(*m).first(significant_words(*m));
    const std::span<const Word> value = magnitude(*a).first(significant_words(*a));
    if (modulus.empty()) {
        // 1 has the inverse 1, which cannot be reduced modulo 0.
        if (value.size() != 1 || value[0] != 1) EN_U32ToENUM(r, 0);
        return;
    }
    const std::size_t size = limbs_for(modulus.size());
    WorkNumbers<3> space(3 * size);
    WorkWords reduced(std::max(value.size(), modulus.size()));
    if (!space || !reduced) return;
    Limb* const x = space.get();
    Limb* const inverse = x + size;
    Limb* const limbs = inverse + size;

    std::fill_n(x, size, 0);
    load_limbs(limbs, modulus.data(), modulus.size());
    if (is_below(value, modulus)) {
        load_limbs(x, value.data(), value.size());
    } else {
        if (!divide_words(nullptr, reduced.get(), value, modulus)) return;
        load_limbs(x, reduced.get(), modulus.size());
    }
    const Inversion inversion = invert_vt(inverse, x, limbs, size);
    if (inversion == Inversion::kNone) EN_U32ToENUM(r, 0);
    if (inversion != Inversion::kDone) return;
    r->sign = 0;
    const std::size_t words = significant(inverse, size) == 0 ? 0 : modulus.size();
    store_limbs(r->words, inverse, words);
    set_normalised_length(*r, words);
}

void EN_GCD(ENUM* r, const ENUM* a, const ENUM* b) {
    const std::span<const Word> x = magnitude(*a).first(significant_words(*a));
    const std::span<const Word> y = magnitude(*b).first(significant_words(*b));
    if (x.empty() && y.empty()) {
        if (a->length > 0 || b->length > 0) return EN_U32ToENUM(r, 0);
        return set(*r, 0, {});
    }
    const std::size_t words = std::max(x.size(), y.size());
    const std::size_t size = limbs_for(words);
    WorkNumbers<2> space(2 * size);
    if (!space) return;
    Limb* const u = space.get();
    Limb* const v = u + size;
    std::fill_n(u, 2 * size, 0);
    load_limbs(u, x.data(), x.size());
    load_limbs(v, y.data(), y.size());
    gcd_vt(u, v, size);
    r->sign = 0;
    // The top words of the result are 0, for which there may be no room.
    const std::size_t result_words = words_of(u, significant(u, size));
    store_limbs(r->words, u, result_words);
    set_length(*r, result_words);
}

std::int32_t EN_LCM(ENUM* r, const ENUM* a, const ENUM* b) {
    WorkWords product_words(words_in(*a) + words_in(*b) + 1);
    WorkWords divisor_words(std::max<std::size_t>({words_in(*a), words_in(*b), 1}));
    if (!product_words || !divisor_words) return 0;
    ENUM product{0, 0, product_words.get()};
    ENUM divisor{0, 0, divisor_words.get()};
    EN_Mul(&product, a, b);
    EN_GCD(&divisor, a, b);
    return EN_Div(r, nullptr, &product, &divisor);
}
