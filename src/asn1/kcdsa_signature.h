// The signature of the newer KCDSA functions: SEQUENCE { BIT STRING of r, INTEGER s }.
#pragma once

#include "asn1/der.h"

#include <morvane/kcdsa.h>

namespace morvane::asn1 {

// Writes it. Returns its length.
std::int32_t put_kcdsa_signature(std::uint8_t* out, const std::uint8_t (&r)[E_KCDSA_R_BYTES], const ENUM& s) noexcept;

// Reads it, with room for E_KCDSA_WORDS words in s, and moves the reader behind it; one that refuses stays.
bool get_kcdsa_signature(std::uint8_t (&r)[E_KCDSA_R_BYTES], ENUM& s, Reader& input) noexcept;

}  // namespace morvane::asn1
