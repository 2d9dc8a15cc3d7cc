// The sieve against the plain scan, and the rounds of Miller and Rabin's test with given bases.
#include "bignum/record.h"
#include "prime/miller_rabin.h"
#include "prime/sieve.h"

#include "support/integer.h"

#include <morvane/prime.h>

#include <gtest/gtest.h>
#include <algorithm>

namespace {

using namespace morvane::prime;
using namespace morvane::test;

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
    Random random(40961);
    SCOPED_TRACE("seed 40961");
    for (int i = 0; i < 200; ++i) {
        Bytes bytes = random.bytes(1 + random.below(130));
        bytes.back() |= 1;
        Integer x;
        EN_U8ToENUM(x, bytes.data(), size32(bytes));
        ASSERT_EQ(Sieve().steps_to_candidate(morvane::bignum::magnitude(*x)), scan(x, Integer(2), false)) << x.hex();
        if (i % 4 != 0) continue;
        const Integer step(4 * (1 + random.below(1U << (i % 30))));
        for (const bool safe : {false, true}) {
            ASSERT_EQ(Sieve(morvane::bignum::magnitude(*step), safe).steps_to_candidate(morvane::bignum::magnitude(*x)),
                      scan(x, step, safe))
                << x.hex() << " + " << step.hex() << (safe ? ", safe" : "");
        }
    }
}

TEST(SieveWalk, PassesWhatNoPrimeOfTheTableDivides) {
    Random random(12289);
    SCOPED_TRACE("seed 12289");
    Integer x, step;
    for (Integer* const number : {&x, &step}) EN_U8ToENUM(*number, random.bytes(30).data(), 30);
    step->words[0] &= ~1U;
    x->words[0] |= 1;
    const Sieve sieve(morvane::bignum::magnitude(*step), RuledOut::kZero);
    SieveWalk walk(sieve, morvane::bignum::magnitude(*x));
    for (std::uint32_t count = 0, next = walk.next(); count < 2000; ++count, EN_Add(x, x, step)) {
        const auto divides = [&](std::uint32_t prime) { return EN_ModU32(x, prime) == 0; };
        const bool passed = std::none_of(kTable.begin(), kTable.end(), divides);
        ASSERT_EQ(next == count, passed) << x.hex() << ", step " << count;
        if (passed) next = walk.next();
    }
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
