#include "csp/error.h"

#include <morvane/csp.h>

#include <atomic>

namespace morvane::csp {
namespace {

// One word for the whole process. Atomic, so that threads that fail at once leave one of their codes; which one is open.
std::atomic<std::uint32_t> last_error{0};

}  // namespace

void store_error(std::uint32_t code) noexcept {
    constexpr std::uint32_t kFirstOwnCode = 1000;
    constexpr std::uint32_t kForeignCodesFrom = 2000;
    last_error.store(code < kFirstOwnCode ? code + kForeignCodesFrom : code, std::memory_order_relaxed);
}

std::int32_t fail(std::uint32_t code) noexcept {
    store_error(code);
    return kFailure;
}

}  // namespace morvane::csp

uint32_t GetError(void) { return morvane::csp::last_error.load(std::memory_order_relaxed); }
