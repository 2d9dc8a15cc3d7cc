// The limits of keys, what a schedule holds, and RC4.
#include "cipher/cipher_table.h"
#include "support/seeded.h"
#include "support/vectors.h"

#include <gtest/gtest.h>
#include <algorithm>
#include <cstring>

namespace {

using namespace morvane::test;

static_assert(sizeof(E_DES_KEY_SCHEDULE) == 128 && sizeof(E_DES3_KEY_SCHEDULE) == 256);
static_assert(sizeof(E_DES3_3KEY_SCHEDULE) == 384 && sizeof(E_SEED_KEY_SCHEDULE) == 128);
static_assert(sizeof(E_IDEA_KEY_SCHEDULE) == 208 && sizeof(E_BF_KEY_SCHEDULE) == 4168);
static_assert(sizeof(E_RC2_KEY_SCHEDULE) == 128 && sizeof(E_RC5_KEY_SCHEDULE) == 140 && sizeof(E_RC4_STATE) == 1032);

Bytes first(std::size_t count, const Bytes& bytes) { return {bytes.data(), bytes.data() + count}; }

TEST(CipherKeys, CountUpToTheirLimits) {
    const Bytes key = Random(20282).bytes(300);
    const Cipher &blowfish = cipher_named("blowfish"), &rc2 = cipher_named("rc2"), &rc5 = cipher_named("rc5");
    EXPECT_EQ(blowfish.scheduled(key), blowfish.scheduled(first(72, key)));
    EXPECT_NE(blowfish.scheduled(key), blowfish.scheduled(first(71, key)));
    EXPECT_EQ(rc2.scheduled(key, 1024), rc2.scheduled(first(128, key), 1024));
    EXPECT_NE(rc2.scheduled(key, 1024), rc2.scheduled(first(127, key), 1024));
    EXPECT_NE(rc2.scheduled(key, 1024), rc2.scheduled(key, 1016));
    for (const std::int32_t bits : {0, -1, 1025, 2000, INT32_MIN, INT32_MAX}) {
        EXPECT_EQ(rc2.scheduled(key, bits), rc2.scheduled(key, 1024)) << bits;
    }
    for (const std::int32_t rounds : {-1, 17, 20, 255, INT32_MIN, INT32_MAX}) {
        EXPECT_EQ(rc5.scheduled(key, rounds), rc5.scheduled(key, 16)) << rounds;
    }
    E_RC4_STATE all, most, fewer;
    E_RC4_KeySchedule(&all, key.data(), 300);
    E_RC4_KeySchedule(&most, key.data(), 256);
    E_RC4_KeySchedule(&fewer, key.data(), 255);
    EXPECT_EQ(std::memcmp(&all, &most, sizeof all), 0);
    EXPECT_NE(std::memcmp(&all, &fewer, sizeof all), 0);
}

TEST(CipherKeys, OfDesIgnoreTheParityBits) {
    for (const char* const name : {"des", "two-key triple des", "three-key triple des"}) {
        Bytes key = Random(20283).bytes(24);
        const Bytes schedule = cipher_named(name).scheduled(key);
        for (std::uint8_t& byte : key) byte ^= 1;
        EXPECT_EQ(cipher_named(name).scheduled(key), schedule) << name;
    }
}

// Without a key there is a record of zeros, which RC4 and RC5 leave data with as it is.
TEST(CipherKeys, MissingLeaveZeros) {
    const Bytes key(8, 1);
    for (const std::int32_t none : {0, -1, INT32_MIN}) {
        Bytes blowfish(sizeof(E_BF_KEY_SCHEDULE), 1), rc2(sizeof(E_RC2_KEY_SCHEDULE), 1),
            rc5(sizeof(E_RC5_KEY_SCHEDULE), 1);
        E_BF_KeySchedule(Record{blowfish.data()}, key.data(), none);
        E_RC2_KeySchedule(Record{rc2.data()}, key.data(), none, 64);
        E_RC5_KeySchedule(Record{rc5.data()}, key.data(), none, 12);
        EXPECT_EQ(blowfish, Bytes(blowfish.size())) << none;
        EXPECT_EQ(rc2, Bytes(rc2.size())) << none;
        EXPECT_EQ(rc5, Bytes(rc5.size())) << none;
        Bytes data = key;
        E_RC5_ECB_Encrypt(data.data(), data.data(), Record{rc5.data()}, 8);
        EXPECT_EQ(data, key);
    }
    Bytes rc4(sizeof(E_RC4_STATE), 1), data = key;
    EXPECT_EQ(E_RC4_KeySchedule(Record{rc4.data()}, key.data(), 0), 0U);
    EXPECT_EQ(rc4, Bytes(rc4.size()));
    E_RC4_Encrypt(data.data(), data.data(), Record{rc4.data()}, 8);
    EXPECT_EQ(data, key);
}

// Programs keep schedules, so what is in them stays.
TEST(CipherKeys, LieInTheirRecordsAsDocumented) {
    // K1 of this key in the worked examples of DES: 000110 110000 001011 101111 111111 000111 000001 110010.
    E_DES_KEY_SCHEDULE des;
    E_DES_KeySchedule(&des, from_hex("133457799bbcdff1").data());
    EXPECT_EQ(des.round_keys[0], 0x302f0732U);
    EXPECT_EQ(des.round_keys[1], 0x060b3f01U);

    // RFC 4269, appendix B.1, round 1.
    E_SEED_KEY_SCHEDULE seed;
    E_SEED_KeySchedule(&seed, Bytes(16).data());
    EXPECT_EQ(seed.round_keys[0], 0x7c8f8c7eU);
    EXPECT_EQ(seed.round_keys[1], 0xc737a22cU);

    // The first eight subkeys are the key; the last decryption subkeys undo them.
    E_IDEA_KEY_SCHEDULE idea;
    E_IDEA_KeySchedule(&idea, from_hex("00010002000300040005000600070008").data());
    for (std::uint16_t i = 0; i < 8; ++i) EXPECT_EQ(idea.encrypt[i], i + 1);
    EXPECT_EQ(idea.decrypt[48], 1);
    EXPECT_EQ(idea.decrypt[49], 0xfffe);
    EXPECT_EQ(idea.decrypt[50], 0xfffd);
    EXPECT_EQ(idea.decrypt[51], 49153);

    E_RC5_KEY_SCHEDULE rc5;
    std::memset(&rc5, 1, sizeof rc5);
    E_RC5_KeySchedule(&rc5, from_hex("0123456789").data(), 5, 3);
    EXPECT_EQ(rc5.rounds, 3U);
    for (int i = 8; i < 34; ++i) EXPECT_EQ(rc5.s[i], 0U) << i;
    std::uint32_t of_sixteen[] = {1, 2}, of_more[] = {1, 2};
    rc5.rounds = 16;
    E_RC5_Encrypt(of_sixteen, &rc5);
    rc5.rounds = 0xffffffff;
    E_RC5_Encrypt(of_more, &rc5);
    EXPECT_TRUE(std::equal(of_more, of_more + 2, of_sixteen));
}

TEST(Rc4, MeetsPublishedVectorsHoweverTheStreamIsCut) {
    Seeded random(20284);
    for (const Vector& vector : load_vectors("rc4.txt")) {
        const Bytes key = vector.bytes("key"), in = vector.bytes("in");
        E_RC4_STATE state;
        E_RC4_KeySchedule(&state, key.data(), size32(key));
        Bytes stream(static_cast<std::size_t>(std::stoul(vector.text("offset"))));
        stream.insert(stream.end(), in.begin(), in.end());
        Bytes out(stream.size());
        for (std::uint32_t at = 0, now = 0; at < size32(stream); at += now) {
            now = random.below(std::min(size32(stream) - at, 300U) + 1);
            const bool in_place = random.below(2) != 0;
            if (in_place) std::copy_n(stream.data() + at, now, out.data() + at);
            E_RC4_Encrypt((in_place ? out : stream).data() + at, out.data() + at, &state, now);
        }
        ASSERT_EQ(to_hex(out.data() + out.size() - in.size(), in.size()), vector.text("out"))
            << vector.text("key") << " at " << vector.text("offset");
        ASSERT_EQ(state.x, out.size() % 256);
        E_RC4_Encrypt(nullptr, nullptr, &state, 0);
        ASSERT_EQ(state.x, out.size() % 256);
    }
}

}  // namespace
