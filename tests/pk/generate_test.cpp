// Keys of every kind: what their members have to do with each other, and what is refused.
#include <morvane/pk.h>
#include <morvane/prime.h>

#include "support/integer.h"

#include <gtest/gtest.h>
#include <array>
#include <cstring>

namespace {

using namespace morvane::test;

const Integer kOne(1);

struct Key : E_RSA_KEY {
    Key() : E_RSA_KEY{} { E_RSA_Init(this); }
};

Integer value(const ENUM& x) { return Integer(x); }

void expect_private_members(const Key& key) {
    const Integer d = value(key.d), p = value(key.p), q = value(key.q);
    const bool even = key.e.words[0] % 2 == 0;
    const Integer product = d * value(key.e);
    Integer multiple;
    EN_LCM(multiple, p - kOne, q - kOne);
    for (const Integer& prime : {p, q}) EXPECT_EQ(product % ((prime - kOne) >> (even ? 1 : 0)), kOne);
    EXPECT_LT(EN_UComp(d, multiple >> (even ? 1 : 0)), 0);
    EXPECT_EQ(value(key.dP), d % (p - kOne));
    EXPECT_EQ(value(key.dQ), d % (q - kOne));
    EXPECT_EQ(value(key.q) * value(key.qInv) % p, kOne);
    EXPECT_LT(EN_UComp(&key.qInv, p), 0);
}

void expect_key(const Key& key, std::uint32_t e) {
    const Integer p = value(key.p), q = value(key.q);
    SCOPED_TRACE(p.hex() + " * " + q.hex() + ", e " + std::to_string(e));
    EXPECT_EQ(value(key.e), Integer(e));
    EXPECT_EQ(value(key.n), p * q);
    EXPECT_GT(EN_UComp(p, q), 0);
    EXPECT_TRUE(EN_IsPrime(p) == 1 && EN_IsPrime(q) == 1);
    expect_private_members(key);
}

void expect_lengths(const Key& key, int bits) {
    EXPECT_EQ(value(key.n).bits(), static_cast<std::uint32_t>(bits));
    EXPECT_EQ(value(key.p).bits(), static_cast<std::uint32_t>(bits - bits / 2));
    EXPECT_EQ(value(key.q).bits(), static_cast<std::uint32_t>(bits / 2));
}

struct Request {
    std::int32_t bits;
    std::uint32_t e;
};

// 2^32 - 1 is 3 5 17 257 65537, the other one is what excludes most short primes.
constexpr std::uint32_t kOddExponents[] = {3, 17, 65537, 4294967295, 3234846615};

TEST(RsaGenerate, PlainAndStrongKeys) {
    Key key;  // one for all: longer members before shorter ones
    for (const int bits : {1024, 513, 512, 65, 64, 37, 36, 35, 34, 33, 32}) {
        for (const std::uint32_t e : kOddExponents) {
            for (const bool strong : {false, true}) {
                if (strong && bits > 65) continue;
                (strong ? E_RSA_GenerateStrongKey : E_RSA_GenerateKey)(&key, bits, e);
                expect_key(key, e);
                expect_lengths(key, bits);
                EXPECT_TRUE(!strong || (EN_IsStrongPrime(&key.p) == 1 && EN_IsStrongPrime(&key.q) == 1));
            }
        }
    }
}

struct Auxiliary {
    std::array<std::array<std::uint8_t, 13>, 4> octets{};  // of p1, p2, q1, q2
    Integer operator[](std::size_t i) const {
        Integer prime;
        EN_U8ToENUM(prime, octets[i].data(), 13);
        return prime;
    }
};

std::int32_t generate(bool strong, Key& key, std::int32_t bits, std::uint32_t e, Auxiliary& auxiliary) {
    auto& [p1, p2, q1, q2] = auxiliary.octets;
    return (strong ? E_RSA_GenerateStrongX9Key : E_RSA_GenerateX9Key)(&key, bits, e, p1.data(), p2.data(), q1.data(),
                                                                      q2.data());
}

void expect_x9(bool strong, const Key& key, const Auxiliary& auxiliary) {
    const Integer primes[] = {value(key.p), value(key.q)};
    for (std::size_t i = 0; i < 4; ++i) {
        const Integer& prime = primes[i / 2];
        EXPECT_EQ((i % 2 == 0 ? prime - kOne : prime + kOne) % auxiliary[i], Integer()) << i;
        EXPECT_EQ(auxiliary[i].bits(), 101U);
        EXPECT_EQ(strong ? EN_IsStrongPrime(auxiliary[i]) : EN_IsPrime(auxiliary[i]), 1) << i;
    }
    if (key.e.words[0] % 2 == 0) {
        EXPECT_EQ((key.p.words[0] & 7) + (key.q.words[0] & 7), 3U + 7U);
    }
}

constexpr Request kX9Requests[] = {{1024, 3},         {513, 65537}, {513, 4294967295}, {512, 2}, {513, 6},
                                   {512, 4294967290}, {419, 3},     {333, 2},          {200, 3}, {200, 2}};

TEST(RsaGenerate, X9Keys) {
    Key key;
    // Below some 420 bits the primes come out longer.
    for (const auto [bits, e] : kX9Requests) {
        for (const bool strong : {false, true}) {
            if (strong && bits == 513) continue;  // safe auxiliary primes take long
            Auxiliary auxiliary;
            testing::internal::CaptureStdout();
            const std::int32_t result = generate(strong, key, bits, e, auxiliary);
            const std::string printed = testing::internal::GetCapturedStdout();
            expect_key(key, e);
            if (bits > 500) expect_lengths(key, bits);
            expect_x9(strong, key, auxiliary);
            Integer divisor;
            EN_GCD(divisor, value(key.p) - kOne, value(key.q) - kOne);
            const std::string last = "len = " + std::to_string(divisor->length) + "\n";
            EXPECT_EQ(printed, strong ? "" : "p1 OK\np2 OK\nq1 OK\nq2 OK\n" + last);
            EXPECT_EQ(result, strong ? 13 : static_cast<std::int32_t>(last.size()));
        }
    }
}

constexpr Request kRefused[] = {{31, 3},        {4801, 3}, {0, 3},   {-512, 3}, {INT32_MIN, 3},
                                {INT32_MAX, 3}, {512, 0},  {512, 1}, {512, 2},  {512, 65536}};

TEST(RsaGenerate, LeavesTheRecordAloneWhereThereIsNoKey) {
    Key key, before;
    E_RSA_GenerateKey(&key, 256, 3);
    std::memcpy(&before, &key, sizeof key);
    const auto is_untouched = [&] { return std::memcmp(&before, &key, sizeof key) == 0; };
    for (const auto [bits, e] : kRefused) {
        E_RSA_GenerateKey(&key, bits, e);
        E_RSA_GenerateStrongKey(&key, bits, e);
        EXPECT_TRUE(is_untouched()) << bits << " bits, e " << e;
    }
    testing::internal::CaptureStdout();
    for (const auto [bits, e] : {Request{199, 3}, {4801, 3}, {-512, 2}, {INT32_MAX, 3}, {512, 0}, {512, 1}}) {
        for (const bool strong : {false, true}) {
            Auxiliary auxiliary;
            EXPECT_EQ(generate(strong, key, bits, e, auxiliary), 0);
            EXPECT_TRUE(is_untouched() && auxiliary.octets == Auxiliary().octets) << bits << " bits, e " << e;
        }
    }
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

void set(ENUM& member, std::uint32_t word) { EN_U32ToENUM(&member, word); }

constexpr std::uint32_t kWithoutMembers[][3] = {{61, 53, 2}, {61, 53, 15}, {61, 61, 17}, {1, 53, 1},   {53, 1, 1},
                                                {0, 53, 17}, {53, 0, 17},  {61, 53, 0},  {15, 21, 11}, {3, 2, 2}};

TEST(RsaGenerate, MembersFromThePrimes) {
    Key key;
    for (const auto& [p, q, e] : {std::array{61U, 53U, 17U}, {53, 61, 17}, {59, 47, 6}, {7, 3, 1}}) {
        set(key.p, p);
        set(key.q, q);
        set(key.e, e);
        key.p.length = 70;  // zero words at the top
        set(key.n, 12345);
        E_RSA_GenerateD(&key);
        key.p.length = 1;
        EXPECT_EQ(value(key.n), Integer(12345));
        expect_private_members(key);
    }
    for (const auto& [p, q, e] : kWithoutMembers) {
        set(key.p, p);
        set(key.q, q);
        set(key.e, e);
        for (const std::int32_t length : {1, -1, 76}) {
            if (length != 1) set(key.e, 7);
            key.q.length = length;
            Key before;
            std::memcpy(&before, &key, sizeof key);
            E_RSA_GenerateD(&key);
            EXPECT_EQ(std::memcmp(&before, &key, sizeof key), 0) << p << ", " << q << ", " << e << ", length " << length;
        }
    }
}

}  // namespace
