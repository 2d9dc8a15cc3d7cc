// What a DSA signature is made of, once its number k is there.
#pragma once

#include "pk/group.h"

namespace morvane::pk {

// r = (g^k mod p) mod q and s = (m + x r) / k mod q, all below q. False if there is no memory.
bool dsa_signature(Scalar& r, Scalar& s, const Group& group, Scalars& scalars, const Scalar& x, const Scalar& m,
                   const Scalar& k) noexcept;

}  // namespace morvane::pk
