#include "csp/cipher_table.h"
#include "csp/error.h"
#include "csp/expect_fails.h"
#include "csp/padding.h"
#include "csp/session.h"
#include "support/bytes.h"
#include "support/failing_heap.h"

#include <gtest/gtest.h>

namespace {

using namespace morvane::csp;
using namespace morvane::test;

TEST(ErrorCell, MovesForeignCodesAbove2000) {
    EXPECT_EQ(fail(5), -1);
    EXPECT_EQ(GetError(), 2005U);
    EXPECT_EQ(fail(999), -1);
    EXPECT_EQ(GetError(), 2999U);
    EXPECT_EQ(fail(1000), -1);
    EXPECT_EQ(GetError(), 1000U);
    EXPECT_EQ(fail(0xffffffff), -1);
    EXPECT_EQ(GetError(), 0xffffffffU);
}

TEST(Attributes, FirstOfATypeCountsAndAnAbsentOneIsRecorded) {
    const CSSM_CONTEXT_ATTRIBUTE attributes[] = {{7, 0, {1}}, {9, 0, {2}}, {9, 0, {3}}};
    CspSession session{};
    session.attributes = attributes;
    session.number_of_attributes = 3;
    EXPECT_EQ(find_attribute(session, 9), &attributes[1]);
    store_error(1);
    EXPECT_EQ(find_attribute(session, 8), nullptr);
    EXPECT_EQ(GetError(), CSP_ERR_NO_ATTRIBUTE);
    session.attributes = nullptr;  // with a count that lies
    store_error(1);
    EXPECT_EQ(find_attribute(session, 9), nullptr);
    EXPECT_EQ(GetError(), CSP_ERR_NO_ATTRIBUTE);
}

TEST(Resolve, CopiesTheContextIntoAFreshRecord) {
    const CSSM_CONTEXT_ATTRIBUTE attribute = {7, 0, {1}};
    const CSSM_CONTEXT context = {11, 22, 33, 1, &attribute};
    CspSession handle_session{};
    const CspSession* const fresh = resolve(reinterpret_cast<CspHandle>(&handle_session), &context);
    ASSERT_NE(fresh, nullptr);
    EXPECT_NE(fresh, &handle_session);
    EXPECT_EQ(fresh->context_type, 11U);
    EXPECT_EQ(fresh->algorithm, 22U);
    EXPECT_EQ(fresh->number_of_attributes, 1U);
    EXPECT_EQ(fresh->attributes, &attribute);
    EXPECT_EQ(fresh->state, nullptr);
    EXPECT_EQ(resolve(reinterpret_cast<CspHandle>(&handle_session), nullptr), &handle_session);
}

TEST(BlockPadding, FillsByOption) {
    const CspCipherTable& des = *find_cipher_table(CSP_ALG_DES, CSP_MODE_CBC).table;
    constexpr struct {
        std::uint32_t option;
        const char* of_five;
        const char* of_none;
    } kCases[] = {
        {2, "cccccccccc000000", "0000000000000000"}, {3, "cccccccccc010101", "0101010101010101"},
        {4, "cccccccccc555555", "5555555555555555"}, {5, "ccccccccccffffff", "ffffffffffffffff"},
        {6, "cccccccccc030303", "0808080808080808"}, {7, "cccccccccc030303", "0808080808080808"},
        {8, "cccccccccc000000", "0000000000000000"},
    };
    for (const auto& row : kCases) {
        for (const std::uint32_t carried : {5U, 0U}) {
            Bytes block(9, 0xcc);
            std::uint32_t count = carried;
            ASSERT_TRUE(pad_block(des, block.data(), count, row.option));
            EXPECT_EQ(count, 8U);
            EXPECT_EQ(to_hex(block), std::string(carried == 5 ? row.of_five : row.of_none) + "cc") << row.option;
        }
    }
}

TEST(BlockPadding, LeavesTheRestAlone) {
    const CspCipherTable& des = *find_cipher_table(CSP_ALG_DES, CSP_MODE_CBC).table;
    const CspCipherTable& rc4 = *find_cipher_table(CSP_ALG_RC4, CSP_MODE_CBC).table;
    Bytes block(8, 0xcc);
    std::uint32_t count = 5;
    EXPECT_TRUE(pad_block(des, block.data(), count, kPadNone));
    EXPECT_EQ(count, 5U);
    EXPECT_FALSE(pad_block(des, block.data(), count, kPadRandom));
    EXPECT_EQ(count, 5U);
    EXPECT_TRUE(pad_block(rc4, block.data(), count, kPadPkcs5));
    EXPECT_EQ(count, 0U);
    EXPECT_EQ(block, Bytes(8, 0xcc));
}

TEST(AllocationFailure, IsReportedByWhoeverAllocates) {
    const CSSM_CONTEXT context = {CSP_CONTEXT_DIGEST, CSP_ALG_SHA1, 0, 0, nullptr};
    CspSession session{};
    session.context_type = CSP_CONTEXT_DIGEST;
    session.algorithm = CSP_ALG_SHA1;
    const auto handle = reinterpret_cast<CspHandle>(&session);
    {
        const FailingHeap heap(0);
        EXPECT_FAILS(CSP_DigestDataInit(100, 0, &context), CSP_ERR_NO_CONTEXT);
        EXPECT_FAILS(CSP_DigestDataInit(100, handle, nullptr), CSP_ERR_PRIMITIVE_FAILED);
        EXPECT_EQ(session.state, nullptr);
    }
    ASSERT_EQ(CSP_DigestDataInit(100, handle, nullptr), 0);
    CSSM_DATA output = {0, nullptr};
    {
        const FailingHeap heap(0);
        EXPECT_FAILS(CSP_DigestDataFinal(100, handle, &output), CSP_ERR_MEMORY);
    }
    Bytes digest(20);
    output = {20, digest.data()};
    EXPECT_EQ(CSP_DigestDataFinal(100, handle, &output), 0) << "the state survived";
}

}  // namespace
