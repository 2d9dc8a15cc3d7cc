// The equations of ECDSA on scalars.
#pragma once

#include "ecc/scheme.h"

namespace morvane::ecc {

// r = x(k G) mod n, s = (e + d r) / k mod n. d and k are from 1 to n - 1, e is below n.
Signed ecdsa_sign(Word* r, Word* s, std::int32_t curve, const Word* e, const Word* d, const Word* k) noexcept;

// r and s are from 1 to n - 1.
bool ecdsa_verify_vt(std::int32_t curve, const Word* e, const Word* r, const Word* s, const TORVA_V1_POINT& q) noexcept;

}  // namespace morvane::ecc
