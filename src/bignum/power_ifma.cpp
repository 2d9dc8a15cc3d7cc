// Powers modulo odd numbers with AVX-512 IFMA: digits of 52 bits, a lane each.
#include "bignum/ifma_rows.h"
#include "bignum/power_in.h"

#include <algorithm>

namespace morvane::bignum {
namespace {

// Products side by side: while one waits for its factor, another multiplies.
template <typename Rows, std::size_t Streams>
struct Products {
    static constexpr std::size_t kStride = Rows::kVectors * Rows::kLanes;

    Rows rows[Streams];

    [[MORVANE_TARGET_IFMA, gnu::always_inline]] inline void start(const Digits* a, const RowModulus* moduli) noexcept {
#pragma GCC unroll 2
        for (std::size_t s = 0; s < Streams; ++s) rows[s].start(a + s * kStride, moduli[s]);
    }
    template <Part P>
    [[MORVANE_TARGET_IFMA, gnu::always_inline]] inline void add_row(const Digits* b) noexcept {
#pragma GCC unroll 2
        for (std::size_t s = 0; s < Streams; ++s) rows[s].template add_row<P>(b[s * kStride]);
    }
    template <Part P>
    [[MORVANE_TARGET_IFMA, gnu::always_inline]] inline void finish(Digits* r) noexcept {
#pragma GCC unroll 2
        for (std::size_t s = 0; s < Streams; ++s) rows[s].template finish<P>(r + s * kStride);
    }
};

template <typename Rows, std::size_t Streams>
[[MORVANE_TARGET_IFMA]] void multiply_rows(Digits* r, const Digits* a, const Digits* b, const RowModulus* moduli,
                                           std::size_t count) noexcept {
    Products<Rows, Streams> products;
    products.start(a, moduli);
    for (std::size_t i = 0; i < count; ++i) products.template add_row<Part{}>(b + i);
    products.template finish<Part{Rows::kVectors}>(r);
}

// The rows of a vector's digits, and of those above it. The products with the vectors below it are there already, twice.
template <typename Rows, std::size_t Streams, std::size_t V>
[[MORVANE_TARGET_IFMA, gnu::always_inline]] inline void add_square_rows(Products<Rows, Streams>& products,
                                                                        const Digits* a) noexcept {
    products.template add_row<Part{V, V == 0 ? 0 : V - 1, true}>(a);
    for (std::size_t i = 1; i < Rows::kLanes; ++i) products.template add_row<Part{V, V, true}>(a + i);
    if constexpr (V + 1 < Rows::kVectors) add_square_rows<Rows, Streams, V + 1>(products, a + Rows::kLanes);
}

template <typename Rows, std::size_t Streams>
[[MORVANE_TARGET_IFMA]] void square_rows(Digits* r, const Digits* a, const RowModulus* moduli) noexcept {
    Products<Rows, Streams> products;
    products.start(a, moduli);
    add_square_rows<Rows, Streams, 0>(products, a);
    products.template finish<Part{Rows::kVectors, Rows::kVectors - 1, true}>(r);
}

// Residues modulo as many numbers as there are streams. Rows that know squares make a row of every lane.
template <typename Rows, std::size_t Streams>
class IfmaRing {
    using Modulus = typename Rows::Modulus;

public:
    using Item = Digits;
    static constexpr std::size_t kStreams = Streams;

    static std::size_t digits_for(const std::array<Power, Streams>& powers) noexcept {
        std::size_t digits = 0;
        for (const Power& power : powers) digits = std::max(digits, Modulus::digits_for(power.modulus));
        return digits;
    }

    explicit IfmaRing(const std::array<Power, Streams>& powers) noexcept
        : rows_(Rows::kSquares ? kSize : digits_for(powers)) {
        for (std::size_t s = 0; s < Streams; ++s) {
            const Modulus modulus(powers[s].modulus, rows_);
            const std::size_t at = s * kSize;
            moduli_[s] = {&above_.items[at], &all_.items[at], modulus.factor()};
            ready_ = ready_ && modulus && modulus.set_digits(&above_.items[at], &all_.items[at], kSize);
            one_.items[at] = 1;
            set_bit<kIfmaBits>(&leave_.items[at], 64);
        }
        ready_ = ready_ && set_square(powers);
        multiply(one_.items.data(), one_.items.data(), square_.items.data());
    }

