// The signature blocks: two numbers of ECDSA in DER, two octet strings of EC-KCDSA.
#pragma once

#include "ecc/scheme.h"

namespace morvane::ecc {

// SEQUENCE { INTEGER r, INTEGER s }, whatever words r and s have. Room: E_ECDSA_SIGNATURE_OCTETS for numbers below n, two
// octets more for any of 21 octets.
void put_ecdsa_block(TORVA_V1_OPAQUE8& out, Word* r, Word* s) noexcept;

// The magnitudes of r and s, of any length. False if the octets are not exactly what put_ecdsa_block makes of them.
bool read_ecdsa_block(Octets& r, Octets& s, Octets block) noexcept;

// r has E_ECKCDSA_HASH_OCTETS octets, s those of a coordinate.
void put_eckcdsa_block(TORVA_V1_OPAQUE8& out, Octets r, Octets s) noexcept;

// False if the lengths are others; s may also have the octets of n.
bool read_eckcdsa_block(Octets& r, Octets& s, std::int32_t curve, Octets block) noexcept;

}  // namespace morvane::ecc
