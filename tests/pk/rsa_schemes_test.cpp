// RSA: limits of lengths, what is printed, layouts of blocks, the rules for private operations.
#include "pk/rsa_key.h"

#include <climits>
#include <cstring>
#include <functional>
#include <map>

namespace {

using namespace morvane::test;

RsaKey key_of(const std::string& file) { return RsaKey(load_vectors(file).front()); }

class Rsa : public testing::Test {
protected:
    RsaKey key = key_of("rsa_pss.txt");  // 1024 bits
    static constexpr std::int32_t k = 128;
    Random random{20297};
    Bytes message = random.bytes(700);

    Bytes message_of(std::int32_t len) const { return {message.begin(), message.begin() + len}; }
};

// Keys of 1024, 1030, 1031 and 2048 bits. That what is opened is laid out as it must be, the vectors show.
TEST_F(Rsa, WhatIsEncipheredIsOpened) {
    std::vector<RsaKey> keys;
    for (const char* const file : {"rsa_oaep.txt", "rsa_pkcs1_crypt.txt"}) {
        for (const Vector& record : load_vectors(file)) {
            if (record.has("n")) keys.emplace_back(record);
        }
    }
    ASSERT_EQ(keys.size(), 6U);
    for (const std::int32_t bits : {769, 1025})
        E_RSA_GenerateKey(keys.emplace_back(), bits, 3);  // p has one limb more than q
    for (std::size_t i = 0; i < 240; ++i) {
        const RsaKey& with = keys[i % keys.size()];
        const std::int32_t size = with.size();
        const std::int32_t hash = std::array{0, 1, 5, 6, 2}[random.below(5)];
        const std::int32_t mgf = std::array{0, 1, 5, 6, 7, 8}[random.below(6)];
        const auto most = static_cast<std::uint32_t>(size - 2 - 2 * (hash == 6 ? 32 : 20));
        const Bytes text = message_of(static_cast<std::int32_t>(random.below(most + 1))),
                    label = random.bytes(random.below(100));
        const std::int32_t len = length_of(text), label_len = length_of(label);
        SCOPED_TRACE(testing::Message() << "case " << i << ", hashes " << hash << " and " << mgf);
        const Outcome block = outcome_of([&](auto* out) { return E_RSA_Public_Encrypt(out, out, len, with); }, text);
        EXPECT_EQ(with.deciphered(block.out)[1], 2);
        EXPECT_EQ(outcome_of([&](auto* out) { return E_RSA_Private_Decrypt(out, block.out.data(), size, with); }),
                  message_outcome(text));
        const Outcome oaep = outcome_of(
            [&](auto* out) { return E_RSAES_OAEP_Encrypt(hash, mgf, out, out, len, label.data(), label_len, with); }, text);
        EXPECT_EQ(outcome_of([&](auto* out) {
                      return E_RSAES_OAEP_Decrypt(hash, mgf, out, oaep.out.data(), size, label.data(), label_len, with);
                  }),
                  message_outcome(text));
        const Outcome older = outcome_of(
            [&](auto* out) { return E_RSA_Public_Encrypt_OAEP(out, out, len, label.data(), label_len, with); }, text);
        EXPECT_EQ(outcome_of([&](auto* out) {
                      return E_RSAES_OAEP_Decrypt(0, 0, out, older.out.data(), size, label.data(), label_len, with);
                  }),
                  message_outcome(text));
        if (size % 2 != 0) continue;  // 1030 and 1031 bits: see below
        Bytes sig = text;
        sig.resize(700);
        std::int32_t sig_size = 0, salt = static_cast<std::int32_t>(i % 60);
        ASSERT_EQ(E_RSASSA_PSS_Sign(hash, mgf, sig.data(), &sig_size, sig.data(), len, salt, with), 1);
        ASSERT_EQ(sig_size, size);
        ASSERT_EQ(E_RSASSA_PSS_Verify(hash, mgf, text.data(), len, sig.data(), size, salt, with), 1);
    }
}

// A fault in the members for Chinese remainders, which would give the primes away: refused, or without effect.
TEST_F(Rsa, NoFaultInTheKeyGivesAWrongSignature) {
    const Bytes text = message_of(20);
    const Bytes right = outcome_of([&](auto* out) { return E_RSA_Private_Encrypt(out, text.data(), 20, key); }).out;
    int refused = 0;
    for (ENUM* const member : {&key->p, &key->q, &key->dP, &key->dQ, &key->qInv}) {
        for (std::uint32_t bit = 0; bit < 512; ++bit) {
            member->words[bit / 32] ^= 1U << bit % 32;
            const Outcome signing = outcome_of([&](auto* out) { return E_RSA_Private_Encrypt(out, text.data(), 20, key); });
            ASSERT_TRUE(signing.status == 0 || signing.out == right) << bit;
            refused += static_cast<int>(signing.status == 0);
            Bytes sig(k);
            std::int32_t size = 0, status = 0;
            if (bit % 16 == 7) status = E_RSASSA_PSS_Sign(0, 0, sig.data(), &size, text.data(), 20, 20, key);
            member->words[bit / 32] ^= 1U << bit % 32;
            ASSERT_TRUE(status == 0 || E_RSASSA_PSS_Verify(0, 0, text.data(), 20, sig.data(), k, 20, key) == 1) << bit;
        }
    }
    EXPECT_EQ(refused, 5 * 512);
}

// With a modulus of 1030 bits an encoded message, of 1031 bits, is below it sometimes; only then does the signature verify.
TEST_F(Rsa, OddModuliSign) {
    RsaKey one_more(load_vectors("rsa_pss.txt")[7]);
    ASSERT_EQ(EN_GetFilledBitNum(&one_more->n), 1025U);
    RsaKey six_more(load_vectors("rsa_oaep.txt")[7]);
    ASSERT_EQ(EN_GetFilledBitNum(&six_more->n), 1030U);
    Bytes sig(k + 1);
    std::int32_t size = 0;
    int verified = 0;
    testing::internal::CaptureStdout();
    for (std::int32_t i = 0; i < 60; ++i) {
        EXPECT_EQ(E_RSASSA_PSS_Sign(0, 0, sig.data(), &size, message.data(), i, 20, one_more), 1);
        EXPECT_EQ(E_RSASSA_PSS_Verify(0, 0, message.data(), i, sig.data(), size, 20, one_more), 1);
        EXPECT_EQ(E_RSASSA_PSS_Sign(0, 0, sig.data(), &size, message.data(), i, 20, six_more), 1);
        verified += E_RSASSA_PSS_Verify(0, 0, message.data(), i, sig.data(), size, 20, six_more) == 1 ? 1 : 0;
    }
    testing::internal::GetCapturedStdout();
    EXPECT_GT(verified, 0);
    EXPECT_LT(verified, 60);
}

// What is compared of a block is in fuzz/unpadding.cpp.
TEST_F(Rsa, SignsAndVerifiesLengthsThatThereAre) {
    Bytes sig(k);
    std::int32_t size = 0;
    EXPECT_EQ(E_RSA_Sign(message.data(), k - 10, sig.data(), &size, key), 1);
    EXPECT_EQ(size, -1);
    EXPECT_EQ(E_RSA_Sign(message.data(), k - 11, sig.data(), &size, key), 1);
    EXPECT_EQ(size, k);
    for (const std::int32_t len : {0, 1, 100}) EXPECT_EQ(E_RSA_Verify(message.data(), len, sig.data(), k, key), 1) << len;
    for (const std::int32_t len : {101, 700, -1, INT_MIN, INT_MAX}) {
        EXPECT_EQ(E_RSA_Verify(message.data(), len, sig.data(), k, key), 0) << len;
    }
    EXPECT_EQ(E_RSA_Verify(nullptr, 0, sig.data(), -1, key), 1);
}

// Chinese remainders by both rules: a wrong qInv shows where they are used.
TEST_F(Rsa, PrivateRulesByQInv) {
    ASSERT_EQ(key->qInv.length, 16);
    RsaKey wrong = key;
    wrong->qInv_words[0] ^= 2;
    RsaKey shorter = wrong;  // below 16 words, d is used where the length counts
    shorter->qInv.length = 15;
    RsaKey without = wrong;
    without->qInv.length = 0;
    Bytes padded(k, 1);  // eight octets of padding
    padded[0] = padded[10] = 0, padded[1] = 2;
    const Bytes block = key.enciphered(padded);
    Bytes out(k, 0xee);
    const Bytes untouched = out;
    std::int32_t size = 7;
    EXPECT_EQ(E_RSA_Private_Encrypt(out.data(), message.data(), 20, wrong), 0);
    EXPECT_EQ(E_RSA_Private_Decrypt(out.data(), block.data(), k, wrong), 0);
    EXPECT_EQ(E_RSA_Sign(message.data(), 20, out.data(), &size, wrong), 1);
    EXPECT_EQ(size, 0);
    size = 7;
    for (RsaKey* bad : {&wrong, &shorter}) {
        EXPECT_EQ(E_RSASSA_PSS_Sign(0, 0, out.data(), &size, message.data(), 20, 20, *bad), 0);
        EXPECT_EQ(E_RSAES_OAEP_Decrypt(0, 0, out.data(), block.data(), k, nullptr, 0, *bad), -1);
    }
    EXPECT_EQ(size, 7);
    EXPECT_EQ(out, untouched);
    EXPECT_EQ(E_RSA_Private_Encrypt(out.data(), message.data(), 20, shorter), k);
    EXPECT_EQ(E_RSA_Verify(message.data(), 20, out.data(), k, key), 1);
    EXPECT_EQ(E_RSA_Private_Decrypt(out.data(), block.data(), k, shorter), k - 11);
    EXPECT_EQ(E_RSASSA_PSS_Sign(0, 0, out.data(), &size, message.data(), 20, 20, without), 1);
    EXPECT_EQ(E_RSASSA_PSS_Verify(0, 0, message.data(), 20, out.data(), k, 20, key), 1);
}

// Every limit of a length with what is answered and printed there.
TEST_F(Rsa, LengthsAndTexts) {
    const std::uint8_t* const msg = message.data();
    const Bytes sig = key.deciphered(message_of(100));
    RsaKey empty = key;
    empty->n.length = 0;
    RsaKey huge = key;
    huge->n.length = E_RSA_MODULUS_WORDS + 1;

    const std::map<std::string, std::function<std::int32_t(std::uint8_t*, std::int32_t)>> calls = {
        {"block2", [&](auto* out, auto len) { return E_RSA_Public_Encrypt(out, msg, len, key); }},
        {"block1", [&](auto* out, auto len) { return E_RSA_Private_Encrypt(out, msg, len, key); }},
        {"open1", [&](auto* out, auto len) { return E_RSA_Public_Decrypt(out, sig.data(), len, key); }},
        {"open2", [&](auto* out, auto len) { return E_RSA_Private_Decrypt(out, sig.data(), len, key); }},
        {"older", [&](auto* out, auto len) { return E_RSA_Public_Encrypt_OAEP(out, msg, len, nullptr, 0, key); }},
        {"older_label", [&](auto* out, auto len) { return E_RSA_Public_Encrypt_OAEP(out, msg, 5, msg, len, key); }},
        {"newer", [&](auto* out, auto len) { return E_RSAES_OAEP_Encrypt(6, 0, out, msg, len, nullptr, 0, key); }},
        {"newer_sha512", [&](auto* out, auto len) { return E_RSAES_OAEP_Encrypt(8, 0, out, msg, len, msg, 5, key); }},
        {"older_open", [&](auto* out, auto len) { return E_RSA_Private_Decrypt_OAEP(out, sig.data(), len, msg, 0, key); }},
        {"newer_open", [&](auto* out, auto len) { return E_RSAES_OAEP_Decrypt(1, 1, out, sig.data(), len, msg, 0, key); }},
        {"newer_open_label",
         [&](auto* out, auto len) { return E_RSAES_OAEP_Decrypt(1, 1, out, sig.data(), k, msg, len, key); }},
        {"salt",
         [&](auto* out, auto len) {
             std::int32_t size = -7;
             const std::int32_t made = E_RSASSA_PSS_Sign(1, 0, out, &size, msg, 9, len, key);
             EXPECT_EQ(size, made == 1 ? k : -7);
             return made == 1 ? size : made;
         }},
        {"pss_verify", [&](auto*, auto len) { return E_RSASSA_PSS_Verify(0, 0, msg, 9, sig.data(), len, 20, key); }},
        {"pss_salt", [&](auto*, auto len) { return E_RSASSA_PSS_Verify(0, 0, msg, 9, sig.data(), k, len, key); }},
        {"without_modulus",
         [&](auto* out, auto len) {
             std::int32_t sum = 0;
             for (const RsaKey* bad : {&empty, &huge}) {
                 sum += E_RSA_Public_Encrypt(out, msg, len, *bad) + E_RSA_Private_Encrypt(out, msg, len, *bad) +
                        E_RSA_Public_Decrypt(out, msg, len, *bad) + E_RSA_Private_Decrypt(out, msg, len, *bad) +
                        E_RSA_Private_Decrypt_OAEP(out, msg, len, msg, 0, *bad) +
                        E_RSASSA_PSS_Verify(0, 0, msg, 9, msg, len, 20, *bad);
             }
             return sum;
         }},
    };
    for (const Vector& vector : load_vectors("rsa_lengths.txt")) {
        const std::string& name = vector.text("call");
        SCOPED_TRACE(name + ", " + vector.text("length"));
        testing::internal::CaptureStdout();
        const Outcome outcome =
            outcome_of([&](auto* out) { return calls.at(name)(out, std::stoi(vector.text("length"))); });
        EXPECT_EQ(printed_text(testing::internal::GetCapturedStdout()), vector.text("text"));
        EXPECT_EQ(outcome.status, std::stoi(vector.text("status")));
        const bool is_encoded = vector.text("text").find("oaep encoding") == std::string::npos;
        EXPECT_TRUE(is_encoded || outcome.out == Bytes(k)) << "zeros, enciphered";
    }
}

}  // namespace
