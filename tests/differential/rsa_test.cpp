// RSA with random keys, messages, labels and salts, both ways against OpenSSL.
#include <openssl/core_names.h>
#include <openssl/evp.h>
#include <openssl/rsa.h>

#include "pk/rsa_key.h"

#include <functional>
#include <memory>

namespace {

using namespace morvane::test;

using PKey = std::unique_ptr<EVP_PKEY, void (*)(EVP_PKEY*)>;
using Context = std::unique_ptr<EVP_PKEY_CTX, void (*)(EVP_PKEY_CTX*)>;

constexpr std::uint32_t kSeed = 20298;

constexpr struct {
    std::int32_t id;
    const EVP_MD* (*digest)();
    std::int32_t bytes;
} kHashes[] = {{0, EVP_sha1, 20}, {6, EVP_sha256, 32}, {7, EVP_sha384, 48}, {8, EVP_sha512, 64}};

PKey generate(unsigned bits) { return {EVP_RSA_gen(bits), EVP_PKEY_free}; }

RsaKey key_of(const EVP_PKEY* theirs) {
    RsaKey key;
    const std::pair<const char*, ENUM*> members[] = {
        {OSSL_PKEY_PARAM_RSA_N, &key->n},          {OSSL_PKEY_PARAM_RSA_E, &key->e},
        {OSSL_PKEY_PARAM_RSA_D, &key->d},          {OSSL_PKEY_PARAM_RSA_FACTOR1, &key->p},
        {OSSL_PKEY_PARAM_RSA_FACTOR2, &key->q},    {OSSL_PKEY_PARAM_RSA_EXPONENT1, &key->dP},
        {OSSL_PKEY_PARAM_RSA_EXPONENT2, &key->dQ}, {OSSL_PKEY_PARAM_RSA_COEFFICIENT1, &key->qInv}};
    for (const auto& [name, member] : members) {
        BIGNUM* value = nullptr;
        EXPECT_EQ(EVP_PKEY_get_bn_param(theirs, name, &value), 1) << name;
        Bytes octets(static_cast<std::size_t>(BN_num_bytes(value)));
        BN_bn2bin(value, octets.data());
        RsaKey::set(*member, octets);
        BN_clear_free(value);
    }
    return key;
}

// What OpenSSL does to input with a key: the operation's beginning, its padding and further settings, the operation.
using Begin = int (*)(EVP_PKEY_CTX*);
using Set = std::function<int(EVP_PKEY_CTX*)>;
using Run = int (*)(EVP_PKEY_CTX*, unsigned char*, std::size_t*, const unsigned char*, std::size_t);

Bytes by_openssl(EVP_PKEY* key, Begin begin, const Set& set, Run run, const Bytes& input) {
    const Context ctx(EVP_PKEY_CTX_new(key, nullptr), EVP_PKEY_CTX_free);
    Bytes output(700);
    std::size_t size = output.size();
    EXPECT_EQ(begin(ctx.get()), 1);
    EXPECT_GT(set(ctx.get()), 0);
    EXPECT_EQ(run(ctx.get(), output.data(), &size, input.data(), input.size()), 1);
    output.resize(size);
    return output;
}

Set padding(int kind) {
    return [=](EVP_PKEY_CTX* ctx) { return EVP_PKEY_CTX_set_rsa_padding(ctx, kind); };
}

Set oaep(const EVP_MD* digest, const EVP_MD* mask_digest, const Bytes& label) {
    return [=](EVP_PKEY_CTX* ctx) {
        void* const copy = label.empty() ? nullptr : OPENSSL_memdup(label.data(), label.size());
        return static_cast<int>(EVP_PKEY_CTX_set_rsa_padding(ctx, RSA_PKCS1_OAEP_PADDING) > 0 &&
                                EVP_PKEY_CTX_set_rsa_oaep_md(ctx, digest) > 0 &&
                                EVP_PKEY_CTX_set_rsa_mgf1_md(ctx, mask_digest) > 0 &&
                                EVP_PKEY_CTX_set0_rsa_oaep_label(ctx, copy, static_cast<int>(label.size())) > 0);
    };
}

Set pss(const EVP_MD* digest, const EVP_MD* mask_digest, int salt) {
    return [=](EVP_PKEY_CTX* ctx) {
        return static_cast<int>(EVP_PKEY_CTX_set_rsa_padding(ctx, RSA_PKCS1_PSS_PADDING) > 0 &&
                                EVP_PKEY_CTX_set_signature_md(ctx, digest) > 0 &&
                                EVP_PKEY_CTX_set_rsa_mgf1_md(ctx, mask_digest) > 0 &&
                                EVP_PKEY_CTX_set_rsa_pss_saltlen(ctx, salt) > 0);
    };
}

class RsaDifferential : public testing::TestWithParam<unsigned> {
protected:
    PKey theirs = generate(GetParam());
    RsaKey ours = key_of(theirs.get());
    std::int32_t k = ours.size();
    Random random{kSeed + GetParam()};

