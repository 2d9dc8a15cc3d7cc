// Bytes as hexadecimal digits.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace morvane::tool {

// In lower case.
std::string to_hex(std::span<const std::uint8_t> bytes);

// Both cases are read. Nothing when the digits are odd in number or one is none.
std::optional<std::vector<std::uint8_t>> from_hex(std::string_view hex);

}  // namespace morvane::tool
