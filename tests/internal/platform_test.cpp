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
    const auto now = static_cast<std::uint32_t>(std::time(nullptr));
    EXPECT_LE(platform::seconds() - now, 5U);
    EXPECT_EQ(platform::process_id(), static_cast<std::uint32_t>(getpid()));

    const std::uint32_t before = platform::tick_count();
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    const std::uint32_t passed = platform::tick_count() - before;
    EXPECT_GE(passed, 50U);  // a tick of GetTickCount is 16 ms
    EXPECT_LE(passed, 60000U);

    const std::uint32_t used = platform::process_clock();
    volatile std::uint32_t work = 0;
    while (platform::process_clock() == used && platform::tick_count() - before < 60000) work = work + 1;
    EXPECT_NE(platform::process_clock(), used) << "the process clock stands still";
}

TEST(Platform, ReportsAScreenOnlyWhereThereIsOne) {
    const platform::ScreenSize size = platform::screen_size();
#if defined(_WIN32)
    EXPECT_EQ(size.width == 0, size.height == 0);
#else
    EXPECT_EQ(size.width, 0U);
    EXPECT_EQ(size.height, 0U);
#endif
}

}  // namespace
