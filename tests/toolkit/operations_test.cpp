// The toolkit's encryption, key shares, key pairs and operations with them.
#include <morvane/asn1.h>
#include <morvane/cipher.h>
#include <morvane/csp.h>

#include "toolkit/fixture.h"

#include <map>

namespace {

using namespace morvane::test;

constexpr std::map<std::uint32_t, std::uint32_t>::value_type kCiphers[] = {{0, 8},  {1, 16}, {2, 8},  {3, 8},  {4, 26},
                                                                           {5, 16}, {6, 8},  {11, 5}, {12, 16}};

std::uint32_t block_of(std::uint32_t selector) { return selector == K_CIPHER_RC4 ? 0 : selector == K_CIPHER_SEED ? 16 : 8; }

std::uint32_t helper_error(K_CONTEXT* context) { return static_cast<KccContext*>(context->crypto)->error; }

class ToolkitCipher : public Toolkit {
protected:
    Random random{20306};
    Bytes key = random.bytes(26);
    CSSM_DATA key_data = view(key);
};

TEST_F(ToolkitCipher, RoundTripsOfEveryLength) {
    const Bytes iv = random.bytes(16);
    const CSSM_DATA iv_data = view(iv);
    for (const auto& [selector, key_bytes] : kCiphers) {
        const std::uint32_t block = block_of(selector);
        for (const std::uint32_t size : {0U, 1U, 7U, 8U, 15U, 16U, 17U, 991U, 992U, 993U, 1000U, 1984U, 5003U}) {
            SCOPED_TRACE(testing::Message() << selector << ", " << size << " bytes");
            Bytes text = random.bytes(size + 1);
            text.resize(size);
            text.reserve(1);
            const CSSM_DATA in = {size, text.data()};
            CSSM_DATA sealed = {0, nullptr}, opened = {0, nullptr}, again = {0, nullptr};
            ASSERT_EQ(K_Encryption(context, selector, 1, &key_data, &in, &sealed), 0);
            ASSERT_EQ(sealed.Length, block == 0 ? size : block + size / block * block + block);
            ASSERT_EQ(K_Decryption(context, selector, 1, &key_data, &sealed, &opened), 0);
            ASSERT_EQ(taken(opened), text);
            // The vector in front, given to the other form.
            const CSSM_DATA front = {16, sealed.Data}, rest = {sealed.Length - block, sealed.Data + block};
            ASSERT_EQ(K_Encryption_IV_Fix(context, selector, 1, &key_data, &front, &in, &again), 0);
            ASSERT_EQ(taken(again), Bytes(rest.Data, rest.Data + rest.Length));
            ASSERT_EQ(K_Decryption_IV_Fix(context, selector, 1, &key_data, &front, &rest, &opened), 0);
            ASSERT_EQ(taken(opened), text);
            ASSERT_EQ(K_KeyEncryption(context, selector, &key_data, &in, &again), 0);
            ASSERT_EQ(K_KeyDecryption(context, selector, &key_data, &again, &opened), 0);
            ASSERT_EQ(taken(opened), text);
            taken(again);
            taken(sealed);
        }
    }
    // One of them by the primitive.
    E_SEED_KEY_SCHEDULE schedule;
    E_SEED_KeySchedule(&schedule, key.data());
    Bytes padded = from_text("sixteen bytes and more"), expected(32);
    const CSSM_DATA text = view(padded);
    CSSM_DATA sealed = {0, nullptr};
    ASSERT_EQ(K_Encryption_IV_Fix(context, K_CIPHER_SEED, 1, &key_data, &iv_data, &text, &sealed), 0);
    padded.resize(32, 10);
    E_SEED_CBC_Encrypt(padded.data(), expected.data(), &schedule, 32, iv.data());
    EXPECT_EQ(taken(sealed), expected);
}

TEST_F(ToolkitCipher, FailuresHaveTheirCodes) {
    Bytes text = random.bytes(40);
    const CSSM_DATA in = view(text), short_iv = {7, text.data()}, none = {0, nullptr};
    CSSM_DATA output = {77, nullptr};
    for (const auto& [selector, key_bytes] : kCiphers) {
        SCOPED_TRACE(selector);
        const bool rc2 = selector == K_CIPHER_RC2 || selector == K_CIPHER_RC2_40;
        const std::int32_t code = selector == K_CIPHER_DES3 ? KERR_ENCRYPT_IV : rc2 ? KERR_ENCRYPT_STREAM : KERR_ENCRYPT;
        const std::int32_t back = selector == K_CIPHER_DES3 ? KERR_DECRYPT_IV : rc2 ? KERR_DECRYPT_STREAM : KERR_DECRYPT;
        const CSSM_DATA short_key = {key_bytes - 1, key.data()};
        EXPECT_EQ(K_Encryption(context, selector, 1, &short_key, &in, &output), code);
        EXPECT_EQ(helper_error(context), KERR_KEY_SETUP);
        EXPECT_EQ(K_Decryption(context, selector, 1, nullptr, &in, &output), back);
        EXPECT_EQ(K_Encryption(context, selector, 0, &key_data, &in, &output), code);
        EXPECT_EQ(helper_error(context), KERR_CIPHER_OPTION);
        EXPECT_EQ(K_KeyEncryption(context, selector, &short_key, &in, &output), KERR_ENCRYPT);
        EXPECT_EQ(K_KeyDecryption(context, selector, &short_key, &in, &output), KERR_DECRYPT);
        if (block_of(selector) == 0) continue;
        EXPECT_EQ(K_Encryption_IV_Fix(context, selector, 1, &key_data, &short_iv, &in, &output), code);
        EXPECT_EQ(helper_error(context), KERR_CIPHER_INIT);
        EXPECT_EQ(K_Encryption_IV_Fix(context, selector, 1, &key_data, nullptr, &in, &output), code);

        // Padding: what every last byte of a ciphertext's block before makes of it.
        CSSM_DATA sealed = {0, nullptr};
        const CSSM_DATA no_text = {0, text.data()};
        ASSERT_EQ(K_Encryption(context, selector, 1, &key_data, &no_text, &sealed), 0);
        int accepted = 0;
        for (int change = 0; change < 256; ++change) {
            sealed.Data[block_of(selector) - 1] ^= static_cast<std::uint8_t>(change);
            CSSM_DATA opened = {0, nullptr};
            const std::int32_t result = K_Decryption(context, selector, 1, &key_data, &sealed, &opened);
            sealed.Data[block_of(selector) - 1] ^= static_cast<std::uint8_t>(change);
            accepted += static_cast<int>(result == 0);
            if (result == 0)
                taken(opened);
            else
                ASSERT_TRUE(result == back && helper_error(context) == KERR_CIPHER_HELPER && opened.Data == nullptr);
        }
        // The padding itself and, where the vector's last byte is that of the text, a padding of one byte.
        EXPECT_EQ(accepted, selector == K_CIPHER_IDEA || selector == K_CIPHER_BLOWFISH ? 1 : 2);
        const CSSM_DATA cut = {sealed.Length - 1, sealed.Data}, little = {1, sealed.Data};
        EXPECT_EQ(K_Decryption(context, selector, 1, &key_data, &cut, &output), back);
        EXPECT_EQ(K_Decryption(context, selector, 1, &key_data, &little, &output), back);
        taken(sealed);
    }
    EXPECT_EQ(K_Encryption(context, 13, 1, &key_data, &in, &output), KERR_ENCRYPT);
    EXPECT_EQ(K_Encryption(context, 0, 1, &key_data, &none, &output), KERR_NOT_READY);
    EXPECT_EQ(context->last_error, KERR_NOT_READY);
    EXPECT_TRUE(output.Length == 77 && output.Data == nullptr);
}

TEST_F(Toolkit, AnySharesThatAreEnoughGiveTheKeyBack) {
    Random random(20307);
    for (const auto& [needed, count] : {std::pair{1U, 1U}, {1U, 3U}, {2U, 3U}, {5U, 5U}, {7U, 12U}, {3U, 255U}}) {
        const Bytes key = random.bytes(1 + random.below(40));
        const CSSM_DATA key_data = view(key);
        std::vector<CSSM_DATA> shares(count);
        ASSERT_EQ(K_KeyShareEncode(context, &key_data, needed, count, shares.data()), 0);
        for (int i = 0; i < 20; ++i) {
            for (std::uint32_t k = 0; k < needed; ++k) std::swap(shares[k], shares[k + random.below(count - k)]);
            CSSM_DATA again = {0, nullptr};
            ASSERT_EQ(K_KeyShareDecode(context, shares.data(), needed, &again), 0);
            ASSERT_EQ(taken(again), key);
            ASSERT_EQ(K_KeyShareDecode(context, shares.data(), needed - 1, &again), KERR_KEY_SHARE);
        }
        if (needed > 1) {
            const CSSM_DATA twice[] = {shares[0], shares[0]};
            CSSM_DATA again = {0, nullptr};
            EXPECT_EQ(K_KeyShareDecode(context, twice, 2, &again), KERR_KEY_SHARE);
        }
        for (CSSM_DATA& share : shares) taken(share);
    }
    const Bytes key(9, 0x61);
    const CSSM_DATA key_data = view(key);
    CSSM_DATA shares[3] = {};
    for (const auto& [needed, count] : {std::pair{0U, 3U}, {4U, 3U}, {2U, 256U}}) {
        EXPECT_EQ(K_KeyShareEncode(context, &key_data, needed, count, shares), KERR_KEY_SHARE);
    }
}

// A key pair of the toolkit, given back at the end.
class ToolkitPair : public Toolkit {
protected:
    void TearDown() override {
        for (CSSM_DATA* const block : {&open, &secret, &made, &back}) K_free(context, block->Data);
        Toolkit::TearDown();
    }
    void replace(std::initializer_list<CSSM_DATA*> blocks) {
        for (CSSM_DATA* const block : blocks) taken(*block);
    }
    // A signature that is good for the message and no other, in `made`.
    template <typename Sign, typename Verify>
    void expect_signature(const CSSM_DATA& text_of, Sign sign, Verify verify) {
        replace({&made});
        ASSERT_EQ(sign(&secret, &text_of, &made), 0);
        EXPECT_EQ(verify(&open, &text_of, &made), 0);
        EXPECT_EQ(verify(&open, &made, &made), KERR_VERIFY);
    }
    // There with one key, back with the other, and neither with the wrong one nor for what was changed.
    template <typename There, typename Back>
    void expect_sealed(const CSSM_DATA& there_key, const CSSM_DATA& back_key, There there, Back open_again,
                       std::int32_t there_code, std::int32_t back_code) {
        const Bytes long_text(133, 1);
        const CSSM_DATA too_long = view(long_text);
        replace({&made});
        ASSERT_EQ(there(&there_key, &message, &made), 0);
        ASSERT_EQ(made.Length, 132U);
        ASSERT_EQ(open_again(&back_key, &made, &back), 0);
        EXPECT_EQ(taken(back), text);
        made.Data[131] ^= 1;
        EXPECT_EQ(open_again(&back_key, &made, &back), back_code);
        EXPECT_EQ(open_again(&there_key, &made, &back), back_code) << "not that kind of key";
        replace({&made});
        EXPECT_EQ(there(&there_key, &too_long, &made), there_code);
        EXPECT_EQ(there(&back_key, &message, &made), there_code);
    }