    explicit operator bool() const noexcept { return ready_; }
    std::size_t size() const noexcept { return kSize; }
    void set_one(Digits* r) const noexcept { std::copy_n(one_.items.data(), Streams * kSize, r); }
    void multiply(Digits* r, const Digits* a, const Digits* b) const noexcept {
        multiply_rows<Rows, Streams>(r, a, b, moduli_, Rows::kSquares ? kSize : rows_);
    }
    void square(Digits* r, const Digits* a) const noexcept {
        if constexpr (Rows::kSquares) {
            square_rows<Rows, Streams>(r, a, moduli_);
        } else {
            multiply(r, a, a);
        }
    }
    [[MORVANE_TARGET_IFMA]] void select(Digits* r, const Digits* table, std::size_t entries,
                                        const std::size_t* indices) const noexcept {
        using Lanes = typename Rows::Lanes;
        for (std::size_t s = 0; s < Streams; ++s) {
            typename Lanes::Vector chosen[Rows::kVectors] = {};
            const auto index = Lanes::fill(indices[s]);
            auto at = Lanes::zero();
            for (std::size_t entry = 0; entry < entries; ++entry, at = Lanes::add(at, Lanes::fill(1))) {
                auto mask = Lanes::ones_if_equal(at, index);
                asm("" : "+v"(mask));  // otherwise the compiler may find out that one entry is enough
                const Digits* const element = table + (entry * Streams + s) * kSize;
#pragma GCC unroll 16
                for (std::size_t v = 0; v < Rows::kVectors; ++v) {
                    chosen[v] = Lanes::add_both(chosen[v], mask, Lanes::load(element + v * Lanes::kLanes));
                }
            }
#pragma GCC unroll 16
            for (std::size_t v = 0; v < Rows::kVectors; ++v) Lanes::store(r + s * kSize + v * Lanes::kLanes, chosen[v]);
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
            const Modulus modulus(powers[s].modulus, rows_);
            done = done && modulus && modulus.reduce_by_64(powers[s].result, a + s * kSize);
        }
        return done;
    }

private:
    static constexpr std::size_t kSize = Rows::kVectors * Rows::kLanes;
    struct alignas(64) Element : SecretArray<Digits, Streams * kSize> {};

    bool set_square(const std::array<Power, Streams>& powers) noexcept {
        bool is_secret = false;
        std::size_t least_bits = SIZE_MAX;
        for (const Power& power : powers) {
            is_secret = is_secret || power.is_modulus_secret;
            least_bits = std::min(least_bits, bits_in(power.modulus));
        }
        const std::size_t bits = rows_ * kIfmaBits;
        const EntryPlan plan(bits, least_bits);
        Element rest;
        for (std::size_t s = 0; s < Streams; ++s) {
            const Modulus modulus(powers[s].modulus, rows_);
            Digits* const digits = &square_.items[s * kSize];
            if (!modulus) return false;
            if (is_secret ? !modulus.set_power(digits, kSize, bits + plan.doublings, Modulus::kSlackBits)
                          : !modulus.set_power_vt(digits, kSize, 2 * bits)) {
                return false;
            }
            set_bit<kIfmaBits>(&rest.items[s * kSize], plan.rest);
        }
        if (!is_secret) return true;
        for (std::size_t i = 0; i < plan.squares; ++i) square(square_.items.data(), square_.items.data());
        multiply(square_.items.data(), square_.items.data(), rest.items.data());
        return true;
    }

