#include "csp/cipher_table.h"
#include "csp/error.h"
#include "csp/expect_fails.h"
#include "csp/padding.h"
#include "csp/session.h"
#include "hash/md5.h"
#include "support/bytes.h"
#include "support/failing_heap.h"

#include <morvane/cipher.h>
#include <morvane/random.h>

#include <gtest/gtest.h>
#include <cstdlib>

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
            pad_block(des, block.data(), count, row.option);
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
    pad_block(des, block.data(), count, kPadNone);
    EXPECT_EQ(count, 5U);
    pad_block(rc4, block.data(), count, kPadPkcs5);
    EXPECT_EQ(count, 0U);
    EXPECT_EQ(block, Bytes(8, 0xcc));
}

TEST(BlockPadding, TakesTheFirstRandomBytesOfABlock) {
    const CspCipherTable& des = *find_cipher_table(CSP_ALG_DES, CSP_MODE_CBC).table;
    Bytes block(8, 0xcc), chain(16);
    std::uint32_t count = 5;
    E_GenerateRandom_MD5(chain.data(), 16);
    pad_block(des, block.data(), count, kPadRandom);
    morvane::hash::md5(chain.data(), chain.data(), 16);
    EXPECT_EQ(to_hex(block), "cccccccccc" + to_hex(chain.data(), 3));
    EXPECT_EQ(count, 8U);
}

TEST(CipherOperations, LeaveTheChainAloneOverNoBytes) {
    Bytes schedule(sizeof(E_BF_KEY_SCHEDULE)), none(32), chain(16, 0xcc);
    CSSM_KEY key{};
    key.KeyData = {size32(schedule), schedule.data()};
    for (const std::uint32_t algorithm : {CSP_ALG_DES, CSP_ALG_BLOWFISH, CSP_ALG_SEED}) {
        for (const std::uint32_t mode : {CSP_MODE_CBC, CSP_MODE_CFB, CSP_MODE_OFB}) {
            const CspCipherTable& table = *find_cipher_table(algorithm, mode).table;
            std::uint32_t written = 1;
            for (CipherFn* const operation : {table.encrypt, table.decrypt}) {
                EXPECT_TRUE(operation(&key, none.data() + 16, none.data() + 16, 0, &written, chain.data()));
                EXPECT_EQ(written, 0U);
                EXPECT_EQ(chain, Bytes(16, 0xcc)) << algorithm << " in mode " << mode;
            }
        }
    }
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

// A session for one of the services below, under the all-zero schedule of a DES key; what it says of itself is the same.
struct KeyedSession {
    Bytes schedule = Bytes(128);
    CSSM_KEY key{};
    CSSM_CONTEXT_ATTRIBUTE attributes[2] = {{CSP_ATTR_KEY, 0, {}}, {CSP_ATTR_MODE, 0, {CSP_MODE_ECB}}};
    CspSession session{};

    KeyedSession(std::uint32_t type, std::uint32_t algorithm) {
        key.KeyHeader.BlobType = key.KeyHeader.KeyClass = 2;
        key.KeyHeader.AlgorithmId = algorithm;
        key.KeyData = {128, schedule.data()};
        attributes[0].Attribute.Key = &key;
        session.context_type = type;
        session.algorithm = algorithm;
        session.number_of_attributes = 2;
        session.attributes = attributes;
    }
    CspHandle handle() { return reinterpret_cast<CspHandle>(&session); }
};

TEST(AllocationFailure, OfEncryptionFinalLosesNothing) {
    KeyedSession des(CSP_CONTEXT_SYMMETRIC, CSP_ALG_DES);
    std::uint8_t bytes[] = {1, 2, 3}, room[8];
    const CSSM_DATA in = {3, bytes}, out = {8, room};
    std::uint32_t written = 0;
    ASSERT_EQ(CSP_EncryptDataInit(100, des.handle(), nullptr), 0);
    ASSERT_EQ(CSP_EncryptDataUpdate(100, des.handle(), &in, 1, &out, 1, &written), 0);
    CSSM_DATA remainder = {0, nullptr};
    {
        const FailingHeap heap(0);
        EXPECT_FAILS(CSP_EncryptDataFinal(100, des.handle(), &remainder), CSP_ERR_MEMORY);
        EXPECT_EQ(remainder.Length, 0U);
    }
    EXPECT_EQ(CSP_EncryptDataFinal(100, des.handle(), &remainder), 0);
    EXPECT_EQ(remainder.Length, 8U) << "of the 3 bytes kept";
    std::free(remainder.Data);
}

TEST(AllocationFailure, OfTheMacsIsReportedAsSuch) {
    KeyedSession des(CSP_CONTEXT_MAC, CSP_ALG_DES), md5(CSP_CONTEXT_MAC, CSP_ALG_MD5);
    CSSM_DATA mac = {0, nullptr};
    ASSERT_EQ(CSP_GenerateMacInit(100, des.handle(), nullptr), 0);
    {
        const FailingHeap heap(0);
        EXPECT_FAILS(CSP_GenerateMacFinal(100, des.handle(), &mac), CSP_ERR_MEMORY);
        EXPECT_FAILS(CSP_GenerateMacInit(100, md5.handle(), nullptr), CSP_ERR_MEMORY);
    }
    EXPECT_FAILS(CSP_GenerateMacFinal(100, md5.handle(), &mac), CSP_ERR_PRIMITIVE_FAILED);
    ASSERT_EQ(CSP_GenerateMacInit(100, md5.handle(), nullptr), 0);
    {
        const FailingHeap heap(0);
        EXPECT_FAILS(CSP_GenerateMacFinal(100, md5.handle(), &mac), CSP_ERR_MEMORY);
    }
    EXPECT_EQ(CSP_GenerateMacFinal(100, md5.handle(), &mac), 0) << "the state survived";
    std::free(mac.Data);
}

}  // namespace
