// The forms of the kernels; kernels.cpp picks one of each.
#pragma once

#include "bignum/lehmer_step.h"
#include "bignum/limb.h"
#include "cpu/cpu.h"

namespace morvane::bignum {

using MultiplyFn = void(LimbInWords* r, const LimbInWords* a, std::size_t a_size, const LimbInWords* b,
                        std::size_t b_size) noexcept;
using SquareFn = void(LimbInWords* r, const LimbInWords* a, std::size_t n) noexcept;
using ReduceFn = void(Limb* r, Limb* t, const Limb* m, std::size_t n, Limb minus_inverse) noexcept;
using MontgomeryFn = void(Limb* r, Limb* t, const Limb* a, const Limb* b, const Limb* m, std::size_t n,
                          Limb minus_inverse) noexcept;
using ApplyFn = lehmer::Carries(const lehmer::Run& run, Limb* u, Limb* v, std::size_t n, std::size_t dropped) noexcept;
using RowFn = Limb(LimbInWords* r, const LimbInWords* a, std::size_t n, Limb w) noexcept;

MultiplyFn multiply_plain;
SquareFn square_plain;
ReduceFn montgomery_reduce_plain;
MontgomeryFn montgomery_multiply_apart;  // a product or square and a reduction, whichever are picked

// AVX-512 with IFMA; on x86-64 with BMI2 and ADX besides.
MultiplyFn multiply_ifma;
SquareFn square_ifma;

#if defined(__x86_64__)
// BMI2 and ADX.
MultiplyFn multiply_adx;
SquareFn square_adx;
ReduceFn montgomery_reduce_adx;
MontgomeryFn montgomery_multiply_adx;
RowFn multiply_subtract_row_adx;

inline constexpr std::size_t kProductVariants = 3;
inline constexpr std::size_t kRowVariants = 2;
inline constexpr std::size_t kMontgomeryVariants = 2;
inline constexpr std::size_t kApplyVariants = 1;
#else
MultiplyFn multiply_avx2;
SquareFn square_avx2;
MultiplyFn multiply_sse2;
SquareFn square_sse2;

// Rows in vectors of 128 bits.
ReduceFn montgomery_reduce_avx2;
RowFn multiply_subtract_row_avx2;
ApplyFn lehmer_apply_avx2;
ReduceFn montgomery_reduce_sse2;
RowFn multiply_subtract_row_sse2;
ApplyFn lehmer_apply_sse2;

inline constexpr std::size_t kProductVariants = 4;
inline constexpr std::size_t kRowVariants = 3;
inline constexpr std::size_t kMontgomeryVariants = 1;
inline constexpr std::size_t kApplyVariants = 3;
#endif

extern constinit cpu::Dispatch<MultiplyFn, kProductVariants> multiply_variants;
extern constinit cpu::Dispatch<SquareFn, kProductVariants> square_variants;
extern constinit cpu::Dispatch<ReduceFn, kRowVariants> reduce_variants;
extern constinit cpu::Dispatch<MontgomeryFn, kMontgomeryVariants> montgomery_variants;
extern constinit cpu::Dispatch<RowFn, kRowVariants> multiply_subtract_variants;
extern constinit cpu::Dispatch<ApplyFn, kApplyVariants> apply_variants;

}  // namespace morvane::bignum
