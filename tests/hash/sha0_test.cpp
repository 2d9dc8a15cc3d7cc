// SHA-0. The library keeps the block in memory, where converting a word reverses its four bytes, so that a message in
// pieces has a digest of its own.
#include <morvane/hash.h>

#include "support/vectors.h"

#include <gtest/gtest.h>
#include <sstream>

namespace {

using namespace morvane::test;

Bytes at_once(const Bytes& message) {
    Bytes digest(E_SHA1_DIGEST_BYTES);
    E_SHA(digest.data(), message.data(), size32(message));
    return digest;
}

TEST(Sha0, MeetsItsVectors) {
    for (const Vector& vector : load_vectors("sha0.txt")) {
        std::istringstream pieces(vector.text("pieces"));
        E_SHA1_CTX ctx;
        E_SHA_Init(&ctx);
        for (std::string hex; std::getline(pieces, hex, ',');) {
            const Bytes piece = from_hex(hex);
            E_SHA_Update(&ctx, piece.data(), size32(piece));
        }
        Bytes digest(E_SHA1_DIGEST_BYTES);
        E_SHA_Final(&ctx, digest.data());
        EXPECT_EQ(to_hex(digest), vector.text("digest")) << vector.text("pieces");
        if (pieces.str().find(',') == std::string::npos) {
            EXPECT_EQ(at_once(from_hex(pieces.str())), digest);
        }
    }
    EXPECT_EQ(to_hex(at_once({})), "f96cea198ad1dd5617ac084a3d92c6107708c0ef");
    EXPECT_EQ(to_hex(at_once(repeated("a", 1000000))), "3232affa48628a26653b5aaa44541fd90d690603");
}

}  // namespace
