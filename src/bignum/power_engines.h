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
PowerPairFn power_pair_limbs;
PowerProductFn power_product_limbs;

// An odd modulus: Montgomery's products in digits of 52 bits, eight to a vector.
PowerFn power_ifma;
PowerPairFn power_pair_ifma;
PowerProductFn power_product_ifma;

extern constinit cpu::Dispatch<PowerFn, 2> power_odd;
extern constinit cpu::Dispatch<PowerPairFn, 2> power_pair;
extern constinit cpu::Dispatch<PowerProductFn, 2> power_product;

}  // namespace morvane::bignum
