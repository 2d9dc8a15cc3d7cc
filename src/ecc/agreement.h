// Diffie-Hellman and the key derivation of ANSI X9.63.
#pragma once

#include "ecc/scheme.h"

namespace morvane::ecc {

// A shared x-coordinate, of which coordinate_octets() count.
using SharedSecret = SecretArray<std::uint8_t, kMostCoordinateOctets>;

// z = the x-coordinate of d Q. False if the multiplication fails.
bool agree(SharedSecret& z, std::int32_t curve, const Word* d, const TORVA_V1_POINT& q) noexcept;

// `size` octets of the derived key from octet `offset` on.
void derive(std::uint8_t* out, std::size_t size, Octets z, Octets shared_info, std::size_t offset = 0) noexcept;

}  // namespace morvane::ecc
