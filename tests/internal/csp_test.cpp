#include "csp/cipher_table.h"
#include "csp/error.h"
#include "csp/padding.h"
#include "csp/session.h"
#include "csp/test_session.h"
#include "hash/md5.h"
#include "support/failing_heap.h"

#include <morvane/cipher.h>
#include <morvane/random.h>

#include <gtest/gtest.h>

namespace {

using namespace morvane::csp;
using namespace morvane::test;

TEST(ErrorCell, MovesForeignCodesAbove2000) {
    const std::pair<std::uint32_t, std::uint32_t> rows[] = {{5, 2005}, {999, 2999}, {1000, 1000}, {0xffffffff, 0xffffffff}};
    for (const auto& [code, stored] : rows) EXPECT_FAILS(fail(code), stored);
}

TEST(Attributes, FirstOfATypeCountsAndAnAbsentOneIsRecorded) {
    Session session(0, 0);
    session.with(7, 1).with(9, 2).with(9, 3);
    EXPECT_EQ(find_attribute(session, 9), &session.own[1]);
    store_error(1);
    EXPECT_EQ(find_attribute(session, 8), nullptr);
    EXPECT_EQ(GetError(), CSP_ERR_NO_ATTRIBUTE);
    session.attributes = nullptr;  // with a count that lies
    store_error(1);
    EXPECT_EQ(find_attribute(session, 9), nullptr);
    EXPECT_EQ(GetError(), CSP_ERR_NO_ATTRIBUTE);
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

TEST(AllocationFailure, OfASessionRecordIsNoContext) {
    const CSSM_CONTEXT context = {CSP_CONTEXT_DIGEST, CSP_ALG_SHA1, 0, 0, nullptr};
    const FailingHeap heap(0);
    EXPECT_FAILS(CSP_DigestDataInit(100, 0, &context), CSP_ERR_NO_CONTEXT);
}

TEST(AllocationFailure, LeavesZerosOfALongKeyOfRc5) {
    const Bytes key(257, 'k');
    Bytes schedule(sizeof(E_RC5_KEY_SCHEDULE), 1);
    E_RC5_KEY_SCHEDULE short_key;
    {
        const FailingHeap heap(0);
        E_RC5_KeySchedule(reinterpret_cast<E_RC5_KEY_SCHEDULE*>(schedule.data()), key.data(), 257, 12);
        E_RC5_KeySchedule(&short_key, key.data(), 256, 12);
    }
    EXPECT_EQ(schedule, Bytes(schedule.size()));
    EXPECT_EQ(short_key.rounds, 12U);
}

}  // namespace
