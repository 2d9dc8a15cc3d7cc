#include "platform/platform.h"

#include <gtest/gtest.h>
#include <chrono>
#include <ctime>
#include <thread>

#if defined(_WIN32)
#include <process.h>
#define getpid _getpid
#else
#include <unistd.h>
#endif

namespace {

using namespace morvane;

TEST(Platform, ReadsClocksAndIdentity) {
    EXPECT_LE(platform::seconds() - static_cast<std::uint32_t>(std::time(nullptr)) + 1, 2U);
    EXPECT_EQ(platform::process_id(), static_cast<std::uint32_t>(getpid()));
    const std::uint32_t before = platform::tick_count(), used = platform::process_clock();
    while (platform::process_clock() == used && platform::tick_count() - before < 60000) {
    }
    EXPECT_NE(platform::process_clock(), used) << "the process clock stands still";
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    EXPECT_GE(platform::tick_count() - before, 50U);  // a tick of GetTickCount is 16 ms
}

TEST(Platform, ReportsAScreenOnlyWhereThereIsOne) {
    const platform::ScreenSize size = platform::screen_size();
#if defined(_WIN32)
    EXPECT_EQ(size.width == 0, size.height == 0);
#else
    EXPECT_TRUE(size.width == 0 && size.height == 0);
#endif
}

}  // namespace
