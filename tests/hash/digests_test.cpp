// What every digest must do: meet its published vectors and give one digest for a message however it is cut. MD5 has no
// exported function; it is reached through the provider layer, as all that have an identifier are here as well.
#include <morvane/hash.h>

#include "csp/test_session.h"
#include "support/seeded.h"
#include "support/vectors.h"

#include <cstring>

namespace {

using namespace morvane::test;

using Pieces = std::vector<Bytes>;

struct Digest {
    const char* name;  // also of its vectors
    std::size_t bytes;
    Bytes (*in_pieces)(const Pieces&);
    Bytes (*at_once)(const Bytes&);
};

template <typename Context, auto Init, auto Update, auto Final, std::size_t Size, typename Length = std::uint32_t>
Bytes in_pieces(const Pieces& pieces) {
    Context ctx;
    Init(&ctx);
    for (const Bytes& piece : pieces) Update(&ctx, piece.data(), static_cast<Length>(piece.size()));
    Bytes digest(Size);
    Final(&ctx, digest.data());
    return digest;
}

template <auto OneShot, std::size_t Size, typename Length = std::uint32_t>
Bytes at_once(const Bytes& message) {
    Bytes digest(Size);
    OneShot(digest.data(), message.data(), static_cast<Length>(message.size()));
    return digest;
}

template <auto OneShot, std::size_t Size>
Bytes at_once_sha2(const Bytes& message) {
    Bytes digest(Size);
    std::uint32_t size = 0;
    OneShot(digest.data(), &size, message.data(), size32(message));
    EXPECT_EQ(size, Size);
    return digest;
}

template <std::uint32_t Algorithm, std::size_t Size>
Bytes by_provider(const Pieces& pieces) {
    Session session(CSP_CONTEXT_DIGEST, Algorithm);
    EXPECT_EQ(CSP_DigestDataInit(100, session.handle(), nullptr), 0);
    for (Bytes piece : pieces) {
        piece.push_back(0);  // so that Data is never null
        const CSSM_DATA buffer = {size32(piece) - 1, piece.data()};
        EXPECT_EQ(CSP_DigestDataUpdate(100, session.handle(), &buffer, 1), 0);
    }
    Bytes digest(Size);
    CSSM_DATA output = {Size, digest.data()};
    EXPECT_EQ(CSP_DigestDataFinal(100, session.handle(), &output), 0);
    EXPECT_EQ(output.Length, Size);
    return digest;
}

template <std::uint32_t Algorithm, std::size_t Size>
Bytes by_provider_at_once(const Bytes& message) {
    return by_provider<Algorithm, Size>({message});
}

const Digest kDigests[] = {
    {"md2", 16, in_pieces<E_MD2_CTX, E_MD2_Init, E_MD2_Update, E_MD2_Final, 16>, at_once<E_MD2, 16>},
    {"md2", 16, by_provider<CSP_ALG_MD2, 16>, at_once<E_MD2, 16>},
    {"md4", 16, in_pieces<E_MD5_CTX, E_MD4_Init, E_MD4_Update, E_MD4_Final, 16>, at_once<E_MD4, 16>},
    {"md4", 16, by_provider<CSP_ALG_MD4, 16>, at_once<E_MD4, 16>},
    {"md5", 16, by_provider<CSP_ALG_MD5, 16>, by_provider_at_once<CSP_ALG_MD5, 16>},
    {"sha1", 20, in_pieces<E_SHA1_CTX, E_SHA1_Init, E_SHA1_Update, E_SHA1_Final, 20>, at_once<E_SHA1, 20>},
    {"ripemd160", 20, in_pieces<E_RIPEMD160_CTX, E_RIPEMD160_Init, E_RIPEMD160_Update, E_RIPEMD160_Final, 20>,
     at_once<E_RIPEMD160, 20>},
    {"ripemd160", 20, by_provider<CSP_ALG_RIPEMD160, 20>, at_once<E_RIPEMD160, 20>},
    {"has160", 20, in_pieces<E_HAS160_CTX, E_HAS160_Init, E_HAS160_Update, E_HAS160_Final, 20, std::int32_t>,
     at_once<E_HAS160, 20, std::int32_t>},
    {"has160", 20, by_provider<CSP_ALG_HAS160, 20>, at_once<E_HAS160, 20, std::int32_t>},
    {"sha256", 32, in_pieces<E_SHA256_CTX, E_SHA256_Init, E_SHA256_Update, E_SHA256_Final, 32>, at_once_sha2<E_SHA256, 32>},
    {"sha384", 48, in_pieces<E_SHA512_CTX, E_SHA384_Init, E_SHA384_Update, E_SHA384_Final, 48>, at_once_sha2<E_SHA384, 48>},
    {"sha512", 64, in_pieces<E_SHA512_CTX, E_SHA512_Init, E_SHA512_Update, E_SHA512_Final, 64>, at_once_sha2<E_SHA512, 64>},
};

TEST(Digests, MeetPublishedVectors) {
    for (const Digest& digest : kDigests) {
        for (const Vector& vector : load_vectors(std::string(digest.name) + ".txt")) {
            Bytes message = vector.bytes("message");
            if (vector.has("times")) message = repeated("a", std::stoul(vector.text("times")));
            ASSERT_EQ(to_hex(digest.at_once(message)), vector.text("digest"))
                << digest.name << " of " << message.size() << " bytes";
            ASSERT_EQ(to_hex(digest.in_pieces({message})), vector.text("digest")) << digest.name;
        }
    }
}

TEST(Digests, AnySplittingGivesTheSameDigest) {
    Seeded random(20261);
    for (const Digest& digest : kDigests) {
        for (int i = 0; i < 500; ++i) {
            const std::uint32_t longest = 1 + random.below(300);
            Pieces pieces;
            Bytes whole;
            for (std::uint32_t n = random.below(8); n != 0; --n) {
                pieces.push_back(random.bytes(random.below(longest)));
                whole.insert(whole.end(), pieces.back().begin(), pieces.back().end());
            }
            ASSERT_EQ(digest.in_pieces(pieces), digest.at_once(whole)) << digest.name << ", message " << i;
        }
    }
}

// The counts are all that a record knows of earlier blocks besides the chaining value, so a preset count stands for a long
// message.
template <typename Context, auto Init, auto Update>
Context after_two_blocks_past_2_to_the_32_bits() {
    Context ctx;
    Init(&ctx);
    ctx.count_lo = 0xfffffe00;
    Update(&ctx, Bytes(128, 'x').data(), 128);
    EXPECT_EQ(ctx.count_lo, 0x200U);
    return ctx;
}

TEST(Digests, CountBitsWithTheCarriesOfTheirRecords) {
    Bytes digest(64);
    EXPECT_EQ((after_two_blocks_past_2_to_the_32_bits<E_SHA256_CTX, E_SHA256_Init, E_SHA256_Update>()).count_hi, 0U);

    auto sha1 = after_two_blocks_past_2_to_the_32_bits<E_SHA1_CTX, E_SHA1_Init, E_SHA1_Update>();
    E_SHA1_Final(&sha1, digest.data());
    EXPECT_TRUE(sha1.block[14] == 1 && sha1.block[15] == 0x200);

    auto md4 = after_two_blocks_past_2_to_the_32_bits<E_MD5_CTX, E_MD4_Init, E_MD4_Update>();
    E_MD4_Final(&md4, digest.data());
    EXPECT_TRUE(md4.count_hi == 1 && md4.count_lo == 0x400) << "the padding is counted too";

    auto has160 = after_two_blocks_past_2_to_the_32_bits<E_HAS160_CTX, E_HAS160_Init, E_HAS160_Update>();
    E_HAS160_Update(&has160, digest.data(), -5);
    E_HAS160_Final(&has160, digest.data());
    EXPECT_EQ(to_hex(has160.block + 56, 8), "0002000001000000");

    E_SHA512_CTX sha512;
    E_SHA512_Init(&sha512);
    EXPECT_TRUE(sha512.state[0] == 0xf3bcc908 && sha512.state[1] == 0x6a09e667) << "low half first";
    sha512.count[0] = 0xfffffc00;
    sha512.count[1] = sha512.count[2] = 0xffffffff;
    E_SHA512_Update(&sha512, Bytes(256).data(), 256);
    EXPECT_TRUE(sha512.count[0] == 0x400 && sha512.count[1] == 0 && sha512.count[2] == 0 && sha512.count[3] == 1);
    E_SHA512_Final(&sha512, digest.data());
    EXPECT_EQ(to_hex(sha512.block + 112, 16), "00000001000000000000000000000400");
}

Bytes finish_sha1(E_SHA1_CTX& ctx) {
    Bytes digest(E_SHA1_DIGEST_BYTES);
    E_SHA1_Final(&ctx, digest.data());
    return digest;
}

TEST(Sha1, CountsTheBitsOfLengthsAbove512MiB) {
    // An update of 2^29 bytes adds 2^32 bits: nothing to the low word, one to the high one.
    const std::vector<std::uint8_t> message(std::size_t{1} << 29);
    E_SHA1_CTX ctx;
    E_SHA1_Init(&ctx);
    E_SHA1_Update(&ctx, message.data(), 1U << 29);
    EXPECT_TRUE(ctx.count_lo == 0 && ctx.count_hi == 1);
    EXPECT_EQ(to_hex(finish_sha1(ctx)), "5b088492c9f4778f409b7ae61477dec124c99033");  // sha1sum of as many zero bytes
}

TEST(Sha1, LeavesItsLastBlockInTheRecord) {
    E_SHA1_CTX ctx;
    E_SHA1_Init(&ctx);
    const Bytes message = from_text("abcde");
    E_SHA1_Update(&ctx, message.data(), 5);
    E_SHA1_Update(&ctx, nullptr, 0);
    EXPECT_EQ(std::memcmp(ctx.block, "abcde", 5), 0) << "bytes wait in arrival order";
    const Bytes digest = finish_sha1(ctx);
    EXPECT_TRUE(ctx.block[0] == 0x61626364 && ctx.block[1] == 0x65800000 && ctx.block[15] == 40 && ctx.count_lo == 40);
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_EQ(ctx.state[i] >> 24, digest[4 * i]);
        EXPECT_EQ(ctx.state[i] & 0xff, digest[4 * i + 3]);
    }
}

// What compresses the block that "abc" is padded to.
TEST(Sha1, BareCompressionIsTheDigestWithoutPadding) {
    Bytes block = from_text("abc\x80"), digest(E_SHA1_DIGEST_BYTES);
    block.resize(E_SHA1_BLOCK_BYTES);
    block.back() = 24;
    E_MySHA1(digest.data(), block.data());
    EXPECT_EQ(to_hex(digest), "a9993e364706816aba3e25717850c26c9cd0d89d");
}

}  // namespace
