// Integers from octets.
#pragma once

#include <morvane/types.h>

#include <cstdint>

namespace morvane::random {

// What fills a buffer with octets. The buffer is zero before.
using Source = void(std::uint8_t* octets, std::int32_t count);

// x = an integer of exactly `bits` bits from (bits + 7) / 8 octets of the source, most significant first; with `top` its
// two highest bits are set, with `bottom` it is odd. Before, the time is stirred into the general pool. Zero of length 0 if
// `bits` is not positive. Room: the words of so many bits.
void random_integer(ENUM& x, std::int32_t bits, bool top, bool bottom, Source source) noexcept;

}  // namespace morvane::random