    Bytes message(std::int32_t most) { return random.bytes(random.below(static_cast<std::uint32_t>(most) + 1)); }
    const auto& any_hash() { return kHashes[random.below(std::size(kHashes))]; }
};

TEST_P(RsaDifferential, Pkcs1) {
    for (int i = 0; i < 40; ++i) {
        SCOPED_TRACE("case " + std::to_string(i) + ", seed " + std::to_string(kSeed) + " + bits");
        const Bytes text = message(k - 11);
        const std::int32_t len = length_of(text);
        const Outcome block = outcome_of([&](auto* out) { return E_RSA_Public_Encrypt(out, text.data(), len, ours); });
        EXPECT_EQ(by_openssl(theirs.get(), EVP_PKEY_decrypt_init, padding(RSA_PKCS1_PADDING), EVP_PKEY_decrypt, block.out),
                  text);
        const Bytes their_block =
            by_openssl(theirs.get(), EVP_PKEY_encrypt_init, padding(RSA_PKCS1_PADDING), EVP_PKEY_encrypt, text);
        EXPECT_EQ(outcome_of([&](auto* out) { return E_RSA_Private_Decrypt(out, their_block.data(), k, ours); }),
                  message_outcome(text));
        const Bytes their_sig =
            by_openssl(theirs.get(), EVP_PKEY_sign_init, padding(RSA_PKCS1_PADDING), EVP_PKEY_sign, text);
        EXPECT_EQ(outcome_of([&](auto* out) { return E_RSA_Private_Encrypt(out, text.data(), len, ours); }),
                  message_outcome(their_sig));
        EXPECT_EQ(outcome_of([&](auto* out) { return E_RSA_Public_Decrypt(out, their_sig.data(), k, ours); }),
                  message_outcome(text));
    }
}

TEST_P(RsaDifferential, Oaep) {
    for (int i = 0; i < 60; ++i) {
        const auto& hash = any_hash();
        const auto& mgf = any_hash();
        SCOPED_TRACE("case " + std::to_string(i) + ", seed " + std::to_string(kSeed) + " + bits, hashes " +
                     std::to_string(hash.id) + " and " + std::to_string(mgf.id));
        const std::int32_t most = k - 2 - 2 * hash.bytes;
        if (most < 0) continue;
        const Bytes text = message(most);
        const Bytes label = i % 4 == 0 ? Bytes() : message(200);
        const std::int32_t len = length_of(text);
        const std::int32_t label_len = length_of(label);
        const Set set = oaep(hash.digest(), mgf.digest(), label);
        const Outcome block = outcome_of([&](auto* out) {
            return E_RSAES_OAEP_Encrypt(hash.id, mgf.id, out, text.data(), len, label.data(), label_len, ours);
        });
        EXPECT_EQ(by_openssl(theirs.get(), EVP_PKEY_decrypt_init, set, EVP_PKEY_decrypt, block.out), text);
        const Bytes their_block = by_openssl(theirs.get(), EVP_PKEY_encrypt_init, set, EVP_PKEY_encrypt, text);
        EXPECT_EQ(outcome_of([&](auto* out) {
                      return E_RSAES_OAEP_Decrypt(hash.id, mgf.id, out, their_block.data(), k, label.data(), label_len,
                                                  ours);
                  }),
                  message_outcome(text));
        if (hash.id != 0 || mgf.id != 0) continue;
        const Outcome older = outcome_of(
            [&](auto* out) { return E_RSA_Public_Encrypt_OAEP(out, text.data(), len, label.data(), label_len, ours); });
        EXPECT_EQ(by_openssl(theirs.get(), EVP_PKEY_decrypt_init, set, EVP_PKEY_decrypt, older.out), text);
        const bool whole = ours.deciphered(their_block)[1] != 0;  // one encoded message in 256 begins with a zero
        EXPECT_EQ(outcome_of([&](auto* out) {
                      return E_RSA_Private_Decrypt_OAEP(out, their_block.data(), k, label.data(), label_len, ours);
                  }),
                  whole ? message_outcome(text) : (Outcome{-1, {}}));
    }
}

TEST_P(RsaDifferential, Pss) {
    if (GetParam() % 8 != 0) return;  // elsewhere these signatures are not those of the standard
    for (int i = 0; i < 40; ++i) {
        const auto& hash = any_hash();
        const auto& mgf = any_hash();
        SCOPED_TRACE("case " + std::to_string(i) + ", seed " + std::to_string(kSeed) + " + bits, hashes " +
                     std::to_string(hash.id) + " and " + std::to_string(mgf.id));
        const std::int32_t most = k - 2 - hash.bytes;
        if (most < 0) continue;
        const Bytes text = message(300);
        const std::int32_t salt = static_cast<std::int32_t>(random.below(static_cast<std::uint32_t>(most) + 1));
        Bytes digest(static_cast<std::size_t>(hash.bytes));
        ASSERT_EQ(EVP_Digest(text.data(), text.size(), digest.data(), nullptr, hash.digest(), nullptr), 1);
        const Set set = pss(hash.digest(), mgf.digest(), salt);
        const Bytes their_sig = by_openssl(theirs.get(), EVP_PKEY_sign_init, set, EVP_PKEY_sign, digest);
        EXPECT_EQ(E_RSASSA_PSS_Verify(hash.id, mgf.id, text.data(), length_of(text), their_sig.data(), k, salt, ours), 1);
        Bytes sig(static_cast<std::size_t>(k));
        std::int32_t size = 0;
        EXPECT_EQ(E_RSASSA_PSS_Sign(hash.id, mgf.id, sig.data(), &size, text.data(), length_of(text), salt, ours), 1);
        EXPECT_EQ(size, k);
        const Context ctx(EVP_PKEY_CTX_new(theirs.get(), nullptr), EVP_PKEY_CTX_free);
        EXPECT_EQ(EVP_PKEY_verify_init(ctx.get()), 1);
        EXPECT_GT(set(ctx.get()), 0);
        EXPECT_EQ(EVP_PKEY_verify(ctx.get(), sig.data(), sig.size(), digest.data(), digest.size()), 1);
    }
}

INSTANTIATE_TEST_SUITE_P(Bits, RsaDifferential, testing::Values(512U, 768U, 1024U, 1025U, 1031U, 1536U, 2048U),
                         testing::PrintToStringParamName());

}  // namespace
