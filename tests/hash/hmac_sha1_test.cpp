// The two rules by which this MAC departs from RFC 2104, as the vectors have them:
//   MAC = SHA1((K ^ opad) || first 16 bytes of SHA1((K' ^ ipad) || message))
// K and K' are the key, zero-extended; of a key longer than 64 bytes, K is the first 16 bytes of its SHA-1 and K' its first
// 64 bytes.
#include <morvane/hash.h>

#include "support/vectors.h"

#include <gtest/gtest.h>
#include <algorithm>

namespace {

using namespace morvane::test;

Bytes mac_of(const Bytes& key, const Bytes& message) {
    Bytes mac(E_SHA1_DIGEST_BYTES);
    E_HMAC_SHA1(message.data(), size32(message), key.data(), static_cast<std::int32_t>(key.size()), mac.data());
    return mac;
}

TEST(HmacSha1, MeetsItsVectors) {
    for (const Vector& vector : load_vectors("hmac_sha1.txt")) {
        SCOPED_TRACE("key " + vector.text("key"));
        const Bytes key = vector.bytes("key"), message = vector.bytes("message");
        EXPECT_EQ(to_hex(mac_of(key, message)), vector.text("mac"));
        Bytes kept = key, mac(E_SHA1_DIGEST_BYTES);
        if (key.size() > 64) {
            E_SHA1(mac.data(), key.data(), size32(key));
            kept.assign(mac.begin(), mac.begin() + 16);
        }
        E_HMAC_SHA1_CTX ctx;
        E_HMAC_SHA1_Init(&ctx, key.data(), static_cast<std::int32_t>(key.size()));
        EXPECT_EQ(ctx.key_len, kept.size());
        EXPECT_TRUE(std::equal(kept.begin(), kept.end(), ctx.key));
        const std::uint32_t first = size32(message) / 2;
        E_HMAC_SHA1_Update(&ctx, message.data(), first);
        E_HMAC_SHA1_Update(&ctx, message.data() + first, size32(message) - first);
        E_HMAC_SHA1_Final(&ctx, mac.data());
        EXPECT_EQ(to_hex(mac), vector.text("mac"));
    }
}

TEST(HmacSha1, BoundsAbsurdKeyLengths) {
    // Negative: an empty key that is not read.
    Bytes mac(E_SHA1_DIGEST_BYTES);
    const Bytes message = from_text("message");
    for (const std::int32_t length : {-1, INT32_MIN}) {
        E_HMAC_SHA1(message.data(), size32(message), nullptr, length, mac.data());
        EXPECT_EQ(mac, mac_of({}, message));
    }
    // A length above 64 in a record that its owner changed: Final reads no more than the key field holds.
    E_HMAC_SHA1_CTX ctx;
    const Bytes key(64, 0x11);
    E_HMAC_SHA1_Init(&ctx, key.data(), 64);
    E_HMAC_SHA1_Update(&ctx, message.data(), size32(message));
    ctx.key_len = 0xffffffff;
    E_HMAC_SHA1_Final(&ctx, mac.data());
    EXPECT_EQ(mac, mac_of(key, message));
}

}  // namespace
