// Multiples and sums of points against OpenSSL.
#include <openssl/ec.h>
#include <openssl/obj_mac.h>

#include "cpu/cpu.h"
#include "ec/binary.h"
#include "ec/curve.h"
#include "internal/each_row.h"
#include "support/bytes.h"

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
    {ec::kSect163k1, NID_sect163k1}, {ec::kC2pnb163v1, NID_X9_62_c2pnb163v1}, {ec::kSecp160r1, NID_secp160r1}};

using Number = std::unique_ptr<BIGNUM, void (*)(BIGNUM*)>;
using Group = std::unique_ptr<EC_GROUP, void (*)(EC_GROUP*)>;
using Point = std::unique_ptr<EC_POINT, void (*)(EC_POINT*)>;

struct Scalar {
    std::uint32_t words[ec::kWords];
};

Number number_of(const std::uint32_t* words) {
    Bytes octets(4 * ec::kWords);
    for (std::size_t i = 0; i < octets.size(); ++i)
        octets[octets.size() - 1 - i] = static_cast<std::uint8_t>(words[i / 4] >> 8 * (i % 4));
    return {BN_bin2bn(octets.data(), static_cast<int>(octets.size()), nullptr), BN_free};
}

void words_of(std::uint32_t* words, const BIGNUM* number) {
    std::uint8_t octets[4 * ec::kWords];
    ASSERT_GT(BN_bn2lebinpad(number, octets, sizeof octets), 0);
    std::memcpy(words, octets, sizeof octets);
}

bool operator_equal(const TORVA_V1_POINT& a, const TORVA_V1_POINT& b) { return std::memcmp(&a, &b, sizeof a) == 0; }

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
        for (const BN_ULONG times : {0, 1, 2, 3}) {
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
            ASSERT_EQ(ec::multiply_base(r, id, k.words), EC_POINT_is_at_infinity(group.get(), base.get()) == 0);
            ASSERT_TRUE(operator_equal(r, ours(base.get())));
            const Point product = multiple(nullptr, &k, p.get());
            ASSERT_EQ(ec::multiply(r, id, k.words, ours(p.get())),
                      EC_POINT_is_at_infinity(group.get(), product.get()) == 0);
            ASSERT_TRUE(operator_equal(r, ours(product.get())));
            const Point both = multiple(&k, &other, p.get());
            ASSERT_EQ(ec::multiply_two_vt(r, id, k.words, other.words, ours(p.get())),
                      EC_POINT_is_at_infinity(group.get(), both.get()) == 0);
            ASSERT_TRUE(operator_equal(r, ours(both.get())));
            p = multiple(&other, nullptr, nullptr);
        }
    };
    if (id == ec::kSecp160r1) {
        check();
    } else {
        with_each_row(ec::binary_multiply, [&](ec::BinaryMultiplyFn*) { check(); });
    }
}

INSTANTIATE_TEST_SUITE_P(Curves, PointsDifferential, testing::ValuesIn(kCurves),
                         [](const auto& info) { return std::to_string(info.param.id); });

}  // namespace
