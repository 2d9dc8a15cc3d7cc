// The services besides digests: random bytes and sizes.
#include "csp/test_session.h"

namespace {

using namespace morvane::test;

TEST(CspRandom, ChecksInOrder) {
    Session session(CSP_CONTEXT_DIGEST, CSP_ALG_SHA1);
    const auto request = [&](CSSM_DATA* output) { return CSP_GenerateRandom(100, session.handle(), nullptr, output); };
    EXPECT_FAILS(CSP_GenerateRandom(100, 0, nullptr, nullptr), CSP_ERR_NO_CONTEXT);
    EXPECT_FAILS(request(nullptr), CSP_ERR_WRONG_CONTEXT_TYPE);
    session.context_type = CSP_CONTEXT_RANDOM;
    EXPECT_FAILS(request(nullptr), CSP_ERR_NO_OUTPUT_SIZE);  // the look-up's own code has been replaced
    session.with(CSP_ATTR_MODE, 1);
    EXPECT_FAILS(request(nullptr), CSP_ERR_NO_OUTPUT_SIZE);
    session.with(CSP_ATTR_OUTPUT_SIZE, 16).with(CSP_ATTR_OUTPUT_SIZE, 1);
    EXPECT_FAILS(request(nullptr), CSP_ERR_NULL_POINTER);
    Bytes room(16, 0xee);
    CSSM_DATA one_short = {15, room.data()}, exact = {16, room.data()};  // of the first of the two sizes
    EXPECT_FAILS(request(&one_short), CSP_ERR_BAD_DATA);
    EXPECT_FAILS(request(&exact), CSP_ERR_UNKNOWN_ALGORITHM);
    EXPECT_EQ(one_short.Length, 15U);
    EXPECT_EQ(room, Bytes(16, 0xee));
}

TEST(CspQuerySize, ReportsTheBlockLengthTwiceWhateverTheContextType) {
    constexpr std::pair<std::uint32_t, std::uint32_t> kRows[] = {
        {CSP_ALG_NULL_CIPHER, 0}, {CSP_ALG_RC4, 0}, {CSP_ALG_DES, 8}, {CSP_ALG_BLOWFISH, 8}, {CSP_ALG_SEED, 16}};
    CspSizePair sizes = {1, 2};
    for (const auto& [algorithm, bytes] : kRows) {
        const CSSM_CONTEXT context = {12345, algorithm, 0, 0, nullptr};
        sizes = {1, 2};
        EXPECT_EQ(CSP_QuerySize(100, 0, &context, 7, 9, &sizes), 0);
        EXPECT_TRUE(sizes.first == bytes && sizes.second == bytes) << algorithm;
    }
    Session session(0, CSP_ALG_SHA1);
    EXPECT_FAILS(CSP_QuerySize(100, 0, nullptr, 0, 0, nullptr), CSP_ERR_NO_CONTEXT);
    EXPECT_FAILS(CSP_QuerySize(100, session.handle(), nullptr, 0, 0, nullptr), CSP_ERR_NULL_POINTER);
    EXPECT_FAILS(CSP_QuerySize(100, session.handle(), nullptr, 0, 0, &sizes), CSP_ERR_UNKNOWN_ALGORITHM);
    EXPECT_EQ(sizes.first, 16U);
}

TEST(CspQuerySizeInBits, ReadsTheHeaderAndTheDataOfTheKeyOrTheAttribute) {
    Bytes data(16);
    CSSM_KEY key{}, other{};
    Session session(0, 0);
    CspSizePair sizes{};
    const auto query = [&](CSSM_KEY* of, CspSizePair* to) { return CSP_QuerySizeInBits(100, session.handle(), of, to); };
    EXPECT_FAILS(CSP_QuerySizeInBits(100, 0, nullptr, nullptr), CSP_ERR_NO_CONTEXT);
    EXPECT_FAILS(query(nullptr, nullptr), CSP_ERR_NO_KEY);
    session.with(static_cast<CSSM_KEY*>(nullptr));
    EXPECT_FAILS(query(nullptr, nullptr), CSP_ERR_NO_KEY);
    EXPECT_FAILS(query(&key, nullptr), CSP_ERR_BAD_KEY);
    key.KeyHeader.LogicalKeySizeInBits = 56;
    key.KeyData = {16, data.data()};
    other.KeyHeader.LogicalKeySizeInBits = 41;
    other.KeyData = {5, data.data()};
    EXPECT_FAILS(query(&key, nullptr), CSP_ERR_NULL_POINTER);
    EXPECT_EQ(query(&key, &sizes), 0);
    EXPECT_TRUE(sizes.first == 56 && sizes.second == 128);
    session.own[0].Attribute.Key = &other;
    session.with(&key);
    EXPECT_EQ(query(nullptr, &sizes), 0);
    EXPECT_TRUE(sizes.first == 41 && sizes.second == 40);
}

}  // namespace
