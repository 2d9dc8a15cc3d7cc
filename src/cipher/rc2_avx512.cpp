// RC2 with AVX-512.
#include "cipher/lanes_avx512.h"

namespace morvane::cipher {
namespace {

// The 64 subkeys fill two registers, which one permutation reads; it takes six bits of each lane.
struct MashKeys {
    const std::uint16_t* keys;

    MORVANE_INLINE explicit MashKeys(const std::uint16_t* k) noexcept : keys(k) {}

    template <std::size_t Count>
    MORVANE_INLINE void look_up(Lanes (&lanes)[Count]) const noexcept {
        const Lanes low = _mm512_loadu_si512(keys), high = _mm512_loadu_si512(keys + 32);
        for (Lanes& by : lanes) by = _mm512_permutex2var_epi16(low, by, high);
    }
};

}  // namespace
}  // namespace morvane::cipher

#include "cipher/rc2_lanes.h"

namespace morvane::cipher {

constexpr std::size_t kTogether = sizeof(void*) == 8 ? 4 : 3;

MORVANE_TARGET void Rc2Avx512::encrypt(const E_RC2_KEY_SCHEDULE& schedule, const std::uint8_t* in, std::uint8_t* out,
                                       std::size_t count) {
    run_rc2<Direction::kEncrypt, kTogether>(schedule, in, out, count);
}
MORVANE_TARGET void Rc2Avx512::decrypt(const E_RC2_KEY_SCHEDULE& schedule, const std::uint8_t* in, std::uint8_t* out,
                                       std::size_t count) {
    run_rc2<Direction::kDecrypt, kTogether>(schedule, in, out, count);
}

}  // namespace morvane::cipher
