// IDEA with AVX-512.
#include "cipher/lanes_avx512.h"

namespace morvane::cipher {
namespace {

MORVANE_INLINE Lanes swap16(Lanes a) noexcept {
    return _mm512_shuffle_epi8(a, _mm512_set4_epi32(0x0e0f0c0d, 0x0a0b0809, 0x06070405, 0x02030001));
}

// With high and low the halves of the integer product: low - high, and 65537 more if that is negative. The halves are equal
// only where a factor is 65536 and the integer product therefore 0; the result is 1 - a - key there.
MORVANE_INLINE Lanes multiply(Lanes a, Lanes key, Lanes one_minus_key) noexcept {
    const Lanes low = _mm512_mullo_epi16(a, key), high = _mm512_mulhi_epu16(a, key);
    const __mmask32 negative = _mm512_cmplt_epu16_mask(low, high), zero = _mm512_cmpeq_epu16_mask(low, high);
    const Lanes difference = sub16(low, high);
    const Lanes product = _mm512_mask_sub_epi16(difference, negative, difference, all16(0xffff));
    return _mm512_mask_sub_epi16(product, zero, one_minus_key, a);
}

}  // namespace
}  // namespace morvane::cipher

#include "cipher/idea_lanes.h"

namespace morvane::cipher {

constexpr std::size_t kTogether = 4;

MORVANE_TARGET void IdeaAvx512::encrypt(const E_IDEA_KEY_SCHEDULE& schedule, const std::uint8_t* in, std::uint8_t* out,
                                        std::size_t count) {
    run_idea<Direction::kEncrypt, kTogether>(schedule, in, out, count);
}
MORVANE_TARGET void IdeaAvx512::decrypt(const E_IDEA_KEY_SCHEDULE& schedule, const std::uint8_t* in, std::uint8_t* out,
                                        std::size_t count) {
    run_idea<Direction::kDecrypt, kTogether>(schedule, in, out, count);
}

}  // namespace morvane::cipher
