// The line on a terminal that tells how far a long input has been read.
#pragma once

#include <chrono>
#include <cstdint>

namespace morvane::tool {

// Shows itself on standard error if that is a terminal and the input is long, in bytes or in time; erases itself at the
// end of its life.
class Progress {
public:
    // total_bytes is 0 where nobody knows.
    explicit Progress(std::uint64_t total_bytes);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    void advance(std::uint64_t bytes);

private:
    using Clock = std::chrono::steady_clock;

    void show(Clock::duration elapsed) const;

    bool wanted_;
    bool shown_ = false;
    std::uint64_t total_;
    std::uint64_t done_ = 0;
    Clock::time_point start_ = Clock::now();
    Clock::time_point next_ = start_;
};

}  // namespace morvane::tool
