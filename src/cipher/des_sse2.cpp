// DES with SSE2.
#include "cipher/lanes_sse2.h"

namespace morvane::cipher {
namespace {

MORVANE_INLINE Lanes all32(std::uint32_t word) noexcept { return _mm_set1_epi32(static_cast<int>(word)); }
MORVANE_INLINE Lanes all64(std::uint64_t word) noexcept { return _mm_set1_epi64x(static_cast<long long>(word)); }
MORVANE_INLINE Lanes bits_and(Lanes a, Lanes b) noexcept { return _mm_and_si128(a, b); }
MORVANE_INLINE Lanes bits_or(Lanes a, Lanes b) noexcept { return _mm_or_si128(a, b); }
MORVANE_INLINE Lanes bits_and_not(Lanes a, Lanes b) noexcept { return _mm_andnot_si128(b, a); }

template <int Shift>
MORVANE_INLINE void exchange(Lanes& low, Lanes& high, Lanes mask) noexcept {
    const Lanes differing = bits_and(bits_xor(_mm_srli_epi64(low, Shift), high), mask);
    high = bits_xor(high, differing);
    low = bits_xor(low, _mm_slli_epi64(differing, Shift));
}

}  // namespace
}  // namespace morvane::cipher

#include "cipher/des_circuits_binary.h"

namespace morvane::cipher {
namespace {

using Circuits = BinaryCircuits;

}  // namespace
}  // namespace morvane::cipher

#include "cipher/des_bitslice.h"

namespace morvane::cipher {

template <typename Record>
MORVANE_TARGET void DesSse2<Record>::encrypt(const Record& schedule, const std::uint8_t* in, std::uint8_t* out,
                                             std::size_t count) {
    des_batches<Direction::kEncrypt>(schedule, in, out, count);
}
template <typename Record>
MORVANE_TARGET void DesSse2<Record>::decrypt(const Record& schedule, const std::uint8_t* in, std::uint8_t* out,
                                             std::size_t count) {
    des_batches<Direction::kDecrypt>(schedule, in, out, count);
}

template struct DesSse2<E_DES_KEY_SCHEDULE>;
template struct DesSse2<E_DES3_KEY_SCHEDULE>;
template struct DesSse2<E_DES3_3KEY_SCHEDULE>;

}  // namespace morvane::cipher
