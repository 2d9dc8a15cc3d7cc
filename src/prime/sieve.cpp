#include "prime/sieve.h"

#include "prime/residues.h"
#include "prime/sieve_variants.h"

#include <algorithm>
#include <utility>

namespace morvane::prime {
namespace {

// floor(2^32 / p)
constexpr std::array<std::uint32_t, kPrimes> kReciprocals = [] {
    std::array<std::uint32_t, kPrimes> reciprocals{};
    for (std::size_t i = 0; i < kPrimes; ++i) reciprocals[i] = UINT32_MAX / kTable[i];
    return reciprocals;
}();

std::uint32_t multiply_mod(std::uint32_t a, std::uint32_t b, std::size_t prime) noexcept {
    const std::uint32_t p = kTable[prime];
    const std::uint64_t product = std::uint64_t{a} * b;                                     // below 2^29
    const auto quotient = static_cast<std::uint32_t>(product * kReciprocals[prime] >> 32);  // exact or one too small
    const std::uint32_t rest = static_cast<std::uint32_t>(product) - quotient * p;
    return rest < p ? rest : rest - p;
}

// 1 / a modulo p; 0 for 0.
std::uint16_t invert(std::int32_t a, std::int32_t p) noexcept {
    if (a == 0) return 0;
    std::int32_t u = p, v = a, x = 0, y = 1;
    while (v != 1) {
        const std::int32_t quotient = u / v;
        u = std::exchange(v, u - quotient * v);
        x = std::exchange(y, x - quotient * y);
    }
    return static_cast<std::uint16_t>(y < 0 ? y + p : y);
}

}  // namespace

Sieve::Sieve() noexcept : ruled_out_(RuledOut::kUpToOne) {
    for (std::size_t i = 0; i < kPrimes; ++i) inverses_[i] = static_cast<std::uint16_t>((kTable[i] + 1) / 2);
}

Sieve::Sieve(std::span<const bignum::Word> step, RuledOut ruled_out) noexcept : ruled_out_(ruled_out) {
    set_residues(inverses_, step);
    for (std::size_t i = 0; i < kPrimes; ++i) inverses_[i] = invert(inverses_[i], kTable[i]);
}

std::uint32_t Sieve::steps_to_candidate(std::span<const bignum::Word> x) const noexcept {
    return SieveWalk(*this, x).next();
}

SieveWalk::SieveWalk(const Sieve& sieve, std::span<const bignum::Word> x) noexcept : sieve_(sieve) {
    sieve_multiples.get()(multiples_.items, sieve.inverses_, x);
    fill();
}

void SieveWalk::fill() noexcept {
    sieve_rule_out.get()(window_.items.data(), multiples_.items, sieve_.inverses_, sieve_.ruled_out_);
    at_ = 0;
}

void SieveWalk::move_on() noexcept {
    for (std::size_t i = 0; i < kPrimes; ++i) {
        const std::uint32_t p = kTable[i];
        multiples_.items[i] = static_cast<std::uint16_t>(add_mod(multiples_.items[i], p - kSieveWindow % p, p));
    }
    first_ += kSieveWindow;
    fill();
}

std::uint32_t SieveWalk::next() noexcept {
    const bool* const window = window_.items.data();
    for (;; move_on()) {
        at_ = static_cast<std::uint32_t>(std::find(window + at_, window + kSieveWindow, false) - window);
        if (at_ != kSieveWindow) return first_ + at_++;
    }
}

void multiples_plain(PerPrime& multiples, const PerPrime& inverses, std::span<const bignum::Word> x) noexcept {
    SecretArray<std::uint16_t, kPrimes> residues;
    set_residues(residues.items, x);
    for (std::size_t i = 0; i < kPrimes; ++i) {
        const std::uint32_t steps = multiply_mod(kTable[i] - std::uint32_t{residues.items[i]}, inverses[i], i);
        multiples[i] = static_cast<std::uint16_t>(steps);
    }
}

// The positions that a prime rules out come from one residue: a multiple of p is reached after -x / step steps, the residue
// 1 comes 1 / step steps later, the residue 3 two times that later still.
void rule_out_plain(bool* window, const PerPrime& multiples, const PerPrime& inverses, RuledOut ruled_out) noexcept {
    std::fill_n(window, kSieveWindow, false);
    const auto rule_out = [&](std::size_t prime, auto rule_out_from) {
        const std::uint32_t p = kTable[prime];
        const std::uint32_t inverse = inverses[prime];
        if (inverse == 0) return;
        const std::uint32_t multiple = multiples[prime];
        rule_out_from(multiple, p);
        if (ruled_out == RuledOut::kZero) return;
        const std::uint32_t one = add_mod(multiple, inverse, p);
        rule_out_from(one, p);
        if (ruled_out == RuledOut::kUpToOneAndHalf) rule_out_from(add_mod(add_mod(one, inverse, p), inverse, p), p);
    };
    for (std::size_t i = 0; i < kShortPrimes; ++i) {
        rule_out(i, [=](std::uint32_t at, std::uint32_t p) {
            for (; at < kSieveWindow; at += p) window[at] = true;
        });
    }
    for (std::size_t i = kShortPrimes; i < kPrimes; ++i) {
        rule_out(i, [=](std::uint32_t at, std::uint32_t) { window[std::min(at, kSieveWindow)] = true; });
    }
}

constinit cpu::Dispatch<MultiplesFn, 2> sieve_multiples{
    {{{cpu::kAvx512 | cpu::kIfma, multiples_ifma}, {cpu::kNone, multiples_plain}}}};
constinit cpu::Dispatch<RuleOutFn, 2> sieve_rule_out{{{{cpu::kAvx512, rule_out_avx512}, {cpu::kNone, rule_out_plain}}}};

}  // namespace morvane::prime