    CSSM_DATA open = {0, nullptr}, secret = {0, nullptr}, made = {0, nullptr}, back = {0, nullptr};
    Bytes text = from_text("what is signed and sealed");
    CSSM_DATA message = view(text), hash_value = {20, text.data()};
};

// A call of the toolkit with its context and first arguments bound.
#define BOUND(function, ...) [&](auto... more) { return function(context, ##__VA_ARGS__, more...); }

TEST_F(ToolkitPair, Rsa) {
    ASSERT_EQ(K_GenerateRSAKey(context, 1056, &open, &secret), 0);
    expect_sealed(open, secret, BOUND(K_RSAPublicEncrypt), BOUND(K_RSAPrivateDecrypt), KERR_RSA_PUBLIC_ENCRYPT,
                  KERR_RSA_PRIVATE_DECRYPT);
    expect_sealed(secret, open, BOUND(K_RSAPrivateEncrypt), BOUND(K_RSAPublicDecrypt), KERR_RSA_PRIVATE_ENCRYPT,
                  KERR_RSA_PUBLIC_DECRYPT);
    expect_sealed(
        open, secret, [&](auto* key, auto* in, auto* out) { return K_RSAPublicEncryptOAEP(context, key, in, in, out); },
        [&](auto* key, auto* in, auto* out) { return K_RSAPrivateDecryptOAEP(context, key, &message, in, out); },
        KERR_RSA_PUBLIC_ENCRYPT, KERR_RSA_PRIVATE_DECRYPT);
    const CSSM_DATA empty = {0, open.Data};
    EXPECT_EQ(K_RSAPrivateEncrypt(context, &empty, &message, &made), KERR_EMPTY_KEY);

    for (std::uint32_t selector = 0; selector < 9; ++selector) {
        SCOPED_TRACE(selector);
        expect_signature(message, BOUND(K_RSASign, selector), BOUND(K_RSAVerify, selector));
        EXPECT_EQ(K_RSAVerify(context, (selector + 1) % 9, &open, &message, &made), KERR_VERIFY);
    }
    for (const std::int32_t hash : {0, 1, 5, 6}) {
        expect_signature(message, BOUND(K_RSASignPSS, hash, 20), BOUND(K_RSAVerifyPSS, hash, 20));
        EXPECT_EQ(K_RSAVerifyPSS(context, hash, 19, &open, &message, &made), KERR_VERIFY);
    }
    replace({&made});
    EXPECT_EQ(K_RSASign(context, 9, &secret, &message, &made), KERR_SIGN);
    EXPECT_EQ(K_RSASignPSS(context, 8, 100, &secret, &message, &made), KERR_SIGN) << "the salt is too long";
}

TEST_F(ToolkitPair, Kcdsa) {
    ASSERT_EQ(K_GenerateKCDSAKeyPair(context, 512, &open, &secret), 0);
    E_KCDSA_KEY key{};
    E_KCDSA_Init(&key);
    const std::uint8_t* position = open.Data;
    E_ASN1_GetKCDSAPublicKey(&key, &position, open.Length);
    Bytes params(400);
    const CSSM_DATA domain = {static_cast<std::uint32_t>(E_ASN1_PutKCDSAParams(&key, params.data())), params.data()};
    replace({&open, &secret});
    ASSERT_EQ(K_GenerateKCDSAKeyPair_Params(context, &domain, &open, &secret), 0);
    for (const std::int32_t selector : {E_KCDSA_SHA1, E_KCDSA_HAS160}) {
        expect_signature(message, BOUND(K_KCDSASign, selector), BOUND(K_KCDSAVerify, selector));
        EXPECT_EQ(K_KCDSAVerify(context, 7 - selector, &open, &message, &made), KERR_VERIFY);
        EXPECT_EQ(K_KCDSAVerifyHash(context, &open, &hash_value, &made), KERR_VERIFY);
    }
    expect_signature(hash_value, BOUND(K_KCDSASignHash), BOUND(K_KCDSAVerifyHash));
    replace({&made});
    EXPECT_EQ(K_KCDSASign(context, 3, &secret, &message, &made), KERR_SIGN);
    EXPECT_EQ(K_KCDSASign(context, 2, &open, &message, &made), KERR_SIGN);
}

TEST_F(ToolkitPair, Curves) {
    for (const std::int32_t curve : {3, 5, 7}) {
        SCOPED_TRACE(curve);
        CSSM_DATA other_open = {0, nullptr}, other_secret = {0, nullptr};
        ASSERT_EQ(K_GenerateECCKeyPair(context, curve, &open, &secret), 0);
        ASSERT_EQ(K_GenerateECCKeyPair(context, curve, &other_open, &other_secret), 0);
        expect_signature(message, BOUND(K_ECDSASign, curve), BOUND(K_ECDSAVerify, curve));
        EXPECT_EQ(K_ECDSAVerify(context, curve, &other_open, &message, &made), KERR_VERIFY);
        EXPECT_EQ(K_ECDSAVerify(context, 4, &open, &message, &made), KERR_VERIFY);
        replace({&made});
        ASSERT_EQ(K_ECDH(context, curve, &secret, &other_open, &made), 0);
        ASSERT_EQ(K_ECDH(context, curve, &other_secret, &open, &back), 0);
        EXPECT_EQ(taken(made), taken(back));
        EXPECT_EQ(K_ECDH(context, curve, &open, &open, &made), KERR_AGREE);
        ASSERT_EQ(K_ECC_Encryption(context, curve, &open, &message, &made), 0);
        ASSERT_EQ(K_ECC_Decryption(context, curve, &secret, &made, &back), 0);
        EXPECT_EQ(taken(back), text);
        EXPECT_EQ(K_ECC_Decryption(context, curve, &other_secret, &made, &back), KERR_DECRYPT);
        EXPECT_EQ(K_ECC_Encryption(context, curve, &secret, &message, &back), KERR_ENCRYPT);
        replace({&open, &secret, &made, &other_open, &other_secret});

        ASSERT_EQ(K_GenerateECKCDSAKeyPair(context, curve, &open, &secret), 0);
        expect_signature(
            message, [&](auto* key, auto* in, auto* out) { return K_ECKCDSASign(context, curve, key, &open, in, out); },
            BOUND(K_ECKCDSAVerify, curve));
        replace({&open, &secret, &made});
    }
    EXPECT_EQ(K_GenerateECCKeyPair(context, 11, &open, &secret), KERR_KEYGEN);
    EXPECT_EQ(K_ECDSASign(context, 3, &message, &message, &made), KERR_SIGN);
}

TEST_F(ToolkitPair, GenerationRefuses) {
    EXPECT_EQ(K_GenAssymetricKey(context, 6, 300, &open, &secret), KERR_KEYGEN);
    EXPECT_EQ(K_GenerateRSAKey(context, 4801, &open, &secret), KERR_KEYGEN);
    EXPECT_EQ(K_GenerateKCDSAKeyPair_Params(context, &message, &open, &secret), KERR_KEYGEN);
}

}  // namespace
