// MD4 and MD5, unrolled. In every step the message word and the constant go in before what the step before produced, so
// that they are off the chain that the steps form.
#include "base/bytes.h"
#include "hash/md_compress.h"
#include "hash/unroll.h"

#include <array>
#include <bit>

namespace morvane::hash {
namespace {

using Block = std::array<std::uint32_t, 16>;
using State = std::array<std::uint32_t, 4>;

inline Block load_block(const std::uint8_t* bytes) noexcept {
    Block words;
    for (std::size_t i = 0; i < words.size(); ++i) words[i] = load_le<std::uint32_t>(bytes + 4 * i);
    return words;
}

// Bitwise: y where x is set, else z.
inline std::uint32_t choose(std::uint32_t x, std::uint32_t y, std::uint32_t z) noexcept { return z ^ (x & (y ^ z)); }

struct Md4 {
    static constexpr std::size_t kSteps = 48;

    template <std::size_t T>
    [[gnu::always_inline]] static void step(State& v, const Block& x) noexcept {
        constexpr std::size_t kRound = T / 16;
        constexpr std::size_t i = T % 16;
        constexpr int kShifts[3][4] = {{3, 7, 11, 19}, {3, 5, 9, 13}, {3, 9, 11, 15}};
        constexpr std::size_t kThird[16] = {0, 8, 4, 12, 2, 10, 6, 14, 1, 9, 5, 13, 3, 11, 7, 15};
        std::uint32_t& a = v[(64 - T) % 4];
        const std::uint32_t b = v[(65 - T) % 4];
        const std::uint32_t c = v[(66 - T) % 4];
        const std::uint32_t d = v[(67 - T) % 4];
        if constexpr (kRound == 0) {
            a += x[i];
            a += choose(b, c, d);
        } else if constexpr (kRound == 1) {
            a += x[i % 4 * 4 + i / 4] + 0x5A827999;
            a += c & d;  // the two parts of the majority have no bit in common
            a += b & (c ^ d);
        } else {
            a += x[kThird[i]] + 0x6ED9EBA1;
            a += b ^ (c ^ d);
        }
        a = std::rotl(a, kShifts[kRound][i % 4]);
    }
};

// floor(2^32 |sin(t + 1)|), t the step (RFC 1321, section 3.4).
constexpr std::array<std::uint32_t, 64> kSines = {
    0xd76aa478, 0xe8c7b756, 0x242070db, 0xc1bdceee, 0xf57c0faf, 0x4787c62a, 0xa8304613, 0xfd469501, 0x698098d8, 0x8b44f7af,
    0xffff5bb1, 0x895cd7be, 0x6b901122, 0xfd987193, 0xa679438e, 0x49b40821, 0xf61e2562, 0xc040b340, 0x265e5a51, 0xe9b6c7aa,
    0xd62f105d, 0x02441453, 0xd8a1e681, 0xe7d3fbc8, 0x21e1cde6, 0xc33707d6, 0xf4d50d87, 0x455a14ed, 0xa9e3e905, 0xfcefa3f8,
    0x676f02d9, 0x8d2a4c8a, 0xfffa3942, 0x8771f681, 0x6d9d6122, 0xfde5380c, 0xa4beea44, 0x4bdecfa9, 0xf6bb4b60, 0xbebfbc70,
    0x289b7ec6, 0xeaa127fa, 0xd4ef3085, 0x04881d05, 0xd9d4d039, 0xe6db99e5, 0x1fa27cf8, 0xc4ac5665, 0xf4292244, 0x432aff97,
    0xab9423a7, 0xfc93a039, 0x655b59c3, 0x8f0ccc92, 0xffeff47d, 0x85845dd1, 0x6fa87e4f, 0xfe2ce6e0, 0xa3014314, 0x4e0811a1,
    0xf7537e82, 0xbd3af235, 0x2ad7d2bb, 0xeb86d391};

struct Md5 {
    static constexpr std::size_t kSteps = 64;

    template <std::size_t T>
    [[gnu::always_inline]] static void step(State& v, const Block& x) noexcept {
        constexpr std::size_t kRound = T / 16;
        constexpr std::size_t i = T % 16;
        constexpr int kShifts[4][4] = {{7, 12, 17, 22}, {5, 9, 14, 20}, {4, 11, 16, 23}, {6, 10, 15, 21}};
        constexpr std::size_t kWord = kRound == 0   ? i
                                      : kRound == 1 ? (5 * i + 1) % 16
                                      : kRound == 2 ? (3 * i + 5) % 16
                                                    : 7 * i % 16;
        std::uint32_t& a = v[(64 - T) % 4];
        const std::uint32_t b = v[(65 - T) % 4];
        const std::uint32_t c = v[(66 - T) % 4];
        const std::uint32_t d = v[(67 - T) % 4];
        a += x[kWord] + kSines[T];
        if constexpr (kRound == 0) {
            a += choose(b, c, d);
        } else if constexpr (kRound == 1) {
            a += ~d & c;  // the halves of the choice have no bit in common; this one does not wait for b
            a += d & b;
        } else if constexpr (kRound == 2) {
            a += (c ^ d) ^ b;
        } else {
            a += c ^ (b | ~d);
        }
        a = std::rotl(a, kShifts[kRound][i % 4]) + b;
    }
};

template <typename Digest>
[[gnu::always_inline]] inline void compress(std::uint32_t* state, const std::uint8_t* blocks, std::size_t count) noexcept {
    State sum = {state[0], state[1], state[2], state[3]};
    for (; count != 0; --count, blocks += 64) {
        const Block x = load_block(blocks);
        State v = sum;
        unroll<Digest::kSteps>([&]<std::size_t T>() __attribute__((always_inline)) { Digest::template step<T>(v, x); });
        for (std::size_t i = 0; i < sum.size(); ++i) sum[i] += v[i];
    }
    for (std::size_t i = 0; i < sum.size(); ++i) state[i] = sum[i];
}

}  // namespace

void md4_compress(std::uint32_t* state, const std::uint8_t* blocks, std::size_t count) {
    compress<Md4>(state, blocks, count);
}

void md5_compress(std::uint32_t* state, const std::uint8_t* blocks, std::size_t count) {
    compress<Md5>(state, blocks, count);
}

}  // namespace morvane::hash
