// The tables of the block ciphers and stream ciphers: what the services need to know of an algorithm in a mode.
#pragma once

#include <morvane/csp.h>

#include <cstdint>

// All sizes in bytes.
struct CspCipherTable {
    std::uint32_t expanded_key_bytes;
    std::uint32_t key_bytes;  // 0: variable
    std::uint32_t iv_bytes;   // 0: the mode has no initialisation vector
    std::uint32_t block_bytes;
};

namespace morvane::csp {

struct CipherChoice {
    const CspCipherTable* table;
    std::uint32_t error;  // where table is null: CSP_ERR_UNKNOWN_ALGORITHM or CSP_ERR_UNKNOWN_MODE
};

CipherChoice find_cipher_table(std::uint32_t algorithm, std::uint32_t mode) noexcept;

}  // namespace morvane::csp
