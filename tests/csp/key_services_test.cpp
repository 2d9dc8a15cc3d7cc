// Key pairs, parameters, wrapping and derivation of the provider.
#include <morvane/asn1.h>
#include <morvane/csp.h>

#include "csp/test_session.h"
#include "support/integer.h"

#include <gtest/gtest.h>
#include <cstring>

namespace {

using namespace morvane::test;

struct Key : CSSM_KEY {
    Key() : CSSM_KEY{} {}
    ~Key() { CSP_FreeKey(100, nullptr, this); }
    Key(const Key&) = delete;
    Key& operator=(const Key&) = delete;
    Bytes data() const { return {KeyData.Data, KeyData.Data + KeyData.Length}; }
};

std::int32_t generate_pair(CspHandle handle, Key& public_key, Key& private_key) {
    return CSP_GenerateKeyPair(100, handle, nullptr, 8, 0x20, nullptr, &public_key, 4, 0x10, nullptr, &private_key);
}

TEST(CspKeyPair, IsDerOfItsAlgorithm) {
    for (const std::uint32_t algorithm : {40U, 41U, 42U, 43U, 49U, 81U, 90U}) {
        SCOPED_TRACE(algorithm);
        Session context(CSP_CONTEXT_KEYGEN, algorithm);
        context.with(CSP_ATTR_BLOCK_SIZE, 512);
        Key public_key, private_key;
        ASSERT_EQ(generate_pair(context, public_key, private_key), 0);
        const CSSM_KEYHEADER& header = private_key.KeyHeader;
        EXPECT_TRUE(header.BlobType == 1 && header.KeyClass == 1 && header.LogicalKeySizeInBits == 512);
        EXPECT_TRUE(header.AlgorithmId == algorithm && header.KeyUsage == 4 && header.KeyAttr == 0x10);
        EXPECT_TRUE(public_key.KeyHeader.KeyClass == 0 && public_key.KeyHeader.KeyUsage == 8);
        const auto expect_pair = [&](auto whole, auto open, auto init, auto get_private, auto get_public, auto sign,
                                     auto verify) {
            init(&whole), init(&open);
            const std::uint8_t *secret = private_key.KeyData.Data, *known = public_key.KeyData.Data;
            get_private(&whole, &secret, private_key.KeyData.Length);
            get_public(&open, &known, public_key.KeyData.Length);
            EXPECT_EQ(secret, private_key.KeyData.Data + private_key.KeyData.Length);
            EXPECT_EQ(known, public_key.KeyData.Data + public_key.KeyData.Length);
            const std::uint8_t hash[20] = {1};
            std::uint8_t sig[80];
            std::int32_t sig_len = 0;
            sign(hash, 20, sig, &sig_len, &whole);
            EXPECT_EQ(verify(hash, 20, sig, sig_len, &open), 1);
        };
        if (algorithm < 81 && algorithm != 41) {
            expect_pair(E_RSA_KEY{}, E_RSA_KEY{}, E_RSA_Init, E_ASN1_GetRSAPrivateKey, E_ASN1_GetRSAPublicKey, E_RSA_Sign,
                        E_RSA_Verify);
        } else {
            expect_pair(E_DSA_KEY{}, E_DSA_KEY{}, E_DSA_Init, E_ASN1_GetDSAPrivateKey, E_ASN1_GetDSAPublicKey,
                        algorithm == 90 ? E_KCDSA_Sign : E_DSA_Sign, algorithm == 90 ? E_KCDSA_Verify : E_DSA_Verify);
        }
    }
}

TEST(CspKeyPair, ChecksInOrder) {
    Session context(CSP_CONTEXT_MAC, CSP_ALG_DH);
    Key public_key, private_key;
    const auto call = [&](CspHandle handle, CSSM_KEY* key) {
        return CSP_GenerateKeyPair(100, handle, nullptr, 0, 0, nullptr, key, 0, 0, nullptr, &private_key);
    };
    EXPECT_FAILS(call(0, nullptr), CSP_ERR_NO_CONTEXT);
    EXPECT_FAILS(call(context, nullptr), CSP_ERR_WRONG_CONTEXT_TYPE);
    context.context_type = CSP_CONTEXT_KEYGEN;
    EXPECT_FAILS(call(context, nullptr), CSP_ERR_NULL_POINTER);
    EXPECT_FAILS(call(context, &public_key), CSP_ERR_UNKNOWN_ALGORITHM);
    context.algorithm = CSP_ALG_RSA;
    EXPECT_FAILS(call(context, &public_key), CSP_ERR_NO_ATTRIBUTE);
    context.with(CSP_ATTR_BLOCK_SIZE, 5000);
    EXPECT_FAILS(call(context, &public_key), CSP_ERR_PRIMITIVE_FAILED);
    context.own[0].Attribute.Uint32 = 512;
    std::uint8_t room[60];
    private_key.KeyData = {60, room};
    EXPECT_FAILS(call(context, &public_key), CSP_ERR_OUTPUT_TOO_SHORT);
    private_key.KeyData = {60, nullptr};
    EXPECT_FAILS(call(context, &public_key), CSP_ERR_BAD_DATA);
    EXPECT_TRUE(public_key.KeyData.Data == nullptr && public_key.KeyHeader.BlobType == 0);
}

TEST(CspWrap, ComesBackWithEveryCipherAndWithRsa) {
    Bytes iv_bytes(16, 0x3c), bytes(16, 0x5a);
    CSSM_DATA iv = {16, iv_bytes.data()};
    const CSSM_DATA label = {16, bytes.data()};
    Key secret;
    ASSERT_EQ(CSP_GenerateKey(100, Session(CSP_CONTEXT_KEYGEN, CSP_ALG_DES), nullptr, 3, 0, &label, &secret), 0);
    Key rsa_public, rsa_private;
    Session pair(CSP_CONTEXT_KEYGEN, CSP_ALG_RSA);
    ASSERT_EQ(generate_pair(pair.with(CSP_ATTR_BLOCK_SIZE, 1200), rsa_public, rsa_private), 0);
    for (const std::uint32_t algorithm : {14U, 18U, 20U, 21U, 22U, 23U, 26U, 88U, 40U}) {
        for (const std::uint32_t mode : {2U, 4U, 7U, 10U}) {
            SCOPED_TRACE(testing::Message() << algorithm << ", mode " << mode);
            Key by, again;  // of RC4, a state for each direction
            const bool is_rsa = algorithm == CSP_ALG_RSA;
            if (!is_rsa) {
                for (Key* const key : {&by, &again}) {
                    ASSERT_EQ(CSP_GenerateKey(100, Session(CSP_CONTEXT_KEYGEN, algorithm), nullptr, 0, 0, &label, key), 0);
                }
            }
            Session wrap(CSP_CONTEXT_SYMMETRIC, algorithm), unwrap(CSP_CONTEXT_CIPHER_ALT, algorithm);
            wrap.with(is_rsa ? &rsa_public : &by).with(CSP_ATTR_MODE, mode).with(&iv);
            unwrap.with(is_rsa ? &rsa_private : &again).with(CSP_ATTR_MODE, mode).with(&iv);
            Key wrapped, key;
            ASSERT_EQ(CSP_WrapKey(100, wrap, nullptr, nullptr, &secret, &wrapped), 0);
            EXPECT_TRUE(wrapped.KeyHeader.BlobType == 3 && wrapped.KeyHeader.WrapAlgorithmId == algorithm);
            EXPECT_EQ(wrapped.KeyHeader.WrapMode, is_rsa ? 0 : mode);
            const std::uint32_t block = algorithm == 88 ? 16 : 8;
            EXPECT_EQ(wrapped.KeyData.Length, is_rsa ? 150U : algorithm == 23 ? 128U : 128 + block);
            EXPECT_NE(wrapped.data(), secret.data());
            ASSERT_EQ(CSP_UnwrapKey(100, unwrap, nullptr, nullptr, &wrapped, &key), 0);
            EXPECT_EQ(key.data(), secret.data());
            EXPECT_EQ(std::memcmp(&key.KeyHeader, &secret.KeyHeader, sizeof key.KeyHeader), 0);

            if (algorithm == 23) continue;  // which notices nothing
            Key none;
            wrapped.KeyData.Data[wrapped.KeyData.Length - 1] ^= 0x40;
            EXPECT_FAILS(CSP_UnwrapKey(100, unwrap, nullptr, nullptr, &wrapped, &none), CSP_ERR_PRIMITIVE_FAILED);
            EXPECT_EQ(none.KeyData.Data, nullptr);
        }
    }
    Session context(CSP_CONTEXT_KEYGEN, CSP_ALG_DES);
    Key wrapped;
    const auto call = [&] { return CSP_WrapKey(100, context, nullptr, nullptr, &secret, &wrapped); };
    EXPECT_FAILS(call(), CSP_ERR_WRONG_CONTEXT_TYPE);
    context.context_type = CSP_CONTEXT_SYMMETRIC;
    EXPECT_FAILS(CSP_WrapKey(100, context, nullptr, nullptr, &wrapped, &wrapped), CSP_ERR_BAD_KEY);
    EXPECT_FAILS(call(), CSP_ERR_KEY_ATTRIBUTE_MISSING);
    context.with(&rsa_public);
    EXPECT_FAILS(call(), CSP_ERR_BAD_KEY);
    context.own[0].Attribute.Key = &secret;
    EXPECT_FAILS(call(), CSP_ERR_UNKNOWN_MODE);
    context.with(CSP_ATTR_MODE, CSP_MODE_CBC);
    EXPECT_FAILS(call(), CSP_ERR_INIT_VECTOR);
    EXPECT_FAILS(CSP_UnwrapKey(100, context, nullptr, nullptr, &secret, &wrapped), CSP_ERR_BAD_KEY);
}

TEST(CspDerive, MakesTheKeyOfTheSecret) {
    Session context(CSP_CONTEXT_KEYGEN, CSP_ALG_DH);
    CSSM_DATA params = {0, nullptr};
    ASSERT_EQ(CSP_GenerateAlgorithmParams(100, context, nullptr, 256, &params), 0);
    E_DH_KEY dh{};
    E_DH_Init(&dh);
    const std::uint8_t* position = params.Data;
    E_ASN1_GetDHParams(&dh, &position, params.Length);
    EXPECT_EQ(position, params.Data + params.Length);
    std::free(params.Data);

    Bytes x(24, 0x37), y(20, 0x91), secret(32);
    EN_Copy(&dh.x, Integer(x));
    ASSERT_GE(E_DH_ComputeKey(secret.data(), Integer(y), &dh), 16);
    CSSM_KEY base{};
    base.KeyData = {24, x.data()};
    const CSSM_DATA peer = {20, y.data()}, label = {16, secret.data()};
    Key derived, expected;
    const auto call = [&] { return CSP_DeriveKey(100, context, nullptr, &base, &peer, 3, 0, nullptr, &derived); };
    EXPECT_FAILS(call(), CSP_ERR_DERIVE_KEY);
    derived.KeyHeader.AlgorithmId = CSP_ALG_SEED;
    ASSERT_EQ(call(), 0);
    ASSERT_EQ(CSP_GenerateKey(100, Session(CSP_CONTEXT_KEYGEN, CSP_ALG_SEED), nullptr, 3, 0, &label, &expected), 0);
    EXPECT_EQ(derived.data(), expected.data());
    EXPECT_EQ(std::memcmp(&derived.KeyHeader, &expected.KeyHeader, sizeof derived.KeyHeader), 0);
    base.KeyData.Length = 601;
    EXPECT_FAILS(call(), CSP_ERR_DERIVE_KEY);
    base.KeyData.Length = 24;
    y.assign(20, 0);  // 0^x
    EXPECT_FAILS(call(), CSP_ERR_DH_COMPUTATION);
    context.algorithm = CSP_ALG_RSA;
    EXPECT_FAILS(call(), CSP_ERR_UNKNOWN_ALGORITHM);
    EXPECT_FAILS(CSP_GenerateAlgorithmParams(100, context, nullptr, 256, &params), CSP_ERR_UNKNOWN_ALGORITHM);
    context.algorithm = CSP_ALG_DSA;
    EXPECT_FAILS(CSP_GenerateAlgorithmParams(100, context, nullptr, 160, &params), CSP_ERR_PRIMITIVE_FAILED);
}

}  // namespace
