// The pool of 1023 octets that digests stir: the general source and the one for key generation are two of them.
#pragma once

#include <cstdint>

namespace morvane::random {

inline constexpr std::int32_t kPoolOctets = 1023;

// All members are plain and zero at load; nothing is locked. A negative count is 0.
struct Pool {
    // Stirs octets in.
    void seed(const std::uint8_t* octets, std::int32_t count) noexcept;

    // Writes octets, and mixes in what the buffer held. The first draw seeds the pool from the system's generator and the
    // time.
    void draw(std::uint8_t* octets, std::int32_t count) noexcept;

    std::uint8_t ring[kPoolOctets];
    std::uint8_t digest[16];  // the last one; its second half is what a draw puts out
    std::int32_t index;       // from 0 to 1023: where the next seed or draw begins, the end standing for 0
    std::int32_t fill;        // how many octets were ever seeded: draws use only these
    std::uint32_t counter;    // of draws
    bool was_drawn;

private:
    void seed_first() noexcept;
};

// The general pool as it is.
void copy_general_pool(Pool& copy) noexcept;

// The general pool as it was, which undoes draws, unless somebody has drawn or seeded since `latest` was copied.
void restore_general_pool(const Pool& earlier, const Pool& latest) noexcept;

}  // namespace morvane::random

// Stirs octets into the general pool, from which RAND_Bytes draws and through it everything that takes random integers.
// Programs have never had this call.
extern "C" void RAND_Seed(const std::uint8_t* octets, std::int32_t count) noexcept;
