// SHA-512 where general registers have 32 bits: its 64-bit words are lanes of 128-bit registers, the steps using the low
// lane and the message expansion both. Included by one file for each set of instructions, which first defines
//     MORVANE_TARGET             the target attribute of every function
//     MORVANE_INLINE             the same for functions to be inlined
//     template <int> rotr        the rotation of both lanes
//     xor3, choose, majority     of three words, bit by bit
// A function can be inlined only into functions of its own target, so a template cannot do this.
#include "base/bytes.h"
#include "hash/sha2_compress.h"
#include "hash/sha512_rounds.h"

namespace morvane::hash {
namespace {  // NOLINT(cert-dcl59-cpp): every file that includes this makes functions of its own

MORVANE_INLINE __m128i add(__m128i a, __m128i b) noexcept { return _mm_add_epi64(a, b); }

// The two words that end one word into `high`.
MORVANE_INLINE __m128i one_later(__m128i low, __m128i high) noexcept {
    return _mm_castpd_si128(_mm_shuffle_pd(_mm_castsi128_pd(low), _mm_castsi128_pd(high), 1));
}

struct LaneCompression {
    __m128i v[8];  // the working variables a..h; their roles move as in the scalar steps
    __m128i w[8];  // sixteen words of the expansion
    alignas(16) std::array<std::uint64_t, 16> words{};  // the same with the constants of their steps added

    // A step, T counted modulo 16.
    template <std::size_t T>
    MORVANE_INLINE void step() noexcept {
        const __m128i a = v[(16 - T) % 8], b = v[(17 - T) % 8], c = v[(18 - T) % 8];
        __m128i& d = v[(19 - T) % 8];
        const __m128i e = v[(20 - T) % 8], f = v[(21 - T) % 8], g = v[(22 - T) % 8];
        __m128i& h = v[(23 - T) % 8];
        h = add(add(h, _mm_loadl_epi64(reinterpret_cast<const __m128i*>(&words[T]))), choose(e, f, g));
        h = add(h, xor3(rotr<14>(e), rotr<18>(e), rotr<41>(e)));
        d = add(d, h);
        h = add(add(h, majority(a, b, c)), xor3(rotr<28>(a), rotr<34>(a), rotr<39>(a)));
    }

    // Replaces pair P of the expansion by the one sixteen words later.
    template <std::size_t P>
    MORVANE_INLINE void expand() noexcept {
        const __m128i back15 = one_later(w[P], w[(P + 1) % 8]), back2 = w[(P + 7) % 8];
        const __m128i sum = add(w[P], one_later(w[(P + 4) % 8], w[(P + 5) % 8]));
        const __m128i mixed15 = xor3(rotr<1>(back15), rotr<8>(back15), _mm_srli_epi64(back15, 7));
        const __m128i mixed2 = xor3(rotr<19>(back2), rotr<61>(back2), _mm_srli_epi64(back2, 6));
        w[P] = add(add(sum, mixed15), mixed2);
    }

    template <std::size_t P>
    MORVANE_INLINE void put_words(std::size_t first) noexcept {
        const auto* const constants = reinterpret_cast<const __m128i*>(&kSha512Constants[first + 2 * P]);
        _mm_store_si128(reinterpret_cast<__m128i*>(&words[2 * P]), add(w[P], _mm_loadu_si128(constants)));
    }

    // Pair P of sixteen steps from `first`.
    template <std::size_t P>
    MORVANE_INLINE void pair(std::size_t first) noexcept {
        step<2 * P>();
        step<2 * P + 1>();
        if (first == 64) return;
        expand<P>();
        put_words<P>(first + 16);
    }

    template <std::size_t P>
    MORVANE_INLINE void load(const std::uint8_t* block) noexcept {
        const std::uint8_t* const bytes = block + 16 * P;
        const std::uint64_t pair[2] = {load_be<std::uint64_t>(bytes), load_be<std::uint64_t>(bytes + 8)};
        w[P] = _mm_loadu_si128(reinterpret_cast<const __m128i*>(pair));
        put_words<P>(0);
    }

    template <std::size_t... P>
    MORVANE_INLINE void run(const std::uint8_t* block, std::index_sequence<P...> /*pairs*/) noexcept {
        (load<P>(block), ...);
        for (std::size_t first = 0; first < 80; first += 16) (pair<P>(first), ...);
    }
};

MORVANE_TARGET inline void compress_lanes(std::uint32_t* state, const std::uint8_t* blocks, std::size_t count) noexcept {
    for (; count != 0; --count, blocks += 128) {
        LaneCompression compression;
        const auto* const sums = reinterpret_cast<const __m128i*>(state);  // two words of 32 bits each, the low one first
        for (std::size_t i = 0; i < 8; i += 2) {
            const __m128i two = _mm_loadu_si128(sums + i / 2);
            compression.v[i] = two;
            compression.v[i + 1] = _mm_unpackhi_epi64(two, two);
        }
        compression.run(blocks, std::make_index_sequence<8>{});
        for (std::size_t i = 0; i < 8; i += 2) {
            const __m128i two = _mm_unpacklo_epi64(compression.v[i], compression.v[i + 1]);
            _mm_storeu_si128(reinterpret_cast<__m128i*>(state) + i / 2, add(two, _mm_loadu_si128(sums + i / 2)));
        }
    }
}

}  // namespace
}  // namespace morvane::hash
