#include "prime/candidates.h"

#include "bignum/record.h"

#include <algorithm>

namespace morvane::prime {
namespace {

using namespace bignum;

constexpr std::int32_t kSievedBits = 16;
constexpr Word kShortStep = 1U << 16;

// A step shorter than the numbers by fewer bits leaves too few places to start from: all candidates might be composite.
constexpr std::uint32_t kStartBits = 16;

std::size_t words_for(std::int32_t bits) noexcept { return (static_cast<std::size_t>(std::max(bits, 0)) + 31) / 32; }

struct Progression {
    Word step;
    Word remainder;
};

// The next prime (or safe prime) of the progression from a random number on that has at most `bits` bits; if there is
// none, the least with the highest bits set, or above.
bool find_short(ENUM& x, std::int32_t bits, bool top, Progression progression, bool safe, Draw* draw) noexcept {
    bits = std::max(bits, 2);
    draw(&x, bits, top ? 1 : 0, 1);
    const Word lowest = (top ? 3U : 2U) << (bits - 2);
    for (const Word start : {x.words[0], lowest}) {
        Word n = start - start % progression.step + progression.remainder;
        if (n < lowest) n += progression.step;
        for (; start == lowest || n < 1U << bits; n += progression.step) {
            EN_U32ToENUM(&x, n);
            const Verdict verdict = test(x, safe, draw);
            if (verdict != Verdict::kComposite) return verdict == Verdict::kPrime;
        }
    }
    return false;
}

// Whether there are primes (or safe primes) of this remainder that do not divide the step.
class Allowed {
public:
    Allowed(const ENUM& step, bool safe) noexcept
        : step_(step), safe_(safe), odd_step_(words_in(step)), below_(words_in(step) + 1), divisor_(words_in(step) + 1) {
        if (!*this) return;
        EN_Copy(odd_step_.get(), &step);
        while ((odd_step_->words[0] & 1) == 0) EN_RShift1(odd_step_.get(), odd_step_.get());
    }
    explicit operator bool() const noexcept { return odd_step_ && below_ && divisor_; }

    // kComposite: there are none.
    Verdict operator()(const ENUM& remainder) noexcept {
        const Verdict verdict = coprime(remainder, step_);
        if (!safe_ || verdict != Verdict::kPrime) return verdict;
        // The half of a safe prime is odd, and (remainder - 1) / 2 has no divisor of the step.
        if (step_.words[0] % 4 == 0 && remainder.words[0] % 4 != 3) return Verdict::kComposite;
        EN_SubU32(below_.get(), &remainder, 1);
        return coprime(*below_, *odd_step_);
    }

private:
    Verdict coprime(const ENUM& a, const ENUM& b) noexcept {
        divisor_->length = 0;
        EN_GCD(divisor_.get(), &a, &b);
        if (divisor_->length == 0) return Verdict::kNoMemory;
        return divisor_->length == 1 && divisor_->words[0] == 1 ? Verdict::kPrime : Verdict::kComposite;
    }

    const ENUM& step_;
    bool safe_;
    WorkRecord odd_step_;
    WorkRecord below_;
    WorkRecord divisor_;
};

}  // namespace

std::size_t PlainCandidates::words() const noexcept { return words_for(bits_) + 1; }

bool PlainCandidates::next(ENUM& x) const noexcept {
    if (bits_ < kSievedBits) return find_short(x, bits_, true, {.step = 2, .remainder = 1}, safe_, draw_);
    do {
        draw_(&x, bits_, 1, 1);
        EN_AddU32(&x, &x, 2 * sieve_.steps_to_candidate(magnitude(x)));
    } while (EN_GetFilledBitNum(&x) != static_cast<std::uint32_t>(bits_));
    return true;
}

SteppedCandidates::SteppedCandidates(std::int32_t bits, const ENUM& step, const ENUM* remainder, bool safe,
                                     Draw* draw) noexcept
    : step_(words_in(step) + 1), remainder_(words_in(step) + 1), draw_(draw), bits_(bits), safe_(safe) {
    if (!step_ || !remainder_) return;
    set(*step_, 0, magnitude(step).first(significant_words(step)));
    if (step_->length == 0) EN_U32ToENUM(step_.get(), 1);
    if (!set_remainder(remainder)) return;
    set_parity();
    sieve_ = Sieve(magnitude(*step_), safe);
    ready_ = true;
}

bool SteppedCandidates::set_remainder(const ENUM* remainder) noexcept {
    WorkRecord distance(1);
    WorkRecord up(words_in(*step_) + 1);
    WorkRecord down(words_in(*step_) + 1);
    Allowed allowed(*step_, safe_);
    if (!distance || !up || !down || !allowed) return false;
    EN_U32ToENUM(distance.get(), safe_ ? 3 : 1);
    if (EN_Mod(remainder_.get(), remainder != nullptr ? remainder : distance.get(), step_.get()) == 0) return false;
    if (remainder_->sign != 0) EN_Add(remainder_.get(), remainder_.get(), step_.get());

    for (Word i = 0;; ++i) {
        EN_U32ToENUM(distance.get(), i);
        EN_Add(up.get(), remainder_.get(), distance.get());
        EN_Add(down.get(), remainder_.get(), step_.get());
        EN_Sub(down.get(), down.get(), distance.get());
        for (WorkRecord* const near : {&up, &down}) {
            const Verdict verdict = allowed(**near);
            if (verdict == Verdict::kNoMemory) return false;
            if (verdict == Verdict::kPrime) return EN_Mod(remainder_.get(), near->get(), step_.get()) != 0;
        }
    }
}

// The remainders of odd numbers, or of numbers that are 3 modulo 4.
void SteppedCandidates::set_parity() noexcept {
    const Word ones = safe_ ? 3 : 1;
    while (remainder_->length == 0 || (remainder_->words[0] & ones) != ones) {
        EN_Add(remainder_.get(), remainder_.get(), step_.get());
    }
    while ((step_->words[0] & ones) != 0) EN_LShift1(step_.get(), step_.get());
}

std::size_t SteppedCandidates::words() const noexcept { return std::max(words_for(bits_), words_in(*step_)) + 1; }

bool SteppedCandidates::next(ENUM& x) noexcept {
    if (bits_ < kSievedBits && step_->length == 1 && step_->words[0] < kShortStep) {
        return find_short(x, bits_, false, {.step = step_->words[0], .remainder = remainder_->words[0]}, safe_, draw_);
    }
    WorkRecord count(1);
    WorkRecord distance(std::max(words_for(bits_), words_in(*step_) + 1));
    if (!count || !distance) return false;
    if (started_ && EN_GetFilledBitNum(step_.get()) + kStartBits > static_cast<std::uint32_t>(std::max(bits_, 0))) {
        EN_Add(&x, &x, step_.get());
    } else {
        draw_(&x, bits_, 0, 1);
        if (EN_Mod(distance.get(), &x, step_.get()) == 0) return false;
        EN_Sub(&x, &x, distance.get());
        EN_Add(&x, &x, remainder_.get());
        started_ = true;
    }
    const std::uint32_t steps = sieve_.steps_to_candidate(magnitude(x));
    if (steps != 0) {
        EN_U32ToENUM(count.get(), steps);
        EN_Mul(distance.get(), step_.get(), count.get());
        EN_Add(&x, &x, distance.get());
    }
    return true;
}

}  // namespace morvane::prime
