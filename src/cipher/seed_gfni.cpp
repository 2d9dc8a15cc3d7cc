// SEED with AVX-512 and GFNI. Both S-boxes are affine images of the inverse in a field of 256 elements, and so of the
// instruction's field: phi leads from SEED's into it.
#include "cipher/lanes_avx512.h"

#undef MORVANE_TARGET
#undef MORVANE_INLINE
#define MORVANE_TARGET [[gnu::target("avx512f,avx512bw,avx512dq,avx512vl,gfni")]]
#define MORVANE_INLINE [[gnu::target("avx512f,avx512bw,avx512dq,avx512vl,gfni"), gnu::always_inline]] inline

namespace morvane::cipher {
namespace {

MORVANE_INLINE Lanes matrix(std::uint64_t rows) noexcept { return _mm512_set1_epi64(static_cast<long long>(rows)); }

MORVANE_INLINE Lanes substitute(Lanes x) noexcept {
    constexpr __mmask64 kEvenBytes = 0x5555555555555555U;
    const Lanes y = _mm512_gf2p8affine_epi64_epi8(x, matrix(0x0bccb02e16183c70), 0);
    const Lanes even = _mm512_maskz_gf2p8affineinv_epi64_epi8(kEvenBytes, y, matrix(0x9a5c7193dadface8), 0xa9);
    const Lanes odd = _mm512_maskz_gf2p8affineinv_epi64_epi8(~kEvenBytes, y, matrix(0x6c46dac00bd2d78f), 0x38);
    return _mm512_or_si512(even, odd);
}

template <int Bytes>
MORVANE_INLINE Lanes turn(Lanes x) noexcept {
    return _mm512_ror_epi32(x, 8 * Bytes);
}
MORVANE_INLINE Lanes xor_and(Lanes a, Lanes b, Lanes c) noexcept { return _mm512_ternarylogic_epi32(a, b, c, 0x78); }
MORVANE_INLINE Lanes swap_bytes(Lanes a) noexcept {
    return _mm512_shuffle_epi8(a, _mm512_set4_epi32(0x0c0d0e0f, 0x08090a0b, 0x04050607, 0x00010203));
}

}  // namespace
}  // namespace morvane::cipher

#include "cipher/seed_lanes.h"

namespace morvane::cipher {

constexpr std::size_t kGroups = 4;

MORVANE_TARGET void SeedGfni::encrypt(const E_SEED_KEY_SCHEDULE& schedule, const std::uint8_t* in, std::uint8_t* out,
                                      std::size_t count) {
    seed_batches<Direction::kEncrypt, kGroups>(schedule, in, out, count);
}
MORVANE_TARGET void SeedGfni::decrypt(const E_SEED_KEY_SCHEDULE& schedule, const std::uint8_t* in, std::uint8_t* out,
                                      std::size_t count) {
    seed_batches<Direction::kDecrypt, kGroups>(schedule, in, out, count);
}

}  // namespace morvane::cipher
