// The digest chain: every 16 octets are the digest of the 16 before.
#pragma once

#include "platform/platform.h"

#include <cstdint>

namespace morvane::random {

struct DigestChain {
    void start(std::uint32_t ticks, const platform::ScreenSize& screen, std::uint32_t process_id) noexcept;

    // A rest that fills no 16 octets takes the first of the next digest; the others are lost.
    void draw(std::uint8_t* octets, std::uint32_t count) noexcept;

    std::uint8_t state[16];
};

}  // namespace morvane::random
