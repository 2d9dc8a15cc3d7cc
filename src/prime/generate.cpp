// The tests and generators of primes that programs see.
#include "prime/candidates.h"

#include <morvane/prime.h>
#include <morvane/random.h>

using namespace morvane::prime;

namespace {

Verdict rounds(const ENUM& n, bool safe, Draw* draw) noexcept {
    return safe ? miller_rabin_safe(n, draw, kRounds) : miller_rabin(n, draw, kRounds);
}

std::int32_t generate(ENUM* p, std::int32_t bits, bool safe, Draw* draw) noexcept {
    const PlainCandidates candidates(bits, safe, draw);
    return search(*p, candidates, [=](const ENUM& x) { return rounds(x, safe, draw); });
}

std::int32_t generate(ENUM* p, std::int32_t bits, const ENUM* step, const ENUM* remainder, bool safe) noexcept {
    SteppedCandidates candidates(bits, *step, remainder, safe, EN_Random);
    if (!candidates) return 0;
    return search(*p, candidates, [=](const ENUM& x) { return rounds(x, safe, EN_Random); });
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
