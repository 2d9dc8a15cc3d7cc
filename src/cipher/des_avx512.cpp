// DES with AVX-512, whose instruction for any function of three words makes the circuits short.
#include "cipher/lanes_avx512.h"

namespace morvane::cipher {
namespace {

// Bit 4 * a + 2 * b + c of the table is the value for the bits a, b and c.
template <int Table>
MORVANE_INLINE Lanes lut(Lanes a, Lanes b, Lanes c) noexcept {
    return _mm512_ternarylogic_epi64(a, b, c, Table);
}

template <int Shift>
MORVANE_INLINE void exchange(Lanes& low, Lanes& high, Lanes mask) noexcept {
    const Lanes from_low = _mm512_srli_epi64(low, Shift), from_high = _mm512_slli_epi64(high, Shift);
    low = lut<0xca>(mask, low, from_high);
    high = lut<0xca>(mask, from_low, high);
}

}  // namespace
}  // namespace morvane::cipher

#include "cipher/des_circuits_ternary.h"

namespace morvane::cipher {
namespace {

using Circuits = TernaryCircuits;

}  // namespace
}  // namespace morvane::cipher

#include "cipher/des_bitslice.h"

namespace morvane::cipher {

template <typename Record>
MORVANE_TARGET void DesAvx512<Record>::encrypt(const Record& schedule, const std::uint8_t* in, std::uint8_t* out,
                                               std::size_t count) {
    des_batches<Direction::kEncrypt>(schedule, in, out, count);
}
template <typename Record>
MORVANE_TARGET void DesAvx512<Record>::decrypt(const Record& schedule, const std::uint8_t* in, std::uint8_t* out,
                                               std::size_t count) {
    des_batches<Direction::kDecrypt>(schedule, in, out, count);
}

template struct DesAvx512<E_DES_KEY_SCHEDULE>;
template struct DesAvx512<E_DES3_KEY_SCHEDULE>;
template struct DesAvx512<E_DES3_3KEY_SCHEDULE>;

}  // namespace morvane::cipher
