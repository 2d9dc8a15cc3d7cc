// DSA and Diffie-Hellman with random keys and messages, and their encodings, against OpenSSL.
#define OPENSSL_SUPPRESS_DEPRECATED
#include <morvane/asn1.h>
#include <morvane/bignum.h>

#include "support/bytes.h"

#include <gtest/gtest.h>
#include <openssl/dh.h>
#include <openssl/dsa.h>
#include <memory>

namespace {

using namespace morvane::test;

constexpr std::uint32_t kSeed = 20301;

struct DsaKey : E_DSA_KEY {
    DsaKey() : E_DSA_KEY{} { E_DSA_Init(this); }
};

BIGNUM* number_of(const ENUM& x) {
    Bytes octets(4 * E_DSA_WORDS);
    return BN_bin2bn(octets.data(), EN_ENUMToU8(octets.data(), &x), nullptr);
}

using Dsa = std::unique_ptr<DSA, void (*)(DSA*)>;
using Dh = std::unique_ptr<DH, void (*)(DH*)>;
using Number = std::unique_ptr<BIGNUM, void (*)(BIGNUM*)>;

Dsa theirs(const E_DSA_KEY& key) {
    Dsa dsa(DSA_new(), DSA_free);
    DSA_set0_pqg(dsa.get(), number_of(key.p), number_of(key.q), number_of(key.g));
    DSA_set0_key(dsa.get(), number_of(key.y), number_of(key.x));
    return dsa;
}

template <typename Write, typename Record>
Bytes by_openssl(Write write, const Record* record) {
    Bytes der(static_cast<std::size_t>(write(record, nullptr)));
    std::uint8_t* out = der.data();
    write(record, &out);
    return der;
}

struct Encoding {
    decltype(E_ASN1_PutDSAParams)* put;
    decltype(E_ASN1_GetDSAParamsBytes)* bytes;
    decltype(E_ASN1_GetDSAParams)* get;
};

// Our encoding is theirs, and read back it is written again.
void expect_encoded(const E_DSA_KEY& key, std::initializer_list<Encoding> encodings, const Bytes& expected) {
    for (const Encoding& encoding : encodings) {
        Bytes der(expected.size());
        ASSERT_EQ(encoding.bytes(&key), static_cast<std::int32_t>(der.size()));
        encoding.put(&key, der.data());
        ASSERT_EQ(der, expected);
        DsaKey read;
        const std::uint8_t* position = der.data();
        encoding.get(&read, &position, size32(der));
        ASSERT_EQ(position, der.data() + der.size());
        Bytes again(der.size());
        EXPECT_EQ(encoding.put(&read, again.data()), encoding.put(&read, nullptr));
        EXPECT_EQ(again, der);
    }
}

TEST(DsaAgainstOpenSsl, KeysSignaturesAndEncodings) {
    SCOPED_TRACE(testing::Message() << "seed " << kSeed);
    Random random(kSeed);
    const std::unique_ptr<BN_CTX, void (*)(BN_CTX*)> ctx(BN_CTX_new(), BN_CTX_free);
    constexpr std::pair<std::uint32_t, std::uint32_t> kSizes[] = {{512, 160}, {1024, 160}, {1056, 224}, {2048, 256}};
    for (const auto& [p_bits, q_bits] : kSizes) {
        DsaKey key;
        E_DSA_GenerateKey(&key, static_cast<std::int32_t>(p_bits), static_cast<std::int32_t>(q_bits));
        ASSERT_EQ(EN_GetFilledBitNum(&key.p), p_bits);
        ASSERT_EQ(EN_GetFilledBitNum(&key.q), q_bits);
        const Dsa peer = theirs(key);
        EXPECT_EQ(BN_check_prime(DSA_get0_p(peer.get()), ctx.get(), nullptr), 1);
        EXPECT_EQ(BN_check_prime(DSA_get0_q(peer.get()), ctx.get(), nullptr), 1);
        const Number r(BN_new(), BN_free);
        BN_mod_exp(r.get(), DSA_get0_g(peer.get()), DSA_get0_q(peer.get()), DSA_get0_p(peer.get()), ctx.get());
        EXPECT_TRUE(BN_is_one(r.get()) && !BN_is_one(DSA_get0_g(peer.get())));

        expect_encoded(key,
                       {{E_ASN1_PutDSAParams, E_ASN1_GetDSAParamsBytes, E_ASN1_GetDSAParams},
                        {E_ASN1_PutKCDSAParams, E_ASN1_GetKCDSAParamsBytes, E_ASN1_GetKCDSAParams},
                        {E_ASN1_PutParameters_KCDSA, E_ASN1_GetKCDSAParamsBytes, E_ASN1_GetParameters_KCDSA}},
                       by_openssl(i2d_DSAparams, peer.get()));
        expect_encoded(key,
                       {{E_ASN1_PutDSAPublicKey, E_ASN1_GetDSAPublicKeyBytes, E_ASN1_GetDSAPublicKey},
                        {E_ASN1_PutKCDSAPublicKey, E_ASN1_GetKCDSAPublicKeyBytes, E_ASN1_GetKCDSAPublicKey}},
                       by_openssl(i2d_DSAPublicKey, peer.get()));
        expect_encoded(key,
                       {{E_ASN1_PutDSAPrivateKey, E_ASN1_GetDSAPrivateKeyBytes, E_ASN1_GetDSAPrivateKey},
                        {E_ASN1_PutKCDSAPrivateKey, E_ASN1_GetKCDSAPrivateKeyBytes, E_ASN1_GetKCDSAPrivateKey},
                        {E_ASN1_PutKCDSAPrivateKey, E_ASN1_GetKCDSAPrivateKeyBytes, E_ASN1_GetKey_KCDSA}},
                       by_openssl(i2d_DSAPrivateKey, peer.get()));

        for (int i = 0; i < 60; ++i) {
            const Bytes hash = random.bytes(i % 2 == 0 ? q_bits / 8 : random.below(q_bits / 8));
            const auto hash_len = static_cast<std::int32_t>(hash.size());
            Bytes sig(2 * (q_bits / 8) + 16);
            std::int32_t sig_len = 0;
            ASSERT_EQ(E_DSA_Sign(hash.data(), hash_len, sig.data(), &sig_len, &key), 1);
            ASSERT_EQ(DSA_verify(0, hash.data(), hash_len, sig.data(), sig_len, peer.get()), 1) << i;
            unsigned theirs_len = 0;
            sig.resize(200);
            ASSERT_EQ(DSA_sign(0, hash.data(), hash_len, sig.data(), &theirs_len, peer.get()), 1);
            sig_len = static_cast<std::int32_t>(theirs_len);
            ASSERT_EQ(E_DSA_Verify(hash.data(), hash_len, sig.data(), sig_len, &key), 1) << i;
            ASSERT_EQ(E_DSA_Verify(hash.data(), hash_len, sig.data(), sig_len - 1, &key), 0);
            ASSERT_EQ(E_DSA_Verify(hash.data(), hash_len, sig.data(), sig_len + 1, &key), 0);
            sig[static_cast<std::size_t>(sig_len - 1)] ^= 0x10;
            ASSERT_EQ(E_DSA_Verify(hash.data(), hash_len, sig.data(), sig_len, &key), 0);
        }
    }
}

TEST(DhAgainstOpenSsl, SecretsAndParameters) {
    constexpr struct {
        std::int32_t bits;
        std::uint32_t generator, step, remainder;
    } kCases[] = {{256, 2, 24, 11}, {256, 3, 12, 11}, {255, 5, 10, 3}, {128, 7, 4, 3}};
    const std::unique_ptr<BN_CTX, void (*)(BN_CTX*)> ctx(BN_CTX_new(), BN_CTX_free);
    for (const auto& row : kCases) {
        E_DH_KEY key{};
        E_DH_Init(&key);
        E_DH_GenerateParameters(&key, row.bits, row.generator);
        ASSERT_EQ(EN_GetFilledBitNum(&key.p), static_cast<std::uint32_t>(row.bits));
        EXPECT_EQ(EN_ModU32(&key.p, row.step), row.remainder);
        const Dh peer(DH_new(), DH_free);
        DH_set0_pqg(peer.get(), number_of(key.p), nullptr, number_of(key.g));
        int codes = 0;
        DH_check(peer.get(), &codes);
        EXPECT_EQ(codes & (DH_CHECK_P_NOT_PRIME | DH_CHECK_P_NOT_SAFE_PRIME), 0);
        const Bytes der = by_openssl(i2d_DHparams, peer.get());
        Bytes ours(der.size());
        ASSERT_EQ(E_ASN1_GetDHParamsBytes(&key), static_cast<std::int32_t>(der.size()));
        ASSERT_EQ(E_ASN1_PutDHParams(&key, ours.data()), static_cast<std::int32_t>(der.size()));
        EXPECT_EQ(ours, der);
        E_DH_KEY read{};
        E_DH_Init(&read);
        const std::uint8_t* position = der.data();
        E_ASN1_GetDHParams(&read, &position, size32(der));
        EXPECT_EQ(position, der.data() + der.size());
        EXPECT_EQ(EN_UComp(&read.p, &key.p), 0);

        const Number a(BN_new(), BN_free), theirs(BN_new(), BN_free);
        int shorter = 0;
        for (int i = 0; i < 600 || (shorter == 0 && i < 6000); ++i) {
            key.x.words = nullptr;  // so that x is drawn
            E_DH_GenerateKey(&key, i % 2 == 0 ? 0 : 40);
            ASSERT_EQ(EN_GetFilledBitNum(&key.x), i % 2 == 0 ? static_cast<std::uint32_t>(row.bits) - 1 : 40U);
            BN_rand(a.get(), row.bits - 2, BN_RAND_TOP_ANY, BN_RAND_BOTTOM_ANY);
            BN_mod_exp(theirs.get(), DH_get0_g(peer.get()), a.get(), DH_get0_p(peer.get()), ctx.get());
            Bytes octets(static_cast<std::size_t>(BN_num_bytes(theirs.get())));
            BN_bn2bin(theirs.get(), octets.data());
            std::uint32_t words[E_DH_WORDS];
            ENUM value{0, 0, words};
            EN_U8ToENUM(&value, octets.data(), size32(octets));
            const Number y(number_of(key.y), BN_free);
            BN_mod_exp(theirs.get(), y.get(), a.get(), DH_get0_p(peer.get()), ctx.get());
            Bytes expected(static_cast<std::size_t>(BN_num_bytes(theirs.get()))), secret(64);
            BN_bn2bin(theirs.get(), expected.data());
            secret.resize(static_cast<std::size_t>(E_DH_ComputeKey(secret.data(), &value, &key)));
            ASSERT_EQ(secret, expected);
            shorter += static_cast<int>(secret.size() < (static_cast<std::size_t>(row.bits) + 7) / 8);
        }
        EXPECT_GT(shorter, 0) << "leading zeros are dropped";
    }
}

}  // namespace
