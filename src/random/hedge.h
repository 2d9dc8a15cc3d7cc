// What keeps the secret numbers of signatures apart where random numbers fail.
#pragma once

#include <cstdint>
#include <span>

namespace morvane::random {

// Stirs SHA-1 of a private key, as its words lie in memory, and of what it is to sign into the general pool. A pool in a
// state that it was in before, say of a process that forked, then gives another number for another message.
void hedge(std::span<const std::uint32_t> private_key, std::span<const std::uint8_t> message) noexcept;

}  // namespace morvane::random
