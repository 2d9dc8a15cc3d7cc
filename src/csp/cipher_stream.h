// The steps of an encryption or decryption in pieces.
#pragma once

#include "csp/cipher_table.h"

#include <morvane/csp.h>

#include <cstdint>

namespace morvane::csp {

struct CipherBuffers {
    const CSSM_DATA* in;
    std::uint32_t in_count;
    const CSSM_DATA* out;
    std::uint32_t out_count;
};

// Puts the session's carried bytes and the input through the operation, as far as they fill blocks, and keeps the rest as
// the session's carried bytes. Adds to *written what it has written. 0 or the code of the failure; then the carried bytes
// are as they were, and the output and the chaining value have come as far as the failure.
std::uint32_t stream(CspSession& session, CipherFn* operation, const CipherBuffers& buffers,
                     std::uint32_t* written) noexcept;

}  // namespace morvane::csp
