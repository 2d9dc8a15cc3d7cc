// A magnitude modulo every prime of the table.
#pragma once

#include "bignum/limb.h"
#include "prime/table.h"

#include <span>

namespace morvane::prime {

// residues[i] = x mod kTable[i]. The time tells the number of words.
void set_residues(std::array<std::uint16_t, kPrimes>& residues, std::span<const bignum::Word> x) noexcept;

}  // namespace morvane::prime
