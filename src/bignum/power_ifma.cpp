// Powers modulo odd numbers with AVX-512 IFMA: digits of 52 bits, eight to a vector.
#include "bignum/exponentiate.h"
#include "bignum/power_engines.h"
#include "bignum/vector_ring.h"

#include <immintrin.h>

#define MORVANE_TARGET_IFMA gnu::target("avx512f,avx512bw,avx512dq,avx512vl,avx512ifma")

namespace morvane::bignum {
namespace {

constexpr unsigned kDigitBits = 52;
constexpr std::uint64_t kDigitMask = (std::uint64_t{1} << kDigitBits) - 1;
constexpr std::size_t kLanes = 8;
constexpr __mmask8 kAllLanes = 0xff;

using Digits = std::uint64_t;
// All eight lanes a lane up or down, with what comes from the vector below or above.
[[MORVANE_TARGET_IFMA, gnu::always_inline]] inline __m512i lanes_up(__m512i below, __m512i vector) noexcept {
    return _mm512_maskz_alignr_epi64(kAllLanes, vector, below, 7);
}
[[MORVANE_TARGET_IFMA, gnu::always_inline]] inline __m512i lanes_down(__m512i vector, __m512i above) noexcept {
    return _mm512_maskz_alignr_epi64(kAllLanes, above, vector, 1);
}

using Modulus = FriendlyModulus<kDigitBits>;

// Lanes of any size to digits: what is above a digit goes to the next lane, once as it is, then as single carries that run
// through lanes of all ones in an addition of masks. The value has no more digits than there are lanes.
template <std::size_t Vectors>
[[MORVANE_TARGET_IFMA, gnu::always_inline]] inline void store_normalised(Digits* r, __m512i* t) noexcept {
    const __m512i mask = _mm512_set1_epi64(static_cast<long long>(kDigitMask));
    __m512i above = _mm512_setzero_si512();
    unsigned carry = 0;
#pragma GCC unroll 16
    for (std::size_t v = 0; v < Vectors; ++v) {
        const __m512i out = _mm512_maskz_srli_epi64(kAllLanes, t[v], kDigitBits);
        const __m512i lane = _mm512_add_epi64(_mm512_and_si512(t[v], mask), lanes_up(above, out));
        above = out;
        const unsigned generate = _mm512_cmpgt_epu64_mask(lane, mask);
        const unsigned propagate = _mm512_cmpeq_epu64_mask(lane, mask);
        const unsigned sum = (generate << 1 | carry) + propagate;
        carry = sum >> kLanes & 1;
        const auto carried = static_cast<__mmask8>(sum ^ propagate);
        const __m512i one = _mm512_set1_epi64(1);
        _mm512_storeu_si512(r + v * kLanes, _mm512_and_si512(_mm512_mask_add_epi64(lane, carried, lane, one), mask));
    }
}

// One product r = a b / 2^(52 rows) modulo the friendly modulus of cofactor c, by the rows that the digits of b make.
//
// The low halves of a row's products belong to their digit, the high halves to the one above, which a row later, when
// everything has moved down by a digit, is the same lane: hence the digit and the factors of the rows before. What does not
// depend on the row before is summed up apart from t (SumApart), so that from one row's factor to the next there is one
// broadcast and one multiplication. With two products at a time there is always something to do in between, and one
// addition less counts for more.
template <std::size_t Vectors, bool SumApart>
struct Rows {
    const Digits* a;
    const Digits* c;
    __m512i t[Vectors];
    __m512i digit_before;
    __m512i factor;
    __m512i factor_before;

    [[MORVANE_TARGET_IFMA, gnu::always_inline]] inline void start(const Digits* a_digits, const Digits* cofactor) noexcept {
        a = a_digits;
        c = cofactor;
        digit_before = factor = factor_before = _mm512_setzero_si512();
#pragma GCC unroll 16
        for (std::size_t v = 0; v < Vectors; ++v) t[v] = _mm512_setzero_si512();
    }

