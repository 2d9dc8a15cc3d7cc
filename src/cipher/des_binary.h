// DES in bit slices by circuits of gates of two inputs. Included behind one of the lanes headers.
#pragma once

#include "cipher/des_circuits_binary.h"

namespace morvane::cipher {
namespace {  // NOLINT(cert-dcl59-cpp): every file that includes this makes functions of its own

using Circuits = BinaryCircuits;

template <int Shift>
MORVANE_INLINE void exchange(Lanes& low, Lanes& high, Lanes mask) noexcept {
    const Lanes differing = bits_and(bits_xor(right64<Shift>(low), high), mask);
    high = bits_xor(high, differing);
    low = bits_xor(low, left64<Shift>(differing));
}

}  // namespace
}  // namespace morvane::cipher

#include "cipher/des_bitslice.h"
