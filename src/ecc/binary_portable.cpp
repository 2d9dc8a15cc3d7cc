// The curves over GF(2^163) without special instructions.
#include "ecc/binary_field.h"

#define MORVANE_TARGET
#define MORVANE_INLINE inline

namespace morvane::ecc {
namespace {
using Element = Polynomial;
}  // namespace
}  // namespace morvane::ecc

#include "ecc/binary_multiples.h"

namespace morvane::ecc {

bool binary_multiply_portable(TORVA_V1_POINT& r, std::int32_t curve, const Word* u, const Word* v,
                              const TORVA_V1_POINT* p) {
    return multiply_on(r, curve, u, v, p);
}

}  // namespace morvane::ecc
