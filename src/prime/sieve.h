// The search for a candidate in an arithmetic progression that the primes of the table do not rule out.
#pragma once

#include "bignum/limb.h"
#include "prime/table.h"

#include <span>

namespace morvane::prime {

// Candidates are x, x + step, x + 2 step and so on. A prime of the table rules out a candidate n that it divides or whose
// n - 1 it divides, so that a safe prime's half is free of it too; in a search for safe primes by congruence also one whose
// (n - 1) / 2 leaves the residue 1. A prime that divides the step has nothing to say: all candidates are alike to it.
class Sieve {
public:
    // Steps of 2, as the plain searches take them.
    Sieve() noexcept;
    // Any step that is even.
    Sieve(std::span<const bignum::Word> step, bool safe) noexcept;

    // How many steps lead from x to the first candidate that is not ruled out. The time depends on x.
    std::uint32_t steps_to_candidate(std::span<const bignum::Word> x) const noexcept;

private:
    std::array<std::uint16_t, kPrimes> inverses_;  // 1 / step modulo each prime; 0 if it divides the step
    bool safe_;
};

}  // namespace morvane::prime
