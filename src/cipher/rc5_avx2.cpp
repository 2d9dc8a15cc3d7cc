// RC5 with AVX2.
#include "cipher/lanes_avx2.h"

#include "cipher/rc5_lanes.h"

namespace morvane::cipher {

constexpr std::size_t kTogether = sizeof(void*) == 8 ? 4 : 2;

MORVANE_TARGET void Rc5Avx2::encrypt(const E_RC5_KEY_SCHEDULE& schedule, const std::uint8_t* in, std::uint8_t* out,
                                     std::size_t count) {
    run_rc5<Direction::kEncrypt, kTogether>(schedule, in, out, count);
}
MORVANE_TARGET void Rc5Avx2::decrypt(const E_RC5_KEY_SCHEDULE& schedule, const std::uint8_t* in, std::uint8_t* out,
                                     std::size_t count) {
    run_rc5<Direction::kDecrypt, kTogether>(schedule, in, out, count);
}

}  // namespace morvane::cipher
