// The error cell of the service-provider layer.
#pragma once

#include <cstdint>

namespace morvane::csp {

inline constexpr std::int32_t kSuccess = 0;
inline constexpr std::int32_t kFailure = -1;

// Stores a code in the cell, 2000 more if it is below 1000. For look-ups that fail without failing the service.
void store_error(std::uint32_t code) noexcept;

// Stores a code and returns what the service returns then: kFailure.
[[nodiscard]] std::int32_t fail(std::uint32_t code) noexcept;

}  // namespace morvane::csp
