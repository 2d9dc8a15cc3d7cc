// The ways to compute a power; power.cpp picks one.
#pragma once

#include "bignum/power.h"
#include "cpu/cpu.h"

namespace morvane::bignum {

using PowerFn = bool(const Power&) noexcept;
using PowerPairFn = bool(const std::array<Power, 2>&) noexcept;
using PowerProductFn = bool(const Power&, const Power&) noexcept;

// Any modulus: each product is followed by a division. Variable time.
PowerFn power_division;

// An odd modulus: Montgomery's products in limbs.
PowerFn power_limbs;
PowerProductFn power_product_limbs;

// The same in digits of 52 bits, eight to a vector.
PowerFn power_ifma;
PowerPairFn power_pair_ifma;
PowerProductFn power_product_ifma;

// The same in columns of digits, where limbs have 32 bits only.
#if !defined(__x86_64__)
PowerFn power_avx2;
PowerFn power_sse2;
PowerProductFn power_product_avx2;
PowerProductFn power_product_sse2;

inline constexpr std::size_t kPowerVariants = 4;
#else
inline constexpr std::size_t kPowerVariants = 2;
#endif

// One after the other.
PowerPairFn power_pair_apart;

extern constinit cpu::Dispatch<PowerFn, kPowerVariants> power_odd;
extern constinit cpu::Dispatch<PowerPairFn, 2> power_pair;
extern constinit cpu::Dispatch<PowerProductFn, kPowerVariants> power_product;

}  // namespace morvane::bignum
