// The parameter record of the built-in curves.
#include "bignum/record.h"
#include "ecc/binary.h"
#include "ecc/secp160r1.h"

#include <algorithm>

namespace {

using namespace morvane;
using namespace morvane::ecc;

constexpr std::int32_t kTagOctets = 20;

constexpr Constant kP160A(0, 0xffffffff, 0xffffffff, 0xffffffff, 0xffffffff, 0x7ffffffc);

void set(ENUM& member, std::uint32_t* words, const Constant& value) noexcept {
    member.sign = 0;
    member.words = words;
    std::copy_n(value.words, kWords, words);
    bignum::set_normalised_length(member, kWords);
}

void fill(E_EC_PARAMS& p, const Constant& field, const Constant& a, const Constant& b, const Constant& x, const Constant& y,
          const Constant& n, std::int32_t curve) noexcept {
    set(p.field, p.field_words, field);
    set(p.a, p.a_words, a);
    set(p.b, p.b_words, b);
    set(p.x, p.x_words, x);
    set(p.y, p.y_words, y);
    set(p.n, p.n_words, n);
    p.overhead = static_cast<std::int32_t>(2 * coordinate_octets(curve) + 1) + kTagOctets;
}

template <typename Curve>
void fill(E_EC_PARAMS& p) noexcept {
    fill(p, Curve::kField, Curve::kA, Curve::kB, Curve::kBaseX, Curve::kBaseY, Curve::kOrder, Curve::kId);
}

}  // namespace

std::int32_t E_ECParams_Init(std::int32_t curve, E_EC_PARAMS* params) {
    switch (curve) {
        case kSect163k1:
            fill<Sect163k1>(*params);
            return 0;
        case kC2pnb163v1:
            fill<C2pnb163v1>(*params);
            return 0;
        case kSecp160r1:
            fill(*params, p160::kPrime, kP160A, p160::kB, p160::kBaseX, p160::kBaseY, p160::kOrder, curve);
            return 0;
        default:
            return -1;
    }
}
