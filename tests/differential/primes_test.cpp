// Primes and numbers of all kinds, against GMP.
#include <morvane/prime.h>

#include "support/integer.h"

#include <gmpxx.h>
#include <gtest/gtest.h>

namespace {

using namespace morvane::test;

mpz_class to_gmp(const Integer& x) { return mpz_class(x.hex().empty() ? "0" : x.hex(), 16); }
Integer from_gmp(const mpz_class& x) { return Integer(x.get_str(16).c_str()); }
int is_prime(const mpz_class& x) { return mpz_probab_prime_p(x.get_mpz_t(), 25) != 0 ? 1 : 0; }

TEST(Primes, EqualGmpsAnswers) {
    Random random(55217);
    SCOPED_TRACE("seed 55217");
    for (int i = 0; i < 4000; ++i) {
        Bytes bytes = random.bytes(1 + random.below(i % 20 == 0 ? 100 : 12));
        Integer x;
        EN_U8ToENUM(x, bytes.data(), size32(bytes));
        mpz_class n = to_gmp(x);
        if (i % 4 == 1) mpz_nextprime(n.get_mpz_t(), n.get_mpz_t());
        if (i % 8 == 5) n *= 17881 + 10 * random.below(100000);
        ASSERT_EQ(EN_IsPrime(from_gmp(n)), is_prime(n)) << n.get_str(16);
        ASSERT_EQ(EN_IsStrongPrime(from_gmp(n)), is_prime(n) != 0 && is_prime(n / 2) != 0 ? 1 : 0) << n.get_str(16);
    }
}

TEST(Primes, AreGmpsPrimes) {
    Integer p;
    for (std::int32_t bits = 16; bits <= 700; bits += 6) {
        EN_GeneratePrimeRSA(p, bits);
        EXPECT_EQ(is_prime(to_gmp(p)), 1) << p.hex();
        EN_GeneratePrimeDH(p, bits, Integer(1000003), Integer(77));
        EXPECT_TRUE(is_prime(to_gmp(p)) == 1 && to_gmp(p) % 1000003 == 77) << p.hex();
        if (bits > 300) continue;
        EN_GeneratePrimeStrongRSA(p, bits);
        EXPECT_TRUE(is_prime(to_gmp(p)) == 1 && is_prime(to_gmp(p) / 2) == 1) << p.hex();
    }
}

}  // namespace
