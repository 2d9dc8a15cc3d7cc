// SHA-512 where general registers have 32 bits: its 64-bit words are lanes of 128-bit registers. e and a lie in one
// register, for much the same is done to both, and so do the words that they become in later steps; the message expansion
// makes two words at a time. Included by one file for each set of instructions, which first defines
//     MORVANE_TARGET                target attribute of every function
//     MORVANE_INLINE                the same for functions to be inlined
//     __m128i reverse(__m128i)      the bytes of each word in the opposite order
//     __m128i sums(__m128i ea)      rotr 14 ^ rotr 18 ^ rotr 41 in the low lane, rotr 28 ^ rotr 34 ^ rotr 39 in the high
//     one
//     __m128i choices(ea, fb, gc)   e ? f : g in the low lane, the majority of a, b and c in the high one
//     __m128i mix_back15(__m128i)   rotr 1 ^ rotr 8 ^ shift 7
//     __m128i mix_back2(__m128i)    rotr 19 ^ rotr 61 ^ shift 6
// A function can be inlined only into functions of its own target, so a template cannot do this. There are eight registers,
// of which the variables take four: left to itself, the compiler begins too much at once and waits for what it put aside.
#include "base/keep_order.h"
#include "hash/sha2_compress.h"

#include <utility>

namespace morvane::hash {
namespace {  // NOLINT(cert-dcl59-cpp): every file that includes this makes functions of its own

MORVANE_INLINE __m128i add(__m128i a, __m128i b) noexcept { return _mm_add_epi64(a, b); }
MORVANE_INLINE __m128i load(const void* words) noexcept { return _mm_loadu_si128(static_cast<const __m128i*>(words)); }
MORVANE_INLINE void store(void* words, __m128i lanes) noexcept { _mm_storeu_si128(static_cast<__m128i*>(words), lanes); }

// The working variables as [h, d], [g, c], [f, b], [e, a]. Their roles move by one place each step instead of their values.
using LaneVariables = std::array<__m128i, 4>;

// The words of the message, expanded, and one that is read beside the last. They stay in memory.
struct LaneWords {
    alignas(16) std::array<std::uint64_t, 81> w;

    MORVANE_INLINE void put(std::size_t at, __m128i two) noexcept {
        store(&w[at], two);
        set_aside(w);
    }

    // The two words from `at`.
    MORVANE_INLINE void expand(std::size_t at) noexcept {
        __m128i sum = add(load(&w[at - 16]), load(&w[at - 7]));
        keep_lanes(sum);
        sum = add(sum, mix_back15(load(&w[at - 15])));
        keep_lanes(sum);
        put(at, add(sum, mix_back2(load(&w[at - 2]))));
    }
};

// A step, T counted modulo 4, with the low lanes of word and constant.
template <std::size_t T>
MORVANE_INLINE void lane_step(LaneVariables& v, __m128i word, __m128i constant) noexcept {
    const __m128i ea = v[(T + 3) % 4];
    __m128i& hd = v[T % 4];
    __m128i sum = sums(ea);
    keep_lanes(sum);
    __m128i rest = _mm_move_epi64(add(add(hd, word), constant));
    rest = add(rest, choices(ea, v[(T + 2) % 4], v[(T + 1) % 4]));
    keep_lanes(rest);
    sum = add(sum, rest);
    keep_lanes(sum);
    hd = add(_mm_unpacklo_epi64(sum, sum), _mm_unpackhi_epi64(hd, sum));
    keep_lanes(hd);
}

template <std::size_t... P>
MORVANE_INLINE void lane_steps(LaneVariables& v, const std::uint8_t* block, std::index_sequence<P...> /*pairs*/) noexcept {
    LaneWords words;
    words.w[80] = 0;
    (words.put(2 * P, reverse(load(block + 16 * P))), ...);
    const std::uint64_t* w = words.w.data();
    const std::uint64_t* k = kSha512Constants.data();
    keep_order(k);
    for (std::size_t t = 0; t < 64; t += 16) {
        ((lane_step<2 * P>(v, load(w + t + 2 * P), load(k + t + 2 * P)),
          lane_step<2 * P + 1>(v, load(w + t + 2 * P + 1), load(k + t + 2 * P + 1)), words.expand(t + 2 * P + 16)),
         ...);
    }
    ((lane_step<2 * P>(v, load(w + 64 + 2 * P), load(k + 64 + 2 * P)),
      lane_step<2 * P + 1>(v, load(w + 64 + 2 * P + 1), load(k + 64 + 2 * P + 1))),
     ...);
}

MORVANE_TARGET inline void compress_lanes(std::uint32_t* state, const std::uint8_t* blocks, std::size_t count) noexcept {
    // Two words of 32 bits each, the low one first.
    const __m128i ab = load(state), cd = load(state + 4), ef = load(state + 8), gh = load(state + 12);
    LaneVariables sum = {_mm_unpackhi_epi64(gh, cd), _mm_unpacklo_epi64(gh, cd), _mm_unpackhi_epi64(ef, ab),
                         _mm_unpacklo_epi64(ef, ab)};
    for (; count != 0; --count, blocks += 128) {
        LaneVariables v = sum;
        lane_steps(v, blocks, std::make_index_sequence<8>{});
        for (std::size_t i = 0; i < 4; ++i) sum[i] = add(sum[i], v[i]);
    }
    store(state, _mm_unpackhi_epi64(sum[3], sum[2]));
    store(state + 4, _mm_unpackhi_epi64(sum[1], sum[0]));
    store(state + 8, _mm_unpacklo_epi64(sum[3], sum[2]));
    store(state + 12, _mm_unpacklo_epi64(sum[1], sum[0]));
}

}  // namespace
}  // namespace morvane::hash
