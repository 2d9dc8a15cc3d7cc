#include "prime/miller_rabin.h"

#include "bignum/power.h"
#include "bignum/record.h"
#include "bignum/work_record.h"
#include "prime/residues.h"
#include "prime/rounds.h"

#include <algorithm>

namespace morvane::prime {
namespace {

using namespace bignum;

enum class Trial { kComposite, kOpen, kPrime };  // of two numbers, the least is that of both

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

Verdict verdict_of_power(ENUM& x, const ENUM& n) noexcept {
    if (is_small(x, 1)) return Verdict::kPrime;
    WorkRecord n_minus_1(words_in(n));
    if (!n_minus_1) return Verdict::kNoMemory;
    EN_SubU32(n_minus_1.get(), &n, 1);
    const std::size_t twos = twos_below(n);
    for (std::size_t i = 1; EN_UComp(&x, n_minus_1.get()) != 0; ++i) {
        if (i == twos) return Verdict::kComposite;
        if (EN_Mod_Sqr(&x, &x, &n) == 0) return Verdict::kNoMemory;
    }
    return Verdict::kPrime;
}

Verdict miller_rabin(const ENUM& n, const ENUM& base) noexcept {
    if (is_even(n) || is_small(n, 1)) return is_small(n, 2) ? Verdict::kPrime : Verdict::kComposite;
    const std::size_t words = words_in(n);
    WorkRecord x(words);  // first the exponent: the bits above the lowest ones are those of n
    if (!x) return Verdict::kNoMemory;
    EN_RShift(x.get(), &n, static_cast<std::int32_t>(twos_below(n)));
    if (!power_mod({magnitude(base), magnitude(*x), magnitude(n), x->words, true})) return Verdict::kNoMemory;
    set_normalised_length(*x, words);
    return verdict_of_power(*x, n);
}

Verdict test(const ENUM& n, bool safe, Draw* draw) noexcept {
    const ENUM value{0, static_cast<std::int32_t>(significant_words(n)), n.words};
    WorkRecord half(words_in(value));
    if (!half) return Verdict::kNoMemory;
    Trial trial = divide_by_table(value);
    if (safe && trial != Trial::kComposite) {
        EN_RShift1(half.get(), &value);
        trial = std::min(trial, divide_by_table(*half));
    }
    if (trial != Trial::kOpen) return trial == Trial::kPrime ? Verdict::kPrime : Verdict::kComposite;
    return run_rounds(value, safe, draw);
}

}  // namespace morvane::prime
