// SHA-1 with the processor's SHA instructions.
#include "hash/sha1_compress.h"

#include "base/keep_order.h"

#include <immintrin.h>
#include <utility>

#define MORVANE_SHA gnu::target("sha,sse4.1,ssse3"), gnu::always_inline

namespace morvane::hash {
namespace {

struct Lanes {
    __m128i abcd;  // A in the highest lane
    __m128i e;     // E, or the value it is made from, in the highest lane
    __m128i w[4];  // message expansion: group g of four words at g % 4, the first word in the highest lane

    // Steps 4 G to 4 G + 3. The three operations that make a group of the message expansion are spread over the groups
    // before it, each as soon as its operands are there, and stand behind the instruction that the chain of steps waits
    // for.
    template <std::size_t G>
    [[MORVANE_SHA]] inline void group(const std::uint8_t* block) noexcept {
        if constexpr (G < 4) {
            const __m128i reverse = _mm_set_epi64x(0x0001020304050607, 0x08090a0b0c0d0e0f);
            const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(block + 16 * G));
            w[G] = _mm_shuffle_epi8(bytes, reverse);
        }
        const __m128i now = w[G % 4];
        const __m128i abcd_before = abcd;
        e = G == 0 ? _mm_add_epi32(e, now) : _mm_sha1nexte_epu32(e, now);
        abcd = _mm_sha1rnds4_epu32(abcd, e, G / 5);
        e = abcd_before;
        if constexpr (G >= 1 && G < 17) w[(G + 3) % 4] = _mm_sha1msg1_epu32(w[(G + 3) % 4], now);
        if constexpr (G >= 2 && G < 18) w[(G + 2) % 4] = _mm_xor_si128(w[(G + 2) % 4], now);
        if constexpr (G >= 3 && G < 19) w[(G + 1) % 4] = _mm_sha1msg2_epu32(w[(G + 1) % 4], now);
    }

    template <std::size_t... G>
    [[MORVANE_SHA]] inline void groups(const std::uint8_t* block, std::index_sequence<G...> /*all*/) noexcept {
        (group<G>(block), ...);
    }
};

}  // namespace

[[gnu::target("sha,sse4.1,ssse3")]] void sha1_compress_sha(std::uint32_t* state, const std::uint8_t* blocks,
                                                           std::size_t count) {
    Lanes lanes;
    lanes.abcd = _mm_shuffle_epi32(_mm_loadu_si128(reinterpret_cast<const __m128i*>(state)), 0x1B);
    lanes.e = _mm_set_epi32(static_cast<int>(state[4]), 0, 0, 0);
    for (; count != 0; --count, blocks += kSha1BlockBytes) {
        __m128i abcd_before = lanes.abcd;
        __m128i e_before = lanes.e;
        set_aside(abcd_before);  // where registers are few, the compiler would rather put the new E aside, which is awaited
        set_aside(e_before);
        lanes.groups(blocks, std::make_index_sequence<20>{});
        lanes.e = _mm_sha1nexte_epu32(lanes.e, e_before);
        lanes.abcd = _mm_add_epi32(lanes.abcd, abcd_before);
    }
    _mm_storeu_si128(reinterpret_cast<__m128i*>(state), _mm_shuffle_epi32(lanes.abcd, 0x1B));
    state[4] = static_cast<std::uint32_t>(_mm_extract_epi32(lanes.e, 3));
}

}  // namespace morvane::hash
