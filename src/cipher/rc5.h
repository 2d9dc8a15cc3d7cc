// The wide routines of RC5.
#pragma once

#include "cipher/wide.h"

#include <morvane/cipher.h>

namespace morvane::cipher {

struct Rc5Avx512 {
    static constexpr cpu::Features kNeeds = cpu::kAvx512 | cpu::kAvx2;
    static constexpr std::size_t kBatchBlocks = 16;
    static constexpr std::size_t kPadFrom = 9;
    static BlocksFn<E_RC5_KEY_SCHEDULE> encrypt, decrypt;
};

struct Rc5Avx2 {
    static constexpr cpu::Features kNeeds = cpu::kAvx2;
    static constexpr std::size_t kBatchBlocks = 8;
    static constexpr std::size_t kPadFrom = 6;
    static BlocksFn<E_RC5_KEY_SCHEDULE> encrypt, decrypt;
};

extern BlocksTable<E_RC5_KEY_SCHEDULE, 3> rc5_blocks;

}  // namespace morvane::cipher
