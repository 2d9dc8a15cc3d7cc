// SHA-0 against a second formulation.
//
// The library keeps the block in memory, where converting a word reverses its four bytes. Seen from outside, a message that
// comes in pieces is therefore an ordinary SHA-0 message whose bytes were exchanged inside their words first. The model
// below works out that message byte by byte and hashes it with the plain algorithm of FIPS 180.
#include <morvane/hash.h>

#include "support/bytes.h"

#include <gtest/gtest.h>
#include <algorithm>
#include <array>
#include <bit>

namespace {

using namespace morvane::test;
using Pieces = std::vector<Bytes>;

// FIPS 180, section 7, on one block of bytes.
void plain_compress(std::array<std::uint32_t, 5>& h, const std::uint8_t* block) {
    std::array<std::uint32_t, 80> w{};
    for (std::size_t t = 0; t < 80; ++t) {
        if (t < 16) {
            for (std::size_t i = 0; i < 4; ++i) w[t] = w[t] << 8 | block[4 * t + i];
        } else {
            w[t] = w[t - 3] ^ w[t - 8] ^ w[t - 14] ^ w[t - 16];
        }
    }
    std::array<std::uint32_t, 5> v = h;
    for (std::size_t t = 0; t < 80; ++t) {
        const auto [a, b, c, d, e] = v;
        const std::uint32_t f = t < 20   ? (b & c) | (~b & d)
                                : t < 40 ? b ^ c ^ d
                                : t < 60 ? (b & c) | (b & d) | (c & d)
                                         : b ^ c ^ d;
        constexpr std::uint32_t kConstants[] = {0x5a827999, 0x6ed9eba1, 0x8f1bbcdc, 0xca62c1d6};
        v = {std::rotl(a, 5) + f + e + w[t] + kConstants[t / 20], a, std::rotl(b, 30), c, d};
    }
    for (std::size_t i = 0; i < 5; ++i) h[i] += v[i];
}

Bytes model(const Pieces& pieces) {
    std::array<std::uint32_t, 5> h = {0x67452301, 0xefcdab89, 0x98badcfe, 0x10325476, 0xc3d2e1f0};
    Bytes block;  // as it lies in memory
    std::uint64_t bits = 0;
    const auto reverse_words = [&](std::size_t first, std::size_t last) {
        for (std::size_t i = first; i < last; ++i) std::reverse(block.data() + 4 * i, block.data() + 4 * i + 4);
    };
    const auto compress = [&] {
        reverse_words(0, 16);  // a host-order word in memory is a big-endian word of the standard, reversed
        plain_compress(h, block.data());
        block.clear();
    };
    for (const Bytes& piece : pieces) {
        bits += 8 * piece.size();
        for (std::size_t at = 0; at < piece.size();) {
            const std::size_t taken = std::min(piece.size() - at, 64 - block.size());
            block.insert(block.end(), piece.data() + at, piece.data() + at + taken);
            reverse_words(0, taken / 4);  // always from the first word on
            at += taken;
            if (block.size() == 64) compress();
        }
    }
    const std::size_t last_word = block.size() / 4;
    block.push_back(0x80);
    const bool two_blocks = block.size() > 56;
    block.resize(64);
    reverse_words(last_word, last_word + 1);
    if (two_blocks) {
        compress();
        block.assign(64, 0);
    }
    reverse_words(14, 16);
    for (std::size_t i = 0; i < 8; ++i) block[56 + i] = static_cast<std::uint8_t>(bits >> (56 - 8 * i));
    reverse_words(14, 16);
    compress();
    Bytes digest;
    for (const std::uint32_t word : h) {
        for (int shift = 24; shift >= 0; shift -= 8) digest.push_back(static_cast<std::uint8_t>(word >> shift));
    }
    return digest;
}

Bytes in_pieces(const Pieces& pieces) {
    E_SHA1_CTX ctx;
    E_SHA_Init(&ctx);
    for (const Bytes& piece : pieces) E_SHA_Update(&ctx, piece.data(), size32(piece));
    Bytes digest(E_SHA1_DIGEST_BYTES);
    E_SHA_Final(&ctx, digest.data());
    return digest;
}

Bytes at_once(const Bytes& message) {
    Bytes digest(E_SHA1_DIGEST_BYTES);
    E_SHA(digest.data(), message.data(), size32(message));
    return digest;
}

TEST(Sha0, MeetsPublishedDigests) {
    EXPECT_EQ(to_hex(at_once({})), "f96cea198ad1dd5617ac084a3d92c6107708c0ef");
    EXPECT_EQ(to_hex(at_once(from_text("abc"))), "0164b8a914cd2a5e74c4f7ff082c4d97f1edf880");
    EXPECT_EQ(to_hex(at_once(from_text("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq"))),
              "d2516ee1acfa5baf33dfc1c471e438449ef134c8");
    EXPECT_EQ(to_hex(at_once(repeated("a", 1000000))), "3232affa48628a26653b5aaa44541fd90d690603");
}

TEST(Sha0, PiecesThatFindTheBlockEmptyGiveTheStandardDigest) {
    Random random(20263);
    for (int i = 0; i < 300; ++i) {
        const Bytes blocks = random.bytes(64 * random.below(5));
        const Bytes rest = random.bytes(random.below(200));
        Bytes whole = blocks;
        whole.insert(whole.end(), rest.begin(), rest.end());
        ASSERT_EQ(in_pieces({blocks, rest}), at_once(whole)) << blocks.size() << " + " << rest.size();
    }
    // Pieces of fewer than four bytes convert nothing; three of them leave one word, which Final converts.
    EXPECT_EQ(in_pieces({from_text("a"), from_text("b"), from_text("c")}), at_once(from_text("abc")));
}

TEST(Sha0, OtherSplittingsFollowTheFirstWordRule) {
    const Bytes eight = from_text("abcdefgh");
    const Pieces halves = {from_text("abcd"), from_text("efgh")};
    EXPECT_NE(in_pieces(halves), at_once(eight)) << "the second half turns the first word back";

    constexpr std::uint32_t kSeed = 20264;
    SCOPED_TRACE(testing::Message() << "seed " << kSeed);
    Random random(kSeed);
    for (int i = 0; i < 3000; ++i) {
        Pieces pieces;
        for (std::uint32_t n = 1 + random.below(8); n != 0; --n) pieces.push_back(random.bytes(random.below(90)));
        ASSERT_EQ(to_hex(in_pieces(pieces)), to_hex(model(pieces))) << "message " << i;
    }
}

}  // namespace
