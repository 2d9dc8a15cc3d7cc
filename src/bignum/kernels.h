// The kernels under the big numbers: products, squares, division, common divisors.
//
// Operands are limbs, least significant first, and may lie in the words of a record. Where a processor has better
// instructions, its own routine runs; all of them give the same.
#pragma once

#include "bignum/limb.h"

namespace morvane::bignum {

// r = a b, all a_size + b_size limbs of it. Sizes of at least 1; r overlaps neither.
void multiply(LimbInWords* r, const LimbInWords* a, std::size_t a_size, const LimbInWords* b, std::size_t b_size) noexcept;

// r = a^2, all 2 n limbs. n of at least 1; r does not overlap a.
void square(LimbInWords* r, const LimbInWords* a, std::size_t n) noexcept;

// Divides u by d: u, of u_size limbs, becomes the remainder, q (may be null) takes the u_size - d_size limbs of the
// quotient. d has d_size limbs, at least 1, and the top bit of its top limb set; the top d_size limbs of u are below d,
// u_size is at least d_size.
void divide(Limb* q, Limb* u, std::size_t u_size, const Limb* d, std::size_t d_size) noexcept;

// r = t / 2^(kLimbBits n) mod m, below m, for the 2 n limbs of t, which are used up. m is odd, t below 2^(kLimbBits n) m;
// minus_inverse is -1 / m modulo 2^kLimbBits. r may be the lower half of t, but no part of the upper one. The time does not
// depend on t.
void montgomery_reduce(Limb* r, Limb* t, const Limb* m, std::size_t n, Limb minus_inverse) noexcept;

// r = a b / 2^(kLimbBits n) modulo m, of n limbs but perhaps not below m. a and b have n limbs, and one of them is below m,
// or both come from here. r may be either; t has room for 2 n limbs. Otherwise as above. Quicker where a is b.
void montgomery_multiply(Limb* r, Limb* t, const Limb* a, const Limb* b, const Limb* m, std::size_t n,
                         Limb minus_inverse) noexcept;

// The greatest common divisor of u and v, both of `size` limbs, at least one of them not 0. Left in u, whose other limbs
// are 0; v is used up. Variable time.
void gcd_vt(Limb* u, Limb* v, std::size_t size) noexcept;

enum class Inversion : std::uint8_t { kDone, kNone, kNoMemory };

// x = 1 / a modulo m, from 0 to m - 1; undefined if there is none, or no memory for the work. a is below m; m is above 0
// and its top limb may be 0; all have `size` limbs. Variable time.
Inversion invert_vt(Limb* x, const Limb* a, const Limb* m, std::size_t size) noexcept;

}  // namespace morvane::bignum
