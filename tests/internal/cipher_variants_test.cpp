// Every wide routine of a cipher that this machine can run, against its lanes in general registers.
#include "cipher/cipher_table.h"
#include "cipher/des.h"
#include "cipher/idea.h"
#include "cipher/rc2.h"
#include "cipher/rc5.h"
#include "cipher/seed.h"
#include "cipher/xor_into.h"
#include "internal/each_row.h"
#include "support/seeded.h"
#include "support/stack_call.h"

#include <gtest/gtest.h>

namespace {

using namespace morvane;
using namespace morvane::test;

constexpr std::size_t kGuardBytes = 64;

// A message of `len` bytes at any alignment, in place or not; with a last partial block room for the whole of it. The bytes
// around the output must stay.
Bytes result_of(const Job& job, const Bytes& message, std::size_t shift, bool in_place) {
    const std::size_t room = job.rounded(message.size());
    Bytes in(shift + room), out(room + shift + kGuardBytes, 0x5a), iv = repeated("\x13\x57\x9b\xdf", job.cipher.block / 4);
    std::copy(message.begin(), message.end(), in.begin() + static_cast<std::ptrdiff_t>(shift));
    std::uint8_t* const to = out.data() + shift;
    if (in_place) std::copy(in.begin() + static_cast<std::ptrdiff_t>(shift), in.end(), to);
    job.call(in_place ? to : in.data() + shift, to, message.size(), iv.data());
    out.insert(out.end(), iv.begin(), iv.end());
    return out;
}

// Both directions of the modes that decipher, or encipher, independent blocks.
template <typename Table>
void expect_rows_agree(const char* name, Table& table, std::size_t most_blocks, std::int32_t most_number = 0) {
    const Cipher& cipher = cipher_named(name);
    const auto width = static_cast<std::int32_t>(8 * cipher.block);
    Seeded random(20301);
    const auto compare = [&](auto& rows, Mode mode, bool decrypting) {
        with_each_row(rows, [&](auto* run) {
            for (std::size_t blocks = 0; blocks <= most_blocks; blocks += 1 + blocks / 32) {
                Bytes key = random.bytes(cipher.key != 0 ? cipher.key : 16);
                const std::size_t shift = random.below(17);
                Bytes message = random.bytes(blocks * cipher.block + random.below(2));
                // Words of zeros, which IDEA takes for 65536, are rare otherwise.
                for (Bytes* const bytes : {&key, &message}) {
                    for (std::uint8_t& byte : *bytes) byte = blocks % 3 == 0 && random.below(3) != 0 ? 0 : byte;
                }
                const std::int32_t number = most_number != 0 ? static_cast<std::int32_t>(blocks) % (most_number + 1) : 0;
                const Job job{cipher, cipher.scheduled(key, number), mode, decrypting, width};
                if (!job.exists()) return;
                for (const bool in_place : {false, true}) {
                    rows.pin(rows.rows().back().run);
                    const Bytes expected = result_of(job, message, shift, in_place);
                    rows.pin(run);
                    ASSERT_EQ(to_hex(result_of(job, message, shift, in_place)), to_hex(expected))
                        << job << ", " << blocks << " blocks" << (in_place ? ", in place" : "");
                }
            }
        });
    };
    compare(table.encrypt, kEcb, false);
    compare(table.encrypt, kCfb, true);
    compare(table.decrypt, kEcb, true);
    compare(table.decrypt, kCbc, true);
}

TEST(WideRoutines, AgreeWithTheLanesInGeneralRegisters) {
    expect_rows_agree("des", cipher::des_blocks, 600);
    expect_rows_agree("two-key triple des", cipher::des3_blocks, 280);
    expect_rows_agree("three-key triple des", cipher::des3_3key_blocks, 280);
    expect_rows_agree("idea", cipher::idea_blocks, 150);
    expect_rows_agree("rc2", cipher::rc2_blocks, 150);
    expect_rows_agree("rc5", cipher::rc5_blocks, 150, E_RC5_MAX_ROUNDS);
    expect_rows_agree("seed", cipher::seed_blocks, 70);
}

TEST(Xor, RowsAgree) {
    Random random(20302);
    const Bytes with = random.bytes(64), text = random.bytes(64);
    with_each_row(cipher::xor_into, [&](auto* run) {
        Bytes result = text;
        run(result.data(), with.data(), 40);
        for (std::size_t i = 0; i < 64; ++i) EXPECT_EQ(result[i], i < 40 ? text[i] ^ with[i] : text[i]) << i;
    });
}

#if defined(__i386__)
template <typename Table, typename Encrypt, typename Decrypt>
void expect_any_stack(const char* name, Table& table, std::size_t blocks, Encrypt* encrypt, Decrypt* decrypt) {
    const Cipher& cipher = cipher_named(name);
    Bytes schedule = cipher.scheduled(Bytes(16, 0x35)), out(blocks * cipher.block), back(out.size());
    const Bytes message = repeated("01234567", out.size() / 8);
    with_each_row(table.encrypt, [&](auto*) {
        for (const std::uint32_t offset : kStackOffsets) {
            call_at(offset, encrypt, message.data(), out.data(), Record{schedule.data()}, size32(out));
            with_each_row(table.decrypt, [&](auto*) {
                call_at(offset, decrypt, out.data(), back.data(), Record{schedule.data()}, size32(out));
                EXPECT_EQ(back, message) << cipher.name << ", offset " << offset;
            });
        }
    });
}

TEST(WideRoutines, WorkAtEveryStackOffset) {
    expect_any_stack("des", cipher::des_blocks, 300, E_DES_ECB_Encrypt, E_DES_ECB_Decrypt);
    expect_any_stack("idea", cipher::idea_blocks, 47, E_IDEA_ECB_Encrypt, E_IDEA_ECB_Decrypt);
    expect_any_stack("rc2", cipher::rc2_blocks, 47, E_RC2_ECB_Encrypt, E_RC2_ECB_Decrypt);
    expect_any_stack("rc5", cipher::rc5_blocks, 47, E_RC5_ECB_Encrypt, E_RC5_ECB_Decrypt);
    expect_any_stack("seed", cipher::seed_blocks, 47, E_SEED_ECB_Encrypt, E_SEED_ECB_Decrypt);
}
#endif

}  // namespace
