// Inverses modulo an odd number below 2^163, in a time that tells nothing of the operand.
//
// D. Bernstein and B.-Y. Yang, Fast constant-time gcd computation and modular inversion, 2019. A division step takes
// (delta, f, g) with an odd f to
//     (1 - delta, g, (g - f) / 2)              if delta > 0 and g is odd
//     (1 + delta, f, (g + (g mod 2) f) / 2)    otherwise.
// The lowest bits of f and g decide what as many steps do, so these are done on one limb each, and collected in a matrix.
// By theorem 11.2 there, g is 0 and f is the divisor or its negative after floor((49 * 163 + 57) / 17) = 473 steps from
// delta = 1, f = n, g = a < 2^163.
#pragma once

#include "base/wipe.h"
#include "bignum/digits.h"
#include "bignum/odd_modulus.h"
#include "ecc/words.h"

#include <type_traits>

namespace morvane::ecc {

// Numbers in signed digits, least significant first: all but the highest are from 0 to 2^kDigitBits - 1.
class Inverter {
public:
    constexpr explicit Inverter(const Word* n) noexcept
        : n_(digits_of(n)), inverse_(static_cast<Limb>(bignum::inverse_of_odd(std::uint64_t{n[1]} << 32 | n[0])) & kMask) {}

    // r = 1 / a modulo n, 0 for 0. a is below n.
    void invert(Word* r, const Word* a) const noexcept {
        SecretArray<Number, 4> numbers;
        Number& f = numbers.items[0];
        Number& g = numbers.items[1];
        Number& d = numbers.items[2];  // f / a modulo n, above -2 n and below n; the same of g:
        Number& e = numbers.items[3];
        f = n_;
        g = digits_of(a);
        e.v[0] = 1;
        Digit delta = 1;
        for (std::size_t i = 0; i < kMatrices; ++i) {
            const Matrix steps = divide(delta, f.v[0], g.v[0]);
            apply(steps, f, g);
            apply_modulo(steps, d, e);
        }
        add_if(d, sign_of(d));
        const Digit negative = sign_of(f);
        Digit carry = 0;
        for (Digit& digit : d.v) digit = (digit ^ negative) - negative;
        for (std::size_t i = 0; i < kDigits; ++i) propagate(d, i, carry);
        add_if(d, sign_of(d));
        SecretArray<std::uint64_t, kDigits> digits;
        for (std::size_t i = 0; i < kDigits; ++i) digits.items[i] = static_cast<std::uint64_t>(d.v[i]);
        bignum::from_digits<kDigitBits>(r, kWords, digits.items.data(), kDigits);
    }

private:
    using Digit = std::make_signed_t<Limb>;
#if UINTPTR_MAX > 0xffffffffU
    __extension__ using Double = __int128;
#else
    using Double = std::int64_t;
#endif
    static constexpr unsigned kDigitBits = kLimbBits - 2;
    static constexpr Limb kMask = (Limb{1} << kDigitBits) - 1;
    static constexpr std::size_t kDigits = (163 + 1 + kDigitBits - 1) / kDigitBits;
    static constexpr std::size_t kMatrices = (473 + kDigitBits - 1) / kDigitBits;

    struct Number {
        Digit v[kDigits]{};
    };

    // The steps as a matrix: 2^kDigitBits f' = u f + v g, 2^kDigitBits g' = q f + r g. |u| + |v| and |q| + |r| are at most
    // 2^kDigitBits.
    struct Matrix {
        Digit u, v, q, r;
    };

    static constexpr Number digits_of(const Word* words) noexcept {
        Number number;
        for (std::size_t i = 0; i < kDigits; ++i) {
            Limb digit = 0;
            for (unsigned bit = 0; bit < kDigitBits; ++bit) digit |= Limb{bits_at(words, i * kDigitBits + bit, 1)} << bit;
            number.v[i] = static_cast<Digit>(digit);
        }
        return number;
    }

    [[gnu::always_inline]] static inline Limb hidden(Limb mask) noexcept {
        asm("" : "+r"(mask));  // the compiler shall not know that it has two values
        return mask;
    }

    static Digit sign_of(const Number& a) noexcept { return a.v[kDigits - 1] >> (kLimbBits - 1); }  // -1 or 0

