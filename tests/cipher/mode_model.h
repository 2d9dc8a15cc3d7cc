// A slow model of the modes as the header words them, over the single-block functions, and the calls that must do the same.
#pragma once

#include "cipher/cipher_table.h"

#include <gtest/gtest.h>
#include <algorithm>

namespace morvane::test {

inline Bytes operator^(Bytes a, const Bytes& b) {
    for (std::size_t i = 0; i < a.size(); ++i) a[i] ^= b[i];
    return a;
}

inline Bytes one_block(const Job& job, bool decrypting, const Bytes& bytes) {
    const auto shift = [&](std::size_t i) { return 8 * (job.cipher.order == std::endian::little ? i % 4 : 3 - i % 4); };
    std::vector<std::uint32_t> words(bytes.size() / 4);
    for (std::size_t i = 0; i < bytes.size(); ++i) words[i / 4] |= std::uint32_t{bytes[i]} << shift(i);
    Bytes schedule = job.schedule;
    job.cipher.words[decrypting](words.data(), {schedule.data()});
    Bytes result(bytes.size());
    for (std::size_t i = 0; i < bytes.size(); ++i) result[i] = static_cast<std::uint8_t>(words[i / 4] >> shift(i));
    return result;
}

inline Bytes model_of_blocks(const Job& job, const Bytes& in, std::size_t len, const Bytes& iv) {
    const std::size_t size = job.cipher.block;
    Bytes chain = job.mode == kEcb ? Bytes(size) : job.cipher.cbc_iv(iv), out;
    for (std::size_t at = 0; at < len; at += size) {
        const std::size_t present = std::min(size, len - at);
        Bytes block(in.data() + at, in.data() + at + (job.decrypting ? size : present));
        block.resize(size);
        Bytes result;
        if (job.mode == kNoPad && present < size) {
            result = block ^ one_block(job, false, chain);
        } else {
            result = job.decrypting ? one_block(job, true, block) ^ chain : one_block(job, false, block ^ chain);
            if (job.mode != kEcb) chain = job.decrypting ? block : result;
        }
        out.insert(out.end(), result.data(), result.data() + (job.decrypting ? present : size));
    }
    return out;
}

// A bit string in the order in which a step uses it.
using Bits = std::vector<bool>;

inline std::uint8_t place(const Job& job, std::size_t i) {
    return static_cast<std::uint8_t>(job.cipher.order == std::endian::little ? 1U << i % 8 : 0x80U >> i % 8);
}
inline Bits to_bits(const Job& job, const Bytes& bytes) {
    Bits bits(8 * bytes.size());
    for (std::size_t i = 0; i < bits.size(); ++i) bits[i] = (bytes[i / 8] & place(job, i)) != 0;
    return bits;
}
inline Bytes to_bytes(const Job& job, const Bits& bits) {
    Bytes bytes((bits.size() + 7) / 8);
    for (std::size_t i = 0; i < bits.size(); ++i) bytes[i / 8] |= bits[i] ? place(job, i) : std::uint8_t{0};
    return bytes;
}

// iv becomes what the call leaves there.
inline Bytes model_of_feedback(const Job& job, const Bytes& in, std::size_t len, Bytes& iv) {
    if (!job.has_good_width()) return {};
    Bits shift_register = to_bits(job, iv);
    Bytes out;
    for (std::size_t at = 0; at + job.step() <= len; at += job.step()) {
        const Bits key = to_bits(job, one_block(job, false, to_bytes(job, shift_register)));
        const Bits from = to_bits(job, Bytes(in.data() + at, in.data() + at + job.step()));
        Bits result(static_cast<std::size_t>(job.width_bits));
        for (std::size_t i = 0; i < result.size(); ++i) result[i] = from[i] != key[i];
        const Bits& fed = job.mode == kOfb ? key : job.decrypting ? from : result;
        shift_register.erase(shift_register.begin(), shift_register.begin() + job.width_bits);
        shift_register.insert(shift_register.end(), fed.begin(), fed.begin() + job.width_bits);
        const Bytes bytes = to_bytes(job, result);
        out.insert(out.end(), bytes.begin(), bytes.end());
    }
    iv = to_bytes(job, shift_register);
    return out;
}

inline Bytes model(const Job& job, const Bytes& in, std::size_t len, Bytes& iv) {
    return job.feeds_back() ? model_of_feedback(job, in, len, iv) : model_of_blocks(job, in, len, iv);
}

// Apart and in place, at once and in two calls, at any alignment: the expected bytes are written and no others. Decryption
// by blocks is given whole blocks; what is encrypted ends with its heap block, where the address sanitizer sees more reads.
inline void expect_of_calls(const Job& job, Random& random, const Bytes& in, std::size_t len, const Bytes& iv,
                            const Bytes& expected, const Bytes& expected_iv) {
    constexpr std::uint8_t kGuard = 0xa5;
    const std::size_t cut = random.below(static_cast<std::uint32_t>(len / job.step() + 1)) * job.step();
    const std::size_t shift = random.below(8);
    Bytes source(shift + in.size());
    std::copy(in.begin(), in.end(), source.data() + shift);
    for (const bool in_place : {false, true}) {
        for (const std::size_t first : {std::size_t{0}, cut}) {
            SCOPED_TRACE(testing::Message()
                         << job << ", " << len << " bytes, cut at " << first << ", in place " << in_place);
            Bytes out(shift + job.rounded(len) + 16, kGuard);
            if (in_place) std::copy(source.begin(), source.end(), out.begin());
            const std::uint8_t* const from = in_place ? out.data() : source.data();
            Bytes wanted = out;
            std::copy(expected.begin(), expected.end(), wanted.data() + shift);

            Bytes chain = iv;
            if (first != 0) {
                job.call(from + shift, out.data() + shift, first, chain.data());
                if (!job.feeds_back()) {
                    const std::uint8_t* const end = (job.decrypting ? in.data() : expected.data()) + first;
                    chain = job.cipher.cbc_iv(Bytes(end - job.cipher.block, end));
                }
            }
            job.call(from + shift + first, out.data() + shift + first, len - first, chain.data());
            ASSERT_EQ(to_hex(out), to_hex(wanted));
            if (job.feeds_back()) {
                ASSERT_EQ(to_hex(chain), to_hex(expected_iv));
            }
        }
    }
}

// Random data through a mode, as the model says.
inline void expect_mode(const Job& job, Random& random, std::size_t len) {
    const Bytes iv = random.bytes(job.cipher.block);
    const Bytes in = random.bytes(job.decrypting && !job.feeds_back() ? job.rounded(len) : len);
    Bytes iv_after = iv;
    const Bytes expected = model(job, in, len, iv_after);
    expect_of_calls(job, random, in, len, iv, expected, iv_after);
}

}  // namespace morvane::test
