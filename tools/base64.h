// Bytes as base64 (RFC 4648).
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace morvane::tool {

// With padding, without line ends. Pieces of multiples of 3 bytes may be put one after the other.
std::string to_base64(std::span<const std::uint8_t> bytes);

// White space is passed over, padding is needed. Nothing when it is no base64. No copy but the result is made.
std::optional<std::vector<std::uint8_t>> from_base64(std::string_view text);

}  // namespace morvane::tool
