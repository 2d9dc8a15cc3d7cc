#include "base/bytes.h"
#include "hash/sha2_compress.h"
#include "hash/sha512_rounds.h"

namespace morvane::hash {
namespace {

inline std::uint64_t expand0(std::uint64_t x) noexcept { return xor_of<Rotation<1>, Shift<7>, Rotation<8>>(x); }
inline std::uint64_t expand1(std::uint64_t x) noexcept { return xor_of<Shift<6>, Rotation<19>, Rotation<61>>(x); }

}  // namespace

void sha512_compress_portable(std::uint32_t* state, const std::uint8_t* blocks, std::size_t count) {
    std::array<std::uint64_t, 8> sum;
    for (std::size_t i = 0; i < 8; ++i) sum[i] = sha512_state_word(state, i);
    for (; count != 0; --count, blocks += 128) {
        std::array<std::uint64_t, 16> w;
        for (std::size_t i = 0; i < w.size(); ++i) w[i] = load_be<std::uint64_t>(blocks + 8 * i);
        Sha512Variables variables(sum);
        for (std::size_t first = 0; first < 80; first += 16) {
            unroll<16>([&]<std::size_t T>() __attribute__((always_inline)) {
                if (first != 0) w[T] += expand0(w[(T + 1) % 16]) + w[(T + 9) % 16] + expand1(w[(T + 14) % 16]);
                variables.step<T % 8>(w[T] + kSha512Constants[first + T]);
            });
        }
        for (std::size_t i = 0; i < 8; ++i) sum[i] += variables.v[i];
    }
    for (std::size_t i = 0; i < 8; ++i) set_sha512_state_word(state, i, sum[i]);
}

namespace {

template <std::size_t Count>
using Rows = std::array<cpu::Variant<Sha512CompressFn>, Count>;

// With 64-bit registers the steps are quickest in these, beside an expansion in vectors. With 32-bit ones everything is in
// vectors.
template <std::size_t RegisterBits>
constexpr auto rows() noexcept {
    if constexpr (RegisterBits == 64) {
        return Rows<3>{{{cpu::kAvx512 | cpu::kAvx2 | cpu::kBmi2, sha512_compress_avx512},
                        {cpu::kAvx2 | cpu::kBmi2, sha512_compress_avx2},
                        {cpu::kNone, sha512_compress_portable}}};
    } else {
        return Rows<4>{{{cpu::kAvx512, sha512_compress_lanes_avx512},
                        {cpu::kAvx2, sha512_compress_lanes_avx2},
                        {cpu::kSse2, sha512_compress_lanes_sse2},
                        {cpu::kNone, sha512_compress_portable}}};
    }
}

}  // namespace

constinit cpu::Dispatch<Sha512CompressFn, kSha512Rows> sha512_compress{rows<8 * sizeof(void*)>()};

}  // namespace morvane::hash
