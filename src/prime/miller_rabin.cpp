#include "prime/miller_rabin.h"

#include "bignum/power.h"
#include "bignum/record.h"
#include "bignum/work_record.h"
#include "prime/residues.h"

namespace morvane::prime {
namespace {

using namespace bignum;

bool is_small(const ENUM& n, Word value) noexcept { return n.length == 1 && n.words[0] == value; }

bool is_even(const ENUM& n) noexcept { return n.length == 0 || (n.words[0] & 1) == 0; }

// Draws a base and runs a round with it.
Verdict round(const ENUM& n, Draw* draw) noexcept {
    if (is_even(n)) return is_small(n, 2) ? Verdict::kPrime : Verdict::kComposite;
    WorkRecord base(words_in(n));
    if (!base) return Verdict::kNoMemory;
    draw(base.get(), static_cast<std::int32_t>(EN_GetFilledBitNum(&n)) - 1, 0, 0);
    return base->length == 0 ? Verdict::kComposite : miller_rabin(n, *base);  // 1 has no base
}

enum class Trial { kComposite, kPrime, kOpen };

Trial divide_by_table(const ENUM& n) noexcept {
    if (is_even(n)) return is_small(n, 2) ? Trial::kPrime : Trial::kComposite;
    if (is_small(n, 1)) return Trial::kComposite;
    SecretArray<std::uint16_t, kPrimes> residues;
    set_residues(residues.items, magnitude(n));
    for (std::size_t i = 0; i < kPrimes; ++i) {
        if (residues.items[i] == 0) return is_small(n, kTable[i]) ? Trial::kPrime : Trial::kComposite;
    }
    return n.length == 1 && n.words[0] < kTrialLimit ? Trial::kPrime : Trial::kOpen;
}

}  // namespace

std::size_t twos_below(const ENUM& n) noexcept {
    if (is_even(n)) return 0;
    for (std::size_t i = 0; i < words_in(n); ++i) {
        const Word word = i == 0 ? n.words[0] - 1 : n.words[i];
        if (word != 0) return 32 * i + static_cast<std::size_t>(std::countr_zero(word));
    }
    return 0;
}

Verdict miller_rabin(const ENUM& n, const ENUM& base) noexcept {
    if (is_even(n) || is_small(n, 1)) return is_small(n, 2) ? Verdict::kPrime : Verdict::kComposite;
    const std::size_t words = words_in(n);
    WorkRecord n_minus_1(words);
    WorkRecord odd_part(words);
    WorkRecord x(words);
    if (!n_minus_1 || !odd_part || !x) return Verdict::kNoMemory;
    EN_SubU32(n_minus_1.get(), &n, 1);
    const std::size_t twos = twos_below(n);
    EN_RShift(odd_part.get(), n_minus_1.get(), static_cast<std::int32_t>(twos));

    if (!power_mod({magnitude(base), magnitude(*odd_part), magnitude(n), x->words})) return Verdict::kNoMemory;
    set_normalised_length(*x, words);
    if (is_small(*x, 1)) return Verdict::kPrime;
    for (std::size_t i = 1; EN_UComp(x.get(), n_minus_1.get()) != 0; ++i) {
        if (i == twos) return Verdict::kComposite;
        if (EN_Mod_Sqr(x.get(), x.get(), &n) == 0) return Verdict::kNoMemory;
    }
    return Verdict::kPrime;
}

Verdict miller_rabin(const ENUM& n, Draw* draw, int rounds) noexcept {
    Verdict verdict = Verdict::kPrime;
    for (int i = 0; i < rounds && verdict == Verdict::kPrime; ++i) verdict = round(n, draw);
    return verdict;
}

Verdict miller_rabin_safe(const ENUM& n, Draw* draw, int rounds) noexcept {
    WorkRecord half(words_in(n));
    if (!half) return Verdict::kNoMemory;
    EN_RShift1(half.get(), &n);
    if (is_even(*half) && !is_small(*half, 2)) return Verdict::kComposite;  // before the power that n costs
    Verdict verdict = Verdict::kPrime;
    for (int i = 0; i < rounds && verdict == Verdict::kPrime; ++i) {
        verdict = round(n, draw);
        if (verdict == Verdict::kPrime) verdict = round(*half, draw);
    }
    return verdict;
}

Verdict test(const ENUM& n, bool safe, Draw* draw) noexcept {
    const ENUM value{0, static_cast<std::int32_t>(significant_words(n)), n.words};
    WorkRecord half(words_in(value));
    if (!half) return Verdict::kNoMemory;
    const Trial trial = divide_by_table(value);
    if (trial == Trial::kComposite) return Verdict::kComposite;
    if (safe) {
        EN_RShift1(half.get(), &value);
        const Trial trial_of_half = divide_by_table(*half);
        if (trial_of_half == Trial::kComposite) return Verdict::kComposite;
        if (trial == Trial::kOpen || trial_of_half == Trial::kOpen) return miller_rabin_safe(value, draw, kRounds);
    } else if (trial == Trial::kOpen) {
        return miller_rabin(value, draw, kRounds);
    }
    return Verdict::kPrime;
}

}  // namespace morvane::prime
