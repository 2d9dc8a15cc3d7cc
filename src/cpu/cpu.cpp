#include "cpu/cpu.h"

#if defined(__x86_64__) || defined(__i386__)
#include <cpuid.h>
#endif

namespace morvane::cpu {
namespace {

constexpr Features kFound = 1U << 31;  // set in the word once detection has run

std::atomic<Features> found{0};
std::atomic<Features> limit{kAll};

#if defined(__x86_64__) || defined(__i386__)

constexpr bool has(std::uint32_t word, unsigned bit) noexcept { return (word >> bit & 1U) != 0; }

// The state components that the operating system saves (XCR0). Only to be asked where CPUID reports OSXSAVE.
std::uint32_t saved_state() noexcept {
    std::uint32_t low = 0;
    std::uint32_t high = 0;
    asm volatile("xgetbv" : "=a"(low), "=d"(high) : "c"(0));
    return low;
}

Features detect() noexcept {
    unsigned eax = 0;
    unsigned ebx = 0;
    unsigned ecx = 0;
    unsigned edx = 0;
    if (__get_cpuid(1, &eax, &ebx, &ecx, &edx) == 0) return kNone;

    Features result = kNone;
    if (has(edx, 26)) result |= kSse2;
    if (has(ecx, 1)) result |= kClmul;
    if (has(ecx, 9)) result |= kSsse3;
    if (has(ecx, 19)) result |= kSse41;

    constexpr std::uint32_t kYmmState = 0x6;
    constexpr std::uint32_t kZmmState = 0xe6;
    const std::uint32_t state = has(ecx, 27) ? saved_state() : 0;
    if (__get_cpuid_count(7, 0, &eax, &ebx, &ecx, &edx) == 0) return result;
    if (has(ebx, 29)) result |= kSha;
    if (has(ebx, 3) && has(ebx, 8)) result |= kBmi2;
    if (has(ebx, 19)) result |= kAdx;
    if (has(ecx, 8)) result |= kGfni;
    if (has(ebx, 5) && (state & kYmmState) == kYmmState) result |= kAvx2;
    const bool avx512 = has(ebx, 16) && has(ebx, 17) && has(ebx, 30) && has(ebx, 31);
    if (avx512 && (state & kZmmState) == kZmmState) {
        result |= kAvx512;
        if (has(ebx, 21)) result |= kIfma;
        if (has(ecx, 1)) result |= kVbmi;
    }
    return result;
}

#else

Features detect() noexcept { return kNone; }

#endif

}  // namespace

Features features() noexcept {
    Features known = found.load(std::memory_order_relaxed);
    if (known == 0) {
        known = detect() | kFound;
        found.store(known, std::memory_order_relaxed);
    }
    return known & limit.load(std::memory_order_relaxed);
}

void limit_features(Features allowed) noexcept { limit.store(allowed & kAll, std::memory_order_relaxed); }

}  // namespace morvane::cpu
