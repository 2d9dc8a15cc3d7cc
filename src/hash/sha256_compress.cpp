#include "base/bytes.h"
#include "hash/sha2_compress.h"
#include "hash/unroll.h"

#include <bit>

namespace morvane::hash {
namespace {

using Block = std::array<std::uint32_t, 16>;
using Variables = std::array<std::uint32_t, 8>;

inline std::uint32_t sum0(std::uint32_t x) noexcept { return std::rotr(x, 2) ^ std::rotr(x, 13) ^ std::rotr(x, 22); }
inline std::uint32_t sum1(std::uint32_t x) noexcept { return std::rotr(x, 6) ^ std::rotr(x, 11) ^ std::rotr(x, 25); }
inline std::uint32_t expand0(std::uint32_t x) noexcept { return std::rotr(x, 7) ^ std::rotr(x, 18) ^ x >> 3; }
inline std::uint32_t expand1(std::uint32_t x) noexcept { return std::rotr(x, 17) ^ std::rotr(x, 19) ^ x >> 10; }

// Step T of sixteen; the roles of the variables move by one place each step.
template <std::size_t T>
[[gnu::always_inline]] inline void step(Variables& v, std::uint32_t word) noexcept {
    const std::uint32_t a = v[(16 - T) % 8];
    const std::uint32_t b = v[(17 - T) % 8];
    const std::uint32_t c = v[(18 - T) % 8];
    std::uint32_t& d = v[(19 - T) % 8];
    const std::uint32_t e = v[(20 - T) % 8];
    const std::uint32_t f = v[(21 - T) % 8];
    const std::uint32_t g = v[(22 - T) % 8];
    std::uint32_t& h = v[(23 - T) % 8];
    h += word;
    h += g ^ (e & (f ^ g));
    h += sum1(e);
    d += h;
    h += (a & b) + (c & (a ^ b));
    h += sum0(a);
}

[[gnu::always_inline]] inline void compress(std::uint32_t* state, const std::uint8_t* blocks, std::size_t count) noexcept {
    for (; count != 0; --count, blocks += 64) {
        Block w;
        for (std::size_t i = 0; i < w.size(); ++i) w[i] = load_be<std::uint32_t>(blocks + 4 * i);
        Variables v;
        for (std::size_t i = 0; i < v.size(); ++i) v[i] = state[i];
        for (std::size_t first = 0; first < 64; first += 16) {
            unroll<16>([&]<std::size_t T>() __attribute__((always_inline)) {
                if (first != 0) w[T] += expand0(w[(T + 1) % 16]) + w[(T + 9) % 16] + expand1(w[(T + 14) % 16]);
                step<T>(v, w[T] + kSha256Constants[first + T]);
            });
        }
        for (std::size_t i = 0; i < v.size(); ++i) state[i] += v[i];
    }
}

}  // namespace

void sha256_compress_portable(std::uint32_t* state, const std::uint8_t* blocks, std::size_t count) {
    compress(state, blocks, count);
}

constinit cpu::Dispatch<Sha256CompressFn, 2> sha256_compress{{{
    {cpu::kSsse3 | cpu::kSse41 | cpu::kSha, sha256_compress_sha},
    {cpu::kNone, sha256_compress_portable},
}}};

}  // namespace morvane::hash
