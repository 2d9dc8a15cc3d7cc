// What rings in vectors share: residues in short digits, and a modulus made friendly to them.
//
// Let b = 2^Bits, and k = -1/m mod b. Then k m = c b - 1 for a cofactor c, and Montgomery's step, which clears the lowest
// digit t0 of t by adding t0 k m, needs no product to find its factor:
//     (t + t0 k m) / b  =  (t - t0) / b + t0 c.
// Residues are held modulo k m, between 0 and 2^(bits of m + Bits + 1). With that bound on two factors and n digits so that
// b^n has one bit more than it, a product t / b^n is below the bound again: nothing is compared or subtracted on the way.
// Only at the end a residue is reduced modulo m itself, in limbs.
#pragma once

#include "bignum/digits.h"
#include "bignum/odd_modulus.h"
#include "bignum/rows.h"

#include <bit>

namespace morvane::bignum {

template <unsigned Bits>
class FriendlyModulus {
public:
    static constexpr std::size_t digits_for(std::span<const Word> modulus) noexcept {
        const std::size_t bits = 32 * modulus.size() - static_cast<std::size_t>(std::countl_zero(modulus.back()));
        return (bits + Bits + 2 + Bits - 1) / Bits;
    }

    explicit FriendlyModulus(std::span<const Word> modulus) noexcept
        : count_(digits_for(modulus)), m_(modulus, limbs_for((count_ * Bits + 31) / 32)) {}

    explicit operator bool() const noexcept { return static_cast<bool>(m_); }
    std::size_t count() const noexcept { return count_; }

    // c, in `size` digits. False if there is no memory, here and below.
    bool set_cofactor(std::uint64_t* digits, std::size_t size) const noexcept {
        const std::uint64_t lowest = m_.words()[0] | (m_.words().size() > 1 ? std::uint64_t{m_.words()[1]} << 32 : 0);
        const std::uint64_t factor = -inverse_of_odd(lowest) & ((std::uint64_t{1} << Bits) - 1);
        Limb k[limbs_for(2)];
        std::memcpy(k, &factor, sizeof k);
        WorkLimbs product(m_.size() + limbs_for(2));
        WorkWords words(product.size() * kWordsPerLimb);
        if (!product || !words) return false;
        multiply(product.get(), m_.limbs(), m_.size(), k, limbs_for(2));
        for (std::size_t i = 0; ++product[i] == 0;) ++i;
        store_limbs(words.get(), product.get(), words.size());
        to_digits<Bits>(digits, size, {words.get(), words.size()}, Bits);
        return true;
    }

    // 2^bits mod m, in `size` digits.
    bool set_power(std::uint64_t* digits, std::size_t size, std::size_t bits) const noexcept {
        WorkWords words(m_.words().size());
        if (!words || !m_.power_of_two(words.get(), bits)) return false;
        to_digits<Bits>(digits, size, {words.get(), words.size()});
        return true;
    }

    // The bits that reduce() divides by.
    std::size_t reduction_bits() const noexcept { return kLimbBits * m_.size(); }

    // words = digits / 2^reduction_bits() mod m, below m.
    bool reduce(Word* words, const std::uint64_t* digits) const noexcept {
        WorkLimbs t(2 * m_.size());
        WorkWords sum(m_.size() * kWordsPerLimb);
        if (!t || !sum) return false;
        from_digits<Bits>(sum.get(), sum.size(), digits, count_);
        load_limbs(t.get(), sum.get(), sum.size());
        std::fill_n(t.get() + m_.size(), m_.size(), 0);
        m_.reduce(t.get(), t.get());
        store_limbs(words, t.get(), m_.words().size());
        return true;
    }

private:
    std::size_t count_;
    OddModulus m_;
};

}  // namespace morvane::bignum
