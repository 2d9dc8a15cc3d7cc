// KCDSA domains from a seed.
#pragma once

#include <morvane/kcdsa.h>

#include <cstddef>
#include <cstdint>

namespace morvane::pk {

using SeedOctets = std::uint8_t[20];

enum class Seeded : std::uint8_t { kDone, kUnfit, kNoMemory };

// p and q from a seed and the least count that will do, and 2 J = (p - 1) / q, which has room for kGroupWords + 1 words.
// kUnfit: J is no prime, or no count will do. p has up to p_bits bits; q_bits is at least 16, p_bits more by at least 32.
Seeded domain_of_seed(E_KCDSA_KEY& domain, ENUM& twice_j, std::uint32_t& count, const SeedOctets& seed, std::size_t p_bits,
                      std::size_t q_bits) noexcept;

}  // namespace morvane::pk
