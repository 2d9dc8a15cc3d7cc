// SHA-1 with the message expansion in SSE2 registers, four words at a time, beside the scalar steps.
#include "hash/sha1_compress.h"
#include "hash/sha1_rounds.h"

#include <emmintrin.h>

#define MORVANE_SSE2        [[gnu::target("sse2")]]
#define MORVANE_SSE2_INLINE [[gnu::target("sse2"), gnu::always_inline]] inline

namespace morvane::hash {
namespace {

constexpr std::size_t kGroups = kSha1Steps / 4;

MORVANE_SSE2_INLINE __m128i load_be_words(const std::uint8_t* bytes) noexcept {
    __m128i words = _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes));
    words = _mm_or_si128(_mm_slli_epi16(words, 8), _mm_srli_epi16(words, 8));
    return _mm_shufflehi_epi16(_mm_shufflelo_epi16(words, 0xB1), 0xB1);
}

template <int Bits>
MORVANE_SSE2_INLINE __m128i rotl(__m128i words) noexcept {
    return _mm_or_si128(_mm_slli_epi32(words, Bits), _mm_srli_epi32(words, 32 - Bits));
}

// The four words that begin two words into `low` and end two words into `high`.
MORVANE_SSE2_INLINE __m128i middle(__m128i low, __m128i high) noexcept {
    return _mm_castpd_si128(_mm_shuffle_pd(_mm_castsi128_pd(low), _mm_castsi128_pd(high), 1));
}

// Group G of the expansion; w holds the eight groups before it, group n at n % 8.
template <std::size_t G>
MORVANE_SSE2_INLINE __m128i expand(const __m128i (&w)[8]) noexcept {
    const __m128i back6 = middle(w[(G - 2) % 8], w[(G - 1) % 8]);
    if constexpr (G >= 8) {
        // W[t] = (W[t-6] ^ W[t-16] ^ W[t-28] ^ W[t-32]) <<< 2 for t >= 32: the recurrence applied twice, which reaches back
        // far enough that no word depends on another of its own group.
        const __m128i early = _mm_xor_si128(_mm_xor_si128(w[G % 8], w[(G - 7) % 8]), w[(G - 4) % 8]);
        return rotl<2>(_mm_xor_si128(early, back6));
    } else {
        const __m128i back14 = middle(w[(G - 4) % 8], w[(G - 3) % 8]);
        const __m128i back3 = _mm_srli_si128(w[(G - 1) % 8], 4);  // its fourth word is this group's first, still unknown
        const __m128i mixed = _mm_xor_si128(_mm_xor_si128(w[(G - 4) % 8], back14), _mm_xor_si128(w[(G - 2) % 8], back3));
        const __m128i words = rotl<1>(mixed);
        return _mm_xor_si128(words,
                             rotl<2>(_mm_slli_si128(mixed, 12)));  // the first word, rotated once more, into the fourth
    }
}

// One compression: the expansion runs kAhead groups before the steps that use it.
struct Compression {
    static constexpr std::size_t kAhead = 4;

    Sha1Variables variables;
    __m128i w[8];                                             // the last eight groups of the expansion, group g at g % 8
    alignas(16) std::array<std::uint32_t, kSha1Steps> words;  // of the expansion, each with its step's constant added

    MORVANE_SSE2_INLINE explicit Compression(const std::uint32_t* state) noexcept : variables(state) {}

    template <std::size_t G>
    MORVANE_SSE2_INLINE void group(const std::uint8_t* block) noexcept {
        if constexpr (G < kGroups) {
            if constexpr (G < 4) {
                w[G] = load_be_words(block + 16 * G);
            } else {
                w[G % 8] = expand<G>(w);
            }
            const __m128i constant = _mm_set1_epi32(static_cast<int>(sha1_constant(4 * G)));
            _mm_store_si128(reinterpret_cast<__m128i*>(&words[4 * G]), _mm_add_epi32(w[G % 8], constant));
        }
        if constexpr (G >= kAhead) {
            constexpr std::size_t kFirst = 4 * (G - kAhead);
            variables.step<kFirst>(words[kFirst]);
            variables.step<kFirst + 1>(words[kFirst + 1]);
            variables.step<kFirst + 2>(words[kFirst + 2]);
            variables.step<kFirst + 3>(words[kFirst + 3]);
        }
    }

    template <std::size_t... G>
    MORVANE_SSE2_INLINE void groups(const std::uint8_t* block, std::index_sequence<G...> /*all*/) noexcept {
        (group<G>(block), ...);
    }
};

}  // namespace

MORVANE_SSE2 void sha1_compress_sse2(std::uint32_t* state, const std::uint8_t* blocks, std::size_t count) {
    for (; count != 0; --count, blocks += kSha1BlockBytes) {
        Compression compression(state);
        compression.groups(blocks, std::make_index_sequence<kGroups + Compression::kAhead>{});
        compression.variables.add_to(state);
    }
}

}  // namespace morvane::hash
