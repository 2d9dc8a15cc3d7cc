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

    // r = 2^bits mod m, as many words as the modulus has. By a division, which is quicker, if everybody may know the
    // modulus. False if there is no memory.
    bool power_of_two(Word* r, std::size_t bits, bool is_known) const noexcept {
        if (!is_known) return power_of_two_by_squares(r, bits);
        WorkWords power(std::max(bits / 32 + 1, words_.size()));
        if (!power) return false;
        std::fill_n(power.get(), power.size(), 0);
        power[bits / 32] = Word{1} << bits % 32;
        return divide_words(nullptr, r, {power.get(), power.size()}, words_);
    }

private:
    // In a time that tells the modulus' length in bits, and nothing else of it.
    bool power_of_two_by_squares(Word* r, std::size_t bits) const noexcept {
        const std::size_t size = limbs_.size();
        const auto top_bit = 32 * words_.size() - 1 - known(leading_zeros(words_.back()));
        WorkLimbs x(size);
        WorkLimbs product(2 * size);
        if (!x || !product) return false;
        std::fill_n(x.get(), size, 0);
        const std::size_t start = std::min(bits, top_bit);
        x[start / kLimbBits] = Limb{1} << start % kLimbBits;  // below m, which is odd and has the top bit
        for (std::size_t i = start; i < std::min(bits, kLimbBits * size); ++i) twice(x.get(), product.get());
        // 2^(kLimbBits size) is 1 in Montgomery's form: 2^exponent, in that form, is 2^bits.
        const std::size_t exponent = bits - std::min(bits, kLimbBits * size);
        for (std::size_t bit = std::bit_floor(exponent); bit != 0; bit >>= 1) {
            square(product.get(), x.get(), size);
            reduce(x.get(), product.get());
            if ((exponent & bit) != 0) twice(x.get(), product.get());
        }
        store_limbs(r, x.get(), words_.size());
        return true;
    }

    // x = 2 x mod m, for x below m; work has as many limbs.
    void twice(Limb* x, Limb* work) const noexcept {
        const std::size_t size = limbs_.size();
        const Limb carry = shift_left(x, x, size, 1);
        const Limb borrow = subtract(work, x, limbs_.get(), size);
        Limb keep = Limb{0} - (borrow & ~carry & 1);
        asm("" : "+r"(keep));  // or the compiler may branch on it
        for (std::size_t i = 0; i < size; ++i) x[i] = work[i] ^ (keep & (x[i] ^ work[i]));
    }

    WorkLimbs limbs_;
    std::span<const Word> words_;
    Limb minus_inverse_ = 0;
};

}  // namespace morvane::bignum
