// What rings in vectors share: residues in digits of `Bits` bits, b = 2^Bits, and three ways to reduce them. Two go by
// Montgomery's step, which adds a multiple of the modulus m that clears the lowest digit t0 of t, and divides by b.
//
// Residues are not kept below the modulus, only so small against b^n, where n is the number of digits, that a product
// divided by b^n is as small again: nothing is compared or subtracted on the way. Only at the end a residue is reduced
// modulo m itself, in limbs: after a product with 2^64, which adds less than 2^64 to a multiple k m with k below 2^Bits.
#pragma once

#include "bignum/digits.h"
#include "bignum/odd_modulus.h"
#include "bignum/rows.h"

#include <bit>

namespace morvane::bignum {

// The digit of 2^bits that is not 0.
template <unsigned Bits>
void set_bit(std::uint64_t* digits, std::size_t bits) noexcept {
    digits[bits / Bits] = std::uint64_t{1} << bits % Bits;
}

// A modulus, and the way back to it.
template <unsigned Bits>
class VectorModulus {
public:
    VectorModulus(std::span<const Word> modulus, std::size_t digits) noexcept
        : count_(digits), m_(modulus, limbs_for((digits * Bits + 31) / 32)) {}

    explicit operator bool() const noexcept { return static_cast<bool>(m_); }

    // -1/m mod b.
    std::uint64_t factor() const noexcept {
        const std::uint64_t lowest = m_.words()[0] | (m_.words().size() > 1 ? std::uint64_t{m_.words()[1]} << 32 : 0);
        return -inverse_of_odd(lowest) & ((std::uint64_t{1} << Bits) - 1);
    }

    // 2^bits mod m, in `size` digits. False if there is no memory, here and below.
    bool set_power_vt(std::uint64_t* digits, std::size_t size, std::size_t bits) const noexcept {
        WorkWords words(m_.words().size());
        if (!words || !m_.power_of_two_vt(words.get(), bits)) return false;
        to_digits<Bits>(digits, size, {words.get(), words.size()});
        return true;
    }

    // The same modulo a secret number, which may be left multiplied by 2^slack.
    bool set_power(std::uint64_t* digits, std::size_t size, std::size_t bits, std::size_t slack) const noexcept {
        WorkLimbs limbs(m_.size());
        WorkWords words(m_.size() * kWordsPerLimb);
        if (!limbs || !words || !m_.power_of_two(limbs.get(), bits, slack)) return false;
        store_limbs(words.get(), limbs.get(), words.size());
        to_digits<Bits>(digits, size, {words.get(), words.size()});
        return true;
    }

    // words = digits / 2^64 mod m, for a value below 2^64 m.
    bool reduce_by_64(Word* words, const std::uint64_t* digits) const noexcept {
        WorkLimbs t(m_.size());
        WorkLimbs r(m_.size());
        WorkWords sum(m_.size() * kWordsPerLimb);
        if (!t || !r || !sum) return false;
        from_digits<Bits>(sum.get(), sum.size(), digits, count_);
        load_limbs(t.get(), sum.get(), sum.size());
        m_.reduce_by_64(r.get(), t.get());
        store_limbs(words, r.get(), m_.words().size());
        return true;
    }

protected:
    std::size_t count_;
    OddModulus m_;
};

// With k = -1/m mod b: t0 k is the multiple of m, so that each step waits for a product. Residues stay below 2 m.
template <unsigned Bits>
class PlainModulus : public VectorModulus<Bits> {
public:
    static std::size_t digits_for(std::span<const Word> modulus) noexcept {
        return (std::max(bits_in(modulus) + 2, 32 * modulus.size()) + Bits - 1) / Bits;
    }
    using VectorModulus<Bits>::VectorModulus;
    static constexpr std::size_t kSlackBits = 0;  // by which residues may be longer than m

    // m / b, without its lowest digit, and m.
    bool set_digits(std::uint64_t* above, std::uint64_t* all, std::size_t size) const noexcept {
        to_digits<Bits>(above, size, this->m_.words(), Bits);
        to_digits<Bits>(all, size, this->m_.words());
        return true;
    }
};

// Modulo k m, which is -1 modulo b: k m = c b - 1 for a cofactor c, the multiple is t0 itself, and
//     (t + t0 k m) / b  =  (t - t0) / b + t0 c.
// For this, residues are a digit longer: they stay below 2^(bits of m + Bits + 1), and b^n has one bit more.
template <unsigned Bits>
class FriendlyModulus : public VectorModulus<Bits> {
public:
    static std::size_t digits_for(std::span<const Word> modulus) noexcept {
        return (bits_in(modulus) + Bits + 2 + Bits - 1) / Bits;
    }
    using VectorModulus<Bits>::VectorModulus;
    static constexpr std::size_t kSlackBits = Bits;

    // c, and nothing else.
    bool set_digits(std::uint64_t* above, std::uint64_t* /*all*/, std::size_t size) const noexcept {
        Limb k[limbs_for(2)];
        const std::uint64_t factor = this->factor();
        std::memcpy(k, &factor, sizeof k);
        WorkLimbs product(this->m_.size() + limbs_for(2));
        WorkWords words(product.size() * kWordsPerLimb);
        if (!product || !words) return false;
        multiply(product.get(), this->m_.limbs(), this->m_.size(), k, limbs_for(2));
        add_one(product.get(), product.size());
        store_limbs(words.get(), product.get(), words.size());
        to_digits<Bits>(above, size, {words.get(), words.size()}, Bits);
        return true;
    }
};

// With -1/m modulo b^n, for the reduction by all digits at once.
template <unsigned Bits>
class WholeModulus : public VectorModulus<Bits> {
public:
    using VectorModulus<Bits>::VectorModulus;

    // -1/m mod b^n, by Hensel's lemma: if m x = -1 + B^i e modulo B^(2 i), then x + B^i e x is the inverse modulo that.
    bool set_inverse(std::uint64_t* digits) const noexcept {
        const std::size_t size = this->m_.size();
        WorkLimbs x(size), e(2 * size), ex(2 * size);
        WorkWords words(size * kWordsPerLimb);
        if (!x || !e || !ex || !words) return false;
        std::fill_n(x.get(), size, 0);
        x[0] = static_cast<Limb>(-inverse_of_odd(this->m_.limbs()[0]));
        for (std::size_t i = 1, next = 0; i < size; i = next) {
            next = std::min(2 * i, size);
            multiply(e.get(), this->m_.limbs(), next, x.get(), i);
            add_one(e.get() + i, next - i);
            multiply(ex.get(), x.get(), i, e.get() + i, next - i);
            std::copy_n(ex.get(), next - i, x.get() + i);
        }
        store_limbs(words.get(), x.get(), words.size());
        to_digits<Bits>(digits, this->count_, {words.get(), words.size()});
        return true;
    }
};

}  // namespace morvane::bignum
