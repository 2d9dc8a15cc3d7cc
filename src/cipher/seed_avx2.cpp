// SEED with AVX2.
#include "cipher/lanes_avx2.h"
#include "cipher/seed_nibbles.h"

namespace morvane::cipher {
namespace {

MORVANE_INLINE Lanes shuffle(Lanes table, Lanes at) noexcept { return _mm256_shuffle_epi8(table, at); }
MORVANE_INLINE Lanes row(const seed::Nibbles& table) noexcept {
    return _mm256_broadcastsi128_si256(_mm_load_si128(reinterpret_cast<const __m128i*>(table.data())));
}
MORVANE_INLINE Lanes high_nibbles(Lanes x) noexcept { return bits_and(_mm256_srli_epi32(x, 4), all32(0x0f0f0f0f)); }
MORVANE_INLINE Lanes even_and_odd(Lanes a, Lanes b) noexcept { return _mm256_blendv_epi8(a, b, all32(0xff00ff00)); }

template <int Bytes>
MORVANE_INLINE Lanes turn(Lanes x) noexcept {
    constexpr auto kFirst = static_cast<int>(std::rotr(0x03020100U, 8 * Bytes));
    return shuffle(x, _mm256_broadcastsi128_si256(
                          _mm_set_epi32(kFirst + 0x0c0c0c0c, kFirst + 0x08080808, kFirst + 0x04040404, kFirst)));
}
MORVANE_INLINE Lanes xor_and(Lanes a, Lanes b, Lanes c) noexcept { return bits_xor(a, bits_and(b, c)); }
MORVANE_INLINE Lanes swap_bytes(Lanes a) noexcept {
    return shuffle(a, _mm256_broadcastsi128_si256(_mm_set_epi32(0x0c0d0e0f, 0x08090a0b, 0x04050607, 0x00010203)));
}

}  // namespace
}  // namespace morvane::cipher

#include "cipher/seed_substitute.h"

#include "cipher/seed_lanes.h"

namespace morvane::cipher {

constexpr std::size_t kGroups = 4;

MORVANE_TARGET void SeedAvx2::encrypt(const E_SEED_KEY_SCHEDULE& schedule, const std::uint8_t* in, std::uint8_t* out,
                                      std::size_t count) {
    seed_batches<Direction::kEncrypt, kGroups>(schedule, in, out, count);
}
MORVANE_TARGET void SeedAvx2::decrypt(const E_SEED_KEY_SCHEDULE& schedule, const std::uint8_t* in, std::uint8_t* out,
                                      std::size_t count) {
    seed_batches<Direction::kDecrypt, kGroups>(schedule, in, out, count);
}

}  // namespace morvane::cipher
