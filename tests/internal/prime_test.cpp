// The sieve against the plain scan, the rounds of Miller and Rabin's test with given bases, and the primes of a random
// source whose state is known.
#include "bignum/power_lanes.h"
#include "bignum/record.h"
#include "internal/each_row.h"
#include "prime/miller_rabin.h"
#include "prime/sieve_variants.h"
#include "random/pool.h"

#include "support/integer.h"
#include "support/seeded.h"

#include <morvane/prime.h>

#include <morvane/random.h>

#include <gtest/gtest.h>
#include <algorithm>
#include <functional>

namespace {

bool clock_stands = false;

}  // namespace

// The clock, which is stirred into every random number.
extern "C" std::uint32_t __real__ZN7morvane8platform7secondsEv();
extern "C" [[gnu::visibility("default")]] std::uint32_t __wrap__ZN7morvane8platform7secondsEv() {
    return clock_stands ? 1000000000 : __real__ZN7morvane8platform7secondsEv();
}

namespace {

using namespace morvane::prime;
using namespace morvane::test;

// Runs `check` with each row of the sieve's steps.
template <typename Check>
void with_each_sieve(Check check) {
    with_each_row(sieve_multiples, [&](auto*) { check(); });
    with_each_row(sieve_rule_out, [&](auto*) { check(); });
}

// One step on and from the start again, whenever a residue is wrong.
std::uint32_t scan(const Integer& x, const Integer& step, bool safe) {
    std::array<std::uint32_t, kPrimes> residues, steps;
    for (std::size_t i = 0; i < kPrimes; ++i) {
        residues[i] = EN_ModU32(x, kTable[i]);
        steps[i] = EN_ModU32(step, kTable[i]);
    }
    std::uint32_t count = 0;
    for (std::size_t i = 0; i < kPrimes; ++i) {
        const std::uint64_t p = kTable[i], n = (residues[i] + std::uint64_t{count} * steps[i]) % p;
        const std::uint64_t half = (n + p - 1) * ((p + 1) / 2) % p;
        if (steps[i] == 0 || (n > 1 && !(safe && half < 2))) continue;
        ++count;
        i = static_cast<std::size_t>(-1);
    }
    return count;
}

TEST(Sieve, FindsWhatTheScanFinds) {
    Seeded random(40961);
    for (int i = 0; i < 200; ++i) {
        Bytes bytes = random.bytes(1 + random.below(130));
        bytes.back() |= 1;
        Integer x;
        EN_U8ToENUM(x, bytes.data(), size32(bytes));
        const auto expect = [&](const Sieve& sieve, const Integer& step, bool safe) {
            const std::uint32_t expected = scan(x, step, safe);
            with_each_sieve([&] {
                ASSERT_EQ(sieve.steps_to_candidate(morvane::bignum::magnitude(*x)), expected)
                    << x.hex() << " + " << step.hex() << (safe ? ", safe" : "");
            });
        };
        expect(Sieve(), Integer(2), false);
        if (i % 4 != 0) continue;
        const Integer step(4 * (1 + random.below(1U << (i % 30))));
        for (const bool safe : {false, true}) expect(Sieve(morvane::bignum::magnitude(*step), safe), step, safe);
    }
}

TEST(SieveWalk, PassesWhatNoPrimeOfTheTableDivides) {
    Seeded random(12289);
    Integer x, step;
    for (Integer* const number : {&x, &step}) EN_U8ToENUM(*number, random.bytes(30).data(), 30);
    step->words[0] &= ~1U;
    x->words[0] |= 1;
    const Sieve sieve(morvane::bignum::magnitude(*step), RuledOut::kZero);
    with_each_sieve([&] {
        Integer at = x;
        SieveWalk walk(sieve, morvane::bignum::magnitude(*x));
        for (std::uint32_t count = 0, next = walk.next(); count < 2000; ++count, EN_Add(at, at, step)) {
            const auto divides = [&](std::uint32_t prime) { return EN_ModU32(at, prime) == 0; };
            const bool passed = std::none_of(kTable.begin(), kTable.end(), divides);
            ASSERT_EQ(next == count, passed) << at.hex() << ", step " << count;
            if (passed) next = walk.next();
        }
    });
}

// What a known source comes to: a prime's lowest word, and what the source gives next. The values are those of one round
// after the other, each with its base drawn when it begins.
TEST(Rounds, LeaveTheSourceAsOneAfterTheOtherDoes) {
    struct Pinned {
        std::uint32_t lowest_word, next_random;
    };
    constexpr Pinned kPinned[] = {{0xc854dd2b, 0x120d3025}, {0x095a05cb, 0x43e2a6a5}, {0xf5f6486f, 0x7338804a},
                                  {0x982bb889, 0x365f55f7}, {0x33ca8de5, 0xd940cb46}, {0xefb66b11, 0xf30fe1ac},
                                  {0x39726f73, 0x8f55f8b0}, {0x0000004d, 0x25797e5d}, {0x4cfcaf21, 0xed1b0b50},
                                  {0x4cfcaf21, 0xdd954402}, {0x00000d8b, 0x6c0573a6}, {0x00000d8b, 0xdc7da5c3}};
    const Integer step(1000004), rest(77), long_step = Integer(12) << 180;
    Integer p;
    const std::function<std::int32_t()> calls[] = {
        [&] { return EN_GeneratePrimeRSA(p, 512); },
        [&] { return EN_GeneratePrimeRSA(p, 1057); },
        [&] { return EN_GeneratePrimeStrongRSA(p, 160); },
        [&] { return EN_GeneratePrimeRSA(p, 96); },
        [&] { return EN_GeneratePrimeRSA(p, 30); },
        [&] { return EN_GeneratePrimeDH(p, 128, step, rest); },
        [&] { return EN_GeneratePrimeStrongDH(p, 130, Integer(12), Integer(11)); },
        [&] { return EN_GeneratePrimeDH(p, 192, long_step, rest); },
        [&] { return EN_GenerateX9Prime(p, 64); },
        [&] { return EN_IsPrime(p); },
        [&] { return EN_GeneratePrimeStrongRSA(p, 12); },
        [&] { return EN_IsStrongPrime(p); }};
    morvane::random::Pool original, latest, known{};
    known.was_drawn = true;
    known.seed(Bytes(88).data(), 88);
    known.seed(from_hex("00ca9a3b").data(), 4);
    morvane::random::copy_general_pool(original);
    latest = original;
    clock_stands = true;
    with_each_row(morvane::bignum::power_lanes, [&](auto*) {
        morvane::random::restore_general_pool(known, latest);
        Bytes octets(1000);
        RAND_Bytes(octets.data(), 1);
        for (std::size_t i = 0; i < octets.size(); ++i) octets[i] = static_cast<std::uint8_t>(7 * i);
        RAND_Seed(octets.data(), 1000);
        for (std::size_t i = 0; i < std::size(calls); ++i) {
            ASSERT_EQ(calls[i](), 1) << i;
            Pinned is{p->words[0], 0};
            RAND_Bytes(reinterpret_cast<std::uint8_t*>(&is.next_random), 4);
            EXPECT_EQ(is.lowest_word, kPinned[i].lowest_word) << i;
            EXPECT_EQ(is.next_random, kPinned[i].next_random) << i;
        }
        morvane::random::copy_general_pool(latest);
    });
    clock_stands = false;
    morvane::random::restore_general_pool(original, latest);
}

bool passes(const Integer& n, std::uint32_t base) { return miller_rabin(*n, *Integer(base)) == Verdict::kPrime; }

TEST(MillerRabin, MeetsPublishedPseudoprimes) {
    // F. Arnault, Constructing Carmichael numbers which are strong pseudoprimes to several bases, 1995: 397 digits, a
    // strong pseudoprime to all prime bases below 307.
    const Integer one(1);
    const Integer p1(
        "2acf5bff060d5cb98a808aef25df948beef3f7c06c5c5c9efed1e53d19363db74537f89d3cadcc9be464335664ed21d0b6dbc736e0e23");
    const Integer arnault = p1 * (Integer(313) * (p1 - one) + one) * (Integer(353) * (p1 - one) + one);
    // The least strong pseudoprimes to the first bases, and the first that tells: OEIS A014233.
    const struct {
        Integer n;
        std::uint32_t witness;
    } cases[] = {{2047U, 3},
                 {1373653U, 5},
                 {25326001U, 7},
                 {3215031751U, 11},
                 {"1f51f3fee3b", 13},
                 {"32907381cdf", 17},
                 {"136a352b2c8c1", 23},
                 {"351591274f9af9fb", 37},
                 {"437ae92817f9fc85b7e5", 41},
                 {"2be6951adc5b22410a5fd", 43},
                 {arnault, 307}};
    for (const auto& [n, witness] : cases) {
        EXPECT_TRUE(passes(n, 2));
        for (std::size_t i = 0; kTable[i] < witness; ++i) EXPECT_TRUE(passes(n, kTable[i])) << kTable[i];
        EXPECT_FALSE(passes(n, witness)) << n.hex();
    }
    // Random bases tell it: a quarter of them do not.
    int taken_for_prime = 0;
    for (int i = 0; i < 20; ++i) taken_for_prime += EN_IsPrime(arnault);
    EXPECT_LE(taken_for_prime, 2);
}

TEST(MillerRabin, SquaresAsOftenAsTwoDividesNMinus1) {
    const Integer one(1);
    const Integer prime = (Integer(5) << 127) + one;
    for (std::uint32_t base = 1; base < 40; ++base) EXPECT_TRUE(passes(prime, base)) << base;
    for (const int exponent :
         {32, 64, 128, 1024}) {  // Fermat's composite numbers pass with 2, where n - 1 comes late or not
        EXPECT_TRUE(passes((one << exponent) + one, 2));
        EXPECT_FALSE(passes((one << exponent) + one, 3));
    }
    EXPECT_EQ(twos_below(*prime), 127U);
    EXPECT_TRUE(passes(2, 1) && passes(3, 1) && passes(3, 2));
    EXPECT_FALSE(passes(0U, 1) || passes(1, 1) || passes(4, 1) || passes(prime - one, 1));
}

}  // namespace
