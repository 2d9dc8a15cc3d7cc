// Eight powers modulo eight odd numbers with AVX-512 IFMA: digits of 52 bits, a vector each, in which every power has a
// lane.
//
// Products and Montgomery's steps alternate: a row for each digit of the second factor, and in it a block of digits after
// the other. Residues stay below four times their modulus, which 2^(52 digits) exceeds by four bits.
#include "base/mask.h"
#include "bignum/exponentiate.h"
#include "bignum/ifma_lanes.h"
#include "bignum/power_lanes.h"
#include "bignum/vector_ring.h"

#include <algorithm>

namespace morvane::bignum {
namespace {

using Digits = std::uint64_t;
using Vector = Zmm::Vector;

constexpr std::size_t kLanes = Zmm::kLanes;
constexpr std::ptrdiff_t kStride = kLanes;
constexpr int kBlock = 5;  // digits

static_assert(kLanes == kLanePowers);

// Which digits of a block take part in a row. In a square the digits above the row's own stand for two products each, and
// those below it are there already: with Own from 0 on, that one counts once, -1 and kBlock leave only the others.
constexpr int kEachOnce = -2;
constexpr int kEachTwice = -1;
constexpr int kNone = kBlock;
constexpr bool is_once(int own, int i) noexcept { return own == kEachOnce || i == own; }
constexpr bool is_twice(int own, int i) noexcept { return own >= kEachTwice && i > own; }

// One row: t = (t + a b + m q) / 2^52, where q makes the lowest digit 0. The low half of a product belongs to its digit,
// the high half to the next one.
struct Row {
    const Digits* a;
    const Digits* m;
    Digits* t;
    Vector b;
    Vector q;
    Vector over;  // what the digits so far leave for the next

    template <int Own, bool Lowest = false>
    [[MORVANE_TARGET_IFMA, gnu::always_inline]] inline void add_block(Vector factor = Zmm::zero()) noexcept {
        Vector a_below = Zmm::zero();
        Vector m_below = Zmm::zero();
#pragma GCC unroll 6
        for (int i = 0; i <= kBlock; ++i) {
            Vector a_i = Zmm::zero();
            Vector m_i = Zmm::zero();
            Vector sum = Zmm::zero();
            Vector twice = Zmm::zero();
            if (i < kBlock) {
                if (is_once(Own, i) || is_twice(Own, i)) a_i = Zmm::load(a + i * kStride);
                m_i = Zmm::load(m + i * kStride);
                sum = Zmm::load(t + i * kStride);
                if (is_once(Own, i)) sum = Zmm::low(sum, a_i, b);
                if (is_twice(Own, i)) twice = Zmm::low(twice, a_i, b);
            }
            if (i > 0) {
                if (is_once(Own, i - 1)) sum = Zmm::high(sum, a_below, b);
                if (is_twice(Own, i - 1)) twice = Zmm::high(twice, a_below, b);
            }
            if (is_twice(Own, i) || is_twice(Own, i - 1)) sum = Zmm::add(sum, Zmm::add(twice, twice));
            if (i == 0 && Lowest) {
                q = Zmm::low(Zmm::zero(), sum, factor);
                over = Zmm::shift(Zmm::add(sum, Zmm::fill(kIfmaDigit)), Zmm::kAll);
            } else {
                if (i == (Lowest ? 1 : 0)) sum = Zmm::add(sum, over);
                if (i < kBlock) sum = Zmm::low(sum, m_i, q);
                if (i > 0) sum = Zmm::high(sum, m_below, q);
                if (i < kBlock) Zmm::store(t + (i - 1) * kStride, sum);
            }
            if (i == kBlock) over = sum;
            a_below = a_i;
            m_below = m_i;
        }
        a += kBlock * kStride;
        m += kBlock * kStride;
        t += kBlock * kStride;
    }

    [[MORVANE_TARGET_IFMA, gnu::always_inline]] inline void finish() noexcept { Zmm::store(t - kStride, over); }
};

// Residues modulo eight numbers, of 52 bits a digit and a lane each: a Ring whose elements lie digit after digit.
class LaneRing {
    using Modulus = PlainModulus<kIfmaBits>;

public:
    using Item = Digits;
    static constexpr std::size_t kStreams = kLanes;
    static constexpr std::size_t kFrameItems = 20;  // for moduli of 1024 bits

