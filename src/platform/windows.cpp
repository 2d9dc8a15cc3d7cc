#define _CRT_RAND_S  // before any header of the C library

#include "platform/platform.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <ctime>

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

namespace morvane::platform {

std::uint32_t seconds() noexcept { return static_cast<std::uint32_t>(std::time(nullptr)); }

std::uint32_t tick_count() noexcept { return GetTickCount(); }

std::uint32_t process_id() noexcept { return GetCurrentProcessId(); }

std::uint32_t process_clock() noexcept { return static_cast<std::uint32_t>(std::clock()); }

ScreenSize screen_size() noexcept {
    const HDC display = CreateDCA("DISPLAY", nullptr, nullptr, nullptr);
    if (display == nullptr) return {0, 0};
    return {static_cast<std::uint32_t>(GetDeviceCaps(display, HORZRES)),
            static_cast<std::uint32_t>(GetDeviceCaps(display, VERTRES))};
}

bool system_random(std::uint8_t* bytes, std::size_t size) noexcept {
    for (std::size_t done = 0; done < size; done += sizeof(unsigned)) {
        unsigned word = 0;
        if (rand_s(&word) != 0) return false;
        std::memcpy(bytes + done, &word, std::min(size - done, sizeof word));
    }
    return true;
}

}  // namespace morvane::platform
