// Arithmetic modulo the orders of the built-in curves, with Montgomery's reduction by 2^192.
#include "base/wipe.h"
#include "ecc/binary.h"
#include "ecc/inverse.h"
#include "ecc/secp160r1.h"

#include <algorithm>
#include <array>

namespace morvane::ecc {
namespace {

struct Order {
    Limbs n;
    Limb factor;   // -1 / n modulo the base of limbs
    Limbs one;     // 2^192 mod n
    Limbs square;  // 2^384 mod n
    Inverter inverter;

    constexpr explicit Order(const Constant& of) noexcept
        : n(of.limbs()), factor(1), one{{1}}, square{}, inverter(of.words) {
        for (unsigned bits = 1; bits < kLimbBits; bits *= 2) factor *= 2 + n.v[0] * factor;
        const auto shift = [this](Limbs x) {
            for (int i = 0; i < 192; ++i) x = below(add(x, x));
            return x;
        };
        one = shift(one);
        square = shift(one);
    }

    // a modulo n, for a below 2 n.
    constexpr Limbs below(const Limbs& a) const noexcept {
        Limb borrow = 0;
        const Limbs less = subtract(a, n, borrow);
        return choose(static_cast<Mask>(borrow) - 1, less, a);
    }

    // a b / 2^192 mod n, for any a and b below n: below 2 n before the end, because n is far below 2^191.
    constexpr Limbs multiply(const Limbs& a, const Limbs& b) const noexcept {
        Limb t[kLimbs + 2]{};
        for (std::size_t i = 0; i < kLimbs; ++i) {
            add_product(t, b, a.v[i]);
            add_product(t, n, t[0] * factor);
            for (std::size_t j = 0; j <= kLimbs; ++j) t[j] = t[j + 1];
            t[kLimbs + 1] = 0;
        }
        Limbs r{};
        for (std::size_t i = 0; i < kLimbs; ++i) r.v[i] = t[i];
        return below(r);
    }

private:
    static constexpr void add_product(Limb* t, const Limbs& a, Limb b) noexcept {
        Limb carry = 0;
        for (std::size_t i = 0; i < kLimbs; ++i) {
            const DoubleLimb sum = DoubleLimb{a.v[i]} * b + t[i] + carry;
            t[i] = static_cast<Limb>(sum);
            carry = static_cast<Limb>(sum >> kLimbBits);
        }
        const DoubleLimb sum = DoubleLimb{t[kLimbs]} + carry;
        t[kLimbs] = static_cast<Limb>(sum);
        t[kLimbs + 1] += static_cast<Limb>(sum >> kLimbBits);
    }
};

constexpr Order kOrders[] = {Order(Sect163k1::kOrder), Order(C2pnb163v1::kOrder), Order(p160::kOrder)};

const Order* order_of(std::int32_t curve) noexcept {
    return is_built_in(curve) ? &kOrders[(curve - kSect163k1) / 2] : nullptr;
}

}  // namespace

void order(Word* n, std::int32_t curve) noexcept {
    if (const Order* const o = order_of(curve)) words_of(n, o->n);
}

void scalar_reduce(Word* r, std::int32_t curve, const Word* wide, std::size_t words) noexcept {
    const Order* const o = order_of(curve);
    if (o == nullptr) return;
    SecretArray<Word, 2 * kWords> whole;
    std::copy_n(wide, std::min(words, 2 * kWords), whole.items.data());
    const Limbs high = o->multiply(limbs_of(whole.items.data() + kWords), o->square);
    const Limbs low = o->multiply(limbs_of(whole.items.data()), o->one);
    words_of(r, o->below(add(high, low)));
}

void scalar_add(Word* r, std::int32_t curve, const Word* a, const Word* b) noexcept {
    if (const Order* const o = order_of(curve)) words_of(r, o->below(add(limbs_of(a), limbs_of(b))));
}

void scalar_subtract(Word* r, std::int32_t curve, const Word* a, const Word* b) noexcept {
    if (const Order* const o = order_of(curve)) words_of(r, o->below(add(limbs_of(a), subtract(o->n, limbs_of(b)))));
}

void scalar_multiply(Word* r, std::int32_t curve, const Word* a, const Word* b) noexcept {
    const Order* const o = order_of(curve);
    if (o != nullptr) words_of(r, o->multiply(o->multiply(limbs_of(a), limbs_of(b)), o->square));
}

void scalar_invert(Word* r, std::int32_t curve, const Word* a) noexcept {
    if (const Order* const o = order_of(curve)) o->inverter.invert(r, a);
}

}  // namespace morvane::ecc
