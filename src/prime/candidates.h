// Numbers that may be prime: random ones, moved on until the sieve has nothing against them.
#pragma once

#include "bignum/work_record.h"
#include "prime/miller_rabin.h"
#include "prime/sieve.h"

#include <morvane/bignum.h>

namespace morvane::prime {

// Odd numbers of exactly so many bits, the two highest set. Those of fewer than 16 bits, which the sieve would rule out as
// primes of its own, are found by trial division and are prime; where there is no prime (or safe prime) like that, it is
// the next one above.
class PlainCandidates {
public:
    PlainCandidates(std::int32_t bits, bool safe, Draw* draw) noexcept : bits_(bits), safe_(safe), draw_(draw) {}

    // Room for a candidate and for what is computed on the way to it.
    std::size_t words() const noexcept;
    std::int32_t bits() const noexcept { return bits_; }
    // False if there is no memory. x is the candidate before or, at first, anything.
    bool next(ENUM& x) const noexcept;

private:
    Sieve sieve_;
    std::int32_t bits_;
    bool safe_;
    Draw* draw_;
};

// Odd numbers, for safe primes those that are 3 modulo 4, of a remainder modulo a step. From a random number of so many
// bits they go up to the remainder and on by the step. Where only divisors of the step could be prime (or safe primes), the
// nearest remainder with others is taken, of two the greater.
class SteppedCandidates {
public:
    // A step of 0 counts as 1. `remainder` may be null: 1, for safe primes 3.
    SteppedCandidates(std::int32_t bits, const ENUM& step, const ENUM* remainder, bool safe, Draw* draw) noexcept;

    explicit operator bool() const noexcept { return ready_; }
    std::size_t words() const noexcept;
    std::int32_t bits() const noexcept { return bits_; }
    bool next(ENUM& x) noexcept;

private:
    bool set_remainder(const ENUM* remainder) noexcept;
    void set_parity() noexcept;

    bignum::WorkRecord step_;       // even, for safe primes a multiple of 4
    bignum::WorkRecord remainder_;  // below it
    Sieve sieve_;
    Draw* draw_;
    std::int32_t bits_;
    bool safe_;
    bool started_ = false;
    bool ready_ = false;
};

// p = the first candidate that is prime by the test. 0 if there is no memory, else 1.
template <typename Candidates, typename Test>
std::int32_t search(ENUM& p, Candidates& candidates, Test is_prime) noexcept {
    bignum::WorkRecord x(candidates.words());
    if (!x) return 0;
    Verdict verdict = Verdict::kComposite;
    while (verdict == Verdict::kComposite) verdict = candidates.next(*x) ? is_prime(*x) : Verdict::kNoMemory;
    if (verdict == Verdict::kNoMemory) return 0;
    EN_Copy(&p, x.get());
    return 1;
}

}  // namespace morvane::prime