    [[MORVANE_TARGET_IFMA, gnu::always_inline]] inline void add_row(__m512i digit) noexcept {
        const __m512i zero = _mm512_setzero_si512();
        const __m512i carry = _mm512_maskz_srli_epi64(1, t[0], kDigitBits);
#pragma GCC unroll 16
        for (std::size_t v = 0; v < Vectors; ++v) {
            const __m512i a_v = _mm512_load_si512(a + v * kLanes);
            const __m512i c_v = _mm512_load_si512(c + v * kLanes);
            __m512i moved = lanes_down(t[v], v + 1 < Vectors ? t[v + 1] : zero);
            if (v == 0) moved = _mm512_add_epi64(moved, carry);
            __m512i sum = _mm512_madd52lo_epu64(SumApart ? zero : moved, a_v, digit);
            sum = _mm512_madd52hi_epu64(sum, a_v, digit_before);
            sum = _mm512_madd52hi_epu64(sum, c_v, factor_before);
            if (SumApart) sum = _mm512_add_epi64(sum, moved);
            t[v] = _mm512_madd52lo_epu64(sum, c_v, factor);
        }
        digit_before = digit;
        factor_before = factor;
        factor = __builtin_shufflevector(t[0], t[0], 0, 0, 0, 0, 0, 0, 0, 0);
    }

    // After the last digit: what the rows before it still owe.
    [[MORVANE_TARGET_IFMA, gnu::always_inline]] inline void finish(Digits* r) noexcept {
        const __m512i zero = _mm512_setzero_si512();
        add_row(zero);
        __m512i below = zero;
#pragma GCC unroll 16
        for (std::size_t v = 0; v < Vectors; ++v) {
            const __m512i high_halves = _mm512_madd52hi_epu64(zero, _mm512_load_si512(c + v * kLanes), factor_before);
            t[v] = _mm512_add_epi64(t[v], lanes_up(below, high_halves));
            below = high_halves;
        }
        store_normalised<Vectors>(r, t);
    }
};

template <std::size_t Vectors>
[[MORVANE_TARGET_IFMA]] void multiply_one(Digits* r, const Digits* a, const Digits* b, const Digits* c,
                                          std::size_t rows) noexcept {
    Rows<Vectors, true> x;
    x.start(a, c);
    for (std::size_t i = 0; i < rows; ++i) x.add_row(_mm512_set1_epi64(static_cast<long long>(b[i])));
    x.finish(r);
}

// Two products side by side: while one waits for its factor, the other multiplies.
template <std::size_t Vectors>
[[MORVANE_TARGET_IFMA]] void multiply_two(Digits* r, const Digits* a, const Digits* b, const Digits* c,
                                          std::size_t rows) noexcept {
    constexpr std::size_t kStride = Vectors * kLanes;
    Rows<Vectors, false> x;
    Rows<Vectors, false> y;
    x.start(a, c);
    y.start(a + kStride, c + kStride);
    for (std::size_t i = 0; i < rows; ++i) {
        x.add_row(_mm512_set1_epi64(static_cast<long long>(b[i])));
        y.add_row(_mm512_set1_epi64(static_cast<long long>(b[kStride + i])));
    }
    x.finish(r);
    y.finish(r + kStride);
}

template <std::size_t Vectors, std::size_t Streams>
class IfmaRing {
public:
    using Item = Digits;
    static constexpr std::size_t kStreams = Streams;

    explicit IfmaRing(const std::array<Power, Streams>& powers) noexcept : rows_(Modulus::digits_for(powers[0].modulus)) {
        for (const Power& power : powers) rows_ = std::max(rows_, Modulus::digits_for(power.modulus));
        for (std::size_t s = 0; s < Streams; ++s) {
            const Modulus modulus(powers[s].modulus);
            const std::size_t at = s * size();
            ready_ = ready_ && modulus && modulus.set_cofactor(&cofactor_.items[at], size()) &&
                     modulus.set_power(&one_.items[at], size(), rows_ * kDigitBits) &&
                     modulus.set_power(&square_.items[at], size(), 2 * rows_ * kDigitBits) &&
                     modulus.set_power(&leave_.items[at], size(), modulus.reduction_bits());
        }
    }

