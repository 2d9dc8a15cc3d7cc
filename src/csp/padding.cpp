#include "csp/padding.h"

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

bool pad_block(const CspCipherTable& cipher, std::uint8_t* carried, std::uint32_t& count, std::uint32_t option) noexcept {
    if (cipher.block_bytes == 0) {
        count = 0;
        return true;
    }
    if (option == kPadNone) return true;
    if (option == kPadRandom) return false;
    const std::uint32_t missing = cipher.block_bytes - count;
    std::memset(carried + count, fill_byte(option, missing), missing);
    count = cipher.block_bytes;
    return true;
}

}  // namespace morvane::csp
