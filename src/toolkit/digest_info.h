// The DigestInfo of PKCS #1: a hash's identifier and a message's digest.
#pragma once

#include "toolkit/request.h"

namespace morvane::toolkit {

// Hands out the digest of a message by a selector of K_GenHash: 0 or the code of the failure.
std::uint32_t hash_message(K_CONTEXT* context, std::uint32_t selector, const CSSM_DATA& input, CSSM_DATA& output) noexcept;

struct DigestInfo {
    static constexpr std::size_t kMostBytes = 96;

    std::uint8_t bytes[kMostBytes];
    std::size_t size = 0;

    // 0; `refused` for a selector that is none, or KERR_MEMORY.
    std::uint32_t set(K_CONTEXT* context, std::uint32_t selector, const CSSM_DATA& message, std::uint32_t refused) noexcept;
};

}  // namespace morvane::toolkit
