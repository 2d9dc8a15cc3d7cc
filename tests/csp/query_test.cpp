// The services besides digests: random bytes and sizes.
#include <morvane/csp.h>

#include "csp/expect_fails.h"
#include "support/bytes.h"

#include <gtest/gtest.h>
#include <array>

namespace {

using namespace morvane::test;

CSSM_CONTEXT_ATTRIBUTE number(std::uint32_t type, std::uint32_t value) {
    CSSM_CONTEXT_ATTRIBUTE attribute{};
    attribute.AttributeType = type;
    attribute.AttributeLength = 0xdeadbeef;  // never read
    attribute.Attribute.Uint32 = value;
    return attribute;
}

CSSM_CONTEXT_ATTRIBUTE key_attribute(CSSM_KEY* key) {
    CSSM_CONTEXT_ATTRIBUTE attribute{};
    attribute.AttributeType = CSP_ATTR_KEY;
    attribute.Attribute.Key = key;
    return attribute;
}

TEST(CspRandom, ChecksInOrder) {
    const std::array attributes = {number(CSP_ATTR_MODE, 1), number(CSP_ATTR_OUTPUT_SIZE, 16),
                                   number(CSP_ATTR_OUTPUT_SIZE, 1)};
    CspSession session{};
    session.context_type = CSP_CONTEXT_DIGEST;
    session.algorithm = CSP_ALG_SHA1;
    const auto handle = reinterpret_cast<CspHandle>(&session);
    const auto request = [&](CSSM_DATA* output) { return CSP_GenerateRandom(100, handle, nullptr, output); };

    EXPECT_FAILS(CSP_GenerateRandom(100, 0, nullptr, nullptr), CSP_ERR_NO_CONTEXT);
    EXPECT_FAILS(request(nullptr), CSP_ERR_WRONG_CONTEXT_TYPE);
    session.context_type = CSP_CONTEXT_RANDOM;
    EXPECT_FAILS(request(nullptr), CSP_ERR_NO_OUTPUT_SIZE);  // the look-up's own code has been replaced
    session.attributes = attributes.data();
    session.number_of_attributes = 1;
    EXPECT_FAILS(request(nullptr), CSP_ERR_NO_OUTPUT_SIZE);
    session.number_of_attributes = 3;
    EXPECT_FAILS(request(nullptr), CSP_ERR_NULL_POINTER);
    Bytes room(16, 0xee);
    CSSM_DATA one_short = {15, room.data()};  // of the first of the two sizes
    EXPECT_FAILS(request(&one_short), CSP_ERR_BAD_DATA);
    CSSM_DATA exact = {16, room.data()};
    EXPECT_FAILS(request(&exact), CSP_ERR_UNKNOWN_ALGORITHM);
    EXPECT_EQ(one_short.Length, 15U);
    EXPECT_EQ(room, Bytes(16, 0xee));
}

TEST(CspQuerySize, ReportsTheBlockLengthTwiceWhateverTheContextType) {
    constexpr struct {
        std::uint32_t algorithm, bytes;
    } kCases[] = {{CSP_ALG_NULL_CIPHER, 0}, {CSP_ALG_RC4, 0}, {CSP_ALG_DES, 8}, {CSP_ALG_BLOWFISH, 8}, {CSP_ALG_SEED, 16}};
    for (const auto& row : kCases) {
        const CSSM_CONTEXT context = {12345, row.algorithm, 0, 0, nullptr};
        CspSizePair sizes = {1, 2};
        EXPECT_EQ(CSP_QuerySize(100, 0, &context, 7, 9, &sizes), 0);
        EXPECT_EQ(sizes.first, row.bytes);
        EXPECT_EQ(sizes.second, row.bytes);
    }
}

TEST(CspQuerySize, ChecksInOrder) {
    CspSession session{};
    session.algorithm = CSP_ALG_SHA1;
    const auto handle = reinterpret_cast<CspHandle>(&session);
    CspSizePair sizes = {1, 2};
    EXPECT_FAILS(CSP_QuerySize(100, 0, nullptr, 0, 0, nullptr), CSP_ERR_NO_CONTEXT);
    EXPECT_FAILS(CSP_QuerySize(100, handle, nullptr, 0, 0, nullptr), CSP_ERR_NULL_POINTER);
    EXPECT_FAILS(CSP_QuerySize(100, handle, nullptr, 0, 0, &sizes), CSP_ERR_UNKNOWN_ALGORITHM);
    EXPECT_EQ(sizes.first, 1U);
}

TEST(CspQuerySizeInBits, ReadsTheHeaderAndTheDataOfTheKeyOrTheAttribute) {
    Bytes data(16);
    CSSM_KEY key{};
    key.KeyHeader.LogicalKeySizeInBits = 56;
    key.KeyData = {16, data.data()};
    CspSession session{};
    const auto handle = reinterpret_cast<CspHandle>(&session);
    CspSizePair sizes{};
    EXPECT_EQ(CSP_QuerySizeInBits(100, handle, &key, &sizes), 0);
    EXPECT_EQ(sizes.first, 56U);
    EXPECT_EQ(sizes.second, 128U);

    CSSM_KEY other{};
    other.KeyHeader.LogicalKeySizeInBits = 40;
    other.KeyData = {5, data.data()};
    const std::array attributes = {key_attribute(&other), key_attribute(&key)};
    session.attributes = attributes.data();
    session.number_of_attributes = 2;
    EXPECT_EQ(CSP_QuerySizeInBits(100, handle, nullptr, &sizes), 0);
    EXPECT_EQ(sizes.first, 40U);
    EXPECT_EQ(sizes.second, 40U);
}

TEST(CspQuerySizeInBits, ChecksInOrder) {
    CspSession session{};
    const auto handle = reinterpret_cast<CspHandle>(&session);
    CSSM_KEY key{};
    EXPECT_FAILS(CSP_QuerySizeInBits(100, 0, nullptr, nullptr), CSP_ERR_NO_CONTEXT);
    EXPECT_FAILS(CSP_QuerySizeInBits(100, handle, nullptr, nullptr), CSP_ERR_NO_KEY);
    const CSSM_CONTEXT_ATTRIBUTE null_key = key_attribute(nullptr);
    session.attributes = &null_key;
    session.number_of_attributes = 1;
    EXPECT_FAILS(CSP_QuerySizeInBits(100, handle, nullptr, nullptr), CSP_ERR_NO_KEY);
    EXPECT_FAILS(CSP_QuerySizeInBits(100, handle, &key, nullptr), CSP_ERR_BAD_KEY);
    std::uint8_t byte = 0;
    key.KeyData = {1, &byte};
    EXPECT_FAILS(CSP_QuerySizeInBits(100, handle, &key, nullptr), CSP_ERR_NULL_POINTER);
}

}  // namespace
