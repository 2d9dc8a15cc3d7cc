// Points of the curves over GF(2^163) in the coordinates of Lopez and Dahab, (x / z, y / z^2), with z = 0 for the point at
// infinity. Included by one file for each way to multiply, which first defines
//     MORVANE_INLINE                  how these functions are declared, with their target attribute
//     Element                         with load(polynomial), store(element), add(a, b), choose(mask, yes, no)
//     multiply<Field>, square<Field>  for a Field of binary.h
// A function can be inlined only into functions of its own target, so a template cannot do this.
#include "ecc/binary.h"

namespace morvane::ecc {
namespace {  // NOLINT(cert-dcl59-cpp): every file that includes this makes functions of its own

struct Projective {
    Element x, y, z;
};

struct AffineElements {
    Element x, y;
};

MORVANE_INLINE Element element_of(const Constant& constant) noexcept { return load(polynomial_of(constant.words)); }
MORVANE_INLINE Element one() noexcept { return load(Polynomial{{1}}); }

template <typename Curve>
MORVANE_INLINE bool is_zero(const Element& a) noexcept {
    return is_zero(Curve::Field::canonical(store(a)));
}

template <typename Curve>
MORVANE_INLINE Mask mask_if_zero(const Element& a) noexcept {
    const Polynomial x = Curve::Field::canonical(store(a));
    const std::uint64_t any = x.v[0] | x.v[1] | x.v[2];
    return morvane::mask_if_zero(static_cast<Word>(any | any >> 32));
}

template <typename Curve>
MORVANE_INLINE Element times_a(const Element& x) noexcept {
    if constexpr (Curve::kHasOnes) {
        return x;
    } else {
        return multiply<typename Curve::Field>(x, element_of(Curve::kA));
    }
}

template <typename Curve>
MORVANE_INLINE Element square_times(Element a, unsigned times) noexcept {
    while (times-- != 0) a = square<typename Curve::Field>(a);
    return a;
}

// a^(2^163 - 2), 0 for 0. Each step makes a^(2^k - 1) for a larger k.
template <typename Curve>
MORVANE_INLINE Element invert(const Element& a) noexcept {
    using Field = typename Curve::Field;
    const Element k2 = multiply<Field>(square_times<Curve>(a, 1), a);
    const Element k4 = multiply<Field>(square_times<Curve>(k2, 2), k2);
    const Element k5 = multiply<Field>(square_times<Curve>(k4, 1), a);
    const Element k10 = multiply<Field>(square_times<Curve>(k5, 5), k5);
    const Element k20 = multiply<Field>(square_times<Curve>(k10, 10), k10);
    const Element k40 = multiply<Field>(square_times<Curve>(k20, 20), k20);
    const Element k80 = multiply<Field>(square_times<Curve>(k40, 40), k40);
    const Element k81 = multiply<Field>(square_times<Curve>(k80, 1), a);
    const Element k162 = multiply<Field>(square_times<Curve>(k81, 81), k81);
    return square<Field>(k162);
}

// 2 p; its z is 0 where p is the point at infinity or has order 2.
template <typename Curve>
MORVANE_INLINE Projective twice(const Projective& p) noexcept {
    using Field = typename Curve::Field;
    const Element xx = square<Field>(p.x);
    const Element zz = square<Field>(p.z);
    const Element bzzzz = multiply<Field>(element_of(Curve::kB), square<Field>(zz));
    Projective r{};
    r.z = multiply<Field>(xx, zz);
    r.x = add(square<Field>(xx), bzzzz);
    const Element factor = add(add(times_a<Curve>(r.z), square<Field>(p.y)), bzzzz);
    r.y = add(multiply<Field>(bzzzz, r.z), multiply<Field>(r.x, factor));
    return r;
}

// p + q for a p that is neither the point at infinity nor q or -q. If `rise` is given, it becomes 0 for p = q; z of the
// result is 0 for both.
template <typename Curve>
MORVANE_INLINE Projective plus(const Projective& p, const AffineElements& q, Element* rise = nullptr) noexcept {
    using Field = typename Curve::Field;
    const Element a = add(p.y, multiply<Field>(q.y, square<Field>(p.z)));
    const Element b = add(p.x, multiply<Field>(q.x, p.z));
    const Element c = multiply<Field>(b, p.z);
    Projective r{};
    r.z = square<Field>(c);
    const Element d = multiply<Field>(q.x, r.z);
    r.x = add(square<Field>(a), multiply<Field>(c, add(add(a, square<Field>(b)), times_a<Curve>(c))));
    r.y = add(multiply<Field>(add(d, r.x), add(multiply<Field>(a, c), r.z)),
              multiply<Field>(add(q.x, q.y), square<Field>(r.z)));
    if (rise != nullptr) *rise = a;
    return r;
}

template <typename Curve>
MORVANE_INLINE AffineElements affine(const Projective& p) noexcept {
    using Field = typename Curve::Field;
    const Element inverse = invert<Curve>(p.z);
    return {multiply<Field>(p.x, inverse), multiply<Field>(p.y, square<Field>(inverse))};
}

}  // namespace
}  // namespace morvane::ecc
