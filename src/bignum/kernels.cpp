#include "bignum/kernels.h"

#include "bignum/kernel_variants.h"
#include "bignum/rows.h"

namespace morvane::bignum {

#if defined(__x86_64__)
#define MORVANE_ADX(run) {cpu::kBmi2 | cpu::kAdx, run},
#else
#define MORVANE_ADX(run)
#endif

constinit cpu::Dispatch<MultiplyFn, kKernelVariants> multiply_variants{
    {{MORVANE_ADX(multiply_adx){cpu::kNone, multiply_plain}}}};
constinit cpu::Dispatch<SquareFn, kKernelVariants> square_variants{{{MORVANE_ADX(square_adx){cpu::kNone, square_plain}}}};
constinit cpu::Dispatch<ReduceFn, kKernelVariants> reduce_variants{
    {{MORVANE_ADX(montgomery_reduce_adx){cpu::kNone, montgomery_reduce_plain}}}};
constinit cpu::Dispatch<RowFn, kKernelVariants> multiply_subtract_variants{
    {{MORVANE_ADX(multiply_subtract_row_adx){cpu::kNone, multiply_subtract_row}}}};

void multiply(LimbInWords* r, const LimbInWords* a, std::size_t a_size, const LimbInWords* b, std::size_t b_size) noexcept {
    multiply_variants.get()(r, a, a_size, b, b_size);
}

void square(LimbInWords* r, const LimbInWords* a, std::size_t n) noexcept { square_variants.get()(r, a, n); }

void montgomery_reduce(Limb* r, Limb* t, const Limb* m, std::size_t n, Limb minus_inverse) noexcept {
    reduce_variants.get()(r, t, m, n, minus_inverse);
}

}  // namespace morvane::bignum
