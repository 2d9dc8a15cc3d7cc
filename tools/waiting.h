// The line on a terminal that tells how long something without a measure has taken so far.
#pragma once

#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

namespace morvane::tool {

// Shows itself on standard error, unless that is no terminal, from a second on; erases itself at the end of its life.
class Waiting {
public:
    // `what` is done, in a word or two.
    Waiting(std::string what, bool quiet);
    ~Waiting();
    Waiting(const Waiting&) = delete;
    Waiting& operator=(const Waiting&) = delete;

private:
    void count_seconds();

    std::string what_;
    std::mutex mutex_;
    std::condition_variable ended_changed_;
    bool ended_ = false;
    std::thread thread_;
};

}  // namespace morvane::tool
