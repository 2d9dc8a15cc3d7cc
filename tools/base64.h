// Bytes as base64 (RFC 4648).
#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace morvane::tool {

// With padding, without line ends. Pieces of multiples of 3 bytes may be put one after the other.
std::string to_base64(std::span<const std::uint8_t> bytes);

}  // namespace morvane::tool
