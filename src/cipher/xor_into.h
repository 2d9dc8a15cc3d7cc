#pragma once

#include "cpu/cpu.h"

namespace morvane::cipher {

// to ^= with, whole blocks. The two do not overlap.
using XorFn = void(std::uint8_t* to, const std::uint8_t* with, std::size_t size);

extern cpu::Dispatch<XorFn, 2> xor_into;

}  // namespace morvane::cipher
