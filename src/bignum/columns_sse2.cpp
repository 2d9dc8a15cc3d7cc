// Products in columns with SSE2, for 32-bit builds.
#include <emmintrin.h>
#include <cstddef>
#include <cstdint>

#define MORVANE_TARGET [[gnu::target("sse2")]]
#define MORVANE_INLINE [[gnu::target("sse2"), gnu::always_inline]] inline

namespace morvane::bignum {
namespace {

using Vector = __m128i;
constexpr std::size_t kLanes = 2;

MORVANE_INLINE Vector load(const std::uint64_t* from) noexcept {
    return _mm_load_si128(reinterpret_cast<const Vector*>(from));
}
MORVANE_INLINE Vector load_any(const std::uint64_t* from) noexcept {
    return _mm_loadu_si128(reinterpret_cast<const Vector*>(from));
}
MORVANE_INLINE void store(std::uint64_t* to, Vector x) noexcept { _mm_store_si128(reinterpret_cast<Vector*>(to), x); }
MORVANE_INLINE Vector fill(std::uint64_t digit) noexcept { return _mm_set1_epi64x(static_cast<long long>(digit)); }
MORVANE_INLINE Vector add(Vector a, Vector b) noexcept { return _mm_add_epi64(a, b); }
MORVANE_INLINE Vector both(Vector a, Vector b) noexcept { return _mm_and_si128(a, b); }
MORVANE_INLINE Vector product(Vector a, Vector b) noexcept { return _mm_mul_epu32(a, b); }
template <unsigned Bits>
MORVANE_INLINE Vector shift(Vector x) noexcept {
    return _mm_srli_epi64(x, Bits);
}
MORVANE_INLINE Vector up(Vector x, Vector below) noexcept {
    return _mm_castpd_si128(_mm_shuffle_pd(_mm_castsi128_pd(below), _mm_castsi128_pd(x), 1));
}

}  // namespace
}  // namespace morvane::bignum

#include "bignum/columns.h"
#include "bignum/columns_kernels.h"
#include "bignum/columns_ring.h"

namespace morvane::bignum {

void multiply_sse2(LimbInWords* r, const LimbInWords* a, std::size_t a_size, const LimbInWords* b,
                   std::size_t b_size) noexcept {
    multiply_columns(r, a, a_size, b, b_size);
}
void square_sse2(LimbInWords* r, const LimbInWords* a, std::size_t n) noexcept { square_columns(r, a, n); }

bool power_sse2(const Power& power) noexcept { return power_columns(power); }
bool power_product_sse2(const Power& a, const Power& b) noexcept { return power_product_columns(a, b); }

}  // namespace morvane::bignum
