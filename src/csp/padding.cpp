#include "csp/padding.h"

#include <morvane/random.h>

#include <cstring>

namespace morvane::csp {
namespace {

std::uint8_t fill_byte(std::uint32_t option, std::uint32_t missing) noexcept {
    switch (option) {
        case kPadOne:
            return 0x01;
        case kPadAlternating:
            return 0x55;
        case kPadOnes:
            return 0xFF;
        case kPadPkcs5:
        case kPadPkcs5Too:
            return static_cast<std::uint8_t>(missing);
        default:
            return 0x00;
    }
}

}  // namespace

void pad_block(const CspCipherTable& cipher, std::uint8_t* carried, std::uint32_t& count, std::uint32_t option) noexcept {
    if (cipher.block_bytes == 0) {
        count = 0;
        return;
    }
    if (option == kPadNone) return;
    const std::uint32_t missing = cipher.block_bytes - count;
    if (option == kPadRandom) {
        std::uint8_t random[CSP_CHAIN_BYTES];  // always a whole block, whatever is needed of it
        E_GenerateRandom(random, cipher.block_bytes, 0);
        std::memcpy(carried + count, random, missing);
    } else {
        std::memset(carried + count, fill_byte(option, missing), missing);
    }
    count = cipher.block_bytes;
}

}  // namespace morvane::csp
