// Random sources as programs see them.
#include <morvane/csp.h>
#include <morvane/random.h>

#include "support/bytes.h"

#include <gtest/gtest.h>
#include <set>

namespace {

using namespace morvane::test;

Bytes md5(Bytes bytes) {
    const CSSM_CONTEXT context = {CSP_CONTEXT_DIGEST, CSP_ALG_MD5, 0, 0, nullptr};
    CspSession session{};
    session.context_type = context.ContextType;
    session.algorithm = context.AlgorithmType;
    const auto handle = reinterpret_cast<CspHandle>(&session);
    const CSSM_DATA input = {size32(bytes), bytes.data()};
    Bytes digest(16);
    CSSM_DATA output = {16, digest.data()};
    EXPECT_EQ(CSP_DigestDataInit(100, handle, nullptr), 0);
    EXPECT_EQ(CSP_DigestDataUpdate(100, handle, &input, 1), 0);
    EXPECT_EQ(CSP_DigestDataFinal(100, handle, &output), 0);
    return digest;
}

template <typename Source>
Bytes drawn(Source source, std::uint32_t count) {
    Bytes bytes(count + 1, 0xee);
    source(bytes.data(), count);
    EXPECT_EQ(bytes.back(), 0xee);
    bytes.pop_back();
    return bytes;
}

TEST(RandomSources, ChainIsMd5OfItsLastState) {
    const Bytes first = drawn(E_GenerateRandom_MD5, 16);
    Bytes three = drawn(E_GenerateRandom_MD5, 48);
    const auto block = [&](int i) { return Bytes(three.begin() + 16 * i, three.begin() + 16 * (i + 1)); };
    EXPECT_EQ(block(0), md5(first));
    EXPECT_EQ(block(1), md5(block(0)));
    Bytes last = md5(block(2));
    EXPECT_EQ(drawn(E_GenerateRandom_MD5, 5), Bytes(last.begin(), last.begin() + 5));

    // The rest of that digest is lost; mode 0 is the chain, no other is.
    Bytes by_mode(16);
    E_GenerateRandom(by_mode.data(), 16, 1);
    EXPECT_NE(by_mode, md5(last));
    E_GenerateRandom(by_mode.data(), 16, 0);
    EXPECT_EQ(by_mode, last = md5(last));

    std::uint32_t words[3] = {1, 0xeeeeeeee, 3};
    ENUM x = {1, 9, words};
    EN_GenerateRandom(&x, 5, 0);
    last = md5(last);
    EXPECT_EQ(Bytes(reinterpret_cast<std::uint8_t*>(words), reinterpret_cast<std::uint8_t*>(words) + 5),
              Bytes(last.begin(), last.begin() + 5));
    EXPECT_EQ(words[1] >> 8, 0xeeeeeeU);
    EXPECT_EQ(words[2], 3U);
    EXPECT_EQ(x.length, 2);
    EXPECT_EQ(x.sign, 0U);
}

TEST(RandomServices, DrawFromTheGeneratorOfTheirName) {
    const auto provided = [](std::uint32_t algorithm) {
        CSSM_CONTEXT_ATTRIBUTE size = {CSP_ATTR_OUTPUT_SIZE, 0, {16}};
        const CSSM_CONTEXT context = {CSP_CONTEXT_RANDOM, algorithm, 0, 1, &size};
        Bytes room(20, 0xee);
        CSSM_DATA output = {20, room.data()};
        EXPECT_EQ(CSP_GenerateRandom(100, 0, &context, &output), 0);
        EXPECT_EQ(output.Length, 16U);
        EXPECT_EQ(to_hex(room).substr(32), "eeeeeeee");
        room.resize(16);
        return room;
    };
    const Bytes last = md5(drawn(E_GenerateRandom_MD5, 16));
    EXPECT_NE(provided(CSP_ALG_RANDOM_ALT), last);
    EXPECT_EQ(provided(CSP_ALG_RANDOM), last);
}

// A buffer that a scalar is written to, with its length.
struct Scalar {
    Bytes octets = Bytes(64, 0xee);
    std::uint32_t len = 77;

