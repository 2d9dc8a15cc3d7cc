// The operation tables of the MAC services.
#pragma once

#include <morvane/csp.h>

#include <cstdint>

// One MAC algorithm. Operations return 0 or the code of their failure; kMacMismatch is none.
struct CspMacTable {
    std::uint32_t expanded_key_bytes;
    std::uint32_t block_bytes;  // what is buffered; a power of two
    std::uint32_t running_bytes;
    // Checks the key and makes the session's carried block, running value or working state ready.
    std::uint32_t (*init)(const CSSM_KEY* key, CspSession& session) noexcept;
    // Absorbs `size` bytes, whole blocks.
    std::uint32_t (*update)(const CSSM_KEY* key, CspSession& session, const std::uint8_t* blocks,
                            std::uint32_t size) noexcept;
    // Absorbs the carried bytes and writes the MAC, allocating the buffer where its Data is null.
    std::uint32_t (*final)(const CSSM_KEY* key, CspSession& session, CSSM_DATA& mac) noexcept;
    // Absorbs the carried bytes and compares the MAC with the expected one.
    std::uint32_t (*verify)(const CSSM_KEY* key, CspSession& session, const CSSM_DATA& expected) noexcept;
};

namespace morvane::csp {

// What verify returns for a MAC that is not the expected one: no code is stored for that.
inline constexpr std::uint32_t kMacMismatch = ~std::uint32_t{0};

// The table of an algorithm, null for an unknown one.
const CspMacTable* find_mac_table(std::uint32_t algorithm) noexcept;

}  // namespace morvane::csp
