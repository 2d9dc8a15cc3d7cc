// Curves over GF(2^163) with any reduction polynomial and coefficients, for public values: the calls on projective points,
// and the curves whose parameters somebody else supplies. Coordinates are those of binary_points.h.
#pragma once

#include "ecc/binary_field.h"

namespace morvane::ecc {

struct BinaryProjective {
    Polynomial x, y, z;
};

// Whether a record's member has a length that fits its storage, and words if it has a length.
inline bool is_member(const ENUM& member) noexcept {
    return member.length >= 0 && member.length <= static_cast<std::int32_t>(kWords) &&
           (member.length == 0 || member.words != nullptr);
}

class AnyBinaryCurve {
public:
    // Of a built-in curve the library's own parameters, of another one those of the record, which may be null.
    AnyBinaryCurve(std::int32_t curve, const E_EC_PARAMS* params) noexcept;

    // Whether there is such a curve.
    explicit operator bool() const noexcept { return usable_; }

    // Any polynomial of six words to a degree below 163, as all that follow take.
    Polynomial reduced(const Polynomial& a) const noexcept;
    BinaryProjective twice(const BinaryProjective& p) const noexcept;
    BinaryProjective plus(const BinaryProjective& p, const BinaryProjective& q) const noexcept;
    BinaryProjective multiple(const Word* k, const BinaryProjective& p) const noexcept;
    BinaryPoint affine(const BinaryProjective& p) const noexcept;

private:
    Polynomial multiply(const Polynomial& a, const Polynomial& b) const noexcept;
    Polynomial square(const Polynomial& a) const noexcept { return multiply(a, a); }
    Polynomial invert(const Polynomial& a) const noexcept;

    bool usable_ = false;
    Polynomial f_{};
    Polynomial a_{}, b_{};
};

inline BinaryProjective projective(const BinaryPoint& p) noexcept {
    const bool finite = !is_zero(p.x) || !is_zero(p.y);
    return finite ? BinaryProjective{p.x, p.y, {{1}}} : BinaryProjective{{{1}}, {}, {}};
}

}  // namespace morvane::ecc
