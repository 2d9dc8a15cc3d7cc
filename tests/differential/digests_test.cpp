// Random messages in random pieces, against OpenSSL.
#include <morvane/hash.h>

#include "support/bytes.h"

#include <gtest/gtest.h>
#include <openssl/evp.h>
#include <openssl/provider.h>
#include <memory>

namespace {

using namespace morvane::test;

Bytes by_openssl(const char* name, const Bytes& message) {
    Bytes digest(EVP_MAX_MD_SIZE);
    unsigned size = 0;
    const std::unique_ptr<EVP_MD, void (*)(EVP_MD*)> algorithm(EVP_MD_fetch(nullptr, name, nullptr), EVP_MD_free);
    EXPECT_EQ(EVP_Digest(message.data(), message.size(), digest.data(), &size, algorithm.get(), nullptr), 1) << name;
    digest.resize(size);
    return digest;
}

template <typename Context, auto Init, auto Update, auto Final>
void expect_equal(const char* name, std::uint32_t seed) {
    Random random(seed);
    for (int i = 0; i < 3000; ++i) {
        const Bytes message = random.bytes(random.below(i % 50 == 0 ? 20000 : 400));
        Context ctx;
        Init(&ctx);
        const std::uint32_t first = random.below(size32(message) + 1);
        Update(&ctx, message.data(), first);
        Update(&ctx, message.data() + first, size32(message) - first);
        Bytes digest = by_openssl(name, message);
        const Bytes expected = digest;
        Final(&ctx, digest.data());
        ASSERT_EQ(digest, expected) << name << ", message " << i << " of " << message.size() << " bytes, seed " << seed;
    }
}

TEST(Digests, EqualOpenSslOnRandomMessages) {
    // The default provider stays for the tests that come after.
    const std::unique_ptr<OSSL_PROVIDER, int (*)(OSSL_PROVIDER*)> legacy(OSSL_PROVIDER_try_load(nullptr, "legacy", 1),
                                                                         OSSL_PROVIDER_unload);
    expect_equal<E_SHA1_CTX, E_SHA1_Init, E_SHA1_Update, E_SHA1_Final>("SHA1", 20268);
    expect_equal<E_SHA256_CTX, E_SHA256_Init, E_SHA256_Update, E_SHA256_Final>("SHA256", 20269);
    expect_equal<E_SHA512_CTX, E_SHA384_Init, E_SHA384_Update, E_SHA384_Final>("SHA384", 20270);
    expect_equal<E_SHA512_CTX, E_SHA512_Init, E_SHA512_Update, E_SHA512_Final>("SHA512", 20271);
    expect_equal<E_RIPEMD160_CTX, E_RIPEMD160_Init, E_RIPEMD160_Update, E_RIPEMD160_Final>("RIPEMD160", 20272);
    if (legacy) {  // a file of its own, which need not be installed
        expect_equal<E_MD5_CTX, E_MD4_Init, E_MD4_Update, E_MD4_Final>("MD4", 20273);
    }
}

}  // namespace
