// EC-KCDSA with HAS-160: its digests and equations.
#pragma once

#include <morvane/ecc_schemes.h>

#include "ecc/scheme.h"

#include <array>

namespace morvane::ecc {

using HashValue = std::array<std::uint8_t, E_ECKCDSA_HASH_OCTETS>;

// What a verification computes.
struct EckcdsaCheck {
    HashValue h{};       // of z and the message
    HashValue h_of_x{};  // what r has to be
    Word e[kWords]{};
    bool is_valid = false;
};

// The whole verification; -1 for a bad public key, 0 for a signature that never comes to the equations, else 1 and all of
// `check`.
std::int32_t eckcdsa_check(EckcdsaCheck& check, std::int32_t curve, const E_EC_PARAMS* params,
                           const TORVA_V1_OPAQUE8* message, const TORVA_V1_OPAQUE8* signature,
                           const TORVA_V1_OPAQUE8* public_key) noexcept;

}  // namespace morvane::ecc
