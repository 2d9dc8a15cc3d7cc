// HAS-160 (TTAS.KO-12.0011): 80 steps on the sixteen words of the block and, in each round of twenty, four words made of
// them.
#include "base/bytes.h"
#include "hash/md_compress.h"
#include "hash/unroll.h"

#include <array>
#include <bit>

namespace morvane::hash {
namespace {

using Block = std::array<std::uint32_t, 16>;
using Variables = std::array<std::uint32_t, 5>;

// The order in which a round takes the sixteen words of the block. Before each group of four it takes the exclusive or of
// another group: before the first the third, before the second the fourth, before the third the first, before the fourth
// the second.
constexpr std::uint8_t kOrder[4][16] = {{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15},
                                        {3, 6, 9, 12, 15, 2, 5, 8, 11, 14, 1, 4, 7, 10, 13, 0},
                                        {12, 5, 14, 7, 0, 9, 2, 11, 4, 13, 6, 15, 8, 1, 10, 3},
                                        {7, 2, 13, 8, 3, 14, 9, 4, 15, 10, 5, 0, 11, 6, 1, 12}};
constexpr std::uint8_t kFirstRotation[20] = {5, 11, 7, 15, 6, 13, 8, 14, 7, 12, 9, 11, 8, 15, 6, 12, 9, 14, 5, 13};
constexpr std::uint8_t kSecondRotation[4] = {10, 17, 25, 30};
constexpr std::uint32_t kConstants[4] = {0x00000000, 0x5A827999, 0x6ED9EBA1, 0x8F1BBCDC};

// The message word of step I of a round.
template <std::size_t Round, std::size_t I>
[[gnu::always_inline]] inline std::uint32_t word(const Block& x) noexcept {
    constexpr std::size_t kGroup = I / 5;
    if constexpr (I % 5 != 0) {
        return x[kOrder[Round][4 * kGroup + I % 5 - 1]];
    } else {
        constexpr std::size_t kOther = (kGroup + 2) % 4 * 4;
        constexpr const std::uint8_t(&order)[16] = kOrder[Round];
        return x[order[kOther]] ^ x[order[kOther + 1]] ^ x[order[kOther + 2]] ^ x[order[kOther + 3]];
    }
}

template <std::size_t T>
[[gnu::always_inline]] inline void step(Variables& v, const Block& x) noexcept {
    constexpr std::size_t kRound = T / 20;
    const std::uint32_t a = v[(80 - T) % 5];
    std::uint32_t& b = v[(81 - T) % 5];
    const std::uint32_t c = v[(82 - T) % 5];
    const std::uint32_t d = v[(83 - T) % 5];
    std::uint32_t& e = v[(84 - T) % 5];
    e += word<kRound, T % 20>(x) + kConstants[kRound];
    if constexpr (kRound == 0) {
        e += d ^ (b & (c ^ d));
    } else if constexpr (kRound == 2) {
        e += c ^ (b | ~d);
    } else {
        e += b ^ c ^ d;
    }
    e += std::rotl(a, kFirstRotation[T % 20]);
    b = std::rotl(b, kSecondRotation[kRound]);
}

}  // namespace

void has160_compress(std::uint32_t* state, const std::uint8_t* blocks, std::size_t count) {
    for (; count != 0; --count, blocks += 64) {
        Block x;
        for (std::size_t i = 0; i < x.size(); ++i) x[i] = load_le<std::uint32_t>(blocks + 4 * i);
        Variables v = {state[0], state[1], state[2], state[3], state[4]};
        unroll<80>([&]<std::size_t T>() __attribute__((always_inline)) { step<T>(v, x); });
        for (std::size_t i = 0; i < v.size(); ++i) state[i] += v[i];
    }
}

}  // namespace morvane::hash
