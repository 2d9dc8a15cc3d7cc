// Block padding: what is added to the bytes that did not fill a block when an encryption ends.
#pragma once

#include "csp/cipher_table.h"

#include <cstdint>

namespace morvane::csp {

// Values of the attribute CSP_ATTR_PADDING.
enum PaddingOption : std::uint32_t {
    kPadNone = 0,
    kPadZero = 2,
    kPadOne = 3,          // bytes 0x01
    kPadAlternating = 4,  // bytes 0x55
    kPadOnes = 5,         // bytes 0xFF
    kPadPkcs5 = 6,        // as many bytes as are missing, each of that number
    kPadPkcs5Too = 7,
    kPadRandom = 9,  // from the digest chain
};

// Fills the block that begins with `count` carried bytes, below the cipher's block length, and sets count to the block
// length; a count of 0 becomes a whole block of padding. kPadNone leaves both alone. An option without a meaning fills with
// zeros. A stream cipher has no blocks: count becomes 0 and nothing is written.
void pad_block(const CspCipherTable& cipher, std::uint8_t* carried, std::uint32_t& count, std::uint32_t option) noexcept;

}  // namespace morvane::csp
