// EN_PrimeInit and EN_PrimeUpdate: a search described by a record, with a test of its own.
#include "bignum/record.h"
#include "platform/platform.h"
#include "prime/candidates.h"

#include <morvane/prime.h>
#include <morvane/random.h>

#include <cstdio>
#include <cstdlib>

namespace morvane::prime {
namespace {

using namespace bignum;

constexpr int kUpdateRounds = 20;
constexpr std::uint32_t kSeedOffset = 100;

// Fifteen bits, as the run time's generator gives them on Windows.
// NOLINTNEXTLINE(concurrency-mt-unsafe,cert-msc30-c,cert-msc50-cpp): these bases have always come from there
Word draw_15_bits() noexcept { return static_cast<Word>(std::rand()) & 0x7fff; }

// base = words of two draws each, below n and not 0. Bits above the highest of n are dropped: with them, the base would be
// above n and drawn again.
void draw_base(ENUM& base, const ENUM& n) noexcept {
    const std::size_t words = words_in(n);
    const Word mask = ~Word{0} >> std::countl_zero(n.words[words - 1]);
    do {
        for (std::size_t i = 0; i < words; ++i) {
            const Word upper = draw_15_bits();
            base.words[i] = upper << 16 | draw_15_bits();
        }
        base.words[words - 1] &= mask;
        set_normalised_length(base, words);
    } while (base.length == 0 || EN_UComp(&base, &n) >= 0);
}

Verdict update_round(const ENUM& n) noexcept {
    WorkRecord base(words_in(n));
    if (!base) return Verdict::kNoMemory;
    draw_base(*base, n);
    // Programs have always seen this line, and may read it as a sign of progress.
    static_cast<void>(std::printf("\nb=%d\n", static_cast<int>(twos_below(n))));
    return miller_rabin(n, *base);
}

Verdict update_test(const ENUM& p, bool safe) noexcept {
    WorkRecord half(words_in(p));
    if (!half) return Verdict::kNoMemory;
    EN_RShift1(half.get(), &p);
    // NOLINTNEXTLINE(cert-msc32-c,cert-msc51-cpp): see above
    std::srand(platform::seconds() + kSeedOffset);
    Verdict verdict = Verdict::kPrime;
    for (int i = 0; i < kUpdateRounds && verdict == Verdict::kPrime; ++i) {
        verdict = update_round(p);
        if (safe && verdict == Verdict::kPrime) verdict = update_round(*half);
    }
    return verdict;
}

}  // namespace
}  // namespace morvane::prime

using namespace morvane::prime;

EN_PRIME_CONTEXT* EN_PrimeInit(EN_PRIME_CONTEXT* context, const void*, std::int32_t safe, const void* present, ENUM* step,
                               ENUM* remainder) {
    context->flags = present == nullptr ? 0 : EN_PRIME_STEPPED | (safe != 0 ? EN_PRIME_SAFE : 0U);
    if (present == nullptr) return nullptr;
    context->remainder = remainder;
    context->step = step;
    return context;
}

std::int32_t EN_PrimeUpdate(ENUM* p, std::int32_t bits, const EN_PRIME_CONTEXT* context) {
    if (context == nullptr || (context->flags & EN_PRIME_STEPPED) == 0) {
        const PlainCandidates candidates(bits, false, EN_Random);
        return search(*p, candidates, [](const ENUM& x) { return update_test(x, false); });
    }
    const bool safe = (context->flags & EN_PRIME_SAFE) != 0;
    SteppedCandidates candidates(bits, *context->step, context->remainder, safe, EN_Random);
    if (!candidates) return 0;
    return search(*p, candidates, [safe](const ENUM& x) { return update_test(x, safe); });
}
