// The curves over GF(2^163) without special instructions.
#include "ec/binary_field.h"

#define MORVANE_TARGET
#define MORVANE_INLINE inline

namespace morvane::ec {
namespace {
using Element = Polynomial;
}  // namespace
}  // namespace morvane::ec

#include "ec/binary_multiples.h"

namespace morvane::ec {

bool binary_multiply_portable(TORVA_V1_POINT& r, std::int32_t curve, const Word* u, const Word* v,
                              const TORVA_V1_POINT* p) {
    return multiply_on(r, curve, u, v, p);
}

}  // namespace morvane::ec
