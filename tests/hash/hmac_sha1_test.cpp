// The expected values are computed with E_SHA1 from the two rules by which this MAC departs from RFC 2104:
//   MAC = SHA1((K ^ opad) || first 16 bytes of SHA1((K' ^ ipad) || message))
// K and K' are the key, zero-extended; of a key longer than 64 bytes, K is the first 16 bytes of its SHA-1 and K' its first
// 64 bytes.
#include <morvane/hash.h>

#include "support/bytes.h"

#include <gtest/gtest.h>
#include <algorithm>

namespace {

using namespace morvane::test;

Bytes sha1_of(const Bytes& first, const Bytes& second) {
    Bytes whole = first;
    whole.insert(whole.end(), second.begin(), second.end());
    Bytes digest(E_SHA1_DIGEST_BYTES);
    E_SHA1(digest.data(), whole.data(), size32(whole));
    return digest;
}

Bytes padded(Bytes key, std::uint8_t pad) {
    key.resize(64);
    for (std::uint8_t& byte : key) byte ^= pad;
    return key;
}

Bytes expected_mac(const Bytes& key, const Bytes& message) {
    Bytes outer_key = key;
    if (key.size() > 64) {
        outer_key = sha1_of(key, {});
        outer_key.resize(16);
    }
    Bytes inner = sha1_of(padded(key, 0x36), message);
    inner.resize(16);
    return sha1_of(padded(outer_key, 0x5c), inner);
}

Bytes mac_of(const Bytes& key, const Bytes& message) {
    Bytes mac(E_SHA1_DIGEST_BYTES);
    E_HMAC_SHA1(message.data(), size32(message), key.data(), static_cast<std::int32_t>(key.size()), mac.data());
    return mac;
}

TEST(HmacSha1, FollowsItsOwnRulesForEveryKeyLength) {
    Random random(20265);
    for (std::uint32_t key_bytes = 0; key_bytes <= 200; ++key_bytes) {
        const Bytes key = random.bytes(key_bytes);
        const Bytes message = random.bytes(random.below(300));
        ASSERT_EQ(to_hex(mac_of(key, message)), to_hex(expected_mac(key, message))) << "key of " << key_bytes << " bytes";
    }
}

TEST(HmacSha1, IsNotTheMacOfRfc2104) {
    // Case 1 of RFC 2202.
    EXPECT_NE(to_hex(mac_of(Bytes(20, 0x0b), from_text("Hi There"))), "b617318655057264e28bc0b6fb378c8ef146be00");
    // The same by another implementation of SHA-1, so that a fault of ours cannot hide on both sides.
    EXPECT_EQ(to_hex(mac_of(Bytes(20, 0x0b), from_text("Hi There"))), "dc92b26eb0049144fad4880f0aa78106cc4eddd2");
}

TEST(HmacSha1, StreamsAndReportsTheKeyLengthInTheRecord) {
    Random random(20266);
    for (const std::uint32_t key_bytes : {20U, 64U, 65U}) {
        const Bytes key = random.bytes(key_bytes);
        const Bytes message = random.bytes(150);
        E_HMAC_SHA1_CTX ctx;
        E_HMAC_SHA1_Init(&ctx, key.data(), static_cast<std::int32_t>(key_bytes));
        EXPECT_EQ(ctx.key_len, key_bytes > 64 ? 16 : key_bytes);
        const Bytes kept = key_bytes > 64 ? sha1_of(key, {}) : key;
        EXPECT_TRUE(std::equal(kept.begin(), kept.end(), ctx.key));
        E_HMAC_SHA1_Update(&ctx, message.data(), 70);
        E_HMAC_SHA1_Update(&ctx, message.data() + 70, 0);
        E_HMAC_SHA1_Update(&ctx, message.data() + 70, 80);
        Bytes mac(E_SHA1_DIGEST_BYTES);
        E_HMAC_SHA1_Final(&ctx, mac.data());
        EXPECT_EQ(mac, expected_mac(key, message));
    }
}

TEST(HmacSha1, BoundsAbsurdKeyLengths) {
    // Negative: an empty key that is not read.
    Bytes mac(E_SHA1_DIGEST_BYTES);
    const Bytes message = from_text("message");
    for (const std::int32_t length : {-1, INT32_MIN}) {
        E_HMAC_SHA1(message.data(), size32(message), nullptr, length, mac.data());
        EXPECT_EQ(mac, expected_mac({}, message));
    }
    // A length above 64 in a record that its owner changed: Final reads no more than the key field holds.
    E_HMAC_SHA1_CTX ctx;
    const Bytes key(64, 0x11);
    E_HMAC_SHA1_Init(&ctx, key.data(), 64);
    E_HMAC_SHA1_Update(&ctx, message.data(), size32(message));
    ctx.key_len = 0xffffffff;
    E_HMAC_SHA1_Final(&ctx, mac.data());
    EXPECT_EQ(mac, expected_mac(key, message));
}

}  // namespace
