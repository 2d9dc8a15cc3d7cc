// Random messages in random pieces, against OpenSSL.
#include <morvane/hash.h>

#include "support/bytes.h"

#include <gtest/gtest.h>
#include <openssl/evp.h>

namespace {

using namespace morvane::test;

Bytes by_openssl(const char* name, const Bytes& message) {
    Bytes digest(EVP_MAX_MD_SIZE);
    unsigned size = 0;
    EXPECT_EQ(EVP_Digest(message.data(), message.size(), digest.data(), &size, EVP_get_digestbyname(name), nullptr), 1);
    digest.resize(size);
    return digest;
}

TEST(Sha1, EqualsOpenSslOnRandomMessages) {
    constexpr std::uint32_t kSeed = 20268;
    SCOPED_TRACE(testing::Message() << "seed " << kSeed);
    Random random(kSeed);
    for (int i = 0; i < 5000; ++i) {
        const Bytes message = random.bytes(random.below(i % 50 == 0 ? 20000 : 300));
        E_SHA1_CTX ctx;
        E_SHA1_Init(&ctx);
        const std::uint32_t first = random.below(size32(message) + 1);
        E_SHA1_Update(&ctx, message.data(), first);
        E_SHA1_Update(&ctx, message.data() + first, size32(message) - first);
        Bytes digest(E_SHA1_DIGEST_BYTES);
        E_SHA1_Final(&ctx, digest.data());
        ASSERT_EQ(digest, by_openssl("SHA1", message)) << "message " << i << ", " << message.size() << " bytes";
    }
}

}  // namespace
