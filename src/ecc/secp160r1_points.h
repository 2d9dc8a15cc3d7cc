// Points of secp160r1 in Jacobian coordinates (x / z^2, y / z^3), with z = 0 for the point at infinity. Magnitudes of x are
// up to 7, of y up to 4, of z 1, and come out like that; those of the steps between stand beside them.
#pragma once

#include "ecc/field_p160.h"

namespace morvane::ecc::p160 {

struct Affine {
    Element x, y;
};

struct Jacobian {
    Element x, y, z;
};

inline constexpr Constant kB(0, 0x1c97befc, 0x54bd7a8b, 0x65acf89f, 0x81d4d4ad, 0xc565fa45);
inline constexpr Constant kBaseX(0, 0x4a96b568, 0x8ef57328, 0x46646989, 0x68c38bb9, 0x13cbfc82);
inline constexpr Constant kBaseY(0, 0x23a62855, 0x3168947d, 0x59dcc912, 0x04235137, 0x7ac5fb32);

constexpr Jacobian jacobian(const Affine& p) noexcept { return {p.x, p.y, kOne}; }

constexpr Jacobian choose(Mask mask, const Jacobian& yes, const Jacobian& no) noexcept {
    return {choose(mask, yes.x, no.x), choose(mask, yes.y, no.y), choose(mask, yes.z, no.z)};
}

// -y where the mask says; y has a magnitude up to 3, the result up to 4.
constexpr Element negate_if(Mask mask, const Element& y) noexcept { return choose(mask, subtract<2>(Element{}, y), y); }

// 2 p, with a = -3: 3 (x - z^2) (x + z^2) takes the place of 3 x^2 + a z^4. Coordinates are those of the usual formula with
// z halved, which keeps them small.
constexpr Jacobian twice(const Jacobian& p) noexcept {
    const Element zz = square(p.z);
    const Element yy = square(p.y);
    const Element xyy = multiply(p.x, yy);
    const Element third = multiply(subtract<1>(p.x, zz), add(p.x, zz));  // 9 by 8
    const Element slope = half(add(add(third, third), third));           // 2
    Jacobian r{};
    r.x = subtract<2>(square(slope), add(xyy, xyy));                        // 5
    r.y = subtract<1>(multiply(slope, subtract<3>(xyy, r.x)), square(yy));  // 2 by 9; 3
    r.z = multiply(p.y, p.z);
    return r;
}

// What an addition is made of: p = (u1, s1), q = (u2, s2) over the common denominator z. Magnitudes of u1 up to 7, of s1 up
// to 4, of the others 1.
constexpr Jacobian sum_of(const Element& u1, const Element& s1, const Element& u2, const Element& s2,
                          const Element& z) noexcept {
    const Element h = subtract<3>(u2, u1);     // 9
    const Element rise = subtract<3>(s2, s1);  // 9
    const Element hh = square(h);
    const Element hhh = multiply(h, hh);
    const Element v = multiply(u1, hh);
    Jacobian r{};
    r.x = subtract<2>(subtract<1>(square(rise), hhh), add(v, v));               // 7
    r.y = subtract<1>(multiply(rise, subtract<3>(v, r.x)), multiply(s1, hhh));  // 9 by 9; 3
    r.z = multiply(z, h);
    return r;
}

// p + q, where neither is the point at infinity and they differ; z of the sum is 0 also for p = q.
constexpr Jacobian plus(const Jacobian& p, const Affine& q) noexcept {
    const Element zz = square(p.z);
    return sum_of(p.x, p.y, multiply(q.x, zz), multiply(multiply(q.y, zz), p.z), p.z);
}

constexpr Jacobian plus(const Jacobian& p, const Jacobian& q) noexcept {
    const Element zz1 = square(p.z);
    const Element zz2 = square(q.z);
    return sum_of(multiply(p.x, zz2), multiply(multiply(p.y, zz2), q.z), multiply(q.x, zz1),
                  multiply(multiply(q.y, zz1), p.z), multiply(p.z, q.z));
}

// p + q, where neither is the point at infinity nor the sum; the time does not tell whether they are equal.
template <typename Point>
Jacobian plus_or_twice(const Jacobian& p, const Point& q) noexcept {
    const Jacobian sum = plus(p, q);
    return choose(mask_if_multiple(sum.z), twice(p), sum);
}

// p + q for any p and q, in variable time.
inline Jacobian plus_vt(const Jacobian& p, const Jacobian& q) noexcept {
    if (mask_if_multiple(p.z) != 0) return q;
    if (mask_if_multiple(q.z) != 0) return p;
    const Jacobian sum = plus(p, q);
    if (mask_if_multiple(sum.z) == 0) return sum;
    const Element y1 = multiply(p.y, multiply(square(q.z), q.z));
    const Element y2 = multiply(q.y, multiply(square(p.z), p.z));
    return mask_if_multiple(subtract<1>(y1, y2)) != 0 ? twice(p) : Jacobian{kOne, kOne, {}};
}

// (0, 0) for the point at infinity.
constexpr Affine affine(const Jacobian& p) noexcept {
    const Element inverse = invert(p.z);
    const Element squared = square(inverse);
    return {multiply(p.x, squared), multiply(multiply(p.y, squared), inverse)};
}

// Affine coordinates as words, any on the way in, below p on the way out.
inline Affine load(const TORVA_V1_POINT& p) noexcept { return {element_of(limbs_of(p.x)), element_of(limbs_of(p.y))}; }

inline void store(TORVA_V1_POINT& r, const Affine& p) noexcept {
    words_of(r.x, canonical(p.x));
    words_of(r.y, canonical(p.y));
}

inline bool is_infinite(const Affine& p) noexcept { return (mask_if_multiple(p.x) & mask_if_multiple(p.y)) != 0; }

}  // namespace morvane::ecc::p160
