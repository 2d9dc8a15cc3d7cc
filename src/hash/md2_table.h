// The substitution table of MD2 (RFC 1319): a permutation of the 256 bytes, shuffled by the decimal digits of pi.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace morvane::hash {

// Decimal digits of pi, "3" the first, by pi = 16 arctan(1/5) - 4 arctan(1/239).
class PiDigits {
public:
    static constexpr std::size_t kCount = 722;  // what the shuffle uses

    constexpr PiDigits() {
        add_arctan(5, 16, true);
        add_arctan(239, 4, false);
    }

    constexpr unsigned digit(std::size_t n) const {
        if (n == 0) return sum_[0];
        std::uint32_t limb = sum_[1 + (n - 1) / kLimbDigits];
        for (std::size_t skip = kLimbDigits - 1 - (n - 1) % kLimbDigits; skip != 0; --skip) limb /= 10;
        return limb % 10;
    }

private:
    // Fixed point: an integer limb, then limbs of nine decimal digits, two more than asked for against rounding.
    static constexpr std::size_t kLimbDigits = 9;
    static constexpr std::uint32_t kLimb = 1000000000;
    static constexpr std::size_t kLimbs = 1 + kCount / kLimbDigits + 3;
    using Number = std::array<std::uint32_t, kLimbs>;

    static constexpr bool divide(const Number& number, std::uint32_t by, Number& quotient) {
        std::uint64_t rest = 0;
        bool any = false;
        for (std::size_t i = 0; i < kLimbs; ++i) {
            const std::uint64_t part = rest * kLimb + number[i];
            quotient[i] = static_cast<std::uint32_t>(part / by);
            rest = part % by;
            any |= quotient[i] != 0;
        }
        return any;
    }

    constexpr void add(const Number& term, bool positive) {
        std::int64_t carry = 0;
        for (std::size_t i = kLimbs; i-- != 0;) {
            std::int64_t limb = std::int64_t{sum_[i]} + carry + (positive ? 1 : -1) * std::int64_t{term[i]};
            carry = limb < 0 ? -1 : limb >= kLimb ? 1 : 0;
            sum_[i] = static_cast<std::uint32_t>(limb - carry * std::int64_t{kLimb});
        }
    }

    // Adds or subtracts factor * arctan(1 / x).
    constexpr void add_arctan(std::uint32_t x, std::uint32_t factor, bool positive) {
        Number power{factor};
        Number term{};
        bool any = divide(power, x, power);
        for (std::uint32_t odd = 1; any; odd += 2, positive = !positive) {
            divide(power, odd, term);
            add(term, positive);
            any = divide(power, x * x, power);
        }
    }

    Number sum_{};
};

constexpr std::array<std::uint8_t, 256> make_md2_table() {
    const PiDigits pi;
    std::size_t next = 0;
    // A number below n, from as many digits as its range needs; what would favour the low numbers is read afresh.
    const auto random_below = [&](unsigned n) {
        const int digits = n <= 10 ? 1 : n <= 100 ? 2 : 3;
        for (;;) {
            unsigned number = 0;
            unsigned range = 1;
            for (int i = 0; i < digits; ++i) {
                number = 10 * number + pi.digit(next++);
                range *= 10;
            }
            if (number < n * (range / n)) return number % n;
        }
    };
    std::array<std::uint8_t, 256> table{};
    for (unsigned i = 0; i < 256; ++i) table[i] = static_cast<std::uint8_t>(i);
    for (unsigned i = 2; i <= 256; ++i) std::swap(table[random_below(i)], table[i - 1]);
    return table;
}

inline constexpr std::array<std::uint8_t, 256> kMd2Table = make_md2_table();
static_assert(kMd2Table[0] == 0x29 && kMd2Table[1] == 0x2e && kMd2Table[128] == 0x45 && kMd2Table[255] == 0x14);

}  // namespace morvane::hash
