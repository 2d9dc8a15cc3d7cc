// IDEA with AVX2.
#include "cipher/lanes_avx2.h"

namespace morvane::cipher {
namespace {

MORVANE_INLINE Lanes swap16(Lanes a) noexcept { return rotl16<8>(a); }

// As with AVX-512.
MORVANE_INLINE Lanes multiply(Lanes a, Lanes key, Lanes one_minus_key) noexcept {
    const Lanes low = _mm256_mullo_epi16(a, key), high = _mm256_mulhi_epu16(a, key);
    const Lanes negative = _mm256_min_epu16(_mm256_subs_epu16(high, low), all16(1));
    const Lanes zero = _mm256_cmpeq_epi16(low, high);
    const Lanes correction = _mm256_and_si256(sub16(one_minus_key, a), zero);
    return add16(add16(sub16(low, high), correction), negative);
}

}  // namespace
}  // namespace morvane::cipher

#include "cipher/idea_lanes.h"

namespace morvane::cipher {

constexpr std::size_t kTogether = 4;

MORVANE_TARGET void IdeaAvx2::encrypt(const E_IDEA_KEY_SCHEDULE& schedule, const std::uint8_t* in, std::uint8_t* out,
                                      std::size_t count) {
    run_idea<Direction::kEncrypt, kTogether>(schedule, in, out, count);
}
MORVANE_TARGET void IdeaAvx2::decrypt(const E_IDEA_KEY_SCHEDULE& schedule, const std::uint8_t* in, std::uint8_t* out,
                                      std::size_t count) {
    run_idea<Direction::kDecrypt, kTogether>(schedule, in, out, count);
}

}  // namespace morvane::cipher
