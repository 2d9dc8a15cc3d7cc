// The wide routines of DES and triple DES: their records, and a batch of as many blocks as a register has bits.
#pragma once

#include "cipher/wide.h"

#include <morvane/cipher.h>

namespace morvane::cipher {

template <typename Record>
struct DesAvx512 {
    static constexpr cpu::Features kNeeds = cpu::kAvx512 | cpu::kAvx2 | cpu::kSse2;
    static constexpr std::size_t kBatchBlocks = 512;
    static constexpr std::size_t kPadFrom = 257;
    static BlocksFn<Record> encrypt, decrypt;
};

template <typename Record>
struct DesAvx2 {
    static constexpr cpu::Features kNeeds = cpu::kAvx2 | cpu::kSse2;
    static constexpr std::size_t kBatchBlocks = 256;
    static constexpr std::size_t kPadFrom = sizeof(void*) == 8 ? 40 : 26;
    static BlocksFn<Record> encrypt, decrypt;
};

template <typename Record>
struct DesSse2 {
    static constexpr cpu::Features kNeeds = cpu::kSse2;
    static constexpr std::size_t kBatchBlocks = 128;
    static constexpr std::size_t kPadFrom = sizeof(void*) == 8 ? 56 : 36;
    static BlocksFn<Record> encrypt, decrypt;
};

extern BlocksTable<E_DES_KEY_SCHEDULE, 4> des_blocks;
extern BlocksTable<E_DES3_KEY_SCHEDULE, 4> des3_blocks;
extern BlocksTable<E_DES3_3KEY_SCHEDULE, 4> des3_3key_blocks;

}  // namespace morvane::cipher
