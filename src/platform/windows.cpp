#include "platform/platform.h"

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
    const ScreenSize size{static_cast<std::uint32_t>(GetDeviceCaps(display, HORZRES)),
                          static_cast<std::uint32_t>(GetDeviceCaps(display, VERTRES))};
    DeleteDC(display);
    return size;
}

}  // namespace morvane::platform