    std::size_t rows_;
    bool ready_ = true;
    RowModulus moduli_[Streams];
    Element above_;
    Element all_;
    Element one_;     // 1 in Montgomery's form
    Element square_;  // the factor into it
    Element leave_;   // 2^64
};

template <typename Rows, std::size_t Streams>
bool power_in_vectors(const std::array<Power, Streams>& powers) noexcept {
    const IfmaRing<Rows, Streams> ring(powers);
    Work<Digits, Streams * Rows::kVectors * Rows::kLanes> x(Streams * ring.size());
    if (!ring) return false;
    ring.enter(x.get(), powers);
    bool done = false;
    if constexpr (Streams == 1) {
        done = exponentiate_alone(ring, x.get(), powers[0]);
    } else {
        std::array<std::span<const Word>, Streams> exponents;
        for (std::size_t s = 0; s < Streams; ++s) exponents[s] = powers[s].exponent;
        done = exponentiate(ring, x.get(), exponents);
    }
    return done && ring.leave(x.get(), powers);
}

template <typename Rows>
bool product_in_vectors(const Power& a, const Power& b) noexcept {
    const IfmaRing<Rows, 1> ring({a});
    Work<Digits, Rows::kVectors * Rows::kLanes> x(ring.size());
    Work<Digits, Rows::kVectors * Rows::kLanes> y(ring.size());
    if (!ring) return false;
    ring.enter(x.get(), {a});
    ring.enter(y.get(), {b});
    return exponentiate_both_vt(ring, x.get(), y.get(), a, b) && ring.leave(x.get(), {a});
}

// The digits that moduli need, those that a width has, and what runs in it.
template <std::size_t Streams>
struct Width {
    std::size_t (*digits_for)(const std::array<Power, Streams>& powers) noexcept;
    std::size_t digits;
    bool (*run)(const std::array<Power, Streams>& powers) noexcept;
    PowerProductFn* product;
};

template <typename Rows>
constexpr Width<1> kAloneIn{IfmaRing<Rows, 1>::digits_for, Rows::kVectors* Rows::kLanes, power_in_vectors<Rows, 1>,
                            product_in_vectors<Rows>};
template <typename Rows>
constexpr Width<2> kPairIn{IfmaRing<Rows, 2>::digits_for, Rows::kVectors* Rows::kLanes, power_in_vectors<Rows, 2>, nullptr};

// The widths that there are, narrowest first; moduli take the first with enough lanes. The friendly moduli are quicker
// where rows are so short that they would wait for a factor, the plain ones where the multiplier has enough to do.
constexpr Width<1> kAlone[] = {
    kAloneIn<FriendlyRows<Ymm, 1>>, kAloneIn<FriendlyRows<Ymm, 2>>, kAloneIn<FriendlyRows<Ymm, 3>>,
    kAloneIn<FriendlyRows<Ymm, 4>>, kAloneIn<PlainRows<Ymm, 4>>,    kAloneIn<FriendlyRows<Ymm, 5>>,
    kAloneIn<PlainRows<Ymm, 5>>,    kAloneIn<FriendlyRows<Ymm, 6>>, kAloneIn<FriendlyRows<Zmm, 4>>,
    kAloneIn<PlainRows<Zmm, 5>>,    kAloneIn<PlainRows<Zmm, 6>>,    kAloneIn<PlainRows<Zmm, 8>>,
    kAloneIn<PlainRows<Zmm, 10>>,   kAloneIn<PlainRows<Zmm, 12>>};
constexpr Width<2> kPairs[] = {kPairIn<FriendlyRows<Ymm, 1>>, kPairIn<FriendlyRows<Ymm, 2>>, kPairIn<FriendlyRows<Ymm, 3>>,
                               kPairIn<PlainRows<Ymm, 4>>,    kPairIn<PlainRows<Ymm, 5>>,    kPairIn<PlainRows<Zmm, 3>>,
                               kPairIn<PlainRows<Zmm, 4>>,    kPairIn<PlainRows<Zmm, 5>>,    kPairIn<PlainRows<Zmm, 6>>};

// The width for these moduli, or null if they are too long.
template <std::size_t Streams, std::size_t Count>
const Width<Streams>* find_width(const Width<Streams> (&widths)[Count], const std::array<Power, Streams>& powers) noexcept {
    for (const Width<Streams>& width : widths) {
        if (width.digits_for(powers) <= width.digits) return &width;
    }
    return nullptr;
}

}  // namespace

bool power_ifma(const Power& power) noexcept {
    const Width<1>* const width = find_width(kAlone, {power});
    return width != nullptr ? width->run({power}) : power_limbs(power);
}

bool power_product_ifma(const Power& a, const Power& b) noexcept {
    const Width<1>* const width = find_width(kAlone, {a});
    return width != nullptr ? width->product(a, b) : power_product_limbs(a, b);
}

bool power_pair_ifma(const std::array<Power, 2>& powers) noexcept {
    const Width<2>* const width = find_width(kPairs, powers);
    return width != nullptr ? width->run(powers) : power_ifma(powers[0]) && power_ifma(powers[1]);
}

}  // namespace morvane::bignum
