// The toolkit's context and its hash, MAC and random calls.
#include <morvane/csp.h>
#include <morvane/random.h>

#include "toolkit/fixture.h"

#include <cstdio>

namespace {

using namespace morvane::test;

const Bytes kAbc = from_text("abc");

TEST_F(Toolkit, ContextIsMadeReadyOnceAndTakenBack) {
    void* const crypto = context->crypto;
    EXPECT_NE(crypto, nullptr);
    EXPECT_EQ(static_cast<KccContext*>(crypto)->context, context);
    EXPECT_EQ(K_KCCInit(context), 0);
    EXPECT_EQ(context->crypto, crypto);
    K_KCCTerm(context);
    EXPECT_EQ(context->crypto, nullptr);
    EXPECT_EQ(context->companion_initialised, 0U);

    context->companion_initialised = 1;
    K_KCCTerm(context);
    EXPECT_EQ(context->companion_initialised, 1U) << "nothing to take back";
    context->companion_initialised = 0;

    EXPECT_EQ(K_KCCInit(nullptr), -1);
    K_KCCTerm(nullptr);
    EXPECT_EQ(K_KCCInit(context), 0);
}

TEST_F(Toolkit, HashesBySelector) {
    constexpr const char* kDigests[] = {
        "da853b0d3f88d99b30283a69e6ded6bb",         "900150983cd24fb0d6963f7d28e17f72",
        "a9993e364706816aba3e25717850c26c9cd0d89d", "a448017aaf21d8525fc10ae87aa6729d",
        "8eb208f7e05d987a9b044a8e98c6b087f15a0bfc", "975e810488cf2a3d49838478124afce4b1c78804"};
    const CSSM_DATA input = view(kAbc);
    CSSM_DATA output = {0, nullptr};
    for (std::uint32_t selector = 0; selector < 6; ++selector) {
        context->last_error = 77;
        EXPECT_EQ(to_hex(hash(selector, kAbc)), kDigests[selector]);
        EXPECT_EQ(context->last_error, 0U);
    }
    for (const std::uint32_t selector : {6U, 0xffffffffU}) {
        EXPECT_EQ(K_GenHash(context, selector, &input, &output), KERR_DIGEST_INIT);
        EXPECT_EQ(context->last_error, std::uint32_t{KERR_DIGEST_INIT});
        EXPECT_EQ(output.Data, nullptr);
    }
}

TEST_F(Toolkit, RefusesInputsWithoutData) {
    const CSSM_DATA input = view(kAbc), nothing = {3, nullptr};
    CSSM_DATA output = {0, nullptr};
    for (const std::int32_t code :
         {K_GenHash(context, 2, &nothing, &output), K_GenMac(context, 0, &input, &nothing, &output),
          K_VerifyMac(context, 0, &input, &nothing, &input), K_VerifyMac(context, 0, &input, &input, &nothing)}) {
        EXPECT_EQ(code, KERR_NOT_READY);
    }
}

// A public key in DER with the exponent 65537: a modulus of so many bytes, 256 or more.
Bytes rsa_public_key(unsigned modulus_bytes) {
    char head[40];
    std::snprintf(head, sizeof head, "3082%04x0282%04x00", modulus_bytes + 10, modulus_bytes + 1);
    return from_hex(head + to_hex(Bytes(modulus_bytes, 0xc3)) + "0203010001");
}

TEST_F(Toolkit, RsaKeysGoToWtlsFieldsAndBack) {
    const Bytes e = {1, 0, 1}, padded_e = {0, 0, 0, 1, 0, 1};
    for (const unsigned k : {256U, 401U, 600U}) {
        const Bytes der = rsa_public_key(k), modulus(k, 0xc3);
        std::uint8_t *exponent_field = nullptr, *modulus_field = nullptr, *back = nullptr;
        std::uint16_t exponent_length = 0, modulus_length = 0;
        std::uint32_t back_length = 0;
        context->last_error = 77;
        ASSERT_EQ(K_RSAPublicKey2WTLS(context, der.data(), size32(der), &exponent_field, &exponent_length, &modulus_field,
                                      &modulus_length),
                  1U);
        EXPECT_EQ(Bytes(exponent_field, exponent_field + exponent_length), e);
        EXPECT_EQ(Bytes(modulus_field, modulus_field + modulus_length), modulus);
        ASSERT_EQ(K_WTLSPublicKey2RSA(context, padded_e.data(), 6, modulus_field, modulus_length, &back, &back_length), 1U);
        EXPECT_EQ(Bytes(back, back + back_length), der);
        EXPECT_EQ(context->last_error, 77U) << "success stores nothing";
        for (std::uint8_t* const block : {exponent_field, modulus_field, back}) K_free(context, block);
    }
}

TEST_F(Toolkit, WtlsFieldsOfWhatIsNoKey) {
    Bytes der = rsa_public_key(300);
    der[der.size() - 5] = 0x03;  // the exponent's tag
    std::uint8_t *exponent = nullptr, *modulus = nullptr, *key = nullptr;
    std::uint16_t exponent_length = 9, modulus_length = 9;
    std::uint32_t key_length = 0;
    const auto to_wtls = [&](const std::uint8_t* bytes, std::uint32_t size) {
        return K_RSAPublicKey2WTLS(context, bytes, size, &exponent, &exponent_length, &modulus, &modulus_length);
    };
    const auto free_fields = [&] {
        K_free(context, std::exchange(exponent, nullptr));
        K_free(context, std::exchange(modulus, nullptr));
    };
    ASSERT_EQ(to_wtls(der.data(), size32(der)), 1U);
    EXPECT_EQ(exponent_length, 0);
    EXPECT_EQ(modulus_length, 300) << "what was read before the fault";
    free_fields();
    ASSERT_EQ(to_wtls(nullptr, 5), 1U);
    EXPECT_EQ(exponent_length + modulus_length, 0);
    free_fields();

    const Bytes field(601, 0xff);
    const auto to_der = [&](std::uint16_t e_bytes, std::uint16_t n_bytes) {
        return K_WTLSPublicKey2RSA(context, field.data(), e_bytes, field.data(), n_bytes, &key, &key_length);
    };
    EXPECT_EQ(to_der(5, 600), 0xffffffffU);
    EXPECT_EQ(to_der(4, 601), 0xffffffffU);
    EXPECT_EQ(context->last_error, 0U);
    ASSERT_EQ(K_WTLSPublicKey2RSA(context, nullptr, 0, nullptr, 0, &key, &key_length), 1U);
    EXPECT_EQ(to_hex(key, key_length), "3006020100020100");
    K_free(context, key);
    EXPECT_EQ(K_WTLSPublicKey2RSA(context, nullptr, 1, nullptr, 0, &key, &key_length), std::uint32_t{KERR_NOT_READY});
    EXPECT_EQ(K_RSAPublicKey2WTLS(context, nullptr, 0, &exponent, &exponent_length, nullptr, &modulus_length),
              std::uint32_t{KERR_NOT_READY});
    EXPECT_EQ(K_WTLSPublicKey2RSA(nullptr, nullptr, 0, nullptr, 0, &key, &key_length), 0xffffffffU);
    EXPECT_EQ(K_RSAPublicKey2WTLS(nullptr, nullptr, 0, &exponent, &exponent_length, &modulus, &modulus_length),
              0xffffffffU);
}

TEST_F(Toolkit, MakesMacsBySelector) {
    const Bytes key = from_hex("0123456789abcdeffedcba9876543210"), message = from_text("thirteen bytes");
    const CSSM_DATA key_data = view(key), message_data = view(message);
    // The last block of DES-CBC by OpenSSL; the other one by Python's hmac, under the expanded key of RC2.
    const Bytes des_mac = from_hex("a464d428429db440"), md5_mac = from_hex("fe7523cb6fda3abc1adb1c2a6cefc432");
    const Bytes macs[] = {des_mac, des_mac, md5_mac};
    for (std::uint32_t selector = 0; selector < 3; ++selector) {
        CSSM_DATA mac = {9, nullptr};
        EXPECT_EQ(K_GenMac(context, selector, &key_data, &message_data, &mac), 0);
        EXPECT_EQ(taken(mac), macs[selector]);
        Bytes expected = macs[selector];
        const CSSM_DATA expected_data = view(expected);
        EXPECT_EQ(K_VerifyMac(context, selector, &key_data, &message_data, &expected_data), 0);
        EXPECT_EQ(context->last_error, 0U);
        expected.back() ^= 1;
        const CSSM_DATA wrong = selector == K_MAC_MD5 ? view(expected) : CSSM_DATA{7, expected.data()};
        EXPECT_EQ(K_VerifyMac(context, selector, &key_data, &message_data, &wrong), KERR_MAC_VERIFY);
        EXPECT_EQ(context->last_error, std::uint32_t{KERR_MAC_VERIFY});
    }
}

TEST_F(Toolkit, RefusesKeysAndSelectorsOfMacs) {
    const CSSM_DATA message = view(kAbc), no_key = {8, nullptr};
    const Bytes key(26, 'k');
    CSSM_DATA mac = {0, nullptr};
    constexpr std::uint32_t kKeyBytes[] = {8, 16, 8, 8, 26, 16, 8};
    for (std::uint32_t selector = 0; selector < 7; ++selector) {
        // Not a byte more than it says it has.
        const Bytes short_key(key.data(), key.data() + kKeyBytes[selector] - 1);
        const CSSM_DATA short_data = view(short_key), key_data = view(key);
        for (const CSSM_DATA* const bad : {&short_data, &no_key, static_cast<const CSSM_DATA*>(nullptr)}) {
            EXPECT_EQ(K_GenMac(context, selector, bad, &message, &mac), KERR_KEY_SETUP);
            EXPECT_EQ(K_VerifyMac(context, selector, bad, &message, &message), KERR_KEY_SETUP);
        }
        if (selector <= K_MAC_MD5) continue;
        EXPECT_EQ(K_GenMac(context, selector, &key_data, &message, &mac), KERR_MAC_INIT);
        EXPECT_EQ(K_VerifyMac(context, selector, &key_data, &message, &message), -1);
        EXPECT_EQ(context->last_error, 0xffffffffU);
    }
    const CSSM_DATA key_data = view(key);
    for (const std::uint32_t selector : {7U, 8U, 9U, 13U}) {
        EXPECT_EQ(K_GenMac(context, selector, &key_data, &message, &mac), KERR_KEY_SETUP);
    }
    std::uint8_t byte = 0;
    const CSSM_DATA endless = {0xfffffff8, &byte};
    EXPECT_EQ(K_GenMac(context, K_MAC_DES, &key_data, &endless, &mac), KERR_MEMORY);
}

TEST_F(Toolkit, RandomBytesAreThoseOfTheSelectedGenerator) {
    std::uint8_t* random = nullptr;
    Bytes last(16);
    E_GenerateRandom_MD5(last.data(), 16);
    context->last_error = 77;
    for (const std::uint32_t count : {4000U, 0U}) {
        ASSERT_EQ(K_GenRandom(context, 0, count, &random), 0) << "not the chain";
        K_free(context, random);
    }
    ASSERT_EQ(K_GenRandom(context, 1, 16, &random), 0);
    EXPECT_EQ(Bytes(random, random + 16), hash(K_HASH_MD5, last));
    K_free(context, random);
    context->last_error = 77;
    EXPECT_EQ(K_GenRandom(context, 2, 5, &random), -1);
    EXPECT_TRUE(random == nullptr && context->last_error == 77);
    EXPECT_EQ(GetError(), std::uint32_t{CSP_ERR_UNKNOWN_ALGORITHM});
    EXPECT_EQ(K_GenRandom(context, 0, 0xffffffff, &random), KERR_MEMORY);
}

}  // namespace
