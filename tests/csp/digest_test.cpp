#include <morvane/csp.h>

#include "csp/expect_fails.h"
#include "support/bytes.h"

#include <gtest/gtest.h>
#include <cstdlib>

namespace {

using namespace morvane::test;

constexpr const char* kAbcDigest = "a9993e364706816aba3e25717850c26c9cd0d89d";

CspHandle handle_of(CspSession& session) { return reinterpret_cast<CspHandle>(&session); }

// A digest session and the calls on it. The provider handle varies: it is never read.
struct Digest {
    CspSession session{};

    explicit Digest(std::uint32_t algorithm, std::uint32_t type = CSP_CONTEXT_DIGEST) {
        session.context_type = type;
        session.algorithm = algorithm;
    }
    CspHandle handle() { return handle_of(session); }
    std::int32_t init() { return CSP_DigestDataInit(100, handle(), nullptr); }
    std::int32_t update(Bytes data) {
        const CSSM_DATA buffer = {size32(data), data.data()};
        return CSP_DigestDataUpdate(0, handle(), &buffer, 1);
    }
    std::int32_t final(CSSM_DATA& output) { return CSP_DigestDataFinal(0xffffffff, handle(), &output); }
    // Ends a digest begun under a plain identifier.
    std::string finish() {
        Bytes digest(30);
        CSSM_DATA output = {30, digest.data()};
        EXPECT_EQ(final(output), 0);
        return to_hex(digest.data(), output.Length);
    }
};

TEST(CspDigest, HashesInPiecesOfSeveralBuffers) {
    Digest digest(CSP_ALG_SHA1);
    ASSERT_EQ(digest.init(), 0);
    Bytes a = from_text("a");
    Bytes bc = from_text("bc");
    const CSSM_DATA buffers[] = {{1, a.data()}, {0, a.data()}, {2, bc.data()}};
    EXPECT_EQ(CSP_DigestDataUpdate(100, digest.handle(), buffers, 3), 0);
    EXPECT_EQ(digest.finish(), kAbcDigest);
}

TEST(CspDigest, KnowsTheOldFailureAfterASuccess) {
    EXPECT_FAILS(CSP_DigestDataUpdate(100, 0, nullptr, 0), CSP_ERR_NO_CONTEXT);
    Digest digest(CSP_ALG_SHA1);
    EXPECT_EQ(digest.init(), 0);
    EXPECT_EQ(GetError(), CSP_ERR_NO_CONTEXT);
    digest.finish();
    EXPECT_EQ(GetError(), CSP_ERR_NO_CONTEXT);
}

TEST(CspDigest, InitChecksInOrder) {
    EXPECT_FAILS(CSP_DigestDataInit(100, 0, nullptr), CSP_ERR_NO_CONTEXT);
    EXPECT_FAILS(Digest(12345, CSP_CONTEXT_RANDOM).init(), CSP_ERR_WRONG_CONTEXT_TYPE);
    for (const std::uint32_t algorithm : {0U, 14U, 40U, 46U, 91U, 0xffffffffU}) {
        Digest digest(algorithm);
        EXPECT_FAILS(digest.init(), CSP_ERR_UNKNOWN_ALGORITHM);
        EXPECT_EQ(digest.session.digest_table, nullptr);
        EXPECT_EQ(digest.session.state, nullptr);
    }
}

TEST(CspDigest, AContextRecordWinsOverTheHandleAndLeavesItAlone) {
    Digest digest(CSP_ALG_SHA1);
    const CSSM_CONTEXT good = {CSP_CONTEXT_DIGEST, CSP_ALG_SHA1, 0, 0, nullptr};
    EXPECT_EQ(CSP_DigestDataInit(100, digest.handle(), &good), 0);
    EXPECT_EQ(digest.session.digest_table, nullptr) << "the fresh record is nobody's";
    const CSSM_CONTEXT wrong_type = {CSP_CONTEXT_MAC, CSP_ALG_SHA1, 0, 0, nullptr};
    EXPECT_FAILS(CSP_DigestDataInit(100, digest.handle(), &wrong_type), CSP_ERR_WRONG_CONTEXT_TYPE);
}

TEST(CspDigest, UpdateChecksInOrderAndKeepsWhatItAbsorbed) {
    Digest digest(CSP_ALG_SHA1);
    ASSERT_EQ(digest.init(), 0);
    EXPECT_FAILS(CSP_DigestDataUpdate(100, 0, nullptr, 0), CSP_ERR_NO_CONTEXT);
    EXPECT_FAILS(CSP_DigestDataUpdate(100, digest.handle(), nullptr, 0), CSP_ERR_NULL_POINTER);
    Bytes abc = from_text("abc");
    const CSSM_DATA buffers[] = {{3, abc.data()}, {0, nullptr}, {3, abc.data()}};
    EXPECT_FAILS(CSP_DigestDataUpdate(100, digest.handle(), buffers, 0), CSP_ERR_NO_BUFFERS);
    EXPECT_FAILS(CSP_DigestDataUpdate(100, digest.handle(), buffers, 3), CSP_ERR_BAD_DATA);
    EXPECT_EQ(digest.finish(), kAbcDigest) << "the buffer before the bad one has been hashed, the one after it has not";
}

TEST(CspDigest, FinalChecksItsOutputInOrderAndCanBeRepeated) {
    Digest digest(CSP_ALG_SHA1);
    ASSERT_EQ(digest.init(), 0);
    ASSERT_EQ(digest.update(from_text("abc")), 0);
    EXPECT_FAILS(CSP_DigestDataFinal(100, 0, nullptr), CSP_ERR_NO_CONTEXT);
    EXPECT_FAILS(CSP_DigestDataFinal(100, digest.handle(), nullptr), CSP_ERR_NULL_POINTER);
    Bytes room(30, 0xee);
    CSSM_DATA no_length = {0, room.data()};
    EXPECT_FAILS(digest.final(no_length), CSP_ERR_BAD_DATA);
    CSSM_DATA no_data = {20, nullptr};
    EXPECT_FAILS(digest.final(no_data), CSP_ERR_BAD_DATA);
    CSSM_DATA too_short = {19, room.data()};
    EXPECT_FAILS(digest.final(too_short), CSP_ERR_OUTPUT_TOO_SHORT);
    EXPECT_EQ(room, Bytes(30, 0xee));

    CSSM_DATA exact = {20, room.data()};
    EXPECT_EQ(digest.final(exact), 0);
    EXPECT_EQ(to_hex(room.data(), 20), kAbcDigest);
    EXPECT_EQ(room[20], 0xee);
    EXPECT_NE(digest.session.state, nullptr) << "the pointer stays, stale";
}

TEST(CspDigest, FinalAllocatesWhenAskedTo) {
    Digest digest(CSP_ALG_SHA1);
    ASSERT_EQ(digest.init(), 0);
    ASSERT_EQ(digest.update(from_text("abc")), 0);
    CSSM_DATA output = {0, nullptr};
    ASSERT_EQ(digest.final(output), 0);
    EXPECT_EQ(output.Length, 20U);
    EXPECT_EQ(to_hex(output.Data, 20), kAbcDigest);
    std::free(output.Data);
}

TEST(CspDigest, SignatureIdentifiersSucceedAndWriteNothing) {
    for (const std::uint32_t algorithm : {CSP_ALG_MD5_WITH_RSA, CSP_ALG_MD2_WITH_RSA, CSP_ALG_SHA1_WITH_RSA,
                                          CSP_ALG_SHA1_WITH_DSA, CSP_ALG_HAS160_WITH_KCDSA}) {
        const bool md = algorithm == CSP_ALG_MD5_WITH_RSA || algorithm == CSP_ALG_MD2_WITH_RSA;
        const std::uint32_t digest_bytes = md ? 16 : 20;
        Digest digest(algorithm);
        ASSERT_EQ(digest.init(), 0);
        EXPECT_EQ(digest.session.state, nullptr);
        EXPECT_EQ(digest.update(from_text("abc")), 0);
        Bytes room(30, 0xee);
        CSSM_DATA too_short = {digest_bytes - 1, room.data()};
        EXPECT_FAILS(digest.final(too_short), CSP_ERR_OUTPUT_TOO_SHORT);
        CSSM_DATA output = {30, room.data()};
        EXPECT_EQ(digest.final(output), 0);
        EXPECT_EQ(output.Length, 30U);
        EXPECT_EQ(room, Bytes(30, 0xee));

        CSSM_DATA allocated = {0, nullptr};
        EXPECT_EQ(digest.final(allocated), 0);
        EXPECT_EQ(allocated.Length, 0U);
        ASSERT_NE(allocated.Data, nullptr);
        EXPECT_EQ(to_hex(allocated.Data, digest_bytes), std::string(2 * digest_bytes, '0'));
        std::free(allocated.Data);
    }
}

TEST(CspDigest, RefusesCallsWithoutInit) {
    Digest digest(CSP_ALG_SHA1);
    EXPECT_FAILS(digest.update(from_text("abc")), CSP_ERR_PRIMITIVE_FAILED);
    Bytes room(20);
    CSSM_DATA output = {20, room.data()};
    EXPECT_FAILS(digest.final(output), CSP_ERR_PRIMITIVE_FAILED);
}

}  // namespace