    explicit LaneRing(const std::array<Power, kLanes>& powers) noexcept
        : blocks_((digits_for(powers) + kBlock - 1) / kBlock), space_(kNumbers * size() * kLanes), column_(size()) {
        if (!*this) return;
        std::fill_n(space_.get(), space_.size(), 0);
        for (std::size_t s = 0; s < kLanes; ++s) {
            const Modulus modulus(powers[s].modulus, size());
            Digits* const column = column_.get();
            // A search for primes tells of its candidates through time anyway.
            ready_ = ready_ && modulus && modulus.set_power_vt(column, size(), 2 * size() * kIfmaBits);
            if (!ready_) return;
            set_lane(number(kSquare), s, column);
            to_digits<kIfmaBits>(column, size(), powers[s].modulus);
            set_lane(number(kModulus), s, column);
            number(kFactor)[s] = modulus.factor();
            number(kUnit)[s] = 1;
        }
    }

    explicit operator bool() const noexcept { return ready_ && space_ && column_; }
    std::size_t size() const noexcept { return blocks_ * kBlock; }

    void set_one(Digits* r) const noexcept { multiply(r, number(kUnit), number(kSquare)); }

    [[MORVANE_TARGET_IFMA]] void multiply(Digits* r, const Digits* a, const Digits* b) const noexcept {
        start();
        for (std::size_t i = 0; i < size(); ++i) {
            Row row = row_of(a, b, i);
            row.add_block<kEachOnce, true>(Zmm::load(number(kFactor)));
            for (std::size_t block = 1; block < blocks_; ++block) row.add_block<kEachOnce>();
            row.finish();
        }
        normalise(r);
    }

    // Twice the square in the lanes of a mask: then residues stay below four times their modulus.
    [[MORVANE_TARGET_IFMA]] void square(Digits* r, const Digits* a, unsigned twice = 0) const noexcept {
        start();
        for (std::size_t own = 0; own < blocks_; ++own) {
            add_square_row<0>(a, own);
            add_square_row<1>(a, own);
            add_square_row<2>(a, own);
            add_square_row<3>(a, own);
            add_square_row<4>(a, own);
        }
        normalise(r, twice);
    }

    [[MORVANE_TARGET_IFMA]] void select(Digits* r, const Digits* table, std::size_t entries,
                                        const std::size_t* indices) const noexcept {
        alignas(64) Digits wanted[kLanes];
        std::copy_n(indices, kLanes, wanted);
        const Vector index = Zmm::load(wanted);
        for (std::size_t at = 0; at < size(); at += kBlock) {
            Vector chosen[kBlock] = {};
            for (std::size_t entry = 0; entry < entries; ++entry) {
                const unsigned lanes = Zmm::equal(index, Zmm::fill(entry));
                const Digits* const element = table + (entry * size() + at) * kLanes;
#pragma GCC unroll 5
                for (std::size_t i = 0; i < kBlock; ++i)
                    chosen[i] = Zmm::add(chosen[i], Zmm::load(element + i * kLanes), lanes);
            }
#pragma GCC unroll 5
            for (std::size_t i = 0; i < kBlock; ++i) Zmm::store(r + (at + i) * kLanes, chosen[i]);
        }
    }

    void enter(Digits* r, const std::array<Power, kLanes>& powers) noexcept {
        for (std::size_t s = 0; s < kLanes; ++s) {
            to_digits<kIfmaBits>(column_.get(), size(), powers[s].base);
            set_lane(r, s, column_.get());
        }
        multiply(r, r, number(kSquare));
    }

    // A product with 1 is at most the modulus.
    void leave(Digits* a, std::span<const Power> powers) noexcept {
        multiply(a, a, number(kUnit));
        for (std::size_t s = 0; s < powers.size(); ++s) {
            for (std::size_t i = 0; i < size(); ++i) column_[i] = a[i * kLanes + s];
            Word* const words = powers[s].result;
            const std::span<const Word> m = powers[s].modulus;
            from_digits<kIfmaBits>(words, m.size(), column_.get(), size());
            Word difference = 0;
            for (std::size_t i = 0; i < m.size(); ++i) difference |= words[i] ^ m[i];
            const Mask keep = ~mask_if_zero(difference);
            for (std::size_t i = 0; i < m.size(); ++i) words[i] &= keep;
        }
    }

private:
    enum Number : std::uint8_t { kModulus, kSquare, kUnit, kFactor, kSum, kNumbers };

    static std::size_t digits_for(const std::array<Power, kLanes>& powers) noexcept {
        std::size_t bits = 0;
        for (const Power& power : powers) bits = std::max({bits, bits_in(power.modulus) + 4, 32 * power.modulus.size()});
        return (bits + kIfmaBits - 1) / kIfmaBits;
    }

