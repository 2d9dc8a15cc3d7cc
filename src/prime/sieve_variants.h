// The two steps of a sieve that go through all primes, and their forms; sieve.cpp picks.
#pragma once

#include "bignum/limb.h"
#include "cpu/cpu.h"
#include "prime/sieve.h"

namespace morvane::prime {

// Something for each prime of the table.
using PerPrime = std::array<std::uint16_t, kPrimes>;

// multiples[i] = how many steps lead from x to a multiple of the prime, when inverses[i] is 1 / step modulo it. Where that
// is 0, the result means nothing, but it is below the prime.
using MultiplesFn = void(PerPrime& multiples, const PerPrime& inverses, std::span<const bignum::Word> x) noexcept;

// window[i] = whether the candidate i steps on is ruled out; kSieveWindow of them.
using RuleOutFn = void(bool* window, const PerPrime& multiples, const PerPrime& inverses, RuledOut ruled_out) noexcept;

MultiplesFn multiples_plain, multiples_ifma;
RuleOutFn rule_out_plain, rule_out_avx512;

extern constinit cpu::Dispatch<MultiplesFn, 2> sieve_multiples;
extern constinit cpu::Dispatch<RuleOutFn, 2> sieve_rule_out;

constexpr std::uint32_t add_mod(std::uint32_t a, std::uint32_t b, std::uint32_t p) noexcept {
    const std::uint32_t sum = a + b;
    return sum < p ? sum : sum - p;
}

// How many primes of the table are below the length of the window: these may rule out more than one of its candidates.
inline constexpr std::size_t kShortPrimes = [] {
    std::size_t count = 0;
    while (kTable[count] < kSieveWindow) ++count;
    return count;
}();

}  // namespace morvane::prime
