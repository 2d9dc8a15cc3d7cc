// The wide routines of RC2.
#pragma once

#include "cipher/wide.h"

#include <morvane/cipher.h>

namespace morvane::cipher {

struct Rc2Avx512 {
    static constexpr cpu::Features kNeeds = cpu::kAvx512 | cpu::kAvx2;
    static constexpr std::size_t kBatchBlocks = 32;
    static constexpr std::size_t kPadFrom = 9;
    static BlocksFn<E_RC2_KEY_SCHEDULE> encrypt, decrypt;
};

struct Rc2Avx2 {
    static constexpr cpu::Features kNeeds = cpu::kAvx2;
    static constexpr std::size_t kBatchBlocks = 16;
    static constexpr std::size_t kPadFrom = 6;
    static BlocksFn<E_RC2_KEY_SCHEDULE> encrypt, decrypt;
};

extern BlocksTable<E_RC2_KEY_SCHEDULE, 3> rc2_blocks;

}  // namespace morvane::cipher
