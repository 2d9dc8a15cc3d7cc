// IDEA with SSE2.
#include "cipher/lanes_sse2.h"

namespace morvane::cipher {
namespace {

MORVANE_INLINE Lanes swap16(Lanes a) noexcept { return rotl16<8>(a); }

// As with AVX-512. The comparison of unsigned lanes is that of signed ones with the highest bit inverted.
MORVANE_INLINE Lanes multiply(Lanes a, Lanes key, Lanes one_minus_key) noexcept {
    const Lanes low = _mm_mullo_epi16(a, key), high = _mm_mulhi_epu16(a, key);
    const Lanes negative = _mm_cmpgt_epi16(bits_xor(high, all16(0x8000)), bits_xor(low, all16(0x8000)));
    const Lanes zero = _mm_cmpeq_epi16(low, high);
    const Lanes correction = _mm_and_si128(sub16(one_minus_key, a), zero);
    return sub16(add16(sub16(low, high), correction), negative);
}

}  // namespace
}  // namespace morvane::cipher

#include "cipher/idea_lanes.h"

namespace morvane::cipher {

constexpr std::size_t kTogether = 4;

MORVANE_TARGET void IdeaSse2::encrypt(const E_IDEA_KEY_SCHEDULE& schedule, const std::uint8_t* in, std::uint8_t* out,
                                      std::size_t count) {
    run_idea<Direction::kEncrypt, kTogether>(schedule, in, out, count);
}
MORVANE_TARGET void IdeaSse2::decrypt(const E_IDEA_KEY_SCHEDULE& schedule, const std::uint8_t* in, std::uint8_t* out,
                                      std::size_t count) {
    run_idea<Direction::kDecrypt, kTogether>(schedule, in, out, count);
}

}  // namespace morvane::cipher
