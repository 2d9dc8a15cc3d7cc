// An odd modulus and Montgomery's reduction by it, in limbs.
//
// P. Montgomery, Modular multiplication without trial division, 1985.
#pragma once

#include "bignum/kernels.h"
#include "bignum/product.h"
#include "bignum/rows.h"
#include "bignum/work.h"

#include <algorithm>
#include <span>

namespace morvane::bignum {

// 1 / x modulo 2^64, for an odd x. Each step doubles the bits that are right; x itself has three.
constexpr std::uint64_t inverse_of_odd(std::uint64_t x) noexcept {
    std::uint64_t inverse = x;
    for (int bits = 3; bits < 64; bits *= 2) inverse *= 2 - x * inverse;
    return inverse;
}
static_assert(0xfedcba9876543211U * inverse_of_odd(0xfedcba9876543211U) == 1);

// The bits of a number whose top word is not 0. How many there are is known of every modulus.
inline std::size_t bits_in(std::span<const Word> words) noexcept {
    return 32 * words.size() - known(leading_zeros(words.back()));
}

// How the factor into Montgomery's form, S^2 mod m with S = 2^bits, comes from products that divide by S, where nobody may
// know m: S 2^doublings is squared so many times, and multiplied by 2^rest, which is below m.
struct EntryPlan {
    EntryPlan(std::size_t bits, std::size_t modulus_bits) noexcept {
        const std::size_t least = 2 * bits - (modulus_bits - 1);
        while (least >> squares >= 16 && std::size_t{2} << squares <= modulus_bits) ++squares;
        doublings = ((least - 1) >> squares) + 1;
        rest = 2 * bits - (doublings << squares);
    }

    std::size_t doublings;
    std::size_t squares = 0;
    std::size_t rest;
};

class OddModulus {
public:
    // `words` has no zero at the top, and stays where it is. The modulus is extended to `size` limbs, no fewer than its
    // own.
    OddModulus(std::span<const Word> words, std::size_t size) noexcept : limbs_(size), words_(words) {
        if (!limbs_) return;
        std::fill_n(limbs_.get(), size, 0);
        load_limbs(limbs_.get(), words.data(), words.size());
        const Limb lowest = limbs_[0];
        minus_inverse_ = Limb{0} - static_cast<Limb>(inverse_of_odd(lowest));
    }

    explicit operator bool() const noexcept { return static_cast<bool>(limbs_); }
    std::size_t size() const noexcept { return limbs_.size(); }
    const Limb* limbs() const noexcept { return limbs_.get(); }
    std::span<const Word> words() const noexcept { return words_; }

    // r = t / B^size mod m for the 2 * size limbs of t, which are used up; t is below m B^size.
    void reduce(Limb* r, Limb* t) const noexcept { montgomery_reduce(r, t, limbs_.get(), limbs_.size(), minus_inverse_); }

    // r = a b / B^size modulo m, of size() limbs, as montgomery_multiply() says; product has room for twice as many.
    void multiply(Limb* r, Limb* product, const Limb* a, const Limb* b) const noexcept {
        montgomery_multiply(r, product, a, b, limbs_.get(), limbs_.size(), minus_inverse_);
    }

    // r = t / 2^64 mod m, for the size() limbs of t, which are used up; t is below 2^64 m. r does not overlap t.
    void reduce_by_64(Limb* r, Limb* t) const noexcept {
        const std::size_t size = limbs_.size();
        for (unsigned bits = 0; bits < 64; bits += kLimbBits) {
            const Limb above = multiply_add_row(t, limbs_.get(), size, t[0] * minus_inverse_);
            std::copy(t + 1, t + size, t);
            t[size - 1] = above;
        }
        reduce_once(r, t, limbs_.get(), size, 0);
    }

    // r = 2^bits mod m, as many words as the modulus has. By a division, for a public modulus. False if there is no memory,
    // here and below.
    bool power_of_two_vt(Word* r, std::size_t bits) const noexcept {
        WorkWords power(std::max(bits / 32 + 1, words_.size()));
        if (!power) return false;
        std::fill_n(power.get(), power.size(), 0);
        power[bits / 32] = Word{1} << bits % 32;
        return divide_words(nullptr, r, {power.get(), power.size()}, words_);
    }

    // square = B^(2 size) mod m, the factor into Montgomery's form; product has room for twice the limbs.
    bool set_entry(Limb* square, Limb* product, bool is_secret) const noexcept {
        const std::size_t size = limbs_.size();
        const std::size_t bits = kLimbBits * size;
        if (!is_secret) {
            WorkWords words(words_.size());
            if (!words || !power_of_two_vt(words.get(), 2 * bits)) return false;
            std::fill_n(square, size, 0);
            load_limbs(square, words.get(), words.size());
            return true;
        }
        const EntryPlan plan(bits, bits_in(words_));
        if (!power_of_two(square, bits + plan.doublings, 0)) return false;
        for (std::size_t i = 0; i < plan.squares; ++i) {
            bignum::square(product, square, size);
            reduce(square, product);
        }
        std::fill_n(product, 2 * size, 0);
        const Limb above = shift_left(product + plan.rest / kLimbBits, square, size, plan.rest % kLimbBits);
        product[plan.rest / kLimbBits + size] |= above;
        reduce(square, product);
        return true;
    }

    // x = 2^bits modulo 2^slack m, which x's size() limbs have room for. By doublings, for a secret modulus: the time tells
    // its length in bits and nothing else of it.
    bool power_of_two(Limb* x, std::size_t bits, std::size_t slack) const noexcept {
        const std::size_t size = limbs_.size();
        WorkLimbs work(size);
        WorkLimbs m(size);
        if (!work || !m) return false;
        std::copy_n(limbs_.get(), size, m.get());
        std::fill_n(x, size, 0);
        const std::size_t start = std::min(bits, bits_in(words_) - 1 + slack);
        for (std::size_t left = slack, step = 0; left != 0; left -= step) {
            step = std::min<std::size_t>(left, kLimbBits - 1);
            shift_left(m.get(), m.get(), size, static_cast<unsigned>(step));
        }
        x[start / kLimbBits] = Limb{1} << start % kLimbBits;  // below the modulus, whose top bit is there or above
        for (std::size_t i = start; i < bits; ++i) twice(x, m.get(), work.get(), size);
        return true;
    }

private:
    // x = 2 x mod m, for x below m; work has as many limbs.
    static void twice(Limb* x, const Limb* m, Limb* work, std::size_t size) noexcept {
        const Limb carry = shift_left(x, x, size, 1);
        const Limb borrow = subtract(work, x, m, size);
        Limb keep = Limb{0} - (borrow & ~carry & 1);
        asm("" : "+r"(keep));  // or the compiler may branch on it
        for (std::size_t i = 0; i < size; ++i) x[i] = work[i] ^ (keep & (x[i] ^ work[i]));
    }

    WorkLimbs limbs_;
    std::span<const Word> words_;
    Limb minus_inverse_ = 0;
};

}  // namespace morvane::bignum
