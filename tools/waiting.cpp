#include "waiting.h"

#include "system.h"

#include <algorithm>
#include <chrono>
#include <cstdio>

namespace morvane::tool {
namespace {

// A terminal that takes nothing is no reason to stop.
void put(const std::string& text) { static_cast<void>(std::fwrite(text.data(), 1, text.size(), stderr)); }

}  // namespace

Waiting::Waiting(std::string what, bool quiet) : what_(std::move(what)) {
    if (!quiet && stderr_is_terminal()) thread_ = std::thread(&Waiting::count_seconds, this);
}

Waiting::~Waiting() {
    if (!thread_.joinable()) return;
    {
        const std::lock_guard lock(mutex_);
        ended_ = true;
    }
    ended_changed_.notify_one();
    thread_.join();
}

void Waiting::count_seconds() {
    std::unique_lock lock(mutex_);
    std::string shown;  // the carriage return that begins the line, and the line
    const auto start = std::chrono::steady_clock::now();
    for (int seconds = 1;; ++seconds) {
        if (ended_changed_.wait_until(lock, start + std::chrono::seconds(seconds), [this] { return ended_; })) break;
        shown = '\r';
        shown += what_;
        shown += ", ";
        shown += std::to_string(seconds);
        shown += " s";
        put(shown);
    }
    if (shown.empty()) return;
    std::fill(shown.begin() + 1, shown.end(), ' ');
    shown += '\r';
    put(shown);
}

}  // namespace morvane::tool
