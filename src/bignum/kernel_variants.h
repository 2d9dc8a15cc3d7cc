// The forms of the kernels; kernels.cpp picks one of each.
#pragma once

#include "bignum/limb.h"
#include "cpu/cpu.h"

namespace morvane::bignum {

using MultiplyFn = void(LimbInWords* r, const LimbInWords* a, std::size_t a_size, const LimbInWords* b,
                        std::size_t b_size) noexcept;
using SquareFn = void(LimbInWords* r, const LimbInWords* a, std::size_t n) noexcept;
using ReduceFn = void(Limb* r, Limb* t, const Limb* m, std::size_t n, Limb minus_inverse) noexcept;
using RowFn = Limb(LimbInWords* r, const LimbInWords* a, std::size_t n, Limb w) noexcept;

MultiplyFn multiply_plain;
SquareFn square_plain;
ReduceFn montgomery_reduce_plain;

// x86-64 with BMI2 and ADX.
MultiplyFn multiply_adx;
SquareFn square_adx;
ReduceFn montgomery_reduce_adx;
RowFn multiply_subtract_row_adx;

#if defined(__x86_64__)
inline constexpr std::size_t kKernelVariants = 2;
#else
inline constexpr std::size_t kKernelVariants = 1;
#endif

extern constinit cpu::Dispatch<MultiplyFn, kKernelVariants> multiply_variants;
extern constinit cpu::Dispatch<SquareFn, kKernelVariants> square_variants;
extern constinit cpu::Dispatch<ReduceFn, kKernelVariants> reduce_variants;
extern constinit cpu::Dispatch<RowFn, kKernelVariants> multiply_subtract_variants;

}  // namespace morvane::bignum
