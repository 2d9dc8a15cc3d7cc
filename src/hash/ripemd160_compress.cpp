// RIPEMD-160 (ISO/IEC 10118-3): two lines of 80 steps that do not depend on one another, interleaved step by step so that
// the processor works on both at once.
#include "base/bytes.h"
#include "base/keep_order.h"
#include "hash/md_compress.h"
#include "hash/unroll.h"

#include <array>
#include <bit>

namespace morvane::hash {
namespace {

using Variables = std::array<std::uint32_t, 5>;
using Words = std::array<std::uint8_t, 80>;

// Message words and rotations of the two lines. Each round's words follow from those of the round before by the permutation
// kRho; the right line begins with kPi.
constexpr std::array<std::uint8_t, 16> kRho = {7, 4, 13, 1, 10, 6, 15, 3, 12, 0, 9, 5, 2, 14, 11, 8};

constexpr Words words_of(bool right) {
    Words words{};
    for (std::size_t i = 0; i < 16; ++i) words[i] = static_cast<std::uint8_t>(right ? (9 * i + 5) % 16 : i);
    for (std::size_t i = 16; i < 80; ++i) words[i] = kRho[words[i - 16]];
    return words;
}

constexpr Words kLeftWords = words_of(false);
constexpr Words kRightWords = words_of(true);
static_assert(kLeftWords[32] == 3 && kLeftWords[79] == 13 && kRightWords[17] == 11 && kRightWords[79] == 11);

// The rotation depends on the round and the message word.
constexpr std::uint8_t kRotations[5][16] = {{11, 14, 15, 12, 5, 8, 7, 9, 11, 13, 14, 15, 6, 7, 9, 8},
                                            {12, 13, 11, 15, 6, 9, 9, 7, 12, 15, 11, 13, 7, 8, 7, 7},
                                            {13, 15, 14, 11, 7, 7, 6, 8, 13, 14, 13, 12, 5, 5, 6, 9},
                                            {14, 11, 12, 14, 8, 6, 5, 5, 15, 12, 15, 14, 9, 9, 8, 6},
                                            {15, 12, 13, 13, 9, 5, 8, 6, 14, 11, 12, 11, 8, 6, 5, 5}};

constexpr std::uint32_t kLeftConstants[] = {0x00000000, 0x5A827999, 0x6ED9EBA1, 0x8F1BBCDC, 0xA953FD4E};
constexpr std::uint32_t kRightConstants[] = {0x50A28BE6, 0x5C4DD124, 0x6D703EF3, 0x7A6D76E9, 0x00000000};

// Step T of a line; Function is the one of its round.
//
// What takes the time is the way from b, which the step before has made, to the new a. So everything else comes first, and
// where the function is a choice between words, the two parts of it are added: they have no bit in common.
template <std::size_t T, std::size_t Function>
[[gnu::always_inline]] inline void step(Variables& v, std::uint32_t word, std::uint32_t constant, int rotation) noexcept {
    std::uint32_t& a = v[(80 - T) % 5];
    const std::uint32_t b = v[(81 - T) % 5];
    std::uint32_t& c = v[(82 - T) % 5];
    const std::uint32_t d = v[(83 - T) % 5];
    const std::uint32_t e = v[(84 - T) % 5];
    std::uint32_t sum = a + word + constant;
    if constexpr (Function == 0) {  // b ^ c ^ d
        std::uint32_t rest = c ^ d;
        keep_order(rest);
        keep_order(sum);
        sum += b ^ rest;
    } else if constexpr (Function == 1) {  // b ? c : d
        std::uint32_t differing = c ^ d;
        keep_order(differing);
        keep_order(sum);
        sum += (b & differing) ^ d;
    } else if constexpr (Function == 2) {  // (b | ~c) ^ d
        std::uint32_t not_c = ~c;
        keep_order(not_c);
        keep_order(sum);
        sum += (b | not_c) ^ d;
    } else if constexpr (Function == 3) {  // d ? b : c
        sum += c & ~d;
        keep_order(sum);
        sum += b & d;
    } else {  // b ^ (c | ~d)
        std::uint32_t rest = c | ~d;
        keep_order(rest);
        keep_order(sum);
        sum += b ^ rest;
    }
    a = std::rotl(sum, rotation) + e;
    c = std::rotl(c, 10);
}

}  // namespace

void ripemd160_compress(std::uint32_t* state, const std::uint8_t* blocks, std::size_t count) {
    for (; count != 0; --count, blocks += 64) {
        const auto word = [blocks](std::size_t i) { return load_le<std::uint32_t>(blocks + 4 * i); };
        Variables left = {state[0], state[1], state[2], state[3], state[4]};
        Variables right = left;
        unroll<80>([&]<std::size_t T>() __attribute__((always_inline)) {
            constexpr std::size_t kRound = T / 16;
            constexpr std::size_t l = kLeftWords[T];
            constexpr std::size_t r = kRightWords[T];
            step<T, kRound>(left, word(l), kLeftConstants[kRound], kRotations[kRound][l]);
            step<T, 4 - kRound>(right, word(r), kRightConstants[kRound], kRotations[kRound][r]);
        });
        const std::uint32_t first = state[1] + left[2] + right[3];
        state[1] = state[2] + left[3] + right[4];
        state[2] = state[3] + left[4] + right[0];
        state[3] = state[4] + left[0] + right[1];
        state[4] = state[0] + left[1] + right[2];
        state[0] = first;
    }
}

}  // namespace morvane::hash
