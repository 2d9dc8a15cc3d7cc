// The little that the library asks of the operating system. Only the files of this folder include system headers.
#pragma once

#include <cstddef>
#include <cstdint>

namespace morvane::platform {

struct ScreenSize {
    std::uint32_t width;
    std::uint32_t height;
};

// Seconds since 1970-01-01 00:00 UTC, modulo 2^32.
std::uint32_t seconds() noexcept;

// Milliseconds since some fixed moment before the process began, modulo 2^32.
std::uint32_t tick_count() noexcept;

std::uint32_t process_id() noexcept;

// The run time's clock(): ticks used by the process, modulo 2^32.
std::uint32_t process_clock() noexcept;

// Pixels of the display; 0 by 0 where there is none, and always on systems other than Windows. On Windows each call keeps a
// display context for the life of the process.
ScreenSize screen_size() noexcept;

// Fills a buffer of at most 256 bytes from the system's generator. False if that fails, and some or all of the bytes are as
// they were.
bool system_random(std::uint8_t* bytes, std::size_t size) noexcept;

}  // namespace morvane::platform
