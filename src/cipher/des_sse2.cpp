// DES with SSE2.
#include "cipher/lanes_sse2.h"

#include "cipher/des_binary.h"

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
