// Every accelerated routine that this machine can run, against the portable one.
#include <morvane/hash.h>

#include "cpu/cpu.h"
#include "hash/sha1_compress.h"
#include "support/bytes.h"
#include "support/stack_call.h"

#include <gtest/gtest.h>
#include <thread>

namespace {

using namespace morvane;
using namespace morvane::test;

// Runs `check` once per usable row, the last of which is portable, with that row in use.
template <typename Fn, std::size_t Rows, typename Check>
void with_each_row(cpu::Dispatch<Fn, Rows>& dispatch, Check check) {
    int usable = 0;
    for (const cpu::Variant<Fn>& row : dispatch.rows()) {
        if (!cpu::usable(row.needs)) continue;
        ++usable;
        SCOPED_TRACE(testing::Message() << "row that needs features " << row.needs);
        dispatch.pin(row.run);
        ASSERT_EQ(dispatch.get(), row.run);
        check(row.run);
    }
    dispatch.pin(nullptr);
    EXPECT_GE(usable, 1);
    testing::Test::RecordProperty("usable_rows", usable);
}

TEST(Dispatch, TakesTheFirstUsableRowAndKeepsIt) {
    using Fn = int();
    constexpr std::array<cpu::Variant<Fn>, 3> kRows = {{
        {1U << 30, [] { return 1; }},  // a feature that no processor is known to have
        {cpu::kNone, [] { return 2; }},
        {cpu::kNone, [] { return 3; }},
    }};
    cpu::Dispatch<Fn, 3> dispatch{kRows};
    EXPECT_EQ(dispatch.get()(), 2);
    dispatch.pin(kRows[2].run);
    EXPECT_EQ(dispatch.get()(), 3);

    const cpu::Features all = cpu::features();
    cpu::limit_features(cpu::kNone);
    EXPECT_EQ(cpu::features(), cpu::kNone);
    cpu::limit_features(cpu::kAll);
    EXPECT_EQ(cpu::features(), all);
}

TEST(Dispatch, ThreadsThatComeAtOnceFindTheSameRow) {
    for (int round = 0; round < 50; ++round) {
        hash::sha1_compress.pin(nullptr);
        hash::Sha1CompressFn* found[4] = {};
        std::vector<std::thread> threads;
        for (auto& slot : found) threads.emplace_back([&slot] { slot = hash::sha1_compress.get(); });
        for (std::thread& thread : threads) thread.join();
        for (hash::Sha1CompressFn* run : found) ASSERT_EQ(run, hash::sha1_compress.get());
    }
}

TEST(Sha1Variants, AgreeWithThePortableRoutine) {
    constexpr std::uint32_t kSeed = 20267;
    SCOPED_TRACE(testing::Message() << "seed " << kSeed);
    with_each_row(hash::sha1_compress, [](hash::Sha1CompressFn* compress) {
        Random random(kSeed);
        for (std::size_t blocks = 0; blocks < 20; ++blocks) {
            for (std::size_t shift = 0; shift < 17; ++shift) {  // of the message against any alignment
                const Bytes message = random.bytes(64 * blocks + shift);
                std::uint32_t expected[5];
                for (std::uint32_t& word : expected) word = random.below(0xffffffff);
                std::uint32_t state[6];
                std::copy(expected, expected + 5, state);
                state[5] = 0x5a5a5a5a;
                hash::sha1_compress_portable(expected, message.data() + shift, blocks);
                compress(state, message.data() + shift, blocks);
                ASSERT_TRUE(std::equal(expected, expected + 5, state)) << blocks << " blocks, shift " << shift;
                ASSERT_EQ(state[5], 0x5a5a5a5aU);
            }
        }
    });
}

#if defined(__i386__)
TEST(Sha1Variants, WorkAtEveryStackOffset) {
    const Bytes message = repeated("0123456789", 30);
    with_each_row(hash::sha1_compress, [&](hash::Sha1CompressFn*) {
        for (const std::uint32_t offset : kStackOffsets) {
            Bytes digest(20);
            call_at(offset, E_SHA1, digest.data(), message.data(), size32(message));
            EXPECT_EQ(to_hex(digest), "8e7fd677f6da2e2f7ae92f64367dcbf423d7f042") << "offset " << offset;
        }
    });
}
#endif

}  // namespace
