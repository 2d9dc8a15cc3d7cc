// IDEA with SSE2.
#include "cipher/lanes_sse2.h"

namespace morvane::cipher {
namespace {

MORVANE_INLINE Lanes swap16(Lanes a) noexcept { return rotl16<8>(a); }

// As with AVX-512. What is not negative is one less than it ought to be until the end.
MORVANE_INLINE Lanes multiply(Lanes a, std::uint32_t key) noexcept {
    const Lanes low = _mm_mullo_epi16(a, all16(key)), high = _mm_mulhi_epu16(a, all16(key));
    const Lanes positive = _mm_cmpeq_epi16(_mm_subs_epu16(high, low), all16(0));
    const Lanes zero = _mm_cmpeq_epi16(low, high);
    const Lanes correction = _mm_and_si128(sub16(all16(1 - key), a), zero);
    return add16(add16(sub16(low, high), correction), sub16(positive, all16(0xffff)));
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
