// Rounds of Miller and Rabin's test that run together, although their bases are drawn one after the other.
//
// Where several powers cost little more than one, rounds draw ahead. What they find is what one round after the other
// finds, and the random source is left as that leaves it: when a round's verdict changes what is to be drawn next, the
// source goes back to where it was after that round's base.
#pragma once

#include "base/wipe.h"
#include "bignum/power_lanes.h"
#include "bignum/work.h"
#include "prime/miller_rabin.h"
#include "random/pool.h"

#include <array>

namespace morvane::prime {

inline constexpr std::uint32_t kLongBits = 96;

class Rounds {
public:
    // For numbers of up to so many words; those of fewer than kLongBits go one at a time.
    Rounds(std::size_t words, Draw* draw, bool are_long) noexcept;

    explicit operator bool() const noexcept { return static_cast<bool>(words_); }
    bool full() const noexcept { return count_ == most_; }
    std::size_t count() const noexcept { return count_; }
    const ENUM& number(std::size_t i) const noexcept { return trials_[i].n; }

    void clear() noexcept { count_ = 0; }

    // Leaves only the first number that may be prime, with its base, or none of them; of more than one, base 2 decides.
    // What was drawn after it will be drawn again. False if there is no memory.
    //
    // A composite number that base 2 tells might have passed with its own base and failed with the next one, which then
    // would have been drawn. But a random base passes a random composite number of b bits by less than one chance in
    // 2^(b / 3): nobody will see it.
    bool screen() noexcept;

    // One more, unless full: copies n and draws a base of one bit less. Even numbers and 1 have none.
    void add(const ENUM& n) noexcept;

    // kPrime if no round tells a composite number, or else what the first one says that is not kPrime. What was drawn after
    // it will be drawn again.
    Verdict run() noexcept;

private:
    static constexpr std::size_t kMost = bignum::kLanePowers;
    static constexpr std::size_t kNumbers = 3;  // to a trial
    static constexpr std::size_t kFrameWords = 34;

    struct Trial {
        ENUM n;
        ENUM base;   // 0: none
        ENUM power;  // base^(the odd part of n - 1), or first this exponent
    };

    bool raise_together(bool to_two) noexcept;
    Verdict verdict_of(Trial& trial) noexcept;
    void undo_draws_after(std::size_t i) noexcept;

    Draw* draw_;
    std::size_t most_;
    std::size_t count_ = 0;
    bignum::Work<bignum::Word, kNumbers * kMost * kFrameWords> words_;
    std::array<Trial, kMost> trials_;
    SecretArray<random::Pool, kMost> pools_;  // as they were after each base
};

// kRounds rounds of n, or for a safe prime of n and n / 2 in turn, of which only 2 may be even. `rounds` holds the first
// one or none.
Verdict run_rounds(Rounds& rounds, const ENUM& n, bool safe) noexcept;
Verdict run_rounds(const ENUM& n, bool safe, Draw* draw) noexcept;

}  // namespace morvane::prime
