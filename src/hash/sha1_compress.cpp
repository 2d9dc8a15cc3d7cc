#include "hash/sha1_compress.h"

#include "base/bytes.h"
#include "hash/sha1_rounds.h"

namespace morvane::hash {
namespace {

// Bits by which a word of the message expansion is rotated: the one difference between the two algorithms.
constexpr int kSha0Expansion = 0;
constexpr int kSha1Expansion = 1;

using Block = std::array<std::uint32_t, 16>;

// One compression; block is used up by the message expansion.
template <int Rotation>
[[gnu::always_inline]] inline void compress_words(std::uint32_t* state, Block& w) noexcept {
    Sha1Variables variables(state);
    unroll<kSha1Steps>([&]<std::size_t T>() __attribute__((always_inline)) {
        if constexpr (T >= 16) {
            const std::uint32_t early = w[T % 16] ^ w[(T + 2) % 16] ^ w[(T + 8) % 16];
            w[T % 16] = std::rotl(early ^ w[(T + 13) % 16], Rotation);  // the newest word, which is waited for, comes last
        }
        variables.step<T>(w[T % 16] + sha1_constant(T));
    });
    variables.add_to(state);
}

template <int Rotation>
void compress_blocks(std::uint32_t* state, const std::uint8_t* blocks, std::size_t count) noexcept {
    for (; count != 0; --count, blocks += kSha1BlockBytes) {
        Block w;
        for (std::size_t i = 0; i < w.size(); ++i) w[i] = load_be<std::uint32_t>(blocks + 4 * i);
        compress_words<Rotation>(state, w);
    }
}

}  // namespace

void sha1_compress_portable(std::uint32_t* state, const std::uint8_t* blocks, std::size_t count) {
    compress_blocks<kSha1Expansion>(state, blocks, count);
}

void sha0_compress(std::uint32_t* state, const std::uint8_t* blocks, std::size_t count) {
    compress_blocks<kSha0Expansion>(state, blocks, count);
}

void sha0_compress_words(std::uint32_t* state, const std::uint32_t* words) {
    Block w;
    for (std::size_t i = 0; i < w.size(); ++i) w[i] = words[i];
    compress_words<kSha0Expansion>(state, w);
}

constinit cpu::Dispatch<Sha1CompressFn, 3> sha1_compress{{{
    {cpu::kSsse3 | cpu::kSse41 | cpu::kSha, sha1_compress_sha},
    {cpu::kSse2, sha1_compress_sse2},
    {cpu::kNone, sha1_compress_portable},
}}};

}  // namespace morvane::hash