    // kDigitBits steps.
    static Matrix divide(Digit& delta, Digit f_digit, Digit g_digit) noexcept {
        auto f = static_cast<Limb>(f_digit);
        auto g = static_cast<Limb>(g_digit);
        Limb u = 1, v = 0, q = 0, r = 1;
        auto count = static_cast<Limb>(delta);
        for (unsigned i = 0; i < kDigitBits; ++i) {
            const Limb above = hidden(static_cast<Limb>(-static_cast<Digit>(count) >> (kLimbBits - 1)));
            const Limb odd = hidden(Limb{0} - (g & 1));
            g += ((f ^ above) - above) & odd;
            q += ((u ^ above) - above) & odd;
            r += ((v ^ above) - above) & odd;
            const Limb swap = above & odd;
            count = (count ^ swap) - swap + 1;
            f += g & swap;
            u += q & swap;
            v += r & swap;
            g >>= 1;
            u <<= 1;
            v <<= 1;
        }
        delta = static_cast<Digit>(count);
        return {static_cast<Digit>(u), static_cast<Digit>(v), static_cast<Digit>(q), static_cast<Digit>(r)};
    }

    static void apply(const Matrix& m, Number& f, Number& g) noexcept {
        Double to_f = 0;
        Double to_g = 0;
        for (std::size_t i = 0; i < kDigits; ++i) {
            const Double f_i = f.v[i];
            const Double g_i = g.v[i];
            to_f += m.u * f_i + m.v * g_i;
            to_g += m.q * f_i + m.r * g_i;
            if (i != 0) f.v[i - 1] = lowest(to_f);
            if (i != 0) g.v[i - 1] = lowest(to_g);
            to_f >>= kDigitBits;
            to_g >>= kDigitBits;
        }
        f.v[kDigits - 1] = static_cast<Digit>(to_f);
        g.v[kDigits - 1] = static_cast<Digit>(to_g);
    }

    // The same modulo n. With n added to a negative d and e, the products lie between -2^kDigitBits n and 2^kDigitBits n; a
    // multiple of n from 0 to 2^kDigitBits - 1 is subtracted, so that what is left can be divided.
    void apply_modulo(const Matrix& m, Number& d, Number& e) const noexcept {
        const Digit d_sign = sign_of(d);
        const Digit e_sign = sign_of(e);
        Digit d_factor = (m.u & d_sign) + (m.v & e_sign);
        Digit e_factor = (m.q & d_sign) + (m.r & e_sign);
        Double to_d = 0;
        Double to_e = 0;
        for (std::size_t i = 0; i < kDigits; ++i) {
            const Double d_i = d.v[i];
            const Double e_i = e.v[i];
            to_d += m.u * d_i + m.v * e_i;
            to_e += m.q * d_i + m.r * e_i;
            if (i == 0) {
                d_factor -= clearing_factor(to_d, d_factor);
                e_factor -= clearing_factor(to_e, e_factor);
            }
            to_d += Double{n_.v[i]} * d_factor;
            to_e += Double{n_.v[i]} * e_factor;
            if (i != 0) d.v[i - 1] = lowest(to_d);
            if (i != 0) e.v[i - 1] = lowest(to_e);
            to_d >>= kDigitBits;
            to_e >>= kDigitBits;
        }
        d.v[kDigits - 1] = static_cast<Digit>(to_d);
        e.v[kDigits - 1] = static_cast<Digit>(to_e);
    }

    // What makes the lowest digit of sum + n (factor - it) 0.
    Digit clearing_factor(Double sum, Digit factor) const noexcept {
        return static_cast<Digit>((static_cast<Limb>(sum) * inverse_ + static_cast<Limb>(factor)) & kMask);
    }

    static Digit lowest(Double sum) noexcept { return static_cast<Digit>(static_cast<Limb>(sum) & kMask); }

    static void propagate(Number& a, std::size_t i, Digit& carry) noexcept {
        const Digit sum = a.v[i] + carry;
        if (i + 1 == kDigits) {
            a.v[i] = sum;
            return;
        }
        a.v[i] = sum & static_cast<Digit>(kMask);
        carry = sum >> kDigitBits;
    }

    // a += n if the mask is -1.
    void add_if(Number& a, Digit mask) const noexcept {
        Digit carry = 0;
        for (std::size_t i = 0; i < kDigits; ++i) {
            a.v[i] += n_.v[i] & mask;
            propagate(a, i, carry);
        }
    }

    Number n_;
    Limb inverse_;  // 1 / n modulo 2^kDigitBits
};

}  // namespace morvane::ecc
