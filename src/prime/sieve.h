// The search for a candidate in an arithmetic progression that the primes of the table do not rule out.
#pragma once

#include "base/wipe.h"
#include "bignum/limb.h"
#include "prime/table.h"

#include <span>

namespace morvane::prime {

// Residues of a candidate n modulo a prime of the table that rule it out: 0; or 1 as well, so that a safe prime's half is
// free of that prime too; or also 3, with which (n - 1) / 2 leaves 1.
enum class RuledOut : std::uint8_t { kZero, kUpToOne, kUpToOneAndHalf };

// Candidates at a time: of the windows of a plain search, one in a hundred has none.
inline constexpr std::uint32_t kSieveWindow = 512;

// Candidates are x, x + step, x + 2 step and so on. A prime that divides the step has nothing to say: all candidates are
// alike to it.
class Sieve {
public:
    // Steps of 2, as the plain searches take them, and residues up to 1.
    Sieve() noexcept;
    // Any step that is even.
    Sieve(std::span<const bignum::Word> step, RuledOut ruled_out) noexcept;
    Sieve(std::span<const bignum::Word> step, bool safe) noexcept
        : Sieve(step, safe ? RuledOut::kUpToOneAndHalf : RuledOut::kUpToOne) {}

    // How many steps lead from x to the first candidate that is not ruled out. The time depends on x.
    std::uint32_t steps_to_candidate(std::span<const bignum::Word> x) const noexcept;

private:
    friend class SieveWalk;
    std::array<std::uint16_t, kPrimes> inverses_;  // 1 / step modulo each prime; 0 if it divides the step
    RuledOut ruled_out_;
};

// All candidates from x on that are not ruled out, one after the other.
class SieveWalk {
public:
    // The sieve outlives the walk.
    SieveWalk(const Sieve& sieve, std::span<const bignum::Word> x) noexcept;

    // How many steps lead from x to the next of them.
    std::uint32_t next() noexcept;

private:
    void fill() noexcept;     // the window, from `multiples_`
    void move_on() noexcept;  // to the next window

    const Sieve& sieve_;
    SecretArray<std::uint16_t, kPrimes> multiples_;  // the next multiple, in steps from the window's first candidate
    SecretArray<bool, kSieveWindow + 1> window_;     // true: ruled out; the last one stands for whatever lies beyond
    std::uint32_t first_ = 0;                        // the window's first candidate
    std::uint32_t at_ = 0;                           // where to look on in the window
};

}  // namespace morvane::prime
