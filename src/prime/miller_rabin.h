// Tests of primality.
//
// Numbers are records of sign 0, normalised. Their values are taken for secret where that is cheap: the exponentiations
// take constant time, the rest does not.
#pragma once

#include "bignum/limb.h"

#include <morvane/types.h>

#include <cstdint>

namespace morvane::prime {

// EN_Random or EN_X9_31Random.
using Draw = void(ENUM* x, std::int32_t bits, std::int32_t top, std::int32_t bottom);

enum class Verdict { kComposite, kPrime, kNoMemory };

inline constexpr int kRounds = 5;

inline bool is_small(const ENUM& n, bignum::Word value) noexcept { return n.length == 1 && n.words[0] == value; }
inline bool is_even(const ENUM& n) noexcept { return n.length == 0 || (n.words[0] & 1) == 0; }

// The exponent of 2 in n - 1; 0 for an even n.
std::size_t twos_below(const ENUM& n) noexcept;

// One Miller-Rabin round; kPrime: the base is no witness. Of even numbers only 2 passes. The base is from 1 to n - 1.
Verdict miller_rabin(const ENUM& n, const ENUM& base) noexcept;

// The same when x = base^(the odd part of n - 1) mod n, normalised, is known. n is odd and above 1; x is used up, and has
// room for its square's remainder.
Verdict verdict_of_power(ENUM& x, const ENUM& n) noexcept;

// Whether n, of any size and normalised or not, is prime, or together with n / 2: trial division by the table, then five
// rounds of what is left undecided.
Verdict test(const ENUM& n, bool safe, Draw* draw) noexcept;

}  // namespace morvane::prime
