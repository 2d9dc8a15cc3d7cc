// Powers modulo odd numbers in columns; included after columns.h.
//
// Montgomery's reduction by all the digits at once: with R = 2^(Bits count), m' = -1 / m mod R and q = t m' mod R, the sum
// t + q m is a multiple of R. Of the three products only the columns are made that are needed: all of t, the lower half of
// t m', the upper half of q m. Nothing waits for one digit after the other, as a reduction by rows would.
#include "bignum/power_in.h"
#include "bignum/vector_ring.h"

namespace morvane::bignum {
namespace {  // NOLINT(cert-dcl59-cpp): every file that includes this makes functions of its own

// Residues stay below 2 m: (a b + q m) / R is below 4 m^2 / R + m (1 + 2^-20), and R is above 8 m.
template <unsigned Bits>
class ColumnRing {
    static constexpr std::size_t kUsual = rounded_to_rows(2048 / Bits + 1);  // digits
    using Number = Work<Digit, kZerosBelow + kUsual + kZerosAbove>;

public:
    using Item = Digit;
    static constexpr std::size_t kStreams = 1;

    static std::size_t digits_for(std::span<const Word> modulus) noexcept {
        return rounded_to_rows((std::max(bits_in(modulus) + 3, 32 * modulus.size()) + Bits - 1) / Bits);
    }

    ColumnRing(std::span<const Word> modulus, bool is_secret) noexcept
        : count_(digits_for(modulus)),
          modulus_(modulus, count_),
          m_(kZerosBelow + count_ + kZerosAbove),
          inverse_(m_.size()),
          a_(m_.size()),
          twice_(m_.size()),
          t_(2 * count_ + kRows),
          q_(count_ + kRows),
          one_(count_),
          square_(count_),
          leave_(count_) {
        if (!modulus_ || !m_ || !inverse_ || !a_ || !twice_ || !t_ || !q_ || !one_ || !square_ || !leave_) return;
        for (Number* number : {&m_, &inverse_, &a_, &twice_}) std::fill_n(number->get(), number->size(), 0);
        to_digits<Bits>(m_.get() + kZerosBelow, count_, modulus);
        const std::size_t bits = count_ * Bits;
        const EntryPlan plan(bits, bits_in(modulus));
        ready_ = modulus_.set_inverse(inverse_.get() + kZerosBelow) &&
                 (is_secret ? modulus_.set_power(square_.get(), count_, bits + plan.doublings, 0)
                            : modulus_.set_power_vt(square_.get(), count_, 2 * bits));
        if (!ready_) return;
        for (Digit* const digits : {one_.get(), leave_.get()}) std::fill_n(digits, count_, 0);
        if (is_secret) {
            for (std::size_t i = 0; i < plan.squares; ++i) square(square_.get(), square_.get());
            set_bit<Bits>(leave_.get(), plan.rest);
            multiply(square_.get(), square_.get(), leave_.get());
            leave_[plan.rest / Bits] = 0;
        }
        one_[0] = 1;
        multiply(one_.get(), one_.get(), square_.get());
        set_bit<Bits>(leave_.get(), 64);
    }

    explicit operator bool() const noexcept { return ready_; }
    std::size_t size() const noexcept { return count_; }
    void set_one(Digit* r) const noexcept { std::copy_n(one_.get(), count_, r); }
    MORVANE_TARGET void multiply(Digit* r, const Digit* a, const Digit* b) const noexcept {
        const std::size_t count = count_;
        Digit* const digits = a_.get() + kZerosBelow;
        Digit* const t = t_.get();
        for (std::size_t i = 0; i < count; i += kLanes) store(digits + i, load(a + i));
        set_zero(t, 2 * count + kRows);
        add_product(t, digits, count, b, count);
        reduce(r);
    }
    MORVANE_TARGET void square(Digit* r, const Digit* a) const noexcept {
        const std::size_t count = count_;
        Digit* const digits = a_.get() + kZerosBelow;
        Digit* const twice = twice_.get() + kZerosBelow;
        Digit* const t = t_.get();
        for (std::size_t i = 0; i < count; i += kLanes) {
            const Vector x = load(a + i);
            store(digits + i, x);
            store(twice + i, add(x, x));
        }
        set_zero(t, 2 * count + kRows);
        add_square(t, digits, twice, count);
        reduce(r);
    }
    MORVANE_TARGET void select(Digit* r, const Digit* table, std::size_t entries,
                               const std::size_t* indices) const noexcept {
        const std::size_t count = count_;
        Vector masks[kMaxEntries];
        for (std::size_t entry = 0; entry < entries; ++entry) masks[entry] = fill(mask_if_equal<Digit>(entry, indices[0]));
        for (std::size_t i = 0; i < count; i += kLanes) {
            Vector chosen = fill(0);
            const Digit* digits = table + i;
            for (std::size_t entry = 0; entry < entries; ++entry, digits += count) {
                chosen = add(chosen, both(load(digits), masks[entry]));
            }
            store(r + i, chosen);
        }
    }

