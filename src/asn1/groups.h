// What of DSA, KCDSA and Diffie-Hellman records stands in their encodings.
#pragma once

#include "asn1/structure.h"

#include <morvane/dh.h>
#include <morvane/dsa.h>

namespace morvane::asn1 {

// y, p, q, g and, once more, y, x: the encodings are parts of this row.
inline constexpr Member<E_DSA_KEY> kDsaMembers[] = {
    {&E_DSA_KEY::y, E_DSA_WORDS}, {&E_DSA_KEY::p, E_DSA_WORDS}, {&E_DSA_KEY::q, E_DSA_WORDS},
    {&E_DSA_KEY::g, E_DSA_WORDS}, {&E_DSA_KEY::y, E_DSA_WORDS}, {&E_DSA_KEY::x, E_DSA_WORDS},
};
inline constexpr Structure<E_DSA_KEY> kDsaParams = {false, std::span(kDsaMembers).subspan(1, 3)};
inline constexpr Structure<E_DSA_KEY> kDsaPublicKey = {false, std::span(kDsaMembers).first(4)};
inline constexpr Structure<E_DSA_KEY> kDsaPrivateKey = {true, std::span(kDsaMembers).subspan(1)};

inline constexpr Member<E_DH_KEY> kDhMembers[] = {{&E_DH_KEY::p, E_DH_WORDS}, {&E_DH_KEY::g, 1}};
inline constexpr Structure<E_DH_KEY> kDhParams = {false, kDhMembers};

}  // namespace morvane::asn1
