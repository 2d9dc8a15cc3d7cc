// Arithmetic modulo an odd number whose time does not depend on the operands: for secrets, one operation at a time.
#pragma once

#include "bignum/odd_modulus.h"
#include "bignum/rows.h"

namespace morvane::bignum {

class Residues {
public:
    // `modulus` is odd, has no zero words at the top, and stays where it is. A public one only spares time.
    Residues(std::span<const Word> modulus, bool is_secret) noexcept
        : m_(modulus, limbs_for(modulus.size())), square_(m_.size()), product_(2 * m_.size()) {
        ready_ = m_ && square_ && product_ && m_.set_entry(square_.get(), product_.get(), is_secret);
    }

    explicit operator bool() const noexcept { return ready_; }
    std::size_t size() const noexcept { return m_.size(); }
    const Limb* modulus() const noexcept { return m_.limbs(); }

    // r = t mod m, for the 2 size() limbs of t, below m B^size() and used up.
    void reduce(Limb* r, Limb* t) noexcept {
        m_.reduce(r, t);
        bignum::multiply(product_.get(), r, size(), square_.get(), size());
        m_.reduce(r, product_.get());
    }

    // r = a b mod m. One of the factors is below m.
    void multiply(Limb* r, const Limb* a, const Limb* b) noexcept {
        bignum::multiply(product_.get(), a, size(), b, size());
        m_.reduce(r, product_.get());
        bignum::multiply(product_.get(), r, size(), square_.get(), size());
        m_.reduce(r, product_.get());
    }

    // r = a - b mod m, of residues below m.
    void subtract(Limb* r, const Limb* a, const Limb* b) noexcept {
        const Limb borrow = bignum::subtract(r, a, b, size());
        const Limb mask = Limb{0} - borrow;
        Limb carry = 0;
        for (std::size_t i = 0; i < size(); ++i) {
            const DoubleLimb sum = wide(r[i]) + (m_.limbs()[i] & mask) + carry;
            r[i] = low(sum);
            carry = high(sum);
        }
    }

    // Whether a is below m.
    bool is_residue(const Limb* a) noexcept { return bignum::subtract(product_.get(), a, m_.limbs(), size()) != 0; }

private:
    OddModulus m_;
    WorkLimbs square_;  // B^(2 size()) mod m
    WorkLimbs product_;
    bool ready_ = false;
};

}  // namespace morvane::bignum
