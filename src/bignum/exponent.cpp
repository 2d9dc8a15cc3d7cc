// EN_Mod_Exp and EN_Mod_ExpA.
#include "bignum/power.h"
#include "bignum/product.h"
#include "bignum/record.h"
#include "bignum/work.h"

using namespace morvane::bignum;

void EN_Mod_Exp(ENUM* r, const ENUM* a, const ENUM* e, const ENUM* m) {
    const std::span<const Word> exponent = magnitude(*e).first(significant_words(*e));
    const std::span<const Word> modulus = magnitude(*m).first(significant_words(*m));
    if (exponent.empty()) return EN_U32ToENUM(r, modulus.size() == 1 && modulus[0] == 1 ? 0 : 1);
    if (modulus.empty()) return;

    std::span<const Word> base = magnitude(*a).first(significant_words(*a));
    WorkWords reduced(base.size() > modulus.size() ? modulus.size() : 0);
    if (!reduced) return;
    if (base.size() > modulus.size()) {
        if (!divide_words(nullptr, reduced.get(), base, modulus)) return;
        base = {reduced.get(), modulus.size()};
    }
    if (!power_mod({base, exponent, modulus, r->words})) return;
    r->sign = 0;
    set_normalised_length(*r, modulus.size());
}

// The base is reduced in any case.
void EN_Mod_ExpA(ENUM* r, const ENUM* a, const ENUM* e, const ENUM* m) { EN_Mod_Exp(r, a, e, m); }
