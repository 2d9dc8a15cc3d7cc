// The library's own functions for digests, under one form of call.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace morvane::tool {

using Message = std::span<std::uint8_t>;

struct DigestCalls {
    std::string_view name;
    std::size_t bytes;  // of the digest
    void (*once)(std::uint8_t* out, Message message);
    void (*pieces)(std::uint8_t* out, Message message, std::size_t size);  // so many bytes at a call
};

// Those of the command, SHA-0 besides.
std::span<const DigestCalls> all_digest_calls();

}  // namespace morvane::tool
