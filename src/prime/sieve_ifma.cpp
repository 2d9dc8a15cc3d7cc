// The sieve's steps with AVX-512 IFMA: eight groups of three primes at a time for the residues of a number, and the window
// as 512 bits of a vector.
#include "bignum/ifma_lanes.h"
#include "bignum/odd_modulus.h"
#include "prime/sieve_variants.h"

#include <algorithm>

namespace morvane::prime {
namespace {

using bignum::kIfmaDigit;
using bignum::Zmm;
using Vector = Zmm::Vector;

constexpr std::size_t kLanes = Zmm::kLanes;
constexpr std::size_t kSlots = 3;  // primes to a group, this far apart in the table:
constexpr std::size_t kGroups = 704;
constexpr std::size_t kAtOnce = 4 * kLanes;  // groups
static_assert(kGroups * kSlots >= kPrimes && kGroups % kAtOnce == 0);

// Numbers are read in digits of so many bits: then a digit and what the digits above leave, which is below 2^47, are below
// 2^52 together.
constexpr unsigned kDigitBits = 48;

struct alignas(64) Tables {
    std::uint64_t d[kGroups];          // the product of a group's primes, below 2^41
    std::uint64_t d_inverse[kGroups];  // modulo 2^52
    std::uint64_t power[kGroups];      // 2^(52 + 48) modulo d
    std::uint64_t p_inverse[kSlots][kGroups];
};

constexpr std::uint64_t prime_at(std::size_t i) noexcept { return i < kPrimes ? kTable[i] : 1; }

constexpr Tables kTables = [] {
    Tables tables{};
    for (std::size_t i = 0; i < kGroups; ++i) {
        tables.d[i] = 1;
        for (std::size_t slot = 0; slot < kSlots; ++slot) {
            const std::uint64_t p = prime_at(slot * kGroups + i);
            tables.d[i] *= p;
            tables.p_inverse[slot][i] = bignum::inverse_of_odd(p) & kIfmaDigit;
        }
        tables.d_inverse[i] = bignum::inverse_of_odd(tables.d[i]) & kIfmaDigit;
        std::uint64_t power = 1;
        for (unsigned bit = 0; bit < bignum::kIfmaBits + kDigitBits; ++bit) power = 2 * power % tables.d[i];
        tables.power[i] = power;
    }
    return tables;
}();

static_assert(std::ranges::all_of(kTables.d, [](std::uint64_t d) { return d >> 41 == 0; }));

// a b / 2^52 modulo m, plus m: above 0 and below a b / 2^52 + 2 m.
[[MORVANE_TARGET_IFMA, gnu::always_inline]] inline Vector reduce_product(Vector a, Vector b, Vector m,
                                                                         Vector m_inverse) noexcept {
    const Vector q = Zmm::low(Zmm::zero(), Zmm::low(Zmm::zero(), a, b), m_inverse);
    const Vector less = Zmm::high(Zmm::zero(), q, m);
    return _mm512_sub_epi64(Zmm::add(Zmm::high(Zmm::zero(), a, b), m), less);
}

[[MORVANE_TARGET_IFMA, gnu::always_inline]] inline Vector widen(const std::uint16_t* from, unsigned lanes) noexcept {
    return _mm512_maskz_cvtepu16_epi64(Zmm::kAll, _mm_maskz_loadu_epi16(static_cast<__mmask8>(lanes), from));
}

// The bits from `bit` on.
std::uint64_t digit_at(std::span<const bignum::Word> x, std::size_t bit) noexcept {
    const std::size_t i = bit / 32;
    const std::uint64_t above = i + 1 < x.size() ? x[i + 1] : 0;
    return ((above << 32 | x[i]) >> bit % 32) & ((std::uint64_t{1} << kDigitBits) - 1);
}

constexpr std::size_t kWords = kSieveWindow / 64;
static_assert(kWords == kLanes);

// How many candidates each word of the window begins after a multiple of a short prime that is at its start.
constexpr auto kWordStarts = [] {
    std::array<std::array<std::uint16_t, kWords>, kShortPrimes> starts{};
    for (std::size_t i = 0; i < kShortPrimes; ++i) {
        const std::uint32_t p = kTable[i];
        for (std::uint32_t word = 0; word < kWords; ++word)
            starts[i][word] = static_cast<std::uint16_t>((p - 64 * word % p) % p);
    }
    return starts;
}();

// Bits 0, p, 2 p and so on.
constexpr auto kPatterns = [] {
    std::array<std::uint64_t, kShortPrimes> patterns{};
    for (std::size_t i = 0; i < kShortPrimes; ++i) {
        for (std::uint32_t bit = 0; bit < 64; bit += kTable[i]) patterns[i] |= std::uint64_t{1} << bit;
    }
    return patterns;
}();

constexpr std::size_t kShorts = 32;  // to a vector

[[MORVANE_TARGET_IFMA, gnu::always_inline]] inline Vector add_mod(Vector a, Vector b, Vector p) noexcept {
    const Vector sum = _mm512_add_epi16(a, b);
    return _mm512_min_epu16(sum, _mm512_sub_epi16(sum, p));
}

// Marks the positions that lie in the window.
[[MORVANE_TARGET_IFMA, gnu::always_inline]] inline void mark(bool* window, Vector at, __mmask32 lanes) noexcept {
    alignas(64) std::uint16_t positions[kShorts];
    _mm512_store_si512(positions, at);
    std::uint32_t hits = _mm512_mask_cmplt_epu16_mask(lanes, at, _mm512_set1_epi16(kSieveWindow));
    for (; hits != 0; hits &= hits - 1) window[positions[std::countr_zero(hits)]] = true;
}

}  // namespace

[[MORVANE_TARGET_IFMA]] void multiples_ifma(PerPrime& multiples, const PerPrime& inverses,
                                            std::span<const bignum::Word> x) noexcept {
    const std::size_t digits = (32 * x.size() + kDigitBits - 1) / kDigitBits;
    for (std::size_t at = 0; at < kGroups; at += kAtOnce) {
        Vector r[kAtOnce / kLanes];
        for (Vector& each : r) each = Zmm::fill(digits == 0 ? 0 : digit_at(x, (digits - 1) * kDigitBits));
        // The digit below the lowest one is 0: r becomes 2^48 x modulo d.
        for (std::size_t digit = digits; digit-- > 0;) {
            const Vector next = Zmm::fill(digit == 0 ? 0 : digit_at(x, (digit - 1) * kDigitBits));
#pragma GCC unroll 4
            for (std::size_t v = 0; v < kAtOnce / kLanes; ++v) {
                const std::size_t i = at + v * kLanes;
                r[v] = Zmm::add(reduce_product(r[v], Zmm::load(&kTables.power[i]), Zmm::load(&kTables.d[i]),
                                               Zmm::load(&kTables.d_inverse[i])),
                                next);
            }
        }
        for (std::size_t v = 0; v < kAtOnce / kLanes; ++v) {
            for (std::size_t slot = 0; slot < kSlots; ++slot) {
                const std::size_t i = at + v * kLanes;
                const std::size_t first = slot * kGroups + i;
                if (first >= kPrimes) break;
                const unsigned lanes = kPrimes - first >= kLanes ? Zmm::kAll : (1U << (kPrimes - first)) - 1;
                const Vector p = widen(&kTable[first], lanes);
                // -2^4 / step, so that the product is 2^52 times the result.
                const Vector factor =
                    _mm512_maskz_slli_epi64(Zmm::kAll, _mm512_sub_epi64(p, widen(&inverses[first], lanes)), 4);
                const Vector rest = reduce_product(r[v], factor, p, Zmm::load(&kTables.p_inverse[slot][i]));
                const Vector steps = _mm512_maskz_min_epu64(Zmm::kAll, rest, _mm512_sub_epi64(rest, p));
                _mm_mask_storeu_epi16(&multiples[first], static_cast<__mmask8>(lanes),
                                      _mm512_maskz_cvtepi64_epi16(Zmm::kAll, steps));
            }
        }
    }
}

[[MORVANE_TARGET_IFMA]] void rule_out_avx512(bool* window, const PerPrime& multiples, const PerPrime& inverses,
                                             RuledOut ruled_out) noexcept {
    std::fill_n(window, kSieveWindow, false);
    for (std::size_t i = kShortPrimes; i < kPrimes; i += kShorts) {
        const std::size_t count = std::min(kShorts, kPrimes - i);
        const auto all = static_cast<__mmask32>((std::uint64_t{1} << count) - 1);
        const Vector p = _mm512_maskz_loadu_epi16(all, &kTable[i]);
        const Vector inverse = _mm512_maskz_loadu_epi16(all, &inverses[i]);
        const __mmask32 lanes = _mm512_test_epi16_mask(inverse, inverse);
        Vector at = _mm512_maskz_loadu_epi16(all, &multiples[i]);
        mark(window, at, lanes);
        if (ruled_out == RuledOut::kZero) continue;
        at = add_mod(at, inverse, p);
        mark(window, at, lanes);
        if (ruled_out == RuledOut::kUpToOne) continue;
        mark(window, add_mod(add_mod(at, inverse, p), inverse, p), lanes);
    }

    Vector bits = Zmm::zero();
    for (std::size_t i = 0; i < kShortPrimes; ++i) {
        const std::uint32_t p = kTable[i];
        const std::uint32_t inverse = inverses[i];
        if (inverse == 0) continue;
        const Vector p_lanes = Zmm::fill(p);
        const Vector pattern = Zmm::fill(kPatterns[i]);
        const Vector starts = widen(kWordStarts[i].data(), Zmm::kAll);
        std::uint32_t first = multiples[i];
        for (int residue = 0; residue <= static_cast<int>(ruled_out); ++residue) {
            const Vector sum = Zmm::add(starts, Zmm::fill(first));
            const Vector shift = _mm512_maskz_min_epu64(Zmm::kAll, sum, _mm512_sub_epi64(sum, p_lanes));
            bits = _mm512_or_si512(bits, _mm512_maskz_sllv_epi64(Zmm::kAll, pattern, shift));
            first = prime::add_mod(first, inverse, p);
            if (residue == 1) first = prime::add_mod(first, inverse, p);
        }
    }
    alignas(64) std::uint64_t words[kWords];
    Zmm::store(words, bits);
    for (std::size_t i = 0; i < kWords; ++i) {
        bool* const part = window + 64 * i;
        const Vector marked = _mm512_loadu_si512(part);
        _mm512_storeu_si512(part, _mm512_mask_mov_epi8(marked, words[i], _mm512_set1_epi8(1)));
    }
}

}  // namespace morvane::prime
