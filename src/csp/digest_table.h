// The operation tables of the digest services.
#pragma once

#include <morvane/csp.h>

#include <cstdint>

// One digest as the services see it. The three operations serve every digest and switch on the algorithm identifier.
struct CspDigestTable {
    std::uint32_t digest_bytes;
    // Makes a zero-filled state and initialises it. False when memory is short; no state and true for an identifier that
    // does not hash.
    bool (*init)(std::uint32_t algorithm, void** state) noexcept;
    // Absorbs the buffer. False without a state.
    bool (*update)(const CSSM_DATA& data, void* state, std::uint32_t algorithm) noexcept;
    // Writes the digest, sets the buffer's Length and releases the state. False without a state.
    bool (*final)(CSSM_DATA& digest, void* state, std::uint32_t algorithm) noexcept;
};

namespace morvane::csp {

// The table that an algorithm identifier selects, null for an unknown one. A signature identifier selects the table of its
// hash.
const CspDigestTable* find_digest_table(std::uint32_t algorithm) noexcept;

}  // namespace morvane::csp
