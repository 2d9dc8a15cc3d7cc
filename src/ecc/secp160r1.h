// Multiples of points of secp160r1. Scalars have six words; but where "vt" is said, the time does not depend on them.
#pragma once

#include "ecc/comb.h"
#include "ecc/secp160r1_points.h"

namespace morvane::ecc::p160 {

inline constexpr Constant kOrder(1, 0, 0, 0x0001f4c8, 0xf927aed3, 0xca752257);

constexpr Affine base() noexcept { return {element_of(kBaseX.limbs()), element_of(kBaseY.limbs())}; }

// The table over the base point, or null while another thread makes it.
const Comb<Affine>* base_comb() noexcept;

Jacobian multiply_base(const Word* k) noexcept;
Jacobian multiply_point(const Word* k, const Affine& p) noexcept;  // p is not the point at infinity

Jacobian multiply_point_vt(const Word* k, const Affine& p) noexcept;  // the same in variable time

// Whether the equation of the curve holds.
bool is_on_curve(const Affine& p) noexcept;

}  // namespace morvane::ecc::p160