    explicit operator bool() const noexcept { return ready_; }
    std::size_t size() const noexcept { return kSize; }
    void set_one(Digits* r) const noexcept { std::copy_n(one_.items.data(), Streams * kSize, r); }
    void multiply(Digits* r, const Digits* a, const Digits* b) const noexcept {
        if constexpr (Streams == 1) {
            multiply_one<Vectors>(r, a, b, cofactor_.items.data(), rows_);
        } else {
            multiply_two<Vectors>(r, a, b, cofactor_.items.data(), rows_);
        }
    }
    void square(Digits* r, const Digits* a) const noexcept { multiply(r, a, a); }
    [[MORVANE_TARGET_IFMA]] void select(Digits* r, const Digits* table, std::size_t entries,
                                        const std::size_t* indices) const noexcept {
        for (std::size_t s = 0; s < Streams; ++s) {
            select_masked(r + s * kSize, table + s * kSize, entries, Streams * kSize, kSize, indices[s]);
        }
    }

    void enter(Digits* r, const std::array<Power, Streams>& powers) const noexcept {
        for (std::size_t s = 0; s < Streams; ++s) to_digits<kDigitBits>(r + s * kSize, kSize, powers[s].base);
        multiply(r, r, square_.items.data());
    }
    bool leave(Digits* a, const std::array<Power, Streams>& powers) const noexcept {
        multiply(a, a, leave_.items.data());
        bool done = true;
        for (std::size_t s = 0; s < Streams; ++s) {
            const Modulus modulus(powers[s].modulus);
            done = done && modulus && modulus.reduce(powers[s].result, a + s * kSize);
        }
        return done;
    }

private:
    static constexpr std::size_t kSize = Vectors * kLanes;
    struct alignas(64) Element : SecretArray<Digits, Streams * kSize> {};

    std::size_t rows_;
    bool ready_ = true;
    Element cofactor_;
    Element one_;     // 1 in Montgomery's form
    Element square_;  // the factor into it
    Element leave_;   // the factor out of it, less what the last reduction divides by
};

template <std::size_t Vectors, std::size_t Streams>
bool power_in_vectors(const std::array<Power, Streams>& powers) noexcept {
    const IfmaRing<Vectors, Streams> ring(powers);
    Work<Digits, Streams * Vectors * kLanes> x(Streams * ring.size());
    if (!ring) return false;
    ring.enter(x.get(), powers);
    std::array<std::span<const Word>, Streams> exponents;
    for (std::size_t s = 0; s < Streams; ++s) exponents[s] = powers[s].exponent;
    const bool done =
        exponents[0].size() == 1 ? exponentiate_vt(ring, x.get(), exponents[0][0]) : exponentiate(ring, x.get(), exponents);
    return done && ring.leave(x.get(), powers);
}

// The widths that there are; a residue takes the next one up.
template <std::size_t Streams>
struct Width {
    std::size_t vectors;
    bool (*run)(const std::array<Power, Streams>& powers) noexcept;
};

template <std::size_t Streams, std::size_t... Vectors>
constexpr std::array<Width<Streams>, sizeof...(Vectors)> kWidths{{{Vectors, power_in_vectors<Vectors, Streams>}...}};

// The routine for these moduli, or null if they are too long.
template <std::size_t Streams>
auto find_width(const std::array<Power, Streams>& powers) noexcept -> decltype(Width<Streams>::run) {
    std::size_t digits = 0;
    for (const Power& power : powers) digits = std::max(digits, Modulus::digits_for(power.modulus));
    for (const Width<Streams>& width : kWidths<Streams, 1, 2, 3, 4, 5, 6, 8, 10, 12>) {
        if (digits <= width.vectors * kLanes) return width.run;
    }
    return nullptr;
}

}  // namespace

bool power_ifma(const Power& power) noexcept {
    const auto run = find_width<1>({power});
    return run != nullptr ? run({power}) : power_limbs(power);
}

bool power_pair_ifma(const std::array<Power, 2>& powers) noexcept {
    const auto run = find_width<2>(powers);
    return run != nullptr ? run(powers) : power_pair_limbs(powers);
}

}  // namespace morvane::bignum