    // What a row of the digit b[i] is to work on.
    [[MORVANE_TARGET_IFMA, gnu::always_inline]] inline Row row_of(const Digits* a, const Digits* b,
                                                                  std::size_t i) const noexcept {
        return {a, number(kModulus), number(kSum), Zmm::load(b + i * kLanes), Zmm::zero(), Zmm::zero()};
    }
    void start() const noexcept { std::fill_n(number(kSum), size() * kLanes, 0); }

    // The row of a digit in block `own`, where it has the index Own.
    template <int Own>
    [[MORVANE_TARGET_IFMA, gnu::always_inline]] inline void add_square_row(const Digits* a,
                                                                           std::size_t own) const noexcept {
        Row row = row_of(a, a, own * kBlock + Own);
        const Vector factor = Zmm::load(number(kFactor));
        if (own == 0) {
            row.add_block<Own, true>(factor);
        } else {
            row.add_block<kNone, true>(factor);
            for (std::size_t block = 1; block < own; ++block) row.add_block<kNone>();
            row.add_block<Own>();
        }
        for (std::size_t block = own + 1; block < blocks_; ++block) row.add_block<kEachTwice>();
        row.finish();
    }

    // Digits of any size to digits of 52 bits, twice as much in some lanes.
    [[MORVANE_TARGET_IFMA, gnu::always_inline]] inline void normalise(Digits* r, unsigned twice = 0) const noexcept {
        const Vector mask = Zmm::fill(kIfmaDigit);
        Vector carry = Zmm::zero();
        for (std::size_t i = 0; i < size(); ++i) {
            const Vector digit = Zmm::load(number(kSum) + i * kLanes);
            const Vector sum = Zmm::add(Zmm::add(digit, digit, twice), carry);
            carry = Zmm::shift(sum, Zmm::kAll);
            Zmm::store(r + i * kLanes, Zmm::both(sum, mask));
        }
    }

    Digits* number(Number i) const noexcept { return space_.get() + i * size() * kLanes; }

    void set_lane(Digits* r, std::size_t lane, const Digits* digits) const noexcept {
        for (std::size_t i = 0; i < size(); ++i) r[i * kLanes + lane] = digits[i];
    }

    std::size_t blocks_;
    bool ready_ = true;
    mutable Work<Digits, kNumbers * kFrameItems * kLanes> space_;  // the sum is work space of each operation
    Work<Digits, 2 * kFrameItems> column_;
};

// x = 2^exponent.
void raise_two(const LaneRing& ring, Digits* x, const std::array<std::span<const Word>, kLanes>& exponents) noexcept {
    ring.set_one(x);
    for (std::size_t bit = 32 * exponents[0].size(); bit-- > 0;) {
        unsigned twice = 0;
        for (std::size_t s = 0; s < kLanes; ++s) twice |= (exponents[s][bit / 32] >> bit % 32 & 1) << s;
        ring.square(x, x, twice);
    }
}

bool is_two(const Power& power) noexcept { return power.base.size() == 1 && power.base[0] == 2; }

}  // namespace

bool power_lanes_ifma(std::span<const Power> powers) noexcept {
    if (powers.size() == 1) return power_mod(powers[0]);
    std::array<Power, kLanes> all;
    std::size_t words = 0;
    for (std::size_t s = 0; s < kLanes; ++s) {
        all[s] = powers[std::min(s, powers.size() - 1)];
        words = std::max(words, all[s].exponent.size());
    }
    Work<Word, kLanes * kFrameWords> padded(kLanes * words);
    LaneRing ring(all);
    Work<Digits, LaneRing::kFrameItems * kLanes> x(ring.size() * kLanes);
    if (!padded || !ring || !x) return false;
    std::array<std::span<const Word>, kLanes> exponents;
    for (std::size_t s = 0; s < kLanes; ++s) {
        Word* const exponent = padded.get() + s * words;
        std::fill_n(std::copy(all[s].exponent.begin(), all[s].exponent.end(), exponent), words - all[s].exponent.size(), 0);
        exponents[s] = {exponent, words};
    }
    if (std::ranges::all_of(powers, is_two)) {
        raise_two(ring, x.get(), exponents);
    } else {
        ring.enter(x.get(), all);
        if (!exponentiate(ring, x.get(), exponents)) return false;
    }
    ring.leave(x.get(), powers);
    return true;
}

}  // namespace morvane::bignum
