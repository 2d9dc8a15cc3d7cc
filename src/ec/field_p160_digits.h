// The field of p = 2^160 - 2^31 - 1 where limbs have 64 bits: elements are three digits of 54, 54 and 52 bits, with room
// for more in their limbs, so that sums and differences carry nothing. "Magnitude m" are digits below m (2^54 + 2^42),
// twice, and m 2^52.
#pragma once

#include "ec/modulo_p160.h"

namespace morvane::ec::p160 {

struct Element {
    std::uint64_t v[3];
};

inline constexpr unsigned kDigitBits = 54;
inline constexpr unsigned kTopDigitBits = 160 - 2 * kDigitBits;
inline constexpr std::uint64_t kDigitMask = (std::uint64_t{1} << kDigitBits) - 1;
inline constexpr std::uint64_t kTopDigitMask = (std::uint64_t{1} << kTopDigitBits) - 1;

// Of digits below p.
constexpr Element digits_of(const Limbs& a) noexcept {
    return {{a.v[0] & kDigitMask, (a.v[0] >> kDigitBits | a.v[1] << (64 - kDigitBits)) & kDigitMask,
             a.v[1] >> (2 * kDigitBits - 64) | a.v[2] << (128 - 2 * kDigitBits)}};
}

constexpr Element element_of(const Limbs& a) noexcept { return digits_of(reduced(a)); }

// The value below p, of a magnitude up to 128.
constexpr Limbs canonical(const Element& a) noexcept {
    DoubleLimb sum = a.v[0] + (DoubleLimb{a.v[1]} << kDigitBits);
    Limbs r{};
    r.v[0] = static_cast<Limb>(sum);
    sum = (sum >> 64) + (DoubleLimb{a.v[2]} << (2 * kDigitBits - 64));
    r.v[1] = static_cast<Limb>(sum);
    r.v[2] = static_cast<Limb>(sum >> 64);
    return reduced(r);
}

constexpr Element choose(Mask mask, const Element& yes, const Element& no) noexcept {
    Element r{};
    for (std::size_t i = 0; i < 3; ++i) r.v[i] = no.v[i] ^ (wide(mask) & (yes.v[i] ^ no.v[i]));
    return r;
}

constexpr Element add(const Element& a, const Element& b) noexcept {
    return {{a.v[0] + b.v[0], a.v[1] + b.v[1], a.v[2] + b.v[2]}};
}

// a - b by way of 2^Bits p, for a b of a magnitude below 2^Bits, which is added to the magnitude of a.
template <unsigned Bits>
constexpr Element subtract(const Element& a, const Element& b) noexcept {
    constexpr Element kP = digits_of(kPrime.limbs());
    Element r{};
    for (std::size_t i = 0; i < 3; ++i) r.v[i] = a.v[i] + (kP.v[i] << Bits) - b.v[i];
    return r;
}

// The five columns of a product. With magnitudes whose product is up to 128 they are below 2^115, 2^116, 2^116, 2^114 and
// 2^111.
constexpr Element reduce(DoubleLimb c0, DoubleLimb c1, DoubleLimb c2, DoubleLimb c3, DoubleLimb c4) noexcept {
    // 2^162 = 2^33 + 4: the columns from there on, which are cut in digits so that they can be multiplied.
    constexpr std::uint64_t kAboveDigits = kFold << (3 * kDigitBits - 160);
    const auto low = [](DoubleLimb x) { return static_cast<std::uint64_t>(x) & kDigitMask; };
    const auto high = [](DoubleLimb x) { return static_cast<std::uint64_t>(x >> kDigitBits); };
    c0 += DoubleLimb{low(c3)} * kAboveDigits;
    c1 += DoubleLimb{high(c3) + low(c4)} * kAboveDigits + high(c0);
    c2 += DoubleLimb{high(c4)} * kAboveDigits + high(c1);
    const std::uint64_t above = static_cast<std::uint64_t>(c2 >> kTopDigitBits);  // 2^160, below 2^64
    c0 = low(c0) + DoubleLimb{above} * kFold;
    return {{low(c0), low(c1) + high(c0), static_cast<std::uint64_t>(c2) & kTopDigitMask}};
}

constexpr Element multiply(const Element& a, const Element& b) noexcept {
    const auto product = [&](std::size_t i, std::size_t j) { return DoubleLimb{a.v[i]} * b.v[j]; };
    return reduce(product(0, 0), product(0, 1) + product(1, 0), product(0, 2) + product(1, 1) + product(2, 0),
                  product(1, 2) + product(2, 1), product(2, 2));
}

constexpr Element square(const Element& a) noexcept {
    const std::uint64_t twice0 = 2 * a.v[0];
    const std::uint64_t twice1 = 2 * a.v[1];
    return reduce(DoubleLimb{a.v[0]} * a.v[0], DoubleLimb{twice0} * a.v[1],
                  DoubleLimb{twice0} * a.v[2] + DoubleLimb{a.v[1]} * a.v[1], DoubleLimb{twice1} * a.v[2],
                  DoubleLimb{a.v[2]} * a.v[2]);
}

// a / 2: half of a or of a + p, of half the magnitude and one more half; below one half of what carries down is added.
constexpr Element half(const Element& a) noexcept {
    constexpr Element kP = digits_of(kPrime.limbs());
    const std::uint64_t odd = 0 - (a.v[0] & 1);
    const std::uint64_t v0 = a.v[0] + (kP.v[0] & odd);
    const std::uint64_t v1 = a.v[1] + (kP.v[1] & odd);
    const std::uint64_t v2 = a.v[2] + (kP.v[2] & odd);
    return {{(v0 >> 1) + ((v1 & 1) << (kDigitBits - 1)), (v1 >> 1) + ((v2 & 1) << (kDigitBits - 1)), v2 >> 1}};
}

}  // namespace morvane::ec::p160
