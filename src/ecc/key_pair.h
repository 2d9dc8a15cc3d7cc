// Key pairs from a private scalar.
#pragma once

#include "ecc/scheme.h"

namespace morvane::ecc {

// What generates key pairs under the names TORVA_V1_ECC_KeyPairGeneration_..., with bare private keys.
using KeyPairGeneration = std::int32_t(std::int32_t curve, const E_EC_PARAMS* params, TORVA_V1_OPAQUE8* private_out,
                                       TORVA_V1_OPAQUE8* public_out);

// Generates with the private key's octets in a block.
std::int32_t generate_block(KeyPairGeneration* generate, std::int32_t curve, const E_EC_PARAMS* params,
                            TORVA_V1_OPAQUE8* private_out, TORVA_V1_OPAQUE8* public_out) noexcept;

// Whether a key pair can be written for this curve.
bool can_generate(std::int32_t curve, const TORVA_V1_OPAQUE8* private_out, const TORVA_V1_OPAQUE8* public_out) noexcept;

// Writes d and the point of `factor`, which is d or its inverse. Returns 0 or -1.
std::int32_t put_key_pair(TORVA_V1_OPAQUE8& private_out, TORVA_V1_OPAQUE8& public_out, std::int32_t curve, const Word* d,
                          const Word* factor) noexcept;

}  // namespace morvane::ecc
