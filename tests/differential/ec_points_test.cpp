// Multiples and sums of points against OpenSSL.
#include <openssl/ec.h>
#include <openssl/obj_mac.h>

#include "cpu/cpu.h"
#include "ecc/binary.h"
#include "ecc/curve.h"
#include "internal/each_row.h"
#include "support/bytes.h"

#include <cstring>
#include <memory>

namespace {

using namespace morvane;
using namespace morvane::test;

constexpr std::uint32_t kSeed = 20318;

struct Curve {
    std::int32_t id;
    int nid;
};
constexpr Curve kCurves[] = {
    {ecc::kSect163k1, NID_sect163k1}, {ecc::kC2pnb163v1, NID_X9_62_c2pnb163v1}, {ecc::kSecp160r1, NID_secp160r1}};

using Number = std::unique_ptr<BIGNUM, void (*)(BIGNUM*)>;
using Group = std::unique_ptr<EC_GROUP, void (*)(EC_GROUP*)>;
using Point = std::unique_ptr<EC_POINT, void (*)(EC_POINT*)>;

struct Scalar {
    std::uint32_t words[ecc::kWords];
};

Number number_of(const std::uint32_t* words) {
    Bytes octets(4 * ecc::kWords);
    for (std::size_t i = 0; i < octets.size(); ++i)
        octets[octets.size() - 1 - i] = static_cast<std::uint8_t>(words[i / 4] >> 8 * (i % 4));
    return {BN_bin2bn(octets.data(), static_cast<int>(octets.size()), nullptr), BN_free};
}

void words_of(std::uint32_t* words, const BIGNUM* number) {
    std::uint8_t octets[4 * ecc::kWords];
    ASSERT_GT(BN_bn2lebinpad(number, octets, sizeof octets), 0);
    std::memcpy(words, octets, sizeof octets);
}

bool are_equal(const TORVA_V1_POINT& a, const TORVA_V1_POINT& b) { return std::memcmp(&a, &b, sizeof a) == 0; }

class PointsDifferential : public testing::TestWithParam<Curve> {
protected:
    const std::int32_t id = GetParam().id;
    const Group group{EC_GROUP_new_by_curve_name(GetParam().nid), EC_GROUP_free};
    const Number n = Number(BN_dup(EC_GROUP_get0_order(group.get())), BN_free);
    Random random{kSeed};

    // (0, 0) for the point at infinity.
    TORVA_V1_POINT ours(const EC_POINT* theirs) const {
        TORVA_V1_POINT r{};
        if (EC_POINT_is_at_infinity(group.get(), theirs) != 0) return r;
        const Number x(BN_new(), BN_free), y(BN_new(), BN_free);
        EXPECT_EQ(EC_POINT_get_affine_coordinates(group.get(), theirs, x.get(), y.get(), nullptr), 1);
        words_of(r.x, x.get());
        words_of(r.y, y.get());
        return r;
    }

    Point point() const { return {EC_POINT_new(group.get()), EC_POINT_free}; }

    // u G + v p; null for 0.
    Point multiple(const Scalar* u, const Scalar* v, const EC_POINT* p) const {
        Point r = point();
        const Number bu = u != nullptr ? number_of(u->words) : Number(nullptr, BN_free);
        const Number bv = v != nullptr ? number_of(v->words) : Number(nullptr, BN_free);
        EXPECT_EQ(EC_POINT_mul(group.get(), r.get(), bu.get(), v != nullptr ? p : nullptr, bv.get(), nullptr), 1);
        return r;
    }

