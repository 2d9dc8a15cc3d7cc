#include "ecc/binary.h"

#include "ecc/binary_field.h"

namespace morvane::ecc {
namespace {

template <typename Curve>
bool is_on(const BinaryPoint& p) noexcept {
    using Field = typename Curve::Field;
    const Polynomial xx = square<Field>(p.x);
    const Polynomial left = add(square<Field>(p.y), multiply<Field>(p.x, p.y));
    const Polynomial right =
        add(multiply<Field>(xx, add(p.x, polynomial_of(Curve::kA.words))), polynomial_of(Curve::kB.words));
    return is_zero(Field::canonical(add(left, right)));
}

// The sum of x^(2^i) for i from 0 to 162.
template <typename Field>
bool trace(const Polynomial& x) noexcept {
    Polynomial power = x;
    Polynomial sum = x;
    for (int i = 1; i < 163; ++i) {
        power = square<Field>(power);
        sum = add(sum, power);
    }
    return !is_zero(Field::canonical(sum));
}

}  // namespace

constinit cpu::Dispatch<BinaryMultiplyFn, 2> binary_multiply{
    {{{cpu::kClmul | cpu::kSse2, binary_multiply_clmul}, {cpu::kNone, binary_multiply_portable}}}};

bool is_on_binary_curve(std::int32_t curve, const BinaryPoint& p) noexcept {
    return curve == kSect163k1 ? is_on<Sect163k1>(p) : is_on<C2pnb163v1>(p);
}

// The group has 2 n elements, n odd, and is cyclic: the subgroup of order n are the doubles of its points. (x, y) is a
// double where the traces of x and a are equal, and here a has trace 1.
bool is_in_binary_subgroup(std::int32_t curve, const BinaryPoint& p) noexcept {
    return curve == kSect163k1 ? trace<Sect163k1::Field>(p.x) : trace<C2pnb163v1::Field>(p.x);
}

}  // namespace morvane::ecc
