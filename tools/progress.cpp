#include "progress.h"

#include "system.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>

namespace morvane::tool {
namespace {

constexpr std::uint64_t kLongInput = 64u << 20;
constexpr std::chrono::seconds kLongTime{1};
constexpr std::chrono::milliseconds kInterval{200};
constexpr double kMegabyte = 1e6;
constexpr std::size_t kWidth = 40;

// A terminal that takes nothing is no reason to stop.
void put(const std::string& text) { static_cast<void>(std::fwrite(text.data(), 1, text.size(), stderr)); }

}  // namespace

Progress::Progress(std::uint64_t total_bytes) : wanted_(stderr_is_terminal()), total_(total_bytes) {}

Progress::~Progress() {
    if (shown_) put("\r" + std::string(kWidth, ' ') + "\r");
}

void Progress::advance(std::uint64_t bytes) {
    if (!wanted_) return;
    done_ += bytes;
    const Clock::time_point now = Clock::now();
    if (now < next_ || (std::max(total_, done_) <= kLongInput && now - start_ <= kLongTime)) return;
    shown_ = true;
    next_ = now + kInterval;
    show(now - start_);
}

void Progress::show(Clock::duration elapsed) const {
    const double seconds = std::max(std::chrono::duration<double>(elapsed).count(), 1e-6);
    const double megabytes = static_cast<double>(done_) / kMegabyte;
    // A file can grow while it is read.
    std::string text = total_ != 0 ? std::to_string(std::min(done_, total_) * 100 / total_) + " %"
                                   : std::to_string(std::llround(megabytes)) + " MB";
    text += "  " + std::to_string(std::llround(megabytes / seconds)) + " MB/s";
    text.resize(kWidth, ' ');
    put("\r" + text);
}

}  // namespace morvane::tool
