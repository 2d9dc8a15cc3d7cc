// Products in columns with AVX2, for 32-bit builds.
#include <immintrin.h>
#include <cstddef>
#include <cstdint>

#define MORVANE_TARGET [[gnu::target("avx2")]]
#define MORVANE_INLINE [[gnu::target("avx2"), gnu::always_inline]] inline

namespace morvane::bignum {
namespace {

using Vector = __m256i;
constexpr std::size_t kLanes = 4;

MORVANE_INLINE Vector load(const std::uint64_t* from) noexcept {
    return _mm256_load_si256(reinterpret_cast<const Vector*>(from));
}
MORVANE_INLINE Vector load_any(const std::uint64_t* from) noexcept {
    return _mm256_loadu_si256(reinterpret_cast<const Vector*>(from));
}
MORVANE_INLINE void store(std::uint64_t* to, Vector x) noexcept { _mm256_store_si256(reinterpret_cast<Vector*>(to), x); }
MORVANE_INLINE Vector fill(std::uint64_t digit) noexcept { return _mm256_set1_epi64x(static_cast<long long>(digit)); }
MORVANE_INLINE Vector add(Vector a, Vector b) noexcept { return _mm256_add_epi64(a, b); }
MORVANE_INLINE Vector both(Vector a, Vector b) noexcept { return _mm256_and_si256(a, b); }
MORVANE_INLINE Vector product(Vector a, Vector b) noexcept { return _mm256_mul_epu32(a, b); }
template <unsigned Bits>
MORVANE_INLINE Vector shift(Vector x) noexcept {
    return _mm256_srli_epi64(x, Bits);
}
MORVANE_INLINE Vector up(Vector x, Vector below) noexcept {
    constexpr int kUp = 0x93;  // the top lane comes first
    return _mm256_blend_epi32(_mm256_permute4x64_epi64(x, kUp), _mm256_permute4x64_epi64(below, kUp), 0b11);
}

}  // namespace
}  // namespace morvane::bignum

#include "bignum/columns.h"
#include "bignum/columns_kernels.h"
#include "bignum/columns_ring.h"

namespace morvane::bignum {

void multiply_avx2(LimbInWords* r, const LimbInWords* a, std::size_t a_size, const LimbInWords* b,
                   std::size_t b_size) noexcept {
    multiply_columns(r, a, a_size, b, b_size);
}
void square_avx2(LimbInWords* r, const LimbInWords* a, std::size_t n) noexcept { square_columns(r, a, n); }

bool power_avx2(const Power& power) noexcept { return power_columns(power); }
bool power_product_avx2(const Power& a, const Power& b) noexcept { return power_product_columns(a, b); }

}  // namespace morvane::bignum
