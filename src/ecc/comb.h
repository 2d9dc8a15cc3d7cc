// The shape of the tables over base points: entry (i, j) is (2 j + 1) 16^i G, so that a scalar of odd digits is a sum of
// one entry per digit, without a doubling.
#pragma once

#include <array>
#include <atomic>
#include <cstddef>

namespace morvane::ecc {

inline constexpr unsigned kCombBits = 4;
inline constexpr std::size_t kCombDigits = 41;  // 164 bits
inline constexpr std::size_t kCombOdds = 8;

template <typename Point>
using Comb = std::array<std::array<Point, kCombOdds>, kCombDigits>;

// A table that is made when it is first asked for. Nobody waits: who asks while another thread makes it multiplies without.
template <typename Point>
class CombOnce {
public:
    // The table, which make(comb) fills, or null while that runs elsewhere.
    template <typename Make>
    const Comb<Point>* get(Make make) noexcept {
        State found = state_.load(std::memory_order_acquire);
        if (found == kNone && state_.compare_exchange_strong(found, kBeingMade, std::memory_order_acquire)) {
            make(comb_);
            state_.store(kMade, std::memory_order_release);
            found = kMade;
        }
        return found == kMade ? &comb_ : nullptr;
    }

private:
    enum State { kNone, kBeingMade, kMade };

    Comb<Point> comb_{};
    std::atomic<State> state_{kNone};
};

}  // namespace morvane::ecc
