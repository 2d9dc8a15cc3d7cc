// The wide routines of IDEA.
#pragma once

#include "cipher/wide.h"

#include <morvane/cipher.h>

namespace morvane::cipher {

struct IdeaAvx512 {
    static constexpr cpu::Features kNeeds = cpu::kAvx512 | cpu::kAvx2 | cpu::kSse2;
    static constexpr std::size_t kBatchBlocks = 32;
    static constexpr std::size_t kPadFrom = 17;
    static BlocksFn<E_IDEA_KEY_SCHEDULE> encrypt, decrypt;
};

struct IdeaAvx2 {
    static constexpr cpu::Features kNeeds = cpu::kAvx2 | cpu::kSse2;
    static constexpr std::size_t kBatchBlocks = 16;
    static constexpr std::size_t kPadFrom = 9;
    static BlocksFn<E_IDEA_KEY_SCHEDULE> encrypt, decrypt;
};

struct IdeaSse2 {
    static constexpr cpu::Features kNeeds = cpu::kSse2;
    static constexpr std::size_t kBatchBlocks = 8;
    static constexpr std::size_t kPadFrom = 4;
    static BlocksFn<E_IDEA_KEY_SCHEDULE> encrypt, decrypt;
};

extern BlocksTable<E_IDEA_KEY_SCHEDULE, 4> idea_blocks;

}  // namespace morvane::cipher
