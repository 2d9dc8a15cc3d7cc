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
#include <cstdlib>

namespace {

using namespace morvane::csp;
using namespace morvane::test;

TEST(ErrorCell, MovesForeignCodesAbove2000) {
    const std::pair<std::uint32_t, std::uint32_t> rows[] = {{5, 2005}, {999, 2999}, {1000, 1000}, {0xffffffff, 0xffffffff}};
    for (const auto& [code, stored] : rows) EXPECT_FAILS(fail(code), stored);
}

TEST(Attributes, FirstOfATypeCountsAndAnAbsentOneIsRecorded) {
    const CSSM_CONTEXT_ATTRIBUTE attributes[] = {{7, 0, {1}}, {9, 0, {2}}, {9, 0, {3}}};
    Session session(0, 0);
    session.give(attributes);
    EXPECT_EQ(find_attribute(session, 9), &attributes[1]);
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

// A session for one of the services below, under the all-zero schedule of a DES key; what it says of itself is the same.
struct KeyedSession : Session {
    Bytes schedule = Bytes(128);
    CSSM_KEY key{};
    CSSM_CONTEXT_ATTRIBUTE records[2] = {{CSP_ATTR_KEY, 0, {}}, {CSP_ATTR_MODE, 0, {CSP_MODE_ECB}}};

    KeyedSession(std::uint32_t type, std::uint32_t of) : Session(type, of) {
        key.KeyHeader.BlobType = key.KeyHeader.KeyClass = 2;
        key.KeyHeader.AlgorithmId = of;
        key.KeyData = {128, schedule.data()};
        records[0].Attribute.Key = &key;
        give(records);
    }
};

template <typename Call>
void expect_failure_without_memory(Call call, std::uint32_t code) {
    const FailingHeap heap(0);
    EXPECT_FAILS(call(), code);
}

TEST(AllocationFailure, IsReportedByWhoeverAllocatesAndLosesNothing) {
    const CSSM_CONTEXT context = {CSP_CONTEXT_DIGEST, CSP_ALG_SHA1, 0, 0, nullptr};
    Session sha1(CSP_CONTEXT_DIGEST, CSP_ALG_SHA1);
    CSSM_DATA output = {0, nullptr};
    const auto digest_init = [&] { return CSP_DigestDataInit(100, sha1.handle(), nullptr); };
    const auto digest_final = [&] { return CSP_DigestDataFinal(100, sha1.handle(), &output); };
    expect_failure_without_memory([&] { return CSP_DigestDataInit(100, 0, &context); }, CSP_ERR_NO_CONTEXT);
    expect_failure_without_memory(digest_init, CSP_ERR_PRIMITIVE_FAILED);
    EXPECT_EQ(sha1.state, nullptr);
    ASSERT_EQ(digest_init(), 0);
    expect_failure_without_memory(digest_final, CSP_ERR_MEMORY);
    EXPECT_EQ(digest_final(), 0);
    std::free(std::exchange(output, {0, nullptr}).Data);

    KeyedSession des(CSP_CONTEXT_SYMMETRIC, CSP_ALG_DES);
    std::uint8_t bytes[] = {1, 2, 3}, room[8];
    const CSSM_DATA in = {3, bytes}, out = {8, room};
    std::uint32_t written = 0;
    const auto cipher_final = [&] { return CSP_EncryptDataFinal(100, des.handle(), &output); };
    ASSERT_EQ(CSP_EncryptDataInit(100, des.handle(), nullptr), 0);
    ASSERT_EQ(CSP_EncryptDataUpdate(100, des.handle(), &in, 1, &out, 1, &written), 0);
    expect_failure_without_memory(cipher_final, CSP_ERR_MEMORY);
    EXPECT_EQ(output.Length, 0U);
    EXPECT_EQ(cipher_final(), 0);
    EXPECT_EQ(output.Length, 8U) << "of the 3 bytes kept";
    std::free(std::exchange(output, {0, nullptr}).Data);

    KeyedSession des_mac(CSP_CONTEXT_MAC, CSP_ALG_DES), md5_mac(CSP_CONTEXT_MAC, CSP_ALG_MD5);
    const auto mac_init = [&] { return CSP_GenerateMacInit(100, md5_mac.handle(), nullptr); };
    const auto mac_final = [&] { return CSP_GenerateMacFinal(100, md5_mac.handle(), &output); };
    ASSERT_EQ(CSP_GenerateMacInit(100, des_mac.handle(), nullptr), 0);
    expect_failure_without_memory([&] { return CSP_GenerateMacFinal(100, des_mac.handle(), &output); }, CSP_ERR_MEMORY);
    expect_failure_without_memory(mac_init, CSP_ERR_MEMORY);
    EXPECT_FAILS(mac_final(), CSP_ERR_PRIMITIVE_FAILED);
    ASSERT_EQ(mac_init(), 0);
    expect_failure_without_memory(mac_final, CSP_ERR_MEMORY);
    EXPECT_EQ(mac_final(), 0);
    std::free(output.Data);
}

// Each allocation of a key service fails in turn; nothing is handed out then.
TEST(AllocationFailure, OfKeyServicesLeavesTheirOutputs) {
    Session pair(CSP_CONTEXT_KEYGEN, CSP_ALG_RSA), params(CSP_CONTEXT_KEYGEN, CSP_ALG_DSA);
    const CSSM_CONTEXT_ATTRIBUTE size[] = {{CSP_ATTR_BLOCK_SIZE, 0, {256}}};
    pair.give(size);
    KeyedSession wrapping(CSP_CONTEXT_SYMMETRIC, CSP_ALG_DES);
    CSSM_KEY first{}, second{};
    CSSM_DATA der{};
    const auto each_fails = [&](auto call) {
        for (int n = 0; n < 8; ++n) {
            {
                const FailingHeap heap(n);
                if (call() == 0) break;
            }
            EXPECT_EQ(GetError(), CSP_ERR_MEMORY) << n;
            EXPECT_TRUE(first.KeyData.Data == nullptr && second.KeyData.Data == nullptr && der.Data == nullptr) << n;
        }
        EXPECT_TRUE(first.KeyData.Data != nullptr || der.Data != nullptr);
        CSP_FreeKey(100, nullptr, &first);
        CSP_FreeKey(100, nullptr, &second);
        std::free(std::exchange(der, {0, nullptr}).Data);
    };
    each_fails(
        [&] { return CSP_GenerateKeyPair(100, pair.handle(), nullptr, 0, 0, nullptr, &first, 0, 0, nullptr, &second); });
    each_fails([&] { return CSP_GenerateAlgorithmParams(100, params.handle(), nullptr, 256, &der); });
    each_fails([&] { return CSP_WrapKey(100, wrapping.handle(), nullptr, nullptr, &wrapping.key, &first); });
    CSSM_KEY wrapped{};
    ASSERT_EQ(CSP_WrapKey(100, wrapping.handle(), nullptr, nullptr, &wrapping.key, &wrapped), 0);
    each_fails([&] { return CSP_UnwrapKey(100, wrapping.handle(), nullptr, nullptr, &wrapped, &first); });
    CSP_FreeKey(100, nullptr, &wrapped);
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
