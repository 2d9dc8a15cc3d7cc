#include "ecc/secp160r1.h"

#include "ecc/recode.h"

#include <cstdlib>

namespace morvane::ecc::p160 {
namespace {

constexpr unsigned kWindowBits = 5;
constexpr std::size_t kWindows = 33;  // 165 bits
constexpr std::size_t kOdds = std::size_t{1} << (kWindowBits - 1);

// The multiple by k, from the multiple by the odd scalar.
Jacobian multiple(Jacobian r, const OddScalar& k) noexcept {
    r.y = negate_if(k.negated, r.y);
    return choose(k.zero, Jacobian{kOne, kOne, {}}, r);
}

// The entry of a table, which is read whole.
template <typename Point, std::size_t Size>
Point entry(const std::array<Point, Size>& table, const OddDigit& digit) noexcept {
    Point r{};
    auto* const out = reinterpret_cast<Limb*>(&r);
    for (std::size_t i = 0; i < Size; ++i) {
        const Limb mask = wide(mask_if_equal(static_cast<Word>(i), digit.index));
        const auto* const in = reinterpret_cast<const Limb*>(&table[i]);
        for (std::size_t limb = 0; limb < sizeof(Point) / sizeof(Limb); ++limb) out[limb] |= in[limb] & mask;
    }
    r.y = negate_if(digit.negative, r.y);
    return r;
}

}  // namespace

// The sum of the digits before number i is below 16^i, so no addition meets equal or opposite points, unless the last one
// does, where numbers modulo n come around.
Jacobian multiply_base(const Word* k) noexcept {
    const Comb<Affine>* const comb = base_comb();
    if (comb == nullptr) return multiply_point(k, base());
    const OddScalar scalar(kSecp160r1, k);
    const auto addend = [&](std::size_t i) {
        return entry((*comb)[i], odd_digit<kCombBits>(scalar.get(), i, kCombDigits - 1));
    };
    Jacobian sum = jacobian(addend(0));
    for (std::size_t i = 1; i + 1 < kCombDigits; ++i) sum = plus(sum, addend(i));
    return multiple(plus_or_twice(sum, addend(kCombDigits - 1)), scalar);
}

// The same holds here: what is added to is a multiple of p between 32 and n - 32, until the last addition.
Jacobian multiply_point(const Word* k, const Affine& p) noexcept {
    const OddScalar scalar(kSecp160r1, k);
    std::array<Jacobian, kOdds> odds;
    odds[0] = jacobian(p);
    const Jacobian two = twice(odds[0]);
    for (std::size_t i = 1; i < kOdds; ++i) odds[i] = plus(odds[i - 1], two);
    Jacobian sum = odds[0];  // the highest digit is 1: n is below 2^161
    for (std::size_t i = kWindows - 1; i-- != 0;) {
        for (unsigned bit = 0; bit < kWindowBits; ++bit) sum = twice(sum);
        const Jacobian addend = entry(odds, odd_digit<kWindowBits>(scalar.get(), i, kWindows - 1));
        sum = i != 0 ? plus(sum, addend) : plus_or_twice(sum, addend);
    }
    return multiple(sum, scalar);
}

// Digits that are odd or 0, with at least four zeros between others (the non-adjacent form of width 5): most steps are
// doublings alone.
Jacobian multiply_point_vt(const Word* k, const Affine& p) noexcept {
    constexpr std::size_t kBits = 162;  // one more than n has
    Word scalar[kWords];
    scalar_reduce(scalar, kSecp160r1, k, kWords);
    std::array<std::int32_t, kBits> digits{};
    Word carry = 0;
    for (std::size_t i = 0; i < kBits;) {
        if (bits_at(scalar, i, 1) == carry) {
            ++i;
            continue;
        }
        const Word window = bits_at(scalar, i, kWindowBits) + carry;
        carry = window >> (kWindowBits - 1);
        digits[i] = static_cast<std::int32_t>(window) - static_cast<std::int32_t>(carry << kWindowBits);
        i += kWindowBits;
    }

    std::array<Jacobian, kOdds / 2> odds;
    odds[0] = jacobian(p);
    const Jacobian two = twice(odds[0]);
    for (std::size_t i = 1; i < odds.size(); ++i) odds[i] = plus(odds[i - 1], two);
    Jacobian sum{kOne, kOne, {}};
    for (std::size_t i = kBits; i-- != 0;) {
        sum = twice(sum);
        if (digits[i] == 0) continue;
        Jacobian addend = odds[static_cast<std::size_t>(std::abs(digits[i])) / 2];
        if (digits[i] < 0) addend.y = negate_if(~Mask{0}, addend.y);
        const Jacobian next = plus(sum, addend);
        sum = mask_if_multiple(next.z) == 0 ? next : plus_vt(sum, addend);
    }
    return sum;
}

bool is_on_curve(const Affine& p) noexcept {
    const Element three = add(add(p.x, p.x), p.x);
    const Element right = subtract<2>(add(multiply(square(p.x), p.x), element_of(kB.limbs())), three);  // 6
    return mask_if_multiple(subtract<3>(square(p.y), right)) != 0;
}

}  // namespace morvane::ecc::p160
