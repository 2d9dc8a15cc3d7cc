// The field of p = 2^160 - 2^31 - 1. Elements are not kept below p but have magnitudes: a product has magnitude 1 and takes
// two whose product is up to 128; sums and differences only add magnitudes up. So nothing is compared, and no carry is
// left at the top. The time does not depend on values.
#pragma once

#include "bignum/limb.h"

#if UINTPTR_MAX > 0xffffffffU
#include "ecc/multiply_p160_54.h"
#else
#include "ecc/multiply_p160_27.h"
#endif

namespace morvane::ecc::p160 {

inline constexpr Element kOne{{1}};

constexpr Element square_times(Element a, unsigned times) noexcept {
    while (times-- != 0) a = square(a);
    return a;
}

inline Mask mask_if_multiple(const Element& a) noexcept { return mask_if_zero(canonical(a)); }  // of p

// a^(p - 2): 0 for 0. The exponent is 128 ones, a zero, 29 ones, a zero and a one. A name tells the ones of the power.
constexpr Element invert(const Element& a) noexcept {
    const Element two = multiply(square(a), a);
    const Element four = multiply(square_times(two, 2), two);
    const Element five = multiply(square(four), a);
    const Element eight = multiply(square_times(four, 4), four);
    const Element thirteen = multiply(square_times(eight, 5), five);
    const Element sixteen = multiply(square_times(eight, 8), eight);
    const Element twenty_nine = multiply(square_times(sixteen, 13), thirteen);
    const Element thirty_two = multiply(square_times(sixteen, 16), sixteen);
    const Element sixty_four = multiply(square_times(thirty_two, 32), thirty_two);
    const Element all = multiply(square_times(sixty_four, 64), sixty_four);
    return multiply(square_times(multiply(square_times(all, 30), twenty_nine), 2), a);
}

}  // namespace morvane::ecc::p160
