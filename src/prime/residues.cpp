// Several primes at a time: x modulo a product of primes that fits a limb, then that residue modulo each of them.
#include "prime/residues.h"

#include "bignum/odd_modulus.h"
#include "bignum/rows.h"

namespace morvane::prime {
namespace {

using namespace bignum;

// d, a product of consecutive primes, at most B / 2, where B is one more than the greatest limb.
struct Group {
    Limb d;
    Limb inverse;     // 1 / d modulo B
    Limb b1, b2;      // B and B^2 modulo d
    std::size_t end;  // of the primes in d
};

// The last prime, plus one, of the group that begins with prime `begin`.
constexpr std::size_t end_of_group(std::size_t begin, Limb& product) {
    constexpr Limb kGreatest = ~Limb{0} / 2;
    product = 1;
    std::size_t i = begin;
    while (i < kPrimes && product <= kGreatest / kTable[i]) product *= kTable[i++];
    return i;
}

constexpr std::size_t kGroups = [] {
    std::size_t count = 0;
    Limb product = 0;
    for (std::size_t i = 0; i < kPrimes; ++count) i = end_of_group(i, product);
    return count;
}();

constexpr std::array<Group, kGroups> kGroupTable = [] {
    std::array<Group, kGroups> groups{};
    std::size_t begin = 0;
    for (Group& group : groups) {
        group.end = end_of_group(begin, group.d);
        group.inverse = static_cast<Limb>(inverse_of_odd(group.d));
        group.b1 = low((DoubleLimb{1} << kLimbBits) % group.d);
        group.b2 = low(wide(group.b1) * group.b1 % group.d);
        begin = group.end;
    }
    return groups;
}();

// floor(B / p)
constexpr std::array<Limb, kPrimes> kReciprocals = [] {
    std::array<Limb, kPrimes> reciprocals{};
    for (std::size_t i = 0; i < kPrimes; ++i) reciprocals[i] = ~Limb{0} / kTable[i];
    return reciprocals;
}();

// A limb that is x modulo d, and below 2 d. With r = (r1, r0) the value of the limbs so far, the next limb makes it
// r1 B^2 + r0 B + limb, two products with the powers modulo d: below B (2 d - 1), which two limbs hold. A limb 0 at the
// end, and then Montgomery's division by B, leave one limb.
Limb residue_of_group(const Group& group, std::span<const Word> x) noexcept {
    Limb r1 = 0;
    Limb r0 = 0;
    const auto append = [&](Limb limb) {
        const DoubleLimb r = wide(r1) * group.b2 + wide(r0) * group.b1 + limb;
        r1 = high(r);
        r0 = low(r);
    };
    std::size_t i = x.size();
    if (i % kWordsPerLimb != 0) append(x[--i]);
    for (; i != 0; i -= kWordsPerLimb) append(*reinterpret_cast<const LimbInWords*>(&x[i - kWordsPerLimb]));
    append(0);
    const Limb whole = high(wide(r0 * group.inverse) * group.d);
    return r1 < whole ? r1 - whole + group.d : r1 - whole;
}

}  // namespace

void set_residues(std::array<std::uint16_t, kPrimes>& residues, std::span<const Word> x) noexcept {
    std::size_t i = 0;
    for (const Group& group : kGroupTable) {
        const Limb residue = residue_of_group(group, x);
        for (; i < group.end; ++i) {
            const Limb quotient = high(wide(residue) * kReciprocals[i]);  // exact or one too small
            const Limb rest = residue - quotient * kTable[i];
            residues[i] = static_cast<std::uint16_t>(rest < kTable[i] ? rest : rest - kTable[i]);
        }
    }
}

}  // namespace morvane::prime