    std::string hex() const { return to_hex(octets.data(), len); }
};

const Bytes kOrder = from_hex("0100000000000000000001f4c8f927aed3ca752257");  // of secp160r1

TEST(RandomX962, IsFipsGeneratorReduced) {
    // FIPS 186-2, appendix 5: XKEY, and the x that it gives. Below an order of 2^200 it is not reduced.
    const std::string published = "bd029bbe7f51960bcf9edb2b61f06f0feb5a38b6";
    Bytes xkey = from_hex("99" + published), power(26);
    power[0] = 1;
    std::uint32_t xkey_len = 21;
    Scalar k;
    EXPECT_EQ(E_X9_62RandomBytes(k.octets.data(), &k.len, 160, xkey.data(), &xkey_len, power.data(), 26), 20U);
    EXPECT_EQ(k.hex(), "2070b3223dba372fde1c0ffc7b2e3b498b260615") << "x + 1";
    EXPECT_EQ(k.octets[20], 0xee);
    EXPECT_EQ(to_hex(xkey.data(), xkey_len), "dd734ee0bd0bcd3badbaeb27dd1eaa5976803ecb") << "XKEY + x + 1";

    // The rest by a model in Python, over its own SHA-1. Two rounds for 161 bits; an xkey of 1 octet whose successor
    // has 19.
    xkey = from_hex(published);
    xkey_len = 20;
    E_X9_62RandomBytes_Original(k.octets.data(), &k.len, 161, xkey.data(), &xkey_len, kOrder.data(), 21);
    EXPECT_EQ(k.hex(), "3915ede4b49b8840c50273569d7a96fff544e4cb");
    EXPECT_EQ(to_hex(xkey), "19df679b881b39916875fea06b3f819119a78fe2");
    xkey[0] = 251;
    xkey_len = 1;
    E_X9_62RandomBytes(k.octets.data(), &k.len, 160, xkey.data(), &xkey_len, kOrder.data(), 21);
    EXPECT_EQ(to_hex(xkey.data(), xkey_len), "e908510dfcd63ec02c5aecba83ec0cd11adb40");
    E_X9_62RandomBytes(k.octets.data(), &k.len, 1, xkey.data(), &xkey_len, kOrder.data(), 21);
    EXPECT_EQ(k.hex(), "c665fad09faa573f17222f26240a98838031042a");
}

TEST(RandomEcKcdsa, IsTheKeyGeneratorOfKcdsa) {
    // The published example of the standard with HAS-160: user input, XKEY, q, and the private key x.
    const Bytes input = from_text(
        "saldjfawp399u374r098u98^%^%hkrgn;lwkrp47t93c%$89439859kjdmnvcm cvk o4u09r 4j oj2out209xfqw;l*&!^#@U#*#$)(# z "
        "xo957tc-95 5 v5oiuv9876 6 vj o5iuv-053,mcvlrkfworet");
    const Bytes q = from_hex("c3ddd3717bf05b8f8dd725c162f0b9432c6f77fb");
    Bytes xkey = from_hex("f2072ce30a0176568324564bfdbd7077173b7e3f");
    std::uint32_t xkey_len = 20;
    Scalar k;
    EXPECT_EQ(
        E_ECKCDSA_RandomBytes(k.octets.data(), &k.len, input.data(), size32(input), xkey.data(), &xkey_len, q.data(), 20),
        20U);
    EXPECT_EQ(k.hex(), "068c4ef355d8b6f53eff1df6f243f98563896c58");
    EXPECT_EQ(to_hex(xkey), "a5a56607f4dd186b8b120551ec84234fa24b968a");  // this and the rest by a model in Python

    // 163 bits take two digests; of a longer XKEY the last bits count, and none is 0.
    const Bytes n = from_hex("04000000000000000000020108a2e0cc0d99f8a5ef"), seed = from_text("abc");
    xkey = from_hex("03ffffffffffffffffffffffffffffffffffffffcfc7");
    xkey_len = 22;
    E_ECKCDSA_RandomBytes(k.octets.data(), &k.len, seed.data(), 3, xkey.data(), &xkey_len, n.data(), 21);
    EXPECT_EQ(k.hex(), "017e6021ef671f85eae3ed84682a7688dbd4928cab");
    EXPECT_EQ(to_hex(xkey.data(), xkey_len), "01937be56abab132827d00c76c430c7fa735824136");
    E_ECKCDSA_RandomBytes(k.octets.data(), &k.len, seed.data(), 3, nullptr, nullptr, n.data(), 21);
    EXPECT_EQ(k.hex(), "030b9c800d2cf19d8d83bb13a0d3688d9226237ac8");
}

TEST(RandomScalars, AreWithinTheirOrder) {
    for (const std::uint8_t order : {std::uint8_t{0}, std::uint8_t{1}}) {
        const Bytes n = {0, order};
        Bytes xkey = {9};
        std::uint32_t xkey_len = 1;
        Scalar x962, eckcdsa, given;
        EXPECT_EQ(E_GenerateRandom_X962(7, x962.octets.data(), &x962.len, n.data(), 2), 0U);
        EXPECT_EQ(E_GenerateRandom_ECKCDSA(7, eckcdsa.octets.data(), &eckcdsa.len, n.data(), 2), 0U);
        EXPECT_EQ(E_X9_62RandomBytes(given.octets.data(), &given.len, 160, xkey.data(), &xkey_len, n.data(), 2), 0U);
        EXPECT_EQ(x962.len + eckcdsa.len + given.len, 0U);
        EXPECT_EQ(xkey[0], 9);
    }
    const std::uint8_t eight = 8;
    std::multiset<std::uint8_t> x962_seen, eckcdsa_seen;
    for (int i = 0; i < 400; ++i) {
        Scalar k;
        ASSERT_EQ(E_GenerateRandom_X962(7, k.octets.data(), &k.len, &eight, 1), 1U);
        EXPECT_EQ(k.octets[40], 0xee);
        x962_seen.insert(k.octets[0]);
        ASSERT_EQ(E_GenerateRandom_ECKCDSA(7, k.octets.data(), &k.len, &eight, 1), 1U);
        eckcdsa_seen.insert(k.octets[0]);
    }
    EXPECT_EQ(x962_seen.count(0) + eckcdsa_seen.count(0), 0U);
    // Some 57 of each of seven; the bounds are five standard deviations away. For so small an order the other source is
    // one fixed function on sixteen numbers, which favours some scalars.
    for (std::uint8_t k = 1; k < eight; ++k) {
        EXPECT_TRUE(x962_seen.count(k) > 20 && x962_seen.count(k) < 94) << x962_seen.count(k);
    }
    EXPECT_LT(*eckcdsa_seen.rbegin(), eight);
    EXPECT_GT(*eckcdsa_seen.rbegin(), *eckcdsa_seen.begin());
    Scalar first, second;
    EXPECT_GE(E_GenerateRandom_ECKCDSA(7, first.octets.data(), &first.len, kOrder.data(), 21), 18U);
    E_GenerateRandom_ECKCDSA(7, second.octets.data(), &second.len, kOrder.data(), 21);
    EXPECT_NE(first.hex(), second.hex());
}

}  // namespace