    // Numbers about the multiples of n and at the ends, and any others with runs of ones.
    std::vector<Scalar> scalars(std::size_t more) {
        std::vector<Scalar> all;
        const Number number(BN_new(), BN_free);
        for (const BN_ULONG times : {0U, 1U, 2U, 3U}) {
            for (int offset = -34; offset <= 34; ++offset) {
                BN_copy(number.get(), n.get());
                BN_mul_word(number.get(), times);
                if (offset < 0 && times == 0) continue;
                if (offset < 0) BN_sub_word(number.get(), static_cast<BN_ULONG>(-offset));
                if (offset > 0) BN_add_word(number.get(), static_cast<BN_ULONG>(offset));
                words_of(all.emplace_back().words, number.get());
            }
        }
        Scalar wrap;  // 2^161 - n: the two last digits of the comb meet the same point
        BN_zero(number.get());
        BN_set_bit(number.get(), 161);
        BN_sub(number.get(), number.get(), n.get());
        if (BN_is_negative(number.get()) == 0) {
            words_of(wrap.words, number.get());
            all.push_back(wrap);
        }
        std::memset(wrap.words, 0xff, sizeof wrap.words);
        all.push_back(wrap);
        while (more-- != 0) {
            for (std::uint32_t& word : all.emplace_back().words) {
                const std::uint32_t kind = random.below(4);
                word = kind == 0 ? 0 : kind == 1 ? 0xffffffff : random.below(0xffffffff);
            }
        }
        return all;
    }
};

TEST_P(PointsDifferential, MultiplesOfPoints) {
    const std::vector<Scalar> all = scalars(300);
    const auto check = [&] {
        Point p = multiple(&all[1], nullptr, nullptr);
        for (std::size_t i = 0; i < all.size(); ++i) {
            SCOPED_TRACE("scalar " + std::to_string(i) + ", seed " + std::to_string(kSeed));
            const Scalar& k = all[i];
            const Scalar& other = all[random.below(static_cast<std::uint32_t>(all.size()))];
            TORVA_V1_POINT r;
            std::memset(&r, 0x5a, sizeof r);
            const Point base = multiple(&k, nullptr, nullptr);
            ASSERT_EQ(ecc::multiply_base(r, id, k.words), EC_POINT_is_at_infinity(group.get(), base.get()) == 0);
            ASSERT_TRUE(are_equal(r, ours(base.get())));
            const Point product = multiple(nullptr, &k, p.get());
            ASSERT_EQ(ecc::multiply(r, id, k.words, ours(p.get())),
                      EC_POINT_is_at_infinity(group.get(), product.get()) == 0);
            ASSERT_TRUE(are_equal(r, ours(product.get())));
            const bool meet = i % 8 < 2;  // sums of equal and of opposite points: by 1, and by n - 1
            const Scalar& v = meet ? all[i % 8 == 0 ? 1 : 68] : other;
            const EC_POINT* const q = meet ? base.get() : p.get();
            const Point both = multiple(&k, &v, q);
            ASSERT_EQ(ecc::multiply_two_vt(r, id, k.words, v.words, ours(q)),
                      EC_POINT_is_at_infinity(group.get(), both.get()) == 0);
            ASSERT_TRUE(are_equal(r, ours(both.get())));
            p = multiple(&other, nullptr, nullptr);
        }
    };
    if (id == ecc::kSecp160r1) {
        check();
    } else {
        with_each_row(ecc::binary_multiply, [&](ecc::BinaryMultiplyFn*) { check(); });
    }
}

TEST_P(PointsDifferential, ScalarsModuloTheOrder) {
    const Number mod(BN_new(), BN_free);
    const std::unique_ptr<BN_CTX, void (*)(BN_CTX*)> ctx(BN_CTX_new(), BN_CTX_free);
    const auto expect = [&](const std::uint32_t* found) {
        Scalar expected;
        words_of(expected.words, mod.get());
        EXPECT_EQ(std::memcmp(found, expected.words, sizeof expected.words), 0);
    };
    const std::vector<Scalar> all = scalars(60);
    for (std::size_t i = 1; i < all.size(); ++i) {
        SCOPED_TRACE("scalar " + std::to_string(i) + ", seed " + std::to_string(kSeed));
        Scalar a, b, r;
        ecc::scalar_reduce(a.words, id, all[i].words, 6);
        ecc::scalar_reduce(b.words, id, all[i - 1].words, 6);
        const Number ours_a = number_of(a.words), ours_b = number_of(b.words), full = number_of(all[i].words);
        BN_nnmod(mod.get(), full.get(), n.get(), ctx.get());
        expect(a.words);
        std::uint32_t wide[12];
        std::copy_n(all[i - 1].words, 6, wide);
        std::copy_n(all[i].words, 6, wide + 6);
        ecc::scalar_reduce(r.words, id, wide, 12);
        BN_lshift(mod.get(), full.get(), 192);
        BN_mod_add(mod.get(), mod.get(), number_of(all[i - 1].words).get(), n.get(), ctx.get());
        expect(r.words);
        ecc::scalar_add(r.words, id, a.words, b.words);
        BN_mod_add(mod.get(), ours_a.get(), ours_b.get(), n.get(), ctx.get());
        expect(r.words);
        ecc::scalar_subtract(r.words, id, a.words, b.words);
        BN_mod_sub(mod.get(), ours_a.get(), ours_b.get(), n.get(), ctx.get());
        expect(r.words);
        ecc::scalar_multiply(r.words, id, a.words, b.words);
        BN_mod_mul(mod.get(), ours_a.get(), ours_b.get(), n.get(), ctx.get());
        expect(r.words);
        ecc::scalar_invert(r.words, id, a.words);
        if (BN_mod_inverse(mod.get(), ours_a.get(), n.get(), ctx.get()) == nullptr) BN_zero(mod.get());
        expect(r.words);
    }
}

TEST(CombOnce, IsMadeOnceAndNobodyWaits) {
    ecc::CombOnce<int> once;
    int calls = 0;
    const auto make = [&](ecc::Comb<int>& comb) {
        EXPECT_EQ(once.get([](ecc::Comb<int>&) { FAIL(); }), nullptr);
        comb[0][0] = ++calls;
    };
    const ecc::Comb<int>* const comb = once.get(make);
    ASSERT_NE(comb, nullptr);
    EXPECT_EQ(once.get(make), comb);
    EXPECT_EQ((*comb)[0][0], 1);
}

INSTANTIATE_TEST_SUITE_P(Curves, PointsDifferential, testing::ValuesIn(kCurves),
                         [](const auto& row) { return std::to_string(row.param.id); });

}  // namespace
