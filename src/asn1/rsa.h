// What of an RSA key stands in its encodings.
#pragma once

#include "asn1/structure.h"

#include <morvane/pk.h>

namespace morvane::asn1 {

inline constexpr Member<E_RSA_KEY> kRsaMembers[] = {
    {&E_RSA_KEY::n, E_RSA_MODULUS_WORDS}, {&E_RSA_KEY::e, 1},
    {&E_RSA_KEY::d, E_RSA_MODULUS_WORDS}, {&E_RSA_KEY::p, E_RSA_PRIME_WORDS},
    {&E_RSA_KEY::q, E_RSA_PRIME_WORDS},   {&E_RSA_KEY::dP, E_RSA_PRIME_WORDS},
    {&E_RSA_KEY::dQ, E_RSA_PRIME_WORDS},  {&E_RSA_KEY::qInv, E_RSA_PRIME_WORDS},
};
inline constexpr Structure<E_RSA_KEY> kRsaPublicKey = {false, std::span(kRsaMembers).first(2)};
inline constexpr Structure<E_RSA_KEY> kRsaPrivateKey = {true, kRsaMembers};

}  // namespace morvane::asn1
