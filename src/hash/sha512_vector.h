// SHA-512 with the message expansion in 256-bit registers, four words at a time, beside scalar steps with BMI2 rotations.
// Included by one file for each set of instructions, which first defines
//     MORVANE_TARGET                    the target attribute of every function
//     MORVANE_INLINE                    the same for functions to be inlined
//     __m256i mix_back15(__m256i)       rotr 1 ^ rotr 8 ^ shift 7, on the words fifteen back
//     __m128i mix_back2(__m128i)        rotr 19 ^ rotr 61 ^ shift 6, on the words two back
// A function can be inlined only into functions of its own target, so a template cannot do this.
#include "hash/sha2_compress.h"
#include "hash/sha512_rounds.h"

namespace morvane::hash {
namespace {  // NOLINT(cert-dcl59-cpp): every file that includes this makes functions of its own

MORVANE_INLINE __m256i load_be_words(const std::uint8_t* bytes) noexcept {
    const __m256i swap = _mm256_setr_epi64x(0x0001020304050607, 0x08090a0b0c0d0e0f, 0x0001020304050607, 0x08090a0b0c0d0e0f);
    return _mm256_shuffle_epi8(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(bytes)), swap);
}

// The four words that begin one word into `low` and end one word into `high`.
MORVANE_INLINE __m256i one_later(__m256i low, __m256i high) noexcept {
    return _mm256_alignr_epi8(_mm256_permute2x128_si256(low, high, 0x21), low, 8);
}

// The group of the expansion after the four groups in w, of which w0 is the oldest.
MORVANE_INLINE __m256i expand(__m256i w0, __m256i w1, __m256i w2, __m256i w3) noexcept {
    const __m256i sum = _mm256_add_epi64(_mm256_add_epi64(w0, one_later(w2, w3)), mix_back15(one_later(w0, w1)));
    // The last term reaches back two words: the first two words come from the group before, the others from these.
    const __m128i first = _mm_add_epi64(_mm256_castsi256_si128(sum), mix_back2(_mm256_extracti128_si256(w3, 1)));
    const __m128i second = _mm_add_epi64(_mm256_extracti128_si256(sum, 1), mix_back2(first));
    return _mm256_inserti128_si256(_mm256_castsi128_si256(first), second, 1);
}

struct Compression {
    Sha512Variables variables;
    __m256i w[4];                                     // the last four groups of the expansion, group g at g % 4
    alignas(32) std::array<std::uint64_t, 16> words;  // the same with the constants of their steps added

    MORVANE_INLINE explicit Compression(const std::array<std::uint64_t, 8>& state) noexcept : variables(state) {}

    // Group G of sixteen steps from `first`. Its words are taken before the group four ahead replaces them.
    template <std::size_t G>
    MORVANE_INLINE void group(std::size_t first, bool more) noexcept {
        __m256i next{};
        if (more) {
            next = expand(w[G], w[(G + 1) % 4], w[(G + 2) % 4], w[(G + 3) % 4]);
            w[G] = next;
        }
        variables.step<4 * G % 8>(words[4 * G]);
        variables.step<(4 * G + 1) % 8>(words[4 * G + 1]);
        variables.step<(4 * G + 2) % 8>(words[4 * G + 2]);
        variables.step<(4 * G + 3) % 8>(words[4 * G + 3]);
        if (more) put_words<G>(first + 16);
    }

    template <std::size_t G>
    MORVANE_INLINE void put_words(std::size_t first) noexcept {
        const auto* const constants = reinterpret_cast<const __m256i*>(&kSha512Constants[first + 4 * G]);
        _mm256_store_si256(reinterpret_cast<__m256i*>(&words[4 * G]),
                           _mm256_add_epi64(w[G], _mm256_loadu_si256(constants)));
    }

    template <std::size_t G>
    MORVANE_INLINE void load(const std::uint8_t* block) noexcept {
        w[G] = load_be_words(block + 32 * G);
        put_words<G>(0);
    }
};

MORVANE_TARGET inline void compress_blocks(std::uint32_t* state, const std::uint8_t* blocks, std::size_t count) noexcept {
    std::array<std::uint64_t, 8> sum;
    for (std::size_t i = 0; i < 8; ++i) sum[i] = sha512_state_word(state, i);
    for (; count != 0; --count, blocks += 128) {
        Compression compression(sum);
        compression.load<0>(blocks);
        compression.load<1>(blocks);
        compression.load<2>(blocks);
        compression.load<3>(blocks);
        for (std::size_t first = 0; first < 80; first += 16) {
            const bool more = first < 64;
            compression.group<0>(first, more);
            compression.group<1>(first, more);
            compression.group<2>(first, more);
            compression.group<3>(first, more);
        }
        for (std::size_t i = 0; i < 8; ++i) sum[i] += compression.variables.v[i];
    }
    for (std::size_t i = 0; i < 8; ++i) set_sha512_state_word(state, i, sum[i]);
}

}  // namespace
}  // namespace morvane::hash
