#include <morvane/hash.h>

#include "support/vectors.h"

#include <gtest/gtest.h>
#include <cstring>

namespace {

using namespace morvane::test;

Bytes sha1(const Bytes& message) {
    Bytes digest(E_SHA1_DIGEST_BYTES);
    E_SHA1(digest.data(), message.data(), size32(message));
    return digest;
}

Bytes finish(E_SHA1_CTX& ctx) {
    Bytes digest(E_SHA1_DIGEST_BYTES);
    E_SHA1_Final(&ctx, digest.data());
    return digest;
}

TEST(Sha1, MeetsMonteCarloChain) {
    const std::vector<Vector> vectors = load_vectors("sha1_monte.txt");
    Bytes seed = vectors.at(0).bytes("seed");
    for (std::size_t i = 1; i < vectors.size(); ++i) {
        Bytes window;  // the last three digests
        for (int copies = 0; copies < 3; ++copies) window.insert(window.end(), seed.begin(), seed.end());
        for (int round = 0; round < 1000; ++round) {
            const Bytes next = sha1(window);
            window.erase(window.begin(), window.begin() + E_SHA1_DIGEST_BYTES);
            window.insert(window.end(), next.begin(), next.end());
        }
        seed.assign(window.end() - E_SHA1_DIGEST_BYTES, window.end());
        ASSERT_EQ(to_hex(seed), vectors[i].text("checkpoint")) << "checkpoint " << i;
    }
}

TEST(Sha1, CarriesTheBitCountIntoTheHighWord) {
    // The count is all that a record knows of earlier blocks besides the chaining value, so a preset count stands for a
    // long message. 0xfffffe00 bits and two blocks more pass 2^32; the length word of the padding shows the carry.
    E_SHA1_CTX ctx;
    E_SHA1_Init(&ctx);
    ctx.count_lo = 0xfffffe00;
    const Bytes two_blocks(128, 'x');
    E_SHA1_Update(&ctx, two_blocks.data(), 128);
    EXPECT_EQ(ctx.count_lo, 0x200U);
    EXPECT_EQ(ctx.count_hi, 1U);
    finish(ctx);
    EXPECT_EQ(ctx.block[14], 1U);
    EXPECT_EQ(ctx.block[15], 0x200U);
}

TEST(Sha1, CountsTheBitsOfLengthsAbove512MiB) {
    // An update of 2^29 bytes adds 2^32 bits: nothing to the low word, one to the high one.
    const std::vector<std::uint8_t> message(std::size_t{1} << 29);
    E_SHA1_CTX ctx;
    E_SHA1_Init(&ctx);
    E_SHA1_Update(&ctx, message.data(), 1U << 29);
    EXPECT_EQ(ctx.count_lo, 0U);
    EXPECT_EQ(ctx.count_hi, 1U);
    EXPECT_EQ(to_hex(finish(ctx)), "5b088492c9f4778f409b7ae61477dec124c99033");  // sha1sum of as many zero bytes
}

TEST(Sha1, LeavesItsLastBlockInTheRecord) {
    E_SHA1_CTX ctx;
    E_SHA1_Init(&ctx);
    const Bytes message = from_text("abcde");
    E_SHA1_Update(&ctx, message.data(), 5);
    E_SHA1_Update(&ctx, nullptr, 0);
    EXPECT_EQ(std::memcmp(ctx.block, "abcde", 5), 0) << "bytes wait in arrival order";
    const Bytes digest = finish(ctx);
    EXPECT_EQ(ctx.block[0], 0x61626364U);
    EXPECT_EQ(ctx.block[1], 0x65800000U);
    EXPECT_EQ(ctx.block[15], 40U);
    EXPECT_EQ(ctx.count_lo, 40U);
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_EQ(ctx.state[i] >> 24, digest[4 * i]);
        EXPECT_EQ(ctx.state[i] & 0xff, digest[4 * i + 3]);
    }
}

TEST(Sha1, BareCompressionIsTheDigestWithoutPadding) {
    // One block through Update leaves in the record what one bare compression from the initial value writes.
    Random random(20262);
    for (int i = 0; i < 100; ++i) {
        const Bytes block = random.bytes(E_SHA1_BLOCK_BYTES);
        E_SHA1_CTX ctx;
        E_SHA1_Init(&ctx);
        E_SHA1_Update(&ctx, block.data(), E_SHA1_BLOCK_BYTES);
        Bytes expected;
        for (const std::uint32_t word : ctx.state) {
            for (int shift = 24; shift >= 0; shift -= 8) expected.push_back(static_cast<std::uint8_t>(word >> shift));
        }
        Bytes digest(E_SHA1_DIGEST_BYTES);
        E_MySHA1(digest.data(), block.data());
        ASSERT_EQ(digest, expected) << to_hex(block);
    }
}

}  // namespace
