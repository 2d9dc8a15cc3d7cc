// RC2 with AVX2.
#include "base/wipe.h"
#include "cipher/lanes_avx2.h"

namespace morvane::cipher {
namespace {

// The low bytes of the 64 subkeys in four registers of sixteen, for the shuffle of bytes, and the high bytes in four
// others, in both halves of each.
struct MashKeys {
    __m128i low[4], high[4];

    MORVANE_INLINE explicit MashKeys(const std::uint16_t* k) noexcept {
        for (std::size_t i = 0; i < 4; ++i) {
            const auto* const sixteen = reinterpret_cast<const __m128i*>(k + 16 * i);
            const __m128i first = _mm_loadu_si128(sixteen), second = _mm_loadu_si128(sixteen + 1);
            const __m128i low_byte = _mm_set1_epi16(0xff);
            low[i] = _mm_packus_epi16(_mm_and_si128(first, low_byte), _mm_and_si128(second, low_byte));
            high[i] = _mm_packus_epi16(_mm_srli_epi16(first, 8), _mm_srli_epi16(second, 8));
        }
    }
    ~MashKeys() { wipe(this, sizeof *this); }

    // The bytes at six bits of index: the lower four by shuffles of all four registers, the upper two by choices among
    // them.
    MORVANE_INLINE static Lanes bytes(const __m128i (&table)[4], Lanes index) noexcept {
        Lanes found[4];
        for (std::size_t i = 0; i < 4; ++i) found[i] = _mm256_shuffle_epi8(_mm256_broadcastsi128_si256(table[i]), index);
        const Lanes bit4 = _mm256_slli_epi16(index, 3), bit5 = _mm256_slli_epi16(index, 2);
        return _mm256_blendv_epi8(_mm256_blendv_epi8(found[0], found[1], bit4),
                                  _mm256_blendv_epi8(found[2], found[3], bit4), bit5);
    }

    // Two registers at a time: one's indices lie in the lower bytes, the other's in the upper.
    MORVANE_INLINE void look_up(Lanes& a, Lanes& b) const noexcept {
        const Lanes low_bytes = all16(0xff);
        const Lanes index = _mm256_and_si256(_mm256_blendv_epi8(_mm256_slli_epi16(b, 8), a, low_bytes), all16(0x3f3f));
        const Lanes lower = bytes(low, index), upper = bytes(high, index);
        a = _mm256_blendv_epi8(_mm256_slli_epi16(upper, 8), lower, low_bytes);
        b = _mm256_blendv_epi8(upper, _mm256_srli_epi16(lower, 8), low_bytes);
    }
    template <std::size_t Count>
    MORVANE_INLINE void look_up(Lanes (&lanes)[Count]) const noexcept {
        for (std::size_t i = 0; i + 1 < Count; i += 2) look_up(lanes[i], lanes[i + 1]);
        if constexpr (Count % 2 != 0) {
            Lanes none = lanes[Count - 1];
            look_up(lanes[Count - 1], none);
        }
    }
};

}  // namespace
}  // namespace morvane::cipher

#include "cipher/rc2_lanes.h"

namespace morvane::cipher {

constexpr std::size_t kTogether = 4;

MORVANE_TARGET void Rc2Avx2::encrypt(const E_RC2_KEY_SCHEDULE& schedule, const std::uint8_t* in, std::uint8_t* out,
                                     std::size_t count) {
    run_rc2<Direction::kEncrypt, kTogether>(schedule, in, out, count);
}
MORVANE_TARGET void Rc2Avx2::decrypt(const E_RC2_KEY_SCHEDULE& schedule, const std::uint8_t* in, std::uint8_t* out,
                                     std::size_t count) {
    run_rc2<Direction::kDecrypt, kTogether>(schedule, in, out, count);
}

}  // namespace morvane::cipher
