#include "ecc/any_binary.h"

#include "bignum/record.h"

#include <algorithm>

namespace morvane::ecc {
namespace {

constexpr unsigned kDegree = 163;

constexpr bool has(const Polynomial& a, unsigned bit) noexcept { return (a.v[bit / 64] >> bit % 64 & 1) != 0; }

constexpr Polynomial shifted(const Polynomial& a, unsigned bits) noexcept {  // 1 to 63
    return {{a.v[0] << bits, a.v[1] << bits | a.v[0] >> (64 - bits), a.v[2] << bits | a.v[1] >> (64 - bits)}};
}

// A member, if its length fits its storage.
bool read(Polynomial& r, const ENUM& member) noexcept {
    if (!is_member(member)) return false;
    const std::size_t count = bignum::significant_words(member);
    Word words[kWords]{};
    std::copy_n(member.words, count, words);
    r = polynomial_of(words);
    return true;
}

}  // namespace

AnyBinaryCurve::AnyBinaryCurve(std::int32_t curve, const E_EC_PARAMS* params) noexcept {
    const auto set = [this](const Constant& f, const Constant& a, const Constant& b) {
        f_ = polynomial_of(f.words);
        a_ = polynomial_of(a.words);
        b_ = polynomial_of(b.words);
        usable_ = true;
    };
    if (curve == kSect163k1) {
        set(Sect163k1::kField, Sect163k1::kA, Sect163k1::kB);
    } else if (curve == kC2pnb163v1) {
        set(C2pnb163v1::kField, C2pnb163v1::kA, C2pnb163v1::kB);
    } else if (is_known(curve) && curve != kSecp160r1 && params != nullptr) {
        const auto below = [](const Polynomial& a) { return a.v[2] >> (kDegree - 128) == 0; };
        usable_ = read(f_, params->field) && read(a_, params->a) && read(b_, params->b) &&
                  f_.v[2] >> (kDegree - 128) == 1 && has(f_, 0) && below(a_) && below(b_) && !is_zero(b_);
    }
}

Polynomial AnyBinaryCurve::reduced(const Polynomial& a) const noexcept {
    Polynomial r = a;
    for (unsigned bit = 192; bit-- > kDegree;) {
        if (has(r, bit)) r = add(r, bit == kDegree ? f_ : shifted(f_, bit - kDegree));
    }
    return r;
}

Polynomial AnyBinaryCurve::multiply(const Polynomial& a, const Polynomial& b) const noexcept {
    Polynomial r{};
    for (unsigned bit = kDegree; bit-- != 0;) {
        r = shifted(r, 1);
        if (has(r, kDegree)) r = add(r, f_);
        if (has(b, bit)) r = add(r, a);
    }
    return r;
}

// a^(2^163 - 2).
Polynomial AnyBinaryCurve::invert(const Polynomial& a) const noexcept {
    Polynomial power = a;
    for (unsigned i = 2; i < kDegree; ++i) power = multiply(square(power), a);
    return square(power);
}

BinaryProjective AnyBinaryCurve::twice(const BinaryProjective& p) const noexcept {
    const Polynomial xx = square(p.x);
    const Polynomial zz = square(p.z);
    const Polynomial bzzzz = multiply(b_, square(zz));
    BinaryProjective r{};
    r.z = multiply(xx, zz);
    r.x = add(square(xx), bzzzz);
    const Polynomial factor = add(add(multiply(a_, r.z), square(p.y)), bzzzz);
    r.y = add(multiply(bzzzz, r.z), multiply(r.x, factor));
    return r;
}

BinaryProjective AnyBinaryCurve::plus(const BinaryProjective& p, const BinaryProjective& q) const noexcept {
    if (is_zero(p.z)) return q;
    if (is_zero(q.z)) return p;
    const BinaryPoint other = affine(q);
    const Polynomial a = add(p.y, multiply(other.y, square(p.z)));
    const Polynomial b = add(p.x, multiply(other.x, p.z));
    if (is_zero(b)) return is_zero(a) ? twice(p) : projective({});
    const Polynomial c = multiply(b, p.z);
    BinaryProjective r{};
    r.z = square(c);
    const Polynomial d = multiply(other.x, r.z);
    r.x = add(square(a), multiply(c, add(add(a, square(b)), multiply(a_, c))));
    r.y = add(multiply(add(d, r.x), add(multiply(a, c), r.z)), multiply(add(other.x, other.y), square(r.z)));
    return r;
}

BinaryProjective AnyBinaryCurve::multiple(const Word* k, const BinaryProjective& p) const noexcept {
    const BinaryProjective addend = projective(affine(p));
    BinaryProjective r = projective({});
    for (std::size_t bit = 32 * kWords; bit-- != 0;) {
        r = twice(r);
        if (bits_at(k, bit, 1) != 0) r = plus(r, addend);
    }
    return r;
}

BinaryPoint AnyBinaryCurve::affine(const BinaryProjective& p) const noexcept {
    if (is_zero(add(p.z, {{1}}))) return {p.x, p.y};
    const Polynomial inverse = invert(p.z);
    return {multiply(p.x, inverse), multiply(p.y, square(inverse))};
}

}  // namespace morvane::ecc
