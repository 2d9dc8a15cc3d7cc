// What the processor can do, and the one mechanism that picks a routine by it.
//
// A routine with accelerated forms has a table of rows, best first; the last row needs nothing. The first row whose
// features are all present is used:
//
//     constinit cpu::Dispatch<CompressFn, 2> compress{{{{cpu::kSha, compress_sha}, {cpu::kNone, compress_portable}}}};
//     compress.get()(state, blocks, count);
//
// Nothing runs at load. The first call finds the answer and keeps it in an atomic word; threads that come at the same time
// find the same answer, so no lock is needed.
#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>

namespace morvane::cpu {

using Features = std::uint32_t;

inline constexpr Features kNone = 0;
inline constexpr Features kSse2 = 1U << 0;
inline constexpr Features kSsse3 = 1U << 1;
inline constexpr Features kSse41 = 1U << 2;
inline constexpr Features kSha = 1U << 3;
inline constexpr Features kBmi2 = 1U << 4;  // BMI1 and BMI2
inline constexpr Features kAvx2 = 1U << 5;
inline constexpr Features kAvx512 = 1U << 6;  // F, BW, DQ and VL
inline constexpr Features kIfma = 1U << 7;    // AVX-512: products of 52-bit digits
inline constexpr Features kAdx = 1U << 8;     // a second carry flag for additions
inline constexpr Features kClmul = 1U << 9;   // PCLMULQDQ: products of polynomials
inline constexpr Features kGfni = 1U << 10;   // products in the field of 256 elements, at every width the others allow
inline constexpr Features kVbmi = 1U << 11;   // AVX-512: permutations of bytes
inline constexpr Features kAll = (1U << 12) - 1;

// The features of this processor that the operating system lets programs use.
Features features() noexcept;

// Makes features() answer with no more than `allowed` from now on; choices already made stay. For tests and benchmarks.
void limit_features(Features allowed) noexcept;

inline bool usable(Features needs) noexcept { return (needs & ~features()) == 0; }

template <typename Fn>
struct Variant {
    Features needs;
    Fn* run;
};

template <typename Fn, std::size_t Rows>
class Dispatch {
public:
    constexpr explicit Dispatch(const std::array<Variant<Fn>, Rows>& rows) noexcept : rows_(rows) {}

    Fn* get() noexcept {
        Fn* const run = chosen_.load(std::memory_order_relaxed);
        return run != nullptr ? run : choose();
    }

    const std::array<Variant<Fn>, Rows>& rows() const noexcept { return rows_; }

    // Uses one row from now on, or with null the best usable one again. For tests.
    void pin(Fn* run) noexcept { chosen_.store(run, std::memory_order_relaxed); }

private:
    Fn* choose() noexcept {
        std::size_t row = 0;
        while (row + 1 < Rows && !usable(rows_[row].needs)) ++row;
        chosen_.store(rows_[row].run, std::memory_order_relaxed);
        return rows_[row].run;
    }

    std::array<Variant<Fn>, Rows> rows_;
    std::atomic<Fn*> chosen_{nullptr};
};

}  // namespace morvane::cpu
