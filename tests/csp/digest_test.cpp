#include "csp/test_session.h"

#include <cstdlib>

namespace {

using namespace morvane::test;

constexpr const char* kAbcDigest = "a9993e364706816aba3e25717850c26c9cd0d89d";

// The provider handle varies: it is never read.
struct Digest : Session {
    explicit Digest(std::uint32_t of, std::uint32_t type = CSP_CONTEXT_DIGEST) : Session(type, of) {}
    std::int32_t init(const CSSM_CONTEXT* context = nullptr) { return CSP_DigestDataInit(100, handle(), context); }
    std::int32_t update(const CSSM_DATA* buffers, std::uint32_t count) {
        return CSP_DigestDataUpdate(0, handle(), buffers, count);
    }
    std::int32_t final(CSSM_DATA output) { return CSP_DigestDataFinal(0xffffffff, handle(), &output); }
    // In a buffer of the library's.
    std::string finish() {
        CSSM_DATA output = {0, nullptr};
        EXPECT_EQ(CSP_DigestDataFinal(100, handle(), &output), 0);
        std::string hex = to_hex(output.Data, output.Length);
        std::free(output.Data);
        return hex;
    }
};

TEST(CspDigest, InitChecksInOrder) {
    EXPECT_FAILS(CSP_DigestDataInit(100, 0, nullptr), CSP_ERR_NO_CONTEXT);
    EXPECT_FAILS(Digest(12345, CSP_CONTEXT_RANDOM).init(), CSP_ERR_WRONG_CONTEXT_TYPE);
    for (const std::uint32_t algorithm : {0U, 14U, 40U, 46U, 91U, 0xffffffffU}) {
        Digest digest(algorithm);
        EXPECT_FAILS(digest.init(), CSP_ERR_UNKNOWN_ALGORITHM);
        EXPECT_TRUE(digest.digest_table == nullptr && digest.state == nullptr);
    }
    Digest digest(CSP_ALG_SHA1);
    CSSM_CONTEXT context = {CSP_CONTEXT_DIGEST, CSP_ALG_SHA1, 0, 0, nullptr};
    EXPECT_EQ(digest.init(&context), 0);
    EXPECT_EQ(digest.digest_table, nullptr) << "the fresh record is nobody's";
    context.ContextType = CSP_CONTEXT_MAC;
    EXPECT_FAILS(digest.init(&context), CSP_ERR_WRONG_CONTEXT_TYPE);
}

TEST(CspDigest, UpdateAndFinalCheckInOrder) {
    Digest digest(CSP_ALG_SHA1);
    Bytes abc = from_text("abc"), room(30, 0xee);
    const CSSM_DATA buffers[] = {{1, abc.data()}, {0, abc.data()}, {2, &abc[1]}, {0, nullptr}, {3, abc.data()}};
    EXPECT_FAILS(digest.update(buffers, 1), CSP_ERR_PRIMITIVE_FAILED);  // without Init
    EXPECT_FAILS(digest.final({20, room.data()}), CSP_ERR_PRIMITIVE_FAILED);
    EXPECT_FAILS(CSP_DigestDataUpdate(100, 0, nullptr, 0), CSP_ERR_NO_CONTEXT);
    ASSERT_EQ(digest.init(), 0);
    EXPECT_EQ(GetError(), CSP_ERR_NO_CONTEXT) << "success leaves the old code";
    EXPECT_FAILS(digest.update(nullptr, 0), CSP_ERR_NULL_POINTER);
    EXPECT_FAILS(digest.update(buffers, 0), CSP_ERR_NO_BUFFERS);
    EXPECT_FAILS(digest.update(buffers, 5), CSP_ERR_BAD_DATA);  // those before the bad one have been hashed

    EXPECT_FAILS(CSP_DigestDataFinal(100, 0, nullptr), CSP_ERR_NO_CONTEXT);
    EXPECT_FAILS(CSP_DigestDataFinal(100, digest.handle(), nullptr), CSP_ERR_NULL_POINTER);
    EXPECT_FAILS(digest.final({0, room.data()}), CSP_ERR_BAD_DATA);
    EXPECT_FAILS(digest.final({20, nullptr}), CSP_ERR_BAD_DATA);
    EXPECT_FAILS(digest.final({19, room.data()}), CSP_ERR_OUTPUT_TOO_SHORT);
    EXPECT_EQ(room, Bytes(30, 0xee));
    EXPECT_EQ(digest.final({20, room.data()}), 0);
    EXPECT_EQ(to_hex(room), kAbcDigest + std::string(20, 'e'));
    EXPECT_NE(digest.state, nullptr) << "the pointer stays, stale";
    ASSERT_EQ(digest.init(), 0);
    ASSERT_EQ(digest.update(buffers, 3), 0);
    EXPECT_EQ(digest.finish(), kAbcDigest);
}

TEST(CspDigest, SignatureIdentifiersSucceedAndWriteNothing) {
    const std::pair<std::uint32_t, std::uint32_t> rows[] = {{CSP_ALG_MD5_WITH_RSA, 16},
                                                            {CSP_ALG_MD2_WITH_RSA, 16},
                                                            {CSP_ALG_SHA1_WITH_RSA, 20},
                                                            {CSP_ALG_SHA1_WITH_DSA, 20},
                                                            {CSP_ALG_HAS160_WITH_KCDSA, 20}};
    for (const auto& [algorithm, digest_bytes] : rows) {
        Digest digest(algorithm);
        ASSERT_EQ(digest.init(), 0);
        EXPECT_EQ(digest.state, nullptr);
        Bytes room(30, 0xee);
        CSSM_DATA output = {30, room.data()}, allocated = {0, nullptr};
        EXPECT_EQ(digest.update(&output, 1), 0);
        EXPECT_FAILS(digest.final({digest_bytes - 1, room.data()}), CSP_ERR_OUTPUT_TOO_SHORT);
        EXPECT_EQ(CSP_DigestDataFinal(100, digest.handle(), &output), 0);
        EXPECT_EQ(output.Length, 30U);
        EXPECT_EQ(room, Bytes(30, 0xee));
        EXPECT_EQ(CSP_DigestDataFinal(100, digest.handle(), &allocated), 0);
        EXPECT_EQ(allocated.Length, 0U);
        ASSERT_NE(allocated.Data, nullptr);
        EXPECT_EQ(to_hex(allocated.Data, digest_bytes), std::string(2 * digest_bytes, '0'));
        std::free(allocated.Data);
    }
}

}  // namespace
