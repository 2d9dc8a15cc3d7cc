// What every kind of key generation ends with.
#pragma once

#include "bignum/limb.h"

#include <morvane/pk.h>

#include <cstddef>
#include <cstdint>

namespace morvane::pk {

inline constexpr std::int32_t kMaxModulusBits = 32 * E_RSA_MODULUS_WORDS;
inline constexpr std::size_t kPrimeWords = E_RSA_PRIME_WORDS;

// Whether (prime - 1) / 2 and e have no common divisor. For an odd e that is as good as prime - 1.
bool suits(const ENUM& prime, bignum::Word e) noexcept;

// The whole record from two primes in any order, which suit e. False, with nothing written, if they are equal, or where
// there is no memory.
bool set_key(E_RSA_KEY& key, const ENUM& p, const ENUM& q, bignum::Word e) noexcept;

}  // namespace morvane::pk
