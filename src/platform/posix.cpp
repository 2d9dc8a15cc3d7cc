#include "platform/platform.h"

#include <ctime>

#include <unistd.h>

namespace morvane::platform {

std::uint32_t seconds() noexcept { return static_cast<std::uint32_t>(std::time(nullptr)); }

std::uint32_t tick_count() noexcept {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    constexpr std::uint32_t kMillisecondsPerSecond = 1000;
    constexpr long kNanosecondsPerMillisecond = 1000000;
    return static_cast<std::uint32_t>(now.tv_sec) * kMillisecondsPerSecond +
           static_cast<std::uint32_t>(now.tv_nsec / kNanosecondsPerMillisecond);
}

std::uint32_t process_id() noexcept { return static_cast<std::uint32_t>(getpid()); }

std::uint32_t process_clock() noexcept {
    constexpr std::clock_t kTicksPerMillisecond = CLOCKS_PER_SEC / 1000;
    return static_cast<std::uint32_t>(std::clock() / kTicksPerMillisecond);
}

ScreenSize screen_size() noexcept { return {0, 0}; }

bool system_random(std::uint8_t* bytes, std::size_t size) noexcept { return getentropy(bytes, size) == 0; }

}  // namespace morvane::platform
