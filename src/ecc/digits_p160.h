// Elements of the field of p = 2^160 - 2^31 - 1 as digits with room for more in their limbs, so that sums and differences
// carry nothing: three of 54 bits in limbs of 64, six of 27 in limbs of 32. The highest digit has two bits less.
#pragma once

#include "ecc/modulo_p160.h"

namespace morvane::ecc::p160 {

inline constexpr unsigned kDigitBits = kLimbBits == 64 ? 54 : 27;
inline constexpr std::size_t kDigits = 162 / kDigitBits;
inline constexpr Limb kDigitMask = (Limb{1} << kDigitBits) - 1;
inline constexpr unsigned kTopDigitBits = kDigitBits - 2;
inline constexpr Limb kTopDigitMask = kDigitMask >> 2;

// "Magnitude m" is a highest digit below m 2^kTopDigitBits and others below m (2^kDigitBits + 2^(kDigitBits - 6)).
struct Element {
    Limb v[kDigits];
};

// Of a number below 2^160.
constexpr Element digits_of(const Limbs& a) noexcept {
    Element r{};
    for (std::size_t i = 0; i < kDigits; ++i) {
        const std::size_t limb = i * kDigitBits / kLimbBits;
        const unsigned shift = i * kDigitBits % kLimbBits;
        Limb digit = a.v[limb] >> shift;
        if (shift != 0 && limb + 1 < kLimbs) digit |= a.v[limb + 1] << (kLimbBits - shift);
        r.v[i] = digit & kDigitMask;
    }
    return r;
}

constexpr Element element_of(const Limbs& a) noexcept { return digits_of(reduced(a)); }

// The value below p.
constexpr Limbs canonical(const Element& a) noexcept {
    Limbs sum{};
    for (std::size_t i = 0; i < kDigits; ++i) {
        const std::size_t limb = i * kDigitBits / kLimbBits;
        const unsigned shift = i * kDigitBits % kLimbBits;
        Limbs digit{};
        digit.v[limb] = a.v[i] << shift;
        if (shift != 0) digit.v[limb + 1] = a.v[i] >> (kLimbBits - shift);
        sum = ecc::add(sum, digit);
    }
    return reduced(sum);
}

constexpr Element choose(Mask mask, const Element& yes, const Element& no) noexcept {
    Element r{};
    for (std::size_t i = 0; i < kDigits; ++i) r.v[i] = no.v[i] ^ (wide(mask) & (yes.v[i] ^ no.v[i]));
    return r;
}

constexpr Element add(const Element& a, const Element& b) noexcept {
    Element r{};
    for (std::size_t i = 0; i < kDigits; ++i) r.v[i] = a.v[i] + b.v[i];
    return r;
}

// a - b by way of 2^Bits p, for a b of a magnitude below 2^Bits, which is added to the magnitude of a.
template <unsigned Bits>
constexpr Element subtract(const Element& a, const Element& b) noexcept {
    constexpr Element kP = digits_of(kPrime.limbs());
    Element r{};
    for (std::size_t i = 0; i < kDigits; ++i) r.v[i] = a.v[i] + (kP.v[i] << Bits) - b.v[i];
    return r;
}

// a / 2: half of a or of a + p, of half the magnitude and one more at most.
constexpr Element half(const Element& a) noexcept {
    constexpr Element kP = digits_of(kPrime.limbs());
    const Limb odd = 0 - (a.v[0] & 1);
    Element r{};
    for (std::size_t i = 0; i < kDigits; ++i) r.v[i] = a.v[i] + (kP.v[i] & odd);
    for (std::size_t i = 0; i < kDigits; ++i) {
        const Limb above = i + 1 < kDigits ? (r.v[i + 1] & 1) << (kDigitBits - 1) : 0;
        r.v[i] = (r.v[i] >> 1) + above;
    }
    return r;
}

}  // namespace morvane::ecc::p160
