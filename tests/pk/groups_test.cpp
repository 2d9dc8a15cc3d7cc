// DSA, KCDSA and Diffie-Hellman: forms, limits, and the equations of KCDSA computed with big numbers.
#include <morvane/asn1.h>
#include <morvane/hash.h>
#include <morvane/prime.h>

#include "support/integer.h"
#include "support/vectors.h"

#include <gtest/gtest.h>
#include <cstring>

namespace {

using namespace morvane::test;

struct Key : E_DSA_KEY {
    Key() : E_DSA_KEY{} { E_KCDSA_Init(this); }
    explicit Key(std::int32_t q_bits) : Key() { E_KCDSA_GenerateKey_fixParam(this, 0, q_bits); }
};

// Encodings and signatures of OpenSSL, and the secrets that it agrees on.
TEST(Groups, MeetTheirVectors) {
    constexpr struct {
        const char* name;
        decltype(E_ASN1_PutDSAParams)* put;
        decltype(E_ASN1_GetDSAParamsBytes)* bytes;
        decltype(E_ASN1_GetDSAParams)* get;
    } kEncodings[] = {{"params", E_ASN1_PutDSAParams, E_ASN1_GetDSAParamsBytes, E_ASN1_GetDSAParams},
                      {"params", E_ASN1_PutKCDSAParams, E_ASN1_GetKCDSAParamsBytes, E_ASN1_GetKCDSAParams},
                      {"params", E_ASN1_PutParameters_KCDSA, E_ASN1_GetKCDSAParamsBytes, E_ASN1_GetParameters_KCDSA},
                      {"public", E_ASN1_PutDSAPublicKey, E_ASN1_GetDSAPublicKeyBytes, E_ASN1_GetDSAPublicKey},
                      {"public", E_ASN1_PutKCDSAPublicKey, E_ASN1_GetKCDSAPublicKeyBytes, E_ASN1_GetKCDSAPublicKey},
                      {"private", E_ASN1_PutDSAPrivateKey, E_ASN1_GetDSAPrivateKeyBytes, E_ASN1_GetDSAPrivateKey},
                      {"private", E_ASN1_PutKCDSAPrivateKey, E_ASN1_GetKCDSAPrivateKeyBytes, E_ASN1_GetKCDSAPrivateKey},
                      {"private", E_ASN1_PutKCDSAPrivateKey, E_ASN1_GetKCDSAPrivateKeyBytes, E_ASN1_GetKey_KCDSA}};
    const auto expect_coded = [](const Bytes& der, auto* key, auto put, auto bytes, auto get) {
        const std::uint8_t* position = der.data();
        get(key, &position, size32(der));
        EXPECT_EQ(position, der.data() + der.size());
        Bytes again(static_cast<std::size_t>(bytes(key)));
        EXPECT_EQ(put(key, nullptr), bytes(key));
        EXPECT_EQ(put(key, again.data()), bytes(key));
        EXPECT_EQ(again, der);
    };
    E_DSA_KEY open, whole;
    for (const Vector& vector : load_vectors("groups.txt")) {
        SCOPED_TRACE(vector.fields().begin()->second);
        if (vector.has("params")) {
            for (const auto& [name, put, bytes, get] : kEncodings) {
                E_DSA_KEY& key = std::string_view(name) == "public" ? open : whole;
                key = {};
                E_DSA_Init(&key);
                expect_coded(vector.bytes(name), &key, put, bytes, get);
            }
        } else if (vector.has("hash")) {
            const Bytes hash = vector.bytes("hash"), theirs = vector.bytes("signature");
            const auto size = static_cast<std::int32_t>(hash.size()), length = static_cast<std::int32_t>(theirs.size());
            EXPECT_EQ(E_DSA_Verify(hash.data(), size, theirs.data(), length, &open), 1);
            EXPECT_EQ(E_DSA_Verify(hash.data(), size, theirs.data(), length - 1, &open), 0);
            Bytes ours(2 * (Integer(whole.q).octets().size() + 8));  // the room that is promised
            std::int32_t ours_length = 0;
            EXPECT_EQ(E_DSA_Sign(hash.data(), size, ours.data(), &ours_length, &whole), 1);
            EXPECT_EQ(E_DSA_Verify(hash.data(), size, ours.data(), ours_length, &open), 1);
        } else {
            E_DH_KEY key{};
            E_DH_Init(&key);
            expect_coded(vector.bytes("dh_params"), &key, E_ASN1_PutDHParams, E_ASN1_GetDHParamsBytes, E_ASN1_GetDHParams);
            EN_Copy(&key.x, Integer(vector.bytes("x")));
            E_DH_GenerateKey(&key, 0);
            EXPECT_EQ(to_hex(Integer(key.y).octets()), vector.text("y"));
            Bytes secret(vector.bytes("p").size());
            secret.resize(static_cast<std::size_t>(E_DH_ComputeKey(secret.data(), Integer(vector.bytes("peer")), &key)));
            EXPECT_EQ(to_hex(secret), vector.text("secret"));
        }
    }
}

TEST(KcdsaKeys, AreOfTheirDomain) {
    std::uint8_t xkey[20], xseed[40], seed[20];
    std::uint32_t xkey_len = 0, xseed_len = 0, count = 0;
    Key keys[7];
    E_KCDSA_GenerateKey(&keys[0], 512, 160);
    E_KCDSA_GenerateKey2(&keys[1], 512, 168, xkey, &xkey_len, xseed, &xseed_len);
    EXPECT_EQ(xkey_len + xseed_len, 40U);
    E_KCDSA_GenerateX9Key(&keys[2], 1024, 160, seed, &count);
    EXPECT_TRUE(count >= 1 && count <= 1U << 24);
    E_KCDSA_GenerateKey_fixParam(&keys[3], 0, 160);
    for (std::size_t i = 4; i < 6; ++i) {  // in the domain that is there
        keys[i].p = keys[3].p;
        keys[i].q = keys[3].q;
        keys[i].g = keys[3].g;
    }
    E_KCDSA_GenerateKey3(&keys[4], 0, 160, xkey, &xkey_len, xseed, &xseed_len);
    E_KCDSA_GenerateXY(&keys[5], 0, 128);
    EXPECT_EQ(EN_GetFilledBitNum(&keys[5].x), 128U);
    E_DSA_GenerateKey(&keys[6], 1056, 224);
    EXPECT_TRUE(EN_GetFilledBitNum(&keys[6].p) == 1056 && EN_GetFilledBitNum(&keys[6].q) == 224);
    for (const Key& key : keys) {
        const Integer p = Integer(key.p), q = Integer(key.q), x = Integer(key.x);
        EXPECT_EQ((p % q).hex(), "01");
        EXPECT_TRUE(EN_IsPrime(p) == 1 && EN_IsPrime(q) == 1);
        EXPECT_EQ(power(Integer(key.g), q, p).hex(), "01");
        EXPECT_NE(Integer(key.g).hex(), "01");
        EXPECT_TRUE(EN_Comp(x, q) < 0 && EN_Comp(x, Integer(0U)) > 0);
        const bool is_dsa = &key == &keys[6];
        EXPECT_EQ(power(Integer(is_dsa ? key.g : key.y), x, p), Integer(is_dsa ? key.y : key.g));
    }
}

TEST(KcdsaKeys, ImpossibleOnesLeaveTheRecord) {
    constexpr std::pair<std::int32_t, std::int32_t> kSizes[] = {{160, 160}, {4801, 160}, {512, 1}, {512, -1}, {-1, -2}};
    const auto untouched = [](auto generate) {
        Key key;
        generate(&key);
        return Integer(key.p).bits() == 0 && key.x.length == 0;
    };
    for (const auto& [p_bits, q_bits] : kSizes) {
        EXPECT_TRUE(untouched([&](E_DSA_KEY* key) { E_DSA_GenerateKey(key, p_bits, q_bits); }));
        EXPECT_TRUE(untouched([&](E_DSA_KEY* key) { E_KCDSA_GenerateKey(key, p_bits, q_bits); }));
    }
    std::uint8_t seed[20];
    std::uint32_t count = 0;
    EXPECT_TRUE(untouched([&](E_DSA_KEY* key) { E_KCDSA_GenerateX9Key(key, 1023, 160, seed, &count); }));
    EXPECT_TRUE(untouched([&](E_DSA_KEY* key) { E_KCDSA_GenerateXY(key, 0, 160); })) << "there is no domain";
    EXPECT_TRUE(untouched([&](E_DSA_KEY* key) { E_KCDSA_GenerateKey_fixParam(key, 0, 0); }));
    // p hardly longer than q: there may be none for the first q.
    for (int i = 0; i < 20; ++i) {
        Key key;
        E_DSA_GenerateKey(&key, 20, 19);
        EXPECT_EQ(EN_GetFilledBitNum(&key.p), 20U);
    }
}

TEST(Kcdsa, MeetsItsVectors) {
    Key key;
    for (const Vector& vector : load_vectors("kcdsa.txt")) {
        SCOPED_TRACE(vector.fields().begin()->second);
        if (vector.has("p")) {
            for (const auto& [name, member] : {std::pair{"p", &key.p}, {"q", &key.q}, {"g", &key.g}, {"y", &key.y}}) {
                EN_Copy(member, Integer(vector.bytes(name)));
            }
            continue;
        }
        const Bytes message = vector.bytes("message"), sig = vector.bytes("signature");
        const auto size = static_cast<std::int32_t>(message.size()), length = static_cast<std::int32_t>(sig.size());
        if (vector.text("kind") == "older") {
            EXPECT_EQ(E_KCDSA_Verify(message.data(), size, sig.data(), length, &key), 1);
        } else {
            EXPECT_EQ(E_KCDSA_Verify_New(std::stoi(vector.text("kind")), message.data(), size, sig.data(), length, &key),
                      1);
        }
    }
}

TEST(KcdsaNew, SignaturesVerify) {
    Random random(20304);
    Key key(160);
    for (int i = 0; i < 120; ++i) {
        SCOPED_TRACE(i);
        const std::int32_t selector = i % 2 == 0 ? E_KCDSA_SHA1 : E_KCDSA_HAS160;
        if (i % 20 == 0) E_KCDSA_GenerateXY(&key, 0, 160);
        Bytes message = random.bytes(random.below(200));
        const auto size = static_cast<std::int32_t>(message.size());
        Bytes sig(48, 0xee);
        std::int32_t sig_len = 0;
        const std::int32_t y_length = key.y.length;
        if (i % 3 == 0) key.y.length = 31;  // y is computed from x then
        ASSERT_EQ(E_KCDSA_Sign_New(selector, message.data(), size, sig.data(), &sig_len, &key), 1);
        key.y.length = y_length;
        ASSERT_EQ(E_KCDSA_Verify_New(selector, message.data(), size, sig.data(), sig_len, &key), 1);
        message.push_back(0);
        ASSERT_EQ(E_KCDSA_Verify_New(selector, message.data(), size + 1, sig.data(), sig_len, &key), 0);
    }
    Bytes sig(48, 0xee);
    std::int32_t sig_len = 77;
    for (const std::int32_t selector : {0, 1, 3, 6}) {
        EXPECT_EQ(E_KCDSA_Sign_New(selector, sig.data(), 3, sig.data(), &sig_len, &key), 0);
        EXPECT_EQ(E_KCDSA_Verify_New(selector, sig.data(), 3, sig.data(), 48, &key), 0);
    }
    EXPECT_EQ(E_KCDSA_Sign_New(2, sig.data(), -1, sig.data(), &sig_len, &key), 0);
    EXPECT_TRUE(sig_len == 77 && sig == Bytes(48, 0xee));
}

TEST(KcdsaOld, SignaturesVerifyInEveryForm) {
    Random random(20305);
    Key keys[3];
    E_KCDSA_GenerateKey_fixParam(&keys[0], 0, 160);
    E_KCDSA_GenerateKey(&keys[1], 90, 64);    // whose W often has zeros at the top
    E_KCDSA_GenerateKey(&keys[2], 700, 450);  // for the longest hash values
    for (int i = 0; i < 150; ++i) {
        SCOPED_TRACE(i);
        const Key& key = keys[i % 3];
        constexpr std::uint32_t kMost[] = {20, 8, 50};
        const auto size = static_cast<std::int32_t>(i < 3 ? kMost[i % 3] : 1 + random.below(kMost[i % 3]));
        const Bytes hash = random.bytes(static_cast<std::size_t>(size));
        Bytes sig(120, 0xee), w(128), r(20), s(60), y(128), digest(20);
        std::int32_t sig_len = 0, w_len = 0, r_len = 0, s_len = 0;
        ASSERT_EQ(E_KCDSA_Sign2(hash.data(), size, sig.data(), &sig_len, w.data(), &w_len, &key), 1);
        ASSERT_EQ(E_KCDSA_Verify(hash.data(), size, sig.data(), sig_len, &key), 1);
        E_HAS160(digest.data(), w.data(), w_len);
        const Integer own(Bytes(sig.begin() + 4, sig.begin() + 4 + sig[3]));
        ASSERT_EQ(own, Integer(digest)) << "r is of W";

        // r and s apart, put together again.
        ASSERT_EQ(E_KCDSA_Sign2RS(hash.data(), size, r.data(), &r_len, s.data(), &s_len, &key), 1);
        ASSERT_EQ(r_len, 20);
        s.resize(static_cast<std::size_t>(s_len));
        const Integer both[] = {Integer(r), Integer(s)};
        const ENUM numbers[] = {*static_cast<const ENUM*>(both[0]), *static_cast<const ENUM*>(both[1])};
        sig_len = E_ASN1_PutENUM(numbers, 2, sig.data());
        ASSERT_EQ(E_KCDSA_Verify(hash.data(), size, sig.data(), sig_len, &key), 1);
        Bytes mixed = hash;
        const std::size_t at = hash.size() - std::min<std::size_t>(20, hash.size());
        for (std::size_t k = at; k < hash.size(); ++k) mixed[k] ^= r[k - at];
        Integer divisor;
        EN_GCD(divisor, Integer(key.p) - Integer(1U), Integer(mixed) % Integer(key.q));
        ASSERT_EQ(divisor.hex(), "01");

        ASSERT_EQ(E_KCDSA_Sign(hash.data(), size, sig.data(), &sig_len, &key), 1);
        E_KCDSA_KEY domain = key;
        E_KCDSA_Init(&domain);
        domain.y.length = domain.x.length = 0;
        const std::int32_t y_len = EN_ENUMToU8(y.data(), &key.y);
        ASSERT_EQ(E_KCDSA_Verify_withParams(hash.data(), size, sig.data(), sig_len, y.data(), y_len, &domain), 1);
        ASSERT_EQ(E_KCDSA_Verify_withParams(hash.data(), size, sig.data(), sig_len, y.data(), y_len - 1, &domain), 0);
    }
    Bytes sig(64, 0xee);
    std::int32_t sig_len = 77;
    for (const std::int32_t size : {-1, 0, 21, 51}) {
        EXPECT_EQ(E_KCDSA_Sign(sig.data(), size, sig.data(), &sig_len, &keys[0]), 0);
    }
    EXPECT_EQ(E_KCDSA_Sign(sig.data(), 51, sig.data(), &sig_len, &keys[2]), 0);
    for (const std::int32_t size : {-1, 21, 51}) EXPECT_EQ(E_DSA_Sign(sig.data(), size, sig.data(), &sig_len, &keys[0]), 0);
    EXPECT_TRUE(sig_len == 77 && sig == Bytes(64, 0xee));
}

// Records with which nothing can be signed or verified get an answer all the same.
TEST(Groups, RecordsThatAreNoneAreRefused) {
    const Key good(160);
    const std::uint8_t hash[20] = {1};
    const auto refused = [&](auto change) {
        Key key;
        std::memcpy(static_cast<E_DSA_KEY*>(&key), static_cast<const E_DSA_KEY*>(&good), sizeof(E_DSA_KEY));
        E_DSA_Init(&key);
        change(key);
        std::uint8_t sig[700], r_and_s[] = {0x30, 6, 2, 1, 1, 2, 1, 1};
        std::int32_t sig_len = 0;
        return E_DSA_Sign(hash, 20, sig, &sig_len, &key) + E_KCDSA_Sign(hash, 20, sig, &sig_len, &key) +
                   E_KCDSA_Sign_New(2, hash, 20, sig, &sig_len, &key) + E_DSA_Verify(hash, 20, r_and_s, 8, &key) +
                   E_KCDSA_Verify(hash, 20, r_and_s, 8, &key) ==
               0;
    };
    EXPECT_FALSE(refused([](Key&) {}));
    for (ENUM E_DSA_KEY::*const member : {&E_DSA_KEY::x, &E_DSA_KEY::p, &E_DSA_KEY::q, &E_DSA_KEY::g}) {
        for (const std::int32_t length : {0, -5, E_DSA_WORDS + 1}) {
            EXPECT_TRUE(refused([&](Key& key) { (key.*member).length = length; })) << length;
        }
    }
    EXPECT_TRUE(refused([](Key& key) { key.p.words[0] &= ~1U; }));
    EXPECT_TRUE(refused([](Key& key) { key.q.words[0] &= ~1U; }));
    EXPECT_TRUE(refused([](Key& key) { EN_U32ToENUM(&key.q, 1); }));

    // A y of more words than p counts modulo p.
    Key longer;
    std::memcpy(static_cast<E_DSA_KEY*>(&longer), static_cast<const E_DSA_KEY*>(&good), sizeof(E_DSA_KEY));
    E_DSA_Init(&longer);
    std::uint8_t sig[700];
    std::int32_t sig_len = 0;
    ASSERT_EQ(E_KCDSA_Sign(hash, 20, sig, &sig_len, &good), 1);
    std::copy_n(longer.p.words, longer.p.length, longer.y.words + longer.p.length);
    longer.y.length = 2 * longer.p.length;
    EXPECT_EQ(E_KCDSA_Verify(hash, 20, sig, sig_len, &longer), 1);

    // What is told in the header of E_DSA_Verify.
    const std::uint8_t one_and_zero[] = {0x30, 6, 2, 1, 1, 2, 1, 0};
    EXPECT_EQ(E_DSA_Verify(hash, 20, one_and_zero, 8, &good), 1);
}

TEST(Dh, KeysByTheirRecord) {
    E_DH_KEY key{};
    E_DH_Init(&key);
    EN_Copy(&key.p, Integer("ffffffffffffffc5"));
    EN_U32ToENUM(&key.g, 2);
    EN_U32ToENUM(&key.x, 64);
    E_DH_GenerateKey(&key, 0);
    EXPECT_EQ(Integer(key.x).hex(), "40") << "it is taken as it stands";
    EXPECT_EQ(Integer(key.y).hex(), "3b") << "2^64 mod p";
    std::uint8_t out[8] = {0xee, 0xee};
    EXPECT_EQ(E_DH_ComputeKey(out, Integer(2U), &key), 1) << "no zeros in front";
    EXPECT_TRUE(out[0] == 0x3b && out[1] == 0xee);
    EXPECT_EQ(E_DH_ComputeKey(out, Integer("ffffffffffffffc50000000000000002"), &key), 1) << "2 again, modulo p";

    key.x.words = key.y.words = nullptr;
    EXPECT_EQ(E_DH_ComputeKey(out, Integer(2U), &key), -1);
    E_DH_GenerateKey(&key, 4801);
    E_DH_GenerateKey(&key, -1);
    EXPECT_EQ(key.x.words, nullptr);
    E_DH_GenerateKey(&key, 0);
    EXPECT_TRUE(key.x.words == key.x_words && key.y.words == key.y_words && Integer(key.x).bits() == 63);
    key.x.words = nullptr;
    E_DH_GenerateKey(&key, 40);
    EXPECT_EQ(Integer(key.x).bits(), 40U);
    key.p.length = 0;
    EXPECT_EQ(E_DH_ComputeKey(out, Integer(2U), &key), -1);
    for (const auto& [bits, generator, step, remainder] :
         {std::tuple{256, 2U, 24U, 11U}, {256, 3U, 12U, 11U}, {255, 5U, 10U, 3U}, {128, 7U, 4U, 3U}}) {
        E_DH_GenerateParameters(&key, bits, generator);
        EXPECT_TRUE(EN_IsStrongPrime(&key.p) == 1 && Integer(key.g) == Integer(generator)) << bits;
        EXPECT_EQ(static_cast<std::int32_t>(Integer(key.p).bits()), bits);
        EXPECT_EQ(EN_ModU32(&key.p, step), remainder);
    }
}

}  // namespace
