#include "prime/sieve.h"

#include "base/wipe.h"
#include "prime/residues.h"

#include <algorithm>
#include <utility>

namespace morvane::prime {
namespace {

// Candidates at a time: of the windows of a plain search, one in a hundred has none.
constexpr std::uint32_t kWindow = 512;

// What of the table has more than one candidate of a window to rule out.
constexpr std::size_t kShortPrimes = [] {
    std::size_t count = 0;
    while (kTable[count] < kWindow) ++count;
    return count;
}();

// floor(2^32 / p)
constexpr std::array<std::uint32_t, kPrimes> kReciprocals = [] {
    std::array<std::uint32_t, kPrimes> reciprocals{};
    for (std::size_t i = 0; i < kPrimes; ++i) reciprocals[i] = UINT32_MAX / kTable[i];
    return reciprocals;
}();

std::uint32_t multiply_mod(std::uint32_t a, std::uint32_t b, std::size_t prime) noexcept {
    const std::uint32_t p = kTable[prime];
    const auto quotient = static_cast<std::uint32_t>(std::uint64_t{a * b} * kReciprocals[prime] >> 32);
    const std::uint32_t rest = a * b - quotient * p;  // the quotient is exact or one too small
    return rest < p ? rest : rest - p;
}

std::uint32_t add_mod(std::uint32_t a, std::uint32_t b, std::uint32_t p) noexcept {
    const std::uint32_t sum = a + b;
    return sum < p ? sum : sum - p;
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

Sieve::Sieve() noexcept : safe_(false) {
    for (std::size_t i = 0; i < kPrimes; ++i) inverses_[i] = static_cast<std::uint16_t>((kTable[i] + 1) / 2);
}

Sieve::Sieve(std::span<const bignum::Word> step, bool safe) noexcept : safe_(safe) {
    set_residues(inverses_, step);
    for (std::size_t i = 0; i < kPrimes; ++i) inverses_[i] = invert(inverses_[i], kTable[i]);
}

// The positions that a prime rules out come from one residue: a multiple of p is reached after -x / step steps, the residue
// 1 comes 1 / step steps later, the residue 3 two times that later still.
std::uint32_t Sieve::steps_to_candidate(std::span<const bignum::Word> x) const noexcept {
    SecretArray<std::uint16_t, kPrimes> residues;
    set_residues(residues.items, x);
    SecretArray<std::uint16_t, kPrimes> multiples;  // the next multiple, in steps from the window's first candidate
    for (std::size_t i = 0; i < kPrimes; ++i) {
        multiples.items[i] =
            static_cast<std::uint16_t>(multiply_mod(kTable[i] - std::uint32_t{residues.items[i]}, inverses_[i], i));
    }
    for (std::uint32_t first = 0;; first += kWindow) {
        SecretArray<bool, kWindow + 1> ruled_out;  // the last one stands for whatever lies beyond
        bool* const window = ruled_out.items.data();
        for (std::size_t i = 0; i < kPrimes; ++i) {
            const std::uint32_t p = kTable[i];
            const std::uint32_t inverse = inverses_[i];
            if (inverse == 0) continue;
            const auto rule_out = [=](std::uint32_t at) {
                window[std::min(at, kWindow)] = true;
                if (i < kShortPrimes) {
                    for (at += p; at < kWindow; at += p) window[at] = true;
                }
            };
            const std::uint32_t multiple = multiples.items[i];
            const std::uint32_t one = add_mod(multiple, inverse, p);
            rule_out(multiple);
            rule_out(one);
            if (safe_) rule_out(add_mod(add_mod(one, inverse, p), inverse, p));
            multiples.items[i] = static_cast<std::uint16_t>(add_mod(multiple, p - kWindow % p, p));
        }
        const bool* const found = std::find(window, window + kWindow, false);
        if (found != window + kWindow) return first + static_cast<std::uint32_t>(found - window);
    }
}

}  // namespace morvane::prime
