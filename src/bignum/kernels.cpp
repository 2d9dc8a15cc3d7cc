#include "bignum/kernels.h"

#include "bignum/kernel_variants.h"
#include "bignum/rows.h"

namespace morvane::bignum {
namespace {

constexpr cpu::Features kIfma = cpu::kAvx512 | cpu::kIfma;
#if defined(__x86_64__)
constexpr cpu::Features kAdx = cpu::kBmi2 | cpu::kAdx;
constexpr cpu::Features kIfmaAndAdx = kIfma | kAdx;
#endif

}  // namespace

#if defined(__x86_64__)
constinit cpu::Dispatch<MultiplyFn, kProductVariants> multiply_variants{
    {{{kIfmaAndAdx, multiply_ifma}, {kAdx, multiply_adx}, {cpu::kNone, multiply_plain}}}};
constinit cpu::Dispatch<SquareFn, kProductVariants> square_variants{
    {{{kIfmaAndAdx, square_ifma}, {kAdx, square_adx}, {cpu::kNone, square_plain}}}};
constinit cpu::Dispatch<ReduceFn, kRowVariants> reduce_variants{
    {{{kAdx, montgomery_reduce_adx}, {cpu::kNone, montgomery_reduce_plain}}}};
constinit cpu::Dispatch<MontgomeryFn, kMontgomeryVariants> montgomery_variants{
    {{{kAdx, montgomery_multiply_adx}, {cpu::kNone, montgomery_multiply_apart}}}};
constinit cpu::Dispatch<RowFn, kRowVariants> multiply_subtract_variants{
    {{{kAdx, multiply_subtract_row_adx}, {cpu::kNone, multiply_subtract_row}}}};
constinit cpu::Dispatch<ApplyFn, kApplyVariants> apply_variants{{{{cpu::kNone, lehmer::apply_plain}}}};
#else
constinit cpu::Dispatch<MultiplyFn, kProductVariants> multiply_variants{
    {{{kIfma, multiply_ifma}, {cpu::kAvx2, multiply_avx2}, {cpu::kSse2, multiply_sse2}, {cpu::kNone, multiply_plain}}}};
constinit cpu::Dispatch<SquareFn, kProductVariants> square_variants{
    {{{kIfma, square_ifma}, {cpu::kAvx2, square_avx2}, {cpu::kSse2, square_sse2}, {cpu::kNone, square_plain}}}};
constinit cpu::Dispatch<ReduceFn, kRowVariants> reduce_variants{
    {{{cpu::kAvx2, montgomery_reduce_avx2}, {cpu::kSse2, montgomery_reduce_sse2}, {cpu::kNone, montgomery_reduce_plain}}}};
constinit cpu::Dispatch<MontgomeryFn, kMontgomeryVariants> montgomery_variants{{{{cpu::kNone, montgomery_multiply_apart}}}};
constinit cpu::Dispatch<RowFn, kRowVariants> multiply_subtract_variants{{{{cpu::kAvx2, multiply_subtract_row_avx2},
                                                                          {cpu::kSse2, multiply_subtract_row_sse2},
                                                                          {cpu::kNone, multiply_subtract_row}}}};
constinit cpu::Dispatch<ApplyFn, kApplyVariants> apply_variants{
    {{{cpu::kAvx2, lehmer_apply_avx2}, {cpu::kSse2, lehmer_apply_sse2}, {cpu::kNone, lehmer::apply_plain}}}};
#endif

void multiply(LimbInWords* r, const LimbInWords* a, std::size_t a_size, const LimbInWords* b, std::size_t b_size) noexcept {
    multiply_variants.get()(r, a, a_size, b, b_size);
}

void square(LimbInWords* r, const LimbInWords* a, std::size_t n) noexcept { square_variants.get()(r, a, n); }

void montgomery_reduce(Limb* r, Limb* t, const Limb* m, std::size_t n, Limb minus_inverse) noexcept {
    reduce_variants.get()(r, t, m, n, minus_inverse);
}

void montgomery_multiply(Limb* r, Limb* t, const Limb* a, const Limb* b, const Limb* m, std::size_t n,
                         Limb minus_inverse) noexcept {
    montgomery_variants.get()(r, t, a, b, m, n, minus_inverse);
}

void montgomery_multiply_apart(Limb* r, Limb* t, const Limb* a, const Limb* b, const Limb* m, std::size_t n,
                               Limb minus_inverse) noexcept {
    if (a == b) {
        square(t, a, n);
    } else {
        multiply(t, a, n, b, n);
    }
    montgomery_reduce(r, t, m, n, minus_inverse);
}

}  // namespace morvane::bignum
