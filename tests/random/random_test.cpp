// Random sources as programs see them.
#include <morvane/random.h>

#include "csp/test_session.h"
#include "support/vectors.h"

#include <gtest/gtest.h>
#include <set>

namespace {

using namespace morvane::test;

Bytes md5(Bytes bytes) {
    Session session(CSP_CONTEXT_DIGEST, CSP_ALG_MD5);
    const CSSM_DATA input = {size32(bytes), bytes.data()};
    Bytes digest(16);
    CSSM_DATA output = {16, digest.data()};
    EXPECT_EQ(CSP_DigestDataInit(100, session, nullptr), 0);
    EXPECT_EQ(CSP_DigestDataUpdate(100, session, &input, 1), 0);
    EXPECT_EQ(CSP_DigestDataFinal(100, session, &output), 0);
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

TEST(RandomScalars, OfKnownStatesMeetTheirVectors) {
    for (const Vector& vector : load_vectors("random_scalars.txt")) {
        const std::string& call = vector.text("call");
        const Bytes n = vector.bytes("n");
        Bytes xkey = vector.has("xkey") ? vector.bytes("xkey") : Bytes();
        std::uint32_t xkey_len = size32(xkey), returned = 0;
        xkey.resize(22);
        Scalar k;
        if (call == "eckcdsa") {
            const Bytes input = vector.bytes("input");
            returned = E_ECKCDSA_RandomBytes(k.octets.data(), &k.len, input.data(), size32(input),
                                             xkey_len != 0 ? xkey.data() : nullptr, xkey_len != 0 ? &xkey_len : nullptr,
                                             n.data(), size32(n));
        } else {
            returned = (call == "x962" ? E_X9_62RandomBytes : E_X9_62RandomBytes_Original)(
                k.octets.data(), &k.len, static_cast<std::uint32_t>(std::stoi(vector.text("bits"))), xkey.data(), &xkey_len,
                n.data(), size32(n));
        }
        EXPECT_EQ(k.hex(), vector.text("k"));
        EXPECT_EQ(returned, k.len);
        EXPECT_EQ(k.octets[40], 0xee);
        EXPECT_EQ(to_hex(xkey.data(), xkey_len), vector.has("after") ? vector.text("after") : "");
    }
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
