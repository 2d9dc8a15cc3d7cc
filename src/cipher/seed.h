// The wide routines of SEED.
#pragma once

#include "cipher/wide.h"

#include <morvane/cipher.h>

namespace morvane::cipher {

struct SeedGfni {
    static constexpr cpu::Features kNeeds = cpu::kAvx512 | cpu::kGfni | cpu::kAvx2;
    static constexpr std::size_t kBatchBlocks = 16;
    static constexpr std::size_t kPadFrom = 3;
    static BlocksFn<E_SEED_KEY_SCHEDULE> encrypt, decrypt;
};

struct SeedAvx2 {
    static constexpr cpu::Features kNeeds = cpu::kAvx2;
    static constexpr std::size_t kBatchBlocks = 8;
    static constexpr std::size_t kPadFrom = 5;
    static BlocksFn<E_SEED_KEY_SCHEDULE> encrypt, decrypt;
};

extern BlocksTable<E_SEED_KEY_SCHEDULE, 3> seed_blocks;

}  // namespace morvane::cipher
