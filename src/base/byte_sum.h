// Sums of bytes that are indices of tables.
#pragma once

#include <cstddef>
#include <cstdint>

namespace morvane {

// Adds modulo 256. `to` is below 256 and stays so, of x the low byte counts. The compiler does not know that the
// processor's sum of bytes leaves the rest of a register zero, and clears it each time.
[[gnu::always_inline]] inline void add_byte(std::size_t& to, std::size_t x) noexcept {
#if defined(__x86_64__) || defined(__i386__)
    asm("addb %b1, %b0" : "+q"(to) : "qi"(x) : "cc");
#else
    to = (to + x) & 255;
#endif
}

// The same for a byte in memory, which then needs no register.
[[gnu::always_inline]] inline void add_byte_at(std::size_t& to, const std::uint8_t* x) noexcept {
#if defined(__x86_64__) || defined(__i386__)
    asm("addb %1, %b0" : "+q"(to) : "m"(*x) : "cc");
#else
    add_byte(to, *x);
#endif
}

}  // namespace morvane
