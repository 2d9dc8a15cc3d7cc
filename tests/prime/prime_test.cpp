// Tests and generators of primes, and the generator named after X9.31, as programs see them.
#include <morvane/hash.h>
#include <morvane/prime.h>

#include "support/integer.h"
#include "support/numbers.h"

#include <gtest/gtest.h>
#include <algorithm>

namespace {

using namespace morvane::test;

constexpr std::uint32_t kTableEnd = 17864;

// Whether each number of 16 bits is prime.
const std::vector<bool> kPrime = [] {
    std::vector<bool> prime(1U << 16, true);
    prime[0] = prime[1] = false;
    for (std::size_t n = 2; n < 256; ++n) {
        for (std::size_t multiple = n * n; prime[n] && multiple < prime.size(); multiple += n) prime[multiple] = false;
    }
    return prime;
}();

// Whether an odd prime of the library's table divides n, but for those that divide `allowed`.
bool has_short_divisor(const Integer& n, std::uint32_t allowed = 1) {
    for (std::uint32_t p = 3; p < kTableEnd; p += 2) {
        if (kPrime[p] && allowed % p != 0 && EN_ModU32(n, p) == 0) return true;
    }
    return false;
}

TEST(Prime, TellsEveryShortNumber) {
    for (std::uint32_t n = 0; n < 19000; ++n) {
        ASSERT_EQ(EN_IsPrime(Integer(n)), kPrime[n] ? 1 : 0) << n;
        ASSERT_EQ(EN_IsStrongPrime(Integer(n)), kPrime[n] && kPrime[n / 2] ? 1 : 0) << n;
    }
    Integer none, long_23(23);  // not normalised
    none->length = 0;
    long_23->length = 3;
    EXPECT_EQ(EN_IsPrime(none), 0);
    EXPECT_EQ(EN_IsStrongX9Prime(long_23), 1);
    EXPECT_EQ(EN_IsStrongX9Prime(Integer(13)), 0);
}

TEST(Prime, TellsLongNumbers) {
    const Integer one(1);
    for (const int exponent : {19, 31, 61, 89, 127, 521, 1279, 3217}) {  // Mersenne's
        EXPECT_EQ(EN_IsPrime((one << exponent) - one), 1) << exponent;
        EXPECT_EQ(EN_IsPrime((one << (exponent + 2)) - one), 0) << exponent;
        EXPECT_EQ(EN_IsPrime(one << exponent), 0) << exponent;
    }
    // The squares of the table's last prime and of the next one, whose neighbours are the last that division alone decides;
    // a Carmichael number.
    for (const std::uint32_t composite : {319086769U, 319730161U, 321197185U}) {
        EXPECT_EQ(EN_IsPrime(Integer(composite)), 0) << composite;
    }
}

TEST(Prime, GeneratesPrimesOfEveryLength) {
    using Generator = std::int32_t (*)(ENUM*, std::int32_t);
    const struct {
        Generator generate;
        bool safe;
        std::int32_t longest;
    } generators[] = {{EN_GeneratePrimeRSA, false, 192},
                      {EN_GeneratePrimeStrongRSA, true, 96},
                      {EN_GenerateX9Prime, false, 64},
                      {EN_GenerateStrongX9Prime, true, 20}};
    for (const auto& [generate, safe, longest] : generators) {
        for (std::int32_t bits = -1; bits <= longest; bits += bits < 40 ? 1 : 13) {
            Number exact(Value(), static_cast<std::size_t>(std::max(bits, 1) + 31) / 32);
            Integer p;
            ASSERT_EQ(generate(exact, bits), 1);
            EN_Copy(p, exact);
            SCOPED_TRACE(std::to_string(bits) + (safe ? " bits, safe: " : " bits: ") + p.hex());
            ASSERT_EQ((safe ? EN_IsStrongPrime : EN_IsPrime)(p), 1);
            const bool is_exception = safe && (bits <= 2 || bits == 4 || bits == 5);
            if (is_exception) {
                EXPECT_EQ(p, Integer(bits <= 2 ? 5U : bits == 4 ? 23U : 47U));
            } else {
                EXPECT_EQ((p >> (std::max(bits, 2) - 2)), Integer(3));
            }
            if (bits < 16) continue;
            EXPECT_FALSE(has_short_divisor(p) || has_short_divisor(p - Integer(1)));
        }
    }
}

TEST(Prime, GeneratesPrimesOfARemainder) {
    constexpr int kNone = -1000;
    const struct {
        std::int32_t bits;
        std::uint32_t step;
        int remainder;
        std::uint32_t plain, safe;  // what the primes leave
    } cases[] = {{64, 12, 11, 11, 11},     {96, 12, 5, 5, 11},  {64, 12, 8, 7, 11},     {96, 12, -1, 11, 11},
                 {64, 12, 23, 11, 11},     {96, 30, 1, 1, 29},  {64, 30, kNone, 1, 29}, {80, 15, 5, 4, 8},
                 {80, 15, 14, 14, 14},     {70, 0, 3, 0, 0},    {70, 2, 0, 1, 1},       {17, 1, 0, 0, 0},
                 {40, 17863, 0, 1, 17862}, {8, 12, 11, 11, 11}, {8, 12, 1, 1, 11},      {0, 4, 1, 1, 3},
                 {5, 1000, 7, 7, 7},       {15, 9, 3, 4, 2},    {3, 66000, 35, 37, 47}, {20, 4, 1, 1, 3}};
    for (const auto& [bits, step, remainder, plain, safe] : cases) {
        Integer asked(static_cast<std::uint32_t>(std::abs(remainder)));
        asked->sign = remainder < 0 ? 1U : 0U;
        const ENUM* const optional = remainder == kNone ? nullptr : static_cast<ENUM*>(asked);
        for (int i = 0; i < 4; ++i) {
            SCOPED_TRACE(std::to_string(bits) + " bits, " + std::to_string(remainder) + " modulo " + std::to_string(step));
            Integer p, q;
            ASSERT_EQ(EN_GeneratePrimeDH(p, bits, Integer(step), optional), 1);
            ASSERT_EQ(EN_GeneratePrimeStrongDH(q, bits, Integer(step), optional), 1);
            ASSERT_EQ(EN_IsPrime(p), 1) << p.hex();
            ASSERT_EQ(EN_IsStrongPrime(q), 1) << q.hex();
            EXPECT_EQ(EN_ModU32(p, std::max(step, 1U)), plain) << p.hex();
            EXPECT_EQ(EN_ModU32(q, std::max(step, 1U)), safe) << q.hex();
            if (bits >= 64) {
                EXPECT_EQ(p.bits(), static_cast<std::uint32_t>(bits));
                EXPECT_EQ(q.bits(), static_cast<std::uint32_t>(bits));
                EXPECT_FALSE(has_short_divisor(p - Integer(1), step) || has_short_divisor((q >> 1) - Integer(1), step));
            }
        }
    }
    // A step as long as the number, and one that leaves few places to start from: the search must move on.
    for (const char* const step : {"c0000000000000000000000000000001", "1000000000001"}) {
        Integer p;
        ASSERT_EQ(EN_GeneratePrimeDH(p, 52, Integer(step), nullptr), 1);
        EXPECT_EQ(EN_IsPrime(p), 1);
        EXPECT_EQ(p % Integer(step), Integer(1));
    }
}

// The numbers that a call printed as exponents.
std::vector<int> printed(const std::string& text) {
    std::vector<int> exponents;
    std::string rest = text;
    rest.erase(std::remove(rest.begin(), rest.end(), '\r'), rest.end());
    while (!rest.empty()) {
        if (rest.substr(0, 3) != "\nb=") throw std::runtime_error(rest);
        std::size_t length = 0;
        exponents.push_back(std::stoi(rest.substr(3), &length));
        rest.erase(0, 3 + length + 1);
    }
    return exponents;
}

TEST(Prime, UpdateSearchesAsInitSaidAndPrints) {
    Integer step(12), remainder(11), p;
    EN_PRIME_CONTEXT context{99, nullptr, nullptr};
    EXPECT_EQ(EN_PrimeInit(&context, nullptr, 1, nullptr, step, remainder), nullptr);
    EXPECT_EQ(context.flags, 0U);
    EXPECT_EQ(context.step, nullptr);
    for (const std::int32_t bits : {2, 64}) {
        testing::internal::CaptureStdout();
        EXPECT_EQ(EN_PrimeUpdate(p, bits, &context), 1);
        const std::vector<int> exponents = printed(testing::internal::GetCapturedStdout());
        EXPECT_EQ(EN_IsPrime(p), 1);
        EXPECT_EQ(p.bits(), static_cast<std::uint32_t>(bits));
        ASSERT_GE(exponents.size(), 20U);
        for (std::size_t i = exponents.size() - 20; i < exponents.size(); ++i) {
            EXPECT_TRUE(EN_ModU32(p - Integer(1), 1U << exponents[i]) == 0 && EN_IsBitSet(p, exponents[i]) == 1);
        }
    }
    for (const int safe : {0, 1}) {
        EXPECT_EQ(EN_PrimeInit(&context, nullptr, safe, &p, step, remainder), &context);
        EXPECT_EQ(context.flags, safe != 0 ? 48U : 32U);
        EXPECT_TRUE(context.remainder == static_cast<ENUM*>(remainder) && context.step == static_cast<ENUM*>(step));
        testing::internal::CaptureStdout();
        EXPECT_EQ(EN_PrimeUpdate(p, 48, &context), 1);
        EXPECT_GE(printed(testing::internal::GetCapturedStdout()).size(), safe != 0 ? 40U : 20U);
        EXPECT_EQ((safe != 0 ? EN_IsStrongPrime : EN_IsPrime)(p), 1);
        EXPECT_EQ(EN_ModU32(p, 12), 11U);
    }
}

TEST(X9_31, ReportsWhatMakesItsOutput) {
    constexpr std::int32_t kRounds = 2000, kLast = 7;
    constexpr std::int32_t kBytes = 20 * (kRounds - 1) + kLast;
    Bytes out(kBytes + 1, 0xa5), xkey(21, 0xa5), xseeds(20 * kRounds + 1, 0xa5), q(21, 0xa5);
    E_X9_31RandomBytes2(out.data(), kBytes, xkey.data(), xseeds.data(), q.data());
    EXPECT_TRUE(out.back() == 0xa5 && xkey.back() == 0xa5 && xseeds.back() == 0xa5 && q.back() == 0xa5);

    Integer key, prime, seed, x;
    EN_U8ToENUM(key, xkey.data(), 20);
    EN_U8ToENUM(prime, q.data(), 20);
    EXPECT_EQ(EN_IsPrime(prime), 1);
    EXPECT_EQ((prime >> 158), Integer(3));
    const Integer modulus = Integer(1) << 160;
    int short_keys = 0;
    Bytes expected;
    for (std::size_t round = 0; round < kRounds; ++round) {
        EN_U8ToENUM(seed, &xseeds[20 * round], 20);
        EXPECT_EQ((seed >> 158), Integer(3));
        Bytes block(64), digest(20), octets(20, round + 1 < kRounds ? 0xa5 : 0);
        EN_ENUMToU8(block.data(), (key + seed) % modulus);
        E_MySHA1(digest.data(), block.data());
        EN_U8ToENUM(x, digest.data(), 20);
        key = (key + x % prime + Integer(1)) % modulus;
        short_keys += EN_ENUMToU8(octets.data(), key) < 20 ? 1 : 0;
        expected.insert(expected.end(), octets.begin(), octets.end());
    }
    expected.resize(kBytes);
    out.pop_back();
    EXPECT_EQ(to_hex(out), to_hex(expected));
    EXPECT_GT(short_keys, 0) << "once in 256 rounds";

    Bytes other(40), third(40);
    E_X9_31RandomBytes(other.data(), 40);
    E_X9_31RandomBytes2(third.data(), 40, nullptr, nullptr, nullptr);
    EXPECT_NE(other, third);
    Integer random;
    EN_X9_31Random(random, 333, 1, 1);
    EXPECT_TRUE((random >> 331) == Integer(3) && EN_IsBitSet(random, 0) == 1);
}

}  // namespace
