// The same as with SSE2, in the encoding of AVX2: next to products in longer vectors the old one is much slower.
#include <immintrin.h>

#define MORVANE_TARGET [[gnu::target("avx2")]]
#define MORVANE_INLINE [[gnu::target("avx2"), gnu::always_inline]] inline

#include "bignum/rows_pairs.h"

namespace morvane::bignum {

Limb multiply_subtract_row_avx2(LimbInWords* r, const LimbInWords* a, std::size_t n, Limb w) noexcept {
    return subtract_row(r, a, n, w);
}
void montgomery_reduce_avx2(Limb* r, Limb* t, const Limb* m, std::size_t n, Limb minus_inverse) noexcept {
    reduce_by_rows(r, t, m, n, minus_inverse);
}
lehmer::Carries lehmer_apply_avx2(const lehmer::Run& run, Limb* u, Limb* v, std::size_t n, std::size_t dropped) noexcept {
    return apply_run(run, u, v, n, dropped);
}

}  // namespace morvane::bignum