    void enter(Digit* r, std::span<const Word> base) const noexcept {
        to_digits<Bits>(r, count_, base);
        multiply(r, r, square_.get());
    }
    bool leave(Word* words, Digit* a) const noexcept {
        multiply(a, a, leave_.get());
        Digit carry = 0;
        for (std::size_t i = 0; i < count_; ++i) {
            carry += a[i];
            a[i] = carry & kDigitMask<Bits>;
            carry >>= Bits;
        }
        return modulus_.reduce_by_64(words, a);
    }

private:
    // r = t / R.
    MORVANE_TARGET void reduce(Digit* r) const noexcept {
        // Not read again and again: loads from where a store of the moment lies, modulo a page, wait for it.
        const std::size_t count = count_;
        Digit* const t = t_.get();
        Digit* const q = q_.get();
        const Digit* const inverse = inverse_.get() + kZerosBelow;
        const Digit* const m = m_.get() + kZerosBelow;
        carry_twice<Bits>(t, t, 2 * count);
        set_zero(q, count + kRows);
        for (std::size_t i = 0; i < count; i += kRows) add_rows(q + i, inverse, t + i, (count - i) / kLanes);
        carry_twice<Bits>(q, q, count);

        // The lower half is a multiple of R, and its four highest columns tell which: what they do not say, and what the
        // shifts round off, takes at most 1 from the last sum.
        const std::size_t known = count - kRows;
        for (std::size_t i = 0; i < count; i += kRows) {
            add_rows(t + known, m + known - i, q + i, (i + 2 * kRows) / kLanes);
        }
        Digit sum = t[known];
        for (std::size_t i = 1; i < kRows; ++i) sum = (sum >> Bits) + t[known + i];
        t[count] += (sum + 1) >> Bits;
        carry_twice<Bits>(r, t + count, count);
    }

    bool ready_ = false;
    std::size_t count_;
    WholeModulus<Bits> modulus_;
    Number m_;
    Number inverse_;    // -1 / m mod R
    mutable Number a_;  // the work space of each operation
    mutable Number twice_;
    mutable Work<Digit, 2 * kUsual + kRows> t_;
    mutable Work<Digit, kUsual + kRows> q_;
    Work<Digit, kUsual> one_;     // 1 in Montgomery's form
    Work<Digit, kUsual> square_;  // the factor into it
    Work<Digit, kUsual> leave_;   // 2^64
};

// Digits of 29 bits where so many can be summed up.
inline constexpr std::size_t kFewWords = 8;

inline bool is_short(const Power& power) noexcept { return power.modulus.size() < kFewWords; }
inline bool fits_29(const Power& power) noexcept { return ColumnRing<29>::digits_for(power.modulus) <= kMostDigits<29>; }
inline bool fits_28(const Power& power) noexcept { return ColumnRing<28>::digits_for(power.modulus) <= kMostDigits<28>; }

inline bool power_columns(const Power& power) noexcept {
    if (is_short(power)) return power_limbs(power);
    if (fits_29(power)) return power_in<ColumnRing<29>>(power);
    return fits_28(power) ? power_in<ColumnRing<28>>(power) : power_limbs(power);
}

inline bool power_product_columns(const Power& a, const Power& b) noexcept {
    if (is_short(a)) return power_product_limbs(a, b);
    if (fits_29(a)) return power_product_in<ColumnRing<29>>(a, b);
    return fits_28(a) ? power_product_in<ColumnRing<28>>(a, b) : power_product_limbs(a, b);
}

}  // namespace
}  // namespace morvane::bignum
