// What is the same for all built-in curves.
#include "ecc/curve.h"

#include "base/known.h"
#include "base/wipe.h"
#include "ecc/binary.h"
#include "ecc/secp160r1.h"

namespace morvane::ecc {
namespace {

bool put(TORVA_V1_POINT& r, const p160::Jacobian& p) noexcept {
    const p160::Affine point = p160::affine(p);
    p160::store(r, point);
    return known(!p160::is_infinite(point));  // never, for a sound point and scalar
}

// k p by one of two ways, also for the point at infinity.
template <typename Multiply>
p160::Jacobian multiply_p160(const Word* k, const TORVA_V1_POINT& p, Multiply way) noexcept {
    const p160::Affine point = p160::load(p);
    return p160::is_infinite(point) ? p160::Jacobian{p160::kOne, p160::kOne, {}} : way(k, point);
}

// Calls of their own, so that all that they use lies below the caller's stack.
[[gnu::noinline]] bool put_base_multiple(TORVA_V1_POINT& r, const Word* k) noexcept {
    return put(r, p160::multiply_base(k));
}
[[gnu::noinline]] bool put_multiple(TORVA_V1_POINT& r, const Word* k, const TORVA_V1_POINT& p) noexcept {
    return put(r, multiply_p160(k, p, p160::multiply_point));
}

constexpr std::size_t kUsedStack = 8192;

}  // namespace

// Points and limbs on the way are as secret as the scalar; the stack that they were on is cleared.
bool multiply_base(TORVA_V1_POINT& r, std::int32_t curve, const Word* k) noexcept {
    if (!is_built_in(curve)) return false;
    const bool finite =
        curve == kSecp160r1 ? put_base_multiple(r, k) : binary_multiply.get()(r, curve, k, nullptr, nullptr);
    wipe_stack_below<kUsedStack>();
    return finite;
}

bool multiply(TORVA_V1_POINT& r, std::int32_t curve, const Word* k, const TORVA_V1_POINT& p) noexcept {
    if (!is_built_in(curve)) return false;
    const bool finite = curve == kSecp160r1 ? put_multiple(r, k, p) : binary_multiply.get()(r, curve, nullptr, k, &p);
    wipe_stack_below<kUsedStack>();
    return finite;
}

bool multiply_two_vt(TORVA_V1_POINT& r, std::int32_t curve, const Word* u, const Word* v,
                     const TORVA_V1_POINT& p) noexcept {
    if (!is_built_in(curve)) return false;
    if (curve != kSecp160r1) return binary_multiply.get()(r, curve, u, v, &p);
    return put(r, p160::plus_vt(p160::multiply_base(u), multiply_p160(v, p, p160::multiply_point_vt)));
}

}  // namespace morvane::ecc
