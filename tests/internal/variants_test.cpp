// Every accelerated routine that this machine can run, against the portable one.
#include <morvane/ecc.h>
#include <morvane/hash.h>

#include "cpu/cpu.h"
#include "ecc/binary.h"
#include "ecc/octet_records.h"
#include "hash/sha1_compress.h"
#include "hash/sha2_compress.h"
#include "internal/each_row.h"
#include "support/bytes.h"
#include "support/seeded.h"
#include "support/stack_call.h"

#include <gtest/gtest.h>
#include <thread>

namespace {

using namespace morvane;
using namespace morvane::test;

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

// Blocks at every alignment into random states, one and several at a call.
template <std::size_t StateWords, std::size_t BlockBytes, std::size_t Rows>
void expect_rows_agree(cpu::Dispatch<hash::Sha1CompressFn, Rows>& dispatch, hash::Sha1CompressFn* portable) {
    constexpr std::uint32_t kGuard = 0x5a5a5a5a;
    with_each_row(dispatch, [&](hash::Sha1CompressFn* compress) {
        Seeded random(20267);
        for (std::size_t blocks = 0; blocks < 10; ++blocks) {
            for (std::size_t shift = 0; shift < 17; ++shift) {
                const Bytes message = random.bytes(BlockBytes * blocks + shift);
                std::uint32_t expected[StateWords + 1];
                for (std::uint32_t& word : expected) word = random.below(0xffffffff);
                expected[StateWords] = kGuard;
                std::uint32_t state[StateWords + 1];
                std::copy(std::begin(expected), std::end(expected), state);
                portable(expected, message.data() + shift, blocks);
                compress(state, message.data() + shift, blocks);
                ASSERT_TRUE(std::equal(std::begin(expected), std::end(expected), state))
                    << blocks << " blocks, shift " << shift;
                ASSERT_EQ(state[StateWords], kGuard);
            }
        }
    });
}

TEST(Variants, AgreeWithThePortableRoutine) {
    expect_rows_agree<5, 64>(hash::sha1_compress, hash::sha1_compress_portable);
    expect_rows_agree<8, 64>(hash::sha256_compress, hash::sha256_compress_portable);
    expect_rows_agree<16, 128>(hash::sha512_compress, hash::sha512_compress_portable);
}

#if defined(__i386__)
// 32-bit callers keep the stack aligned to four bytes only. A routine that trusted it to be aligned to sixteen would fault
// at three of the four offsets.
TEST(Variants, WorkAtEveryStackOffset) {
    const Bytes message = repeated("0123456789", 30);
    Bytes digest(64);
    std::uint32_t size = 0;
    const auto expect = [&](auto& rows, const char* expected, const auto& call) {
        with_each_row(rows, [&](auto*) {
            for (const std::uint32_t offset : kStackOffsets) {
                call(offset);
                EXPECT_EQ(to_hex(digest.data(), 4), expected) << "offset " << offset;
            }
        });
    };
    expect(hash::sha1_compress, "8e7fd677",
           [&](auto offset) { call_at(offset, E_SHA1, digest.data(), message.data(), size32(message)); });
    expect(hash::sha256_compress, "ba6ab297",
           [&](auto offset) { call_at(offset, E_SHA256, digest.data(), &size, message.data(), size32(message)); });
    expect(hash::sha512_compress, "0e36f261",
           [&](auto offset) { call_at(offset, E_SHA512, digest.data(), &size, message.data(), size32(message)); });
    E_EC_PARAMS params;
    E_ECParams_Init(ecc::kSect163k1, &params);
    ++params.n_words[0];
    const TORVA_V1_POINT base = base_of(params);
    with_each_row(ecc::binary_multiply, [&](ecc::BinaryMultiplyFn*) {
        for (const std::uint32_t offset : kStackOffsets) {
            TORVA_V1_POINT product{};
            call_at(offset, TORVA_V1_ScalarMultiplicationOnEllipticCurves, ecc::kSect163k1, nullptr, params.n_words,
                    E_EC_WORDS, &base, &product);
            EXPECT_TRUE(std::equal(base.y, base.y + E_EC_WORDS, product.y)) << "offset " << offset;
        }
    });
}
#endif

}  // namespace
