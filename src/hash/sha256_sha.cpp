// SHA-256 with the processor's SHA instructions.
#include "base/keep_order.h"
#include "hash/sha2_compress.h"

#include <immintrin.h>
#include <utility>

#define MORVANE_SHA gnu::target("sha,sse4.1,ssse3"), gnu::always_inline

namespace morvane::hash {
namespace {

struct Lanes {
    __m128i abef;
    __m128i cdgh;
    __m128i w[4];  // message expansion: group g of four words at g % 4

    // Steps 4 G to 4 G + 3. A group of the message expansion is begun three groups ahead and ended one ahead.
    template <std::size_t G>
    [[MORVANE_SHA]] inline void group(const std::uint8_t* block, const std::uint32_t* constants) noexcept {
        if constexpr (G < 4) {
            const __m128i swap = _mm_set_epi64x(0x0c0d0e0f08090a0b, 0x0405060700010203);
            w[G] = _mm_shuffle_epi8(_mm_loadu_si128(reinterpret_cast<const __m128i*>(block + 16 * G)), swap);
        }
        const __m128i now = w[G % 4];
        const __m128i words = _mm_add_epi32(now, _mm_load_si128(reinterpret_cast<const __m128i*>(constants + 4 * G)));
        cdgh = _mm_sha256rnds2_epu32(cdgh, abef, words);
        if constexpr (G >= 3 && G < 15) {
            const __m128i back7 = _mm_alignr_epi8(now, w[(G + 3) % 4], 4);
            w[(G + 1) % 4] = _mm_sha256msg2_epu32(_mm_add_epi32(w[(G + 1) % 4], back7), now);
        }
        abef = _mm_sha256rnds2_epu32(abef, cdgh, _mm_shuffle_epi32(words, 0x0E));
        if constexpr (G >= 1 && G < 13) w[(G + 3) % 4] = _mm_sha256msg1_epu32(w[(G + 3) % 4], now);
    }

    template <std::size_t... G>
    [[MORVANE_SHA]] inline void groups(const std::uint8_t* block, std::index_sequence<G...> /*all*/) noexcept {
        const std::uint32_t* constants = kSha256Constants.data();
        keep_order(constants);  // or the compiler copies all of them to the stack before the first block
        (group<G>(block, constants), ...);
    }
};

}  // namespace

[[gnu::target("sha,sse4.1,ssse3")]] void sha256_compress_sha(std::uint32_t* state, const std::uint8_t* blocks,
                                                             std::size_t count) {
    auto* const low = reinterpret_cast<__m128i*>(state);
    auto* const high = reinterpret_cast<__m128i*>(state + 4);
    // The instructions want A, B, E, F and C, D, G, H together, the first of them in the highest lane.
    const __m128i cdab = _mm_shuffle_epi32(_mm_loadu_si128(low), 0xB1);
    const __m128i efgh = _mm_shuffle_epi32(_mm_loadu_si128(high), 0x1B);
    Lanes lanes;
    lanes.abef = _mm_alignr_epi8(cdab, efgh, 8);
    lanes.cdgh = _mm_blend_epi16(efgh, cdab, 0xF0);
    for (; count != 0; --count, blocks += 64) {
        __m128i abef_before = lanes.abef;
        __m128i cdgh_before = lanes.cdgh;
        set_aside(abef_before);
        set_aside(cdgh_before);
        lanes.groups(blocks, std::make_index_sequence<16>{});
        lanes.abef = _mm_add_epi32(lanes.abef, abef_before);
        lanes.cdgh = _mm_add_epi32(lanes.cdgh, cdgh_before);
    }
    const __m128i feba = _mm_shuffle_epi32(lanes.abef, 0x1B);
    const __m128i dchg = _mm_shuffle_epi32(lanes.cdgh, 0xB1);
    _mm_storeu_si128(low, _mm_blend_epi16(feba, dchg, 0xF0));
    _mm_storeu_si128(high, _mm_alignr_epi8(dchg, feba, 8));
}

}  // namespace morvane::hash
