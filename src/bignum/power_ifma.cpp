// Powers modulo odd numbers with AVX-512 IFMA: digits of 52 bits, a lane each.
#include "bignum/exponentiate.h"
#include "bignum/ifma_lanes.h"
#include "bignum/power_engines.h"
#include "bignum/vector_ring.h"

namespace morvane::bignum {
namespace {

constexpr std::uint64_t kDigitMask = (std::uint64_t{1} << kIfmaBits) - 1;

using Digits = std::uint64_t;
using Modulus = FriendlyModulus<kIfmaBits>;

// Lanes of any size to digits: what is above a digit goes to the next lane, once as it is, then as single carries that run
// through lanes of all ones in an addition of masks. The value has no more digits than there are lanes.
template <typename Lanes, std::size_t Vectors>
[[MORVANE_TARGET_IFMA, gnu::always_inline]] inline void store_normalised(Digits* r, typename Lanes::Vector* t) noexcept {
    const auto mask = Lanes::fill(kDigitMask);
    auto above = Lanes::zero();
    unsigned carry = 0;
#pragma GCC unroll 16
    for (std::size_t v = 0; v < Vectors; ++v) {
        const auto out = Lanes::shift(t[v], Lanes::kAll);
        const auto lanes = Lanes::add(Lanes::both(t[v], mask), Lanes::up(out, above));
        above = out;
        const unsigned generate = Lanes::greater(lanes, mask);
        const unsigned propagate = Lanes::equal(lanes, mask);
        const unsigned sum = (generate << 1 | carry) + propagate;
        carry = sum >> Lanes::kLanes & 1;
        const unsigned carried = (sum ^ propagate) & Lanes::kAll;
        Lanes::store(r + v * Lanes::kLanes, Lanes::both(Lanes::add(lanes, Lanes::fill(1), carried), mask));
    }
}

// One product r = a b / 2^(52 rows) modulo the friendly modulus of cofactor c, by the rows that the digits of b make.
//
// The low halves of a row's products belong to their digit, the high halves to the one above, which a row later, when
// everything has moved down by a digit, is the same lane: hence the digit and the factors of the rows before. What does not
// depend on the row before is summed up apart from t (SumApart), so that from one row's factor to the next there is one
// broadcast and one multiplication. With two long products at a time there is always something to do in between, and one
// addition less counts for more.
template <typename Lanes, std::size_t Vectors, bool SumApart>
struct Rows {
    using Vector = typename Lanes::Vector;

    const Digits* a;
    const Digits* c;
    Vector t[Vectors];
    Vector digit_before;
    Vector factor;
    Vector factor_before;

    [[MORVANE_TARGET_IFMA, gnu::always_inline]] inline void start(const Digits* a_digits, const Digits* cofactor) noexcept {
        a = a_digits;
        c = cofactor;
        digit_before = factor = factor_before = Lanes::zero();
#pragma GCC unroll 16
        for (std::size_t v = 0; v < Vectors; ++v) t[v] = Lanes::zero();
    }

    [[MORVANE_TARGET_IFMA, gnu::always_inline]] inline void add_row(Vector digit) noexcept {
        const Vector carry = Lanes::shift(t[0], 1);
#pragma GCC unroll 16
        for (std::size_t v = 0; v < Vectors; ++v) {
            const Vector a_v = Lanes::load(a + v * Lanes::kLanes);
            const Vector c_v = Lanes::load(c + v * Lanes::kLanes);
            const Vector moved = Lanes::down(t[v], v + 1 < Vectors ? t[v + 1] : Lanes::zero());
            Vector sum = SumApart ? Lanes::zero() : v == 0 ? Lanes::add(moved, carry) : moved;
            sum = Lanes::low(sum, a_v, digit);
            sum = Lanes::high(sum, a_v, digit_before);
            sum = Lanes::high(sum, c_v, factor_before);
            if constexpr (SumApart) {
                // The carry is there before the move.
                if (v == 0) sum = Lanes::add(sum, carry);
                asm("" : "+v"(sum));
                sum = Lanes::add(sum, moved);
            }
            t[v] = Lanes::low(sum, c_v, factor);
        }
        digit_before = digit;
        factor_before = factor;
        factor = Lanes::first(t[0]);
    }

