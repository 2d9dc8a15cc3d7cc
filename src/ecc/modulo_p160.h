// p = 2^160 - 2^31 - 1, and numbers of six words modulo p.
#pragma once

#include "ecc/words.h"

namespace morvane::ecc::p160 {

inline constexpr Constant kPrime(0, 0xffffffff, 0xffffffff, 0xffffffff, 0xffffffff, 0x7fffffff);
inline constexpr Limb kFold = (Limb{1} << 31) + 1;  // 2^160 mod p
inline constexpr std::size_t kTopLimb = 160 / kLimbBits;
inline constexpr unsigned kTopBits = 160 % kLimbBits;

// Limb i of x / 2^160.
template <std::size_t Size>
constexpr Limb above(const Limb* x, std::size_t i) noexcept {
    const Limb low = x[kTopLimb + i];
    if constexpr (kTopBits == 0) {
        return low;
    } else {
        return low >> kTopBits | (kTopLimb + i + 1 < Size ? x[kTopLimb + i + 1] << (kLimbBits - kTopBits) : 0);
    }
}

// r = x mod 2^160 + (x / 2^160) (2^31 + 1), in Sum limbs, for an x of so many bits.
template <std::size_t Sum, std::size_t Bits>
constexpr void fold(Limb* r, const Limb* x) noexcept {
    constexpr std::size_t kSize = (Bits + kLimbBits - 1) / kLimbBits;
    constexpr std::size_t kHigh = (Bits - 160 + kLimbBits - 1) / kLimbBits;
    Limb carry = 0;
    for (std::size_t i = 0; i < Sum; ++i) {
        Limb low = i <= kTopLimb ? x[i] : 0;
        if (i == kTopLimb) low = kTopBits == 0 ? 0 : low & ((Limb{1} << kTopBits) - 1);
        DoubleLimb sum = DoubleLimb{low} + carry;
        if (i < kHigh) sum += DoubleLimb{above<kSize>(x, i)} * kFold;
        r[i] = static_cast<Limb>(sum);
        carry = static_cast<Limb>(sum >> kLimbBits);
    }
}

// Any number of 192 bits modulo p.
constexpr Limbs reduced(const Limbs& a) noexcept {
    Limb once[kLimbs]{};
    Limbs r{};
    fold<kLimbs, 192>(once, a.v);  // below 2^160 + 2^64
    fold<kLimbs, 192>(r.v, once);  // below 2^160
    Limb borrow = 0;
    const Limbs less = subtract(r, kPrime.limbs(), borrow);
    return choose(static_cast<Mask>(borrow) - 1, less, r);
}

}  // namespace morvane::ecc::p160
