// The tests and generators of primes that programs see.
#include "prime/candidates.h"
#include "prime/rounds.h"

#include <morvane/prime.h>
#include <morvane/random.h>

using namespace morvane::prime;

namespace {

// Whether n / 2 is odd or 2, without which n is no safe prime.
bool has_odd_half(const ENUM& n) noexcept { return (n.words[0] & 2) != 0 || is_small(n, 5); }

// p = the first candidate that passes all rounds. 0 if there is no memory, else 1.
template <typename Candidates>
std::int32_t generate(ENUM& p, Candidates& candidates, bool safe, Draw* draw) noexcept {
    morvane::bignum::WorkRecord x(candidates.words());
    Rounds rounds(candidates.words(), draw, candidates.bits() >= static_cast<std::int32_t>(kLongBits));
    if (!x || !rounds) return 0;
    Verdict verdict = Verdict::kComposite;
    while (verdict == Verdict::kComposite) {
        rounds.clear();
        do {
            if (!candidates.next(*x)) return 0;
            if (!safe || has_odd_half(*x)) rounds.add(*x);
        } while (!rounds.full());
        if (!rounds.screen()) return 0;
        if (rounds.count() == 0) continue;
        EN_Copy(x.get(), &rounds.number(0));
        verdict = run_rounds(rounds, *x, safe);
    }
    if (verdict == Verdict::kNoMemory) return 0;
    EN_Copy(&p, x.get());
    return 1;
}

std::int32_t generate(ENUM* p, std::int32_t bits, bool safe, Draw* draw) noexcept {
    const PlainCandidates candidates(bits, safe, draw);
    return generate(*p, candidates, safe, draw);
}

std::int32_t generate(ENUM* p, std::int32_t bits, const ENUM* step, const ENUM* remainder, bool safe) noexcept {
    SteppedCandidates candidates(bits, *step, remainder, safe, EN_Random);
    return candidates ? generate(*p, candidates, safe, EN_Random) : 0;
}

std::int32_t is_prime(const ENUM* n, bool safe, Draw* draw) noexcept {
    return test(*n, safe, draw) == Verdict::kPrime ? 1 : 0;
}

}  // namespace

std::int32_t EN_IsPrime(const ENUM* n) { return is_prime(n, false, EN_Random); }

std::int32_t EN_IsStrongPrime(const ENUM* p) { return is_prime(p, true, EN_Random); }

std::int32_t EN_IsStrongX9Prime(const ENUM* p) { return is_prime(p, true, EN_X9_31Random); }

std::int32_t EN_GeneratePrimeRSA(ENUM* p, std::int32_t bits) { return generate(p, bits, false, EN_Random); }

std::int32_t EN_GeneratePrimeStrongRSA(ENUM* p, std::int32_t bits) { return generate(p, bits, true, EN_Random); }

std::int32_t EN_GenerateX9Prime(ENUM* p, std::int32_t bits) { return generate(p, bits, false, EN_X9_31Random); }

std::int32_t EN_GenerateStrongX9Prime(ENUM* p, std::int32_t bits) { return generate(p, bits, true, EN_X9_31Random); }

std::int32_t EN_GeneratePrimeDH(ENUM* p, std::int32_t bits, const ENUM* step, const ENUM* remainder) {
    return generate(p, bits, step, remainder, false);
}

std::int32_t EN_GeneratePrimeStrongDH(ENUM* p, std::int32_t bits, const ENUM* step, const ENUM* remainder) {
    return generate(p, bits, step, remainder, true);
}