    // After the last digit: what the rows before it still owe.
    [[MORVANE_TARGET_IFMA, gnu::always_inline]] inline void finish(Digits* r) noexcept {
        add_row(Lanes::zero());
        Vector below = Lanes::zero();
#pragma GCC unroll 16
        for (std::size_t v = 0; v < Vectors; ++v) {
            const Vector halves = Lanes::high(Lanes::zero(), Lanes::load(c + v * Lanes::kLanes), factor_before);
            t[v] = Lanes::add(t[v], Lanes::up(halves, below));
            below = halves;
        }
        store_normalised<Lanes, Vectors>(r, t);
    }
};

template <typename Lanes, std::size_t Vectors>
[[MORVANE_TARGET_IFMA]] void multiply_one(Digits* r, const Digits* a, const Digits* b, const Digits* c,
                                          std::size_t rows) noexcept {
    Rows<Lanes, Vectors, true> x;
    x.start(a, c);
    for (std::size_t i = 0; i < rows; ++i) x.add_row(Lanes::fill(b[i]));
    x.finish(r);
}

// Two products side by side: while one waits for its factor, the other multiplies.
template <typename Lanes, std::size_t Vectors>
[[MORVANE_TARGET_IFMA]] void multiply_two(Digits* r, const Digits* a, const Digits* b, const Digits* c,
                                          std::size_t rows) noexcept {
    constexpr std::size_t kStride = Vectors * Lanes::kLanes;
    constexpr bool kSumApart = Vectors <= 3;
    Rows<Lanes, Vectors, kSumApart> x;
    Rows<Lanes, Vectors, kSumApart> y;
    x.start(a, c);
    y.start(a + kStride, c + kStride);
    for (std::size_t i = 0; i < rows; ++i) {
        x.add_row(Lanes::fill(b[i]));
        y.add_row(Lanes::fill(b[kStride + i]));
    }
    x.finish(r);
    y.finish(r + kStride);
}

template <typename Lanes, std::size_t Vectors, std::size_t Streams>
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
                     modulus.set_power(&square_.items[at], size(), 2 * rows_ * kIfmaBits) &&
                     modulus.set_power(&leave_.items[at], size(), modulus.reduction_bits());
            one_.items[at] = 1;
        }
        multiply(one_.items.data(), one_.items.data(), square_.items.data());
    }

    explicit operator bool() const noexcept { return ready_; }
    std::size_t size() const noexcept { return kSize; }
    void set_one(Digits* r) const noexcept { std::copy_n(one_.items.data(), Streams * kSize, r); }
    void multiply(Digits* r, const Digits* a, const Digits* b) const noexcept {
        if constexpr (Streams == 1) {
            multiply_one<Lanes, Vectors>(r, a, b, cofactor_.items.data(), rows_);
        } else {
            multiply_two<Lanes, Vectors>(r, a, b, cofactor_.items.data(), rows_);
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
        for (std::size_t s = 0; s < Streams; ++s) to_digits<kIfmaBits>(r + s * kSize, kSize, powers[s].base);
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
    static constexpr std::size_t kSize = Vectors * Lanes::kLanes;
    struct alignas(64) Element : SecretArray<Digits, Streams * kSize> {};

    std::size_t rows_;
    bool ready_ = true;
    Element cofactor_;
    Element one_;     // 1 in Montgomery's form
    Element square_;  // the factor into it
    Element leave_;   // the factor out of it, less what the last reduction divides by
};

template <typename Lanes, std::size_t Vectors, std::size_t Streams>
bool power_in_vectors(const std::array<Power, Streams>& powers) noexcept {
    const IfmaRing<Lanes, Vectors, Streams> ring(powers);
    Work<Digits, Streams * Vectors * Lanes::kLanes> x(Streams * ring.size());
    if (!ring) return false;
    ring.enter(x.get(), powers);
    std::array<std::span<const Word>, Streams> exponents;
    for (std::size_t s = 0; s < Streams; ++s) exponents[s] = powers[s].exponent;
    const bool done =
        exponents[0].size() == 1 ? exponentiate_vt(ring, x.get(), exponents[0][0]) : exponentiate(ring, x.get(), exponents);
    return done && ring.leave(x.get(), powers);
}

// The widths that there are, narrowest first; a residue takes the first with enough lanes.
template <std::size_t Streams>
struct Width {
    std::size_t digits;
    bool (*run)(const std::array<Power, Streams>& powers) noexcept;
};

template <std::size_t Streams, typename Lanes, std::size_t Vectors>
constexpr Width<Streams> kWidth{Vectors * Lanes::kLanes, power_in_vectors<Lanes, Vectors, Streams>};

template <std::size_t S>
constexpr Width<S> kWidths[] = {kWidth<S, Ymm, 1>, kWidth<S, Ymm, 2>,  kWidth<S, Ymm, 3>, kWidth<S, Zmm, 2>,
                                kWidth<S, Zmm, 3>, kWidth<S, Zmm, 4>,  kWidth<S, Zmm, 5>, kWidth<S, Zmm, 6>,
                                kWidth<S, Zmm, 8>, kWidth<S, Zmm, 10>, kWidth<S, Zmm, 12>};

// The routine for these moduli, or null if they are too long.
template <std::size_t Streams>
auto find_width(const std::array<Power, Streams>& powers) noexcept -> decltype(Width<Streams>::run) {
    std::size_t digits = 0;
    for (const Power& power : powers) digits = std::max(digits, Modulus::digits_for(power.modulus));
    for (const Width<Streams>& width : kWidths<Streams>) {
        if (digits <= width.digits) return width.run;
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
