// Every routine of the big numbers that this machine can run, against the plain one.
#include "bignum/kernel_variants.h"
#include "bignum/odd_modulus.h"
#include "bignum/power_engines.h"
#include "bignum/power_lanes.h"
#include "bignum/product.h"
#include "bignum/rows.h"
#include "internal/each_row.h"
#include "support/numbers.h"
#include "support/seeded.h"

#include <numeric>

namespace {

using namespace morvane;
using namespace morvane::bignum;
using namespace morvane::test;

using Limbs = std::vector<Limb>;

constexpr std::uint32_t kSeed = 20302;

// Lengths in words: each one that code for short numbers may treat on its own, and a few around the frames' sizes.
std::vector<std::size_t> lengths() {
    std::vector<std::size_t> all(40);
    std::iota(all.begin(), all.end(), 1);
    all.insert(all.end(), {64, 128, 150, 160, 225});
    return all;
}

Limbs limbs_of(const Words& words) {
    Limbs limbs(limbs_for(words.size()));
    load_limbs(limbs.data(), words.data(), words.size());
    return limbs;
}

Limbs shaped_limbs(Random& random, std::size_t count) { return limbs_of(shaped_words(random, count * kWordsPerLimb)); }

Limbs junk(std::size_t count) { return Limbs(count, Limb{0} - 0x11); }  // the last one is a guard

// Odd numbers of `count` words: just above a power of two and just below one, and shaped ones.
std::vector<Words> moduli(Random& random, std::size_t count) {
    std::vector<Words> all = {Words(count), Words(count), Words(count, UINT32_MAX), Words(count, UINT32_MAX)};
    all[0].back() = 1;
    all[1].back() = 0x80000000;
    all[3][0] -= 4;
    for (int i = 0; i < 3; ++i) all.push_back(shaped_words(random, count));
    for (Words& m : all) m[0] |= 1;
    return all;
}

TEST(BignumVariants, MultiplyAndSquareAlike) {
    Seeded random(kSeed);
    for (const std::size_t n : lengths()) {
        for (const std::size_t other : {n, std::size_t{1}, 1 + n / 2, n + 3}) {
            for (int i = 0; i < 4; ++i) {
                const Limbs a = i == 0 ? Limbs(n, ~Limb{0}) : shaped_limbs(random, n);
                const Limbs b = i == 0 ? Limbs(other, ~Limb{0}) : shaped_limbs(random, other);
                Limbs product = junk(n + other + 1), square = junk(2 * n + 1);
                multiply_plain(product.data(), a.data(), n, b.data(), other);
                square_plain(square.data(), a.data(), n);
                with_each_row(multiply_variants, [&](MultiplyFn* run) {
                    Limbs r = junk(n + other + 1);
                    run(r.data(), a.data(), n, b.data(), other);
                    ASSERT_EQ(r, product) << n << " by " << other << " limbs";
                });
                with_each_row(square_variants, [&](SquareFn* run) {
                    Limbs r = junk(2 * n + 1);
                    run(r.data(), a.data(), n);
                    ASSERT_EQ(r, square) << n << " limbs";
                });
                with_each_row(multiply_subtract_variants, [&](RowFn* run) {
                    Limbs expected = product, r = product;
                    const Limb borrow = multiply_subtract_row(expected.data(), a.data(), n, b.back());
                    ASSERT_EQ(run(r.data(), a.data(), n, b.back()), borrow) << n << " limbs";
                    ASSERT_EQ(r, expected) << n << " limbs";
                });
            }
        }
    }
}

// u = q d + d - 1: the greatest remainder that there is. Shaped quotients and divisors make estimates too large.
TEST(BignumVariants, DivideWhatWasMultiplied) {
    Seeded random(kSeed);
    for (const std::size_t n : lengths()) {
        for (const std::size_t q_size : {n, 1 + n / 3, 2 * n + 1}) {
            const Limbs q = shaped_limbs(random, q_size);
            Limbs d = shaped_limbs(random, n), u(n + q_size);
            d.back() |= Limb{1} << (kLimbBits - 1);
            multiply_plain(u.data(), q.data(), q_size, d.data(), n);
            Limbs remainder = d;
            --remainder[0];
            if (d[0] == 0) continue;
            Limb carry = add(u.data(), u.data(), remainder.data(), n);
            for (std::size_t i = n; i < u.size(); ++i) carry = add(&u[i], &u[i], &carry, 1);
            with_each_row(multiply_variants, [&](MultiplyFn*) {
                Limbs found = junk(q_size + 1), left = u, only_left = u;
                divide(found.data(), left.data(), left.size(), d.data(), n);
                divide(nullptr, only_left.data(), left.size(), d.data(), n);
                ASSERT_EQ(found.back(), junk(1)[0]);
                found.pop_back();
                ASSERT_EQ(found, q) << n << " limbs";
                ASSERT_EQ(only_left, left);
                left.resize(n);
                ASSERT_EQ(left, remainder) << n << " limbs";
            });
        }
    }
}

TEST(BignumVariants, ApplyRunsAlike) {
    Seeded random(kSeed);
    for (std::size_t n = 1; n < 24; ++n) {
        for (int i = 0; i < 8; ++i) {
            // The greatest sums of coefficients in half of the runs.
            const Limbs factors = shaped_limbs(random, 4);
            const auto other = [&](Limb f, Limb any) { return i % 2 == 0 ? Limb{0} - f : any & ~f; };
            const lehmer::Run run{factors[0], other(factors[0], factors[1]), factors[2], other(factors[2], factors[3]), 0};
            const Limbs u = i < 2 ? Limbs(n, ~Limb{0}) : shaped_limbs(random, n), v = shaped_limbs(random, n);
            for (const std::size_t dropped : {std::size_t{0}, std::size_t{1}}) {
                Limbs plain_u = u, plain_v = v;
                const lehmer::Carries carries = lehmer::apply_plain(run, plain_u.data(), plain_v.data(), n, dropped);
                with_each_row(apply_variants, [&](ApplyFn* apply) {
                    Limbs r = u, s = v;
                    const lehmer::Carries found = apply(run, r.data(), s.data(), n, dropped);
                    ASSERT_EQ(found.u, carries.u) << n << " limbs";
                    ASSERT_EQ(found.v, carries.v) << n << " limbs";
                    ASSERT_EQ(r, plain_u) << n << " limbs, " << dropped;
                    ASSERT_EQ(s, plain_v) << n << " limbs, " << dropped;
                });
            }
        }
    }
}

TEST(BignumVariants, ReduceAlike) {
    Seeded random(kSeed);
    for (const std::size_t words : lengths()) {
        for (const Words& modulus : moduli(random, words)) {
            const Limbs m = limbs_of(modulus);
            const std::size_t n = m.size();
            const Limb minus_inverse = Limb{0} - static_cast<Limb>(inverse_of_odd(m[0]));
            for (int i = 0; i < 4; ++i) {
                // The greatest input, which is m B^n - 1; an upper half of m - 1; multiples of m; an upper half of 0.
                Limbs t = i == 0 ? Limbs(n, ~Limb{0}) : shaped_limbs(random, n);
                t.resize(2 * n);
                if (i < 2) std::copy(m.begin(), m.end(), t.begin() + static_cast<std::ptrdiff_t>(n));
                if (i < 2) --t[n];
                if (i == 2) multiply_plain(t.data(), m.data(), n, shaped_limbs(random, n).data(), n);
                Limbs expected = junk(n + 1), plain_t = t;
                montgomery_reduce_plain(expected.data(), plain_t.data(), m.data(), n, minus_inverse);
                ASSERT_LT(compare(expected.data(), m.data(), n), 0);
                with_each_row(reduce_variants, [&](ReduceFn* run) {
                    Limbs r = junk(n + 1), used = t;
                    run(r.data(), used.data(), m.data(), n, minus_inverse);
                    ASSERT_EQ(r, expected) << words << " words, input " << i;
                    used = t;
                    run(used.data(), used.data(), m.data(), n, minus_inverse);
                    used.resize(n);
                    used.push_back(r.back());
                    ASSERT_EQ(used, expected) << words << " words, input " << i << ", in place";
                });
                // The upper half by itself, and by all ones.
                const Limbs b(t.begin() + static_cast<std::ptrdiff_t>(n), t.end());
                if (compare(b.data(), m.data(), n) >= 0) continue;
                for (const bool is_square : {false, true}) {
                    const Limbs a = is_square ? b : Limbs(n, ~Limb{0});
                    Limbs product(2 * n), rest(n);
                    multiply_plain(product.data(), a.data(), n, b.data(), n);
                    montgomery_reduce_plain(rest.data(), product.data(), m.data(), n, minus_inverse);
                    with_each_row(montgomery_variants, [&](MontgomeryFn* run) {
                        Limbs r = b, reduced(n);
                        run(r.data(), product.data(), is_square ? r.data() : a.data(), r.data(), m.data(), n,
                            minus_inverse);
                        reduce_once(reduced.data(), r.data(), m.data(), n, 0);
                        ASSERT_EQ(reduced, rest) << words << " words, input " << i;
                    });
                }
            }
        }
    }
}

TEST(BignumVariants, ComputeThePowersOfDivision) {
    Seeded random(kSeed);
    for (const std::size_t n : lengths()) {
        const std::vector<Words> all = moduli(random, n);
        for (std::size_t i = 0; i < (n < 200 ? all.size() : 1); ++i) {
            const std::size_t e_words = n < 20 ? 1 + i % 3 : 1 + i % 2;
            std::array<Words, 2> bases, exponents, expected, results;
            std::array<Power, 2> powers;
            for (std::size_t s = 0; s < 2; ++s) {
                const Words& m = all[(i + 3 * s) % all.size()];
                bases[s] = i == 0 ? Words(n, UINT32_MAX) : shaped_words(random, random.below(4) == 0 ? n / 2 : n);
                exponents[s] = shaped_words(random, e_words);
                expected[s] = results[s] = Words(n + 1, 0x5aa55aa5);
                powers[s] = {bases[s], exponents[s], m, expected[s].data(), i % 3 != 0};
                ASSERT_TRUE(power_division(powers[s]));
                powers[s].result = results[s].data();
            }
            SCOPED_TRACE(testing::Message() << n << " words, modulus " << i);
            with_each_row(power_odd, [&](PowerFn* run) {
                ASSERT_TRUE(run(powers[0]));
                ASSERT_EQ(results[0], expected[0]);
                for (const char* const at : {"first sight", "the table is made", "by the table"}) {
                    std::ranges::fill(results[0], 0x5aa55aa5);
                    ASSERT_TRUE(run({bases[0], exponents[0], powers[0].modulus, results[0].data(), false, true}));
                    ASSERT_EQ(results[0], expected[0]) << at;
                }
                if (bases[0].size() == n) {  // in place of the base
                    Words base = bases[0];
                    ASSERT_TRUE(run({base, exponents[0], powers[0].modulus, base.data(), i % 3 == 0}));
                    ASSERT_TRUE(std::equal(base.begin(), base.end(), expected[0].begin()));
                }
            });
            with_each_row(power_pair, [&](PowerPairFn* run) {
                results.fill(Words(n + 1, 0x5aa55aa5));
                powers[0].result = results[0].data();
                powers[1].result = results[1].data();
                ASSERT_TRUE(e_words > 1 ? run(powers) : power_mod_pair(powers));
                ASSERT_EQ(results, expected);
            });

            // As many as there are lanes; all of one base, too.
            const std::size_t count = 2 + i % (kLanePowers - 1);
            for (const Words& base : {bases[0], Words{2}}) {
                std::vector<Words> lanes(count, Words(n + 1, 0x5aa55aa5)), alone = lanes;
                std::vector<Power> together;
                for (std::size_t s = 0; s < count; ++s) {
                    const bool second = base.size() != 1 && s % 2 != 0;
                    together.push_back(
                        {second ? bases[1] : base, exponents[s % 2], powers[s % 2].modulus, alone[s].data()});
                    ASSERT_TRUE(power_division(together[s]));
                    together[s].result = lanes[s].data();
                }
                with_each_row(power_lanes, [&](PowerLanesFn* run) {
                    lanes.assign(count, Words(n + 1, 0x5aa55aa5));
                    for (std::size_t s = 0; s < count; ++s) together[s].result = lanes[s].data();
                    ASSERT_TRUE(run(together));
                    ASSERT_EQ(lanes, alone);
                });
            }

            Words factor(n), product(2 * n), both(n);
            ASSERT_TRUE(power_division({bases[1], exponents[1], powers[0].modulus, factor.data()}));
            ENUM a{0, static_cast<std::int32_t>(n), expected[0].data()};
            ENUM b{0, static_cast<std::int32_t>(n), factor.data()};
            ENUM r{0, 0, product.data()};
            EN_Mul(&r, &a, &b);
            ASSERT_TRUE(divide_words(nullptr, factor.data(), product, powers[0].modulus));
            with_each_row(power_product, [&](PowerProductFn* run) {
                powers[0].result = both.data();
                ASSERT_TRUE(run(powers[0], powers[1]));
                ASSERT_EQ(both, factor);
                for (const char* const at : {"first sight", "the tables are made", "by the tables"}) {
                    std::array<Power, 2> lasting = powers;
                    lasting[0].is_base_lasting = lasting[1].is_base_lasting = true;
                    ASSERT_TRUE(run(lasting[0], lasting[1]));
                    ASSERT_EQ(both, factor) << at;
                }
            });
        }
    }
}

}  // namespace
