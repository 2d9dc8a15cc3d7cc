#include "prime/rounds.h"

#include "bignum/record.h"
#include "bignum/work_record.h"

#include <morvane/random.h>

#include <utility>

namespace morvane::prime {

using namespace bignum;

// Other sources than EN_Random have states of their own, and take so long that drawing ahead does not pay.
Rounds::Rounds(std::size_t words, Draw* draw, bool are_long) noexcept
    : draw_(draw), most_(are_long && draw == EN_Random && has_power_lanes() ? kMost : 1), words_(kNumbers * most_ * words) {
    if (!words_) return;
    for (std::size_t i = 0; i < most_; ++i) {
        Word* const first = words_.get() + kNumbers * i * words;
        trials_[i] = {{0, 0, first}, {0, 0, first + words}, {0, 0, first + 2 * words}};
    }
}

void Rounds::add(const ENUM& n) noexcept {
    Trial& trial = trials_[count_];
    EN_Copy(&trial.n, &n);
    trial.base.length = 0;
    if (!is_even(n)) draw_(&trial.base, static_cast<std::int32_t>(EN_GetFilledBitNum(&n)) - 1, 0, 0);
    if (most_ != 1) random::copy_general_pool(pools_.items[count_]);
    ++count_;
}

bool Rounds::raise_together(bool to_two) noexcept {
    static constexpr Word kTwo[] = {2};
    std::array<Power, kMost> powers;
    std::size_t count = 0;
    for (std::size_t i = 0; i < count_; ++i) {
        auto& [n, base, power] = trials_[i];
        if (base.length == 0) continue;
        EN_RShift(&power, &n, static_cast<std::int32_t>(twos_below(n)));  // of n as of n - 1
        powers[count++] = {to_two ? kTwo : magnitude(base), magnitude(power), magnitude(n), power.words};
    }
    return count == 0 || power_lanes.get()({powers.data(), count});
}

Verdict Rounds::verdict_of(Trial& trial) noexcept {
    if (trial.base.length == 0) return is_small(trial.n, 2) ? Verdict::kPrime : Verdict::kComposite;
    if (count_ == 1) return miller_rabin(trial.n, trial.base);
    set_normalised_length(trial.power, words_in(trial.n));
    return verdict_of_power(trial.power, trial.n);
}

void Rounds::undo_draws_after(std::size_t i) noexcept {
    if (i + 1 < count_) random::restore_general_pool(pools_.items[i], pools_.items[count_ - 1]);
}

bool Rounds::screen() noexcept {
    if (count_ < 2) return true;
    if (!raise_together(true)) return false;
    for (std::size_t i = 0; i < count_; ++i) {
        const Verdict verdict = verdict_of(trials_[i]);
        if (verdict == Verdict::kComposite) continue;
        undo_draws_after(i);
        std::swap(trials_[0], trials_[i]);
        pools_.items[0] = pools_.items[i];
        count_ = 1;
        return verdict == Verdict::kPrime;
    }
    count_ = 0;
    return true;
}

Verdict Rounds::run() noexcept {
    if (count_ > 1 && !raise_together(false)) return Verdict::kNoMemory;
    for (std::size_t i = 0; i < count_; ++i) {
        const Verdict verdict = verdict_of(trials_[i]);
        if (verdict == Verdict::kPrime) continue;
        undo_draws_after(i);
        return verdict;
    }
    return Verdict::kPrime;
}

Verdict run_rounds(Rounds& rounds, const ENUM& n, bool safe) noexcept {
    const std::size_t all = safe ? 2 * kRounds : kRounds;
    const std::size_t alone = safe ? 2 : 1;  // the first ones, at which a composite number fails if it ever does
    WorkRecord half(words_in(n));
    if (!half) return Verdict::kNoMemory;
    EN_RShift1(half.get(), &n);
    if (safe && is_even(*half) && !is_small(*half, 2)) return Verdict::kComposite;
    const bool screened = rounds.count() == 1;
    for (std::size_t drawn = rounds.count(); rounds.count() != 0 || drawn < all; rounds.clear()) {
        while (drawn < all && !rounds.full() && (rounds.count() == 0 || drawn > alone || (screened && drawn == 1))) {
            rounds.add(safe && drawn % 2 != 0 ? *half : n);
            ++drawn;
        }
        const Verdict verdict = rounds.run();
        if (verdict != Verdict::kPrime) return verdict;
    }
    return Verdict::kPrime;
}

Verdict run_rounds(const ENUM& n, bool safe, Draw* draw) noexcept {
    Rounds rounds(words_in(n), draw, EN_GetFilledBitNum(&n) >= kLongBits);
    return rounds ? run_rounds(rounds, n, safe) : Verdict::kNoMemory;
}

}  // namespace morvane::prime
