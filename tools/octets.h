// Octet strings of tables and fixed keys.
#pragma once

#include "hex.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace morvane::tool {

using Octets = std::vector<std::uint8_t>;

// Of a constant in a table: digits that are none throw std::bad_optional_access.
inline Octets octets(std::string_view hex) { return from_hex(hex).value(); }
inline Octets text_octets(std::string_view text) { return {text.begin(), text.end()}; }

inline std::uint32_t size32(const Octets& bytes) { return static_cast<std::uint32_t>(bytes.size()); }
inline std::int32_t signed_size(const Octets& bytes) { return static_cast<std::int32_t>(bytes.size()); }

}  // namespace morvane::tool
