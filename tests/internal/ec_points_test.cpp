// Multiples of points by every routine, and scalars modulo the orders of the curves.
#include "bignum/octets.h"
#include "ecc/binary.h"
#include "ecc/curve.h"
#include "internal/each_row.h"
#include "support/integer.h"
#include "support/vectors.h"

#include <cstring>

namespace {

using namespace morvane;
using namespace morvane::test;

struct Scalar {
    Scalar() = default;
    explicit Scalar(const Bytes& octets) { bignum::octets_to_words(words, ecc::kWords, octets.data(), octets.size()); }
    Integer integer() { return Integer(Integer(ENUM{0, ecc::kWords, words}).octets()); }
    std::uint32_t words[ecc::kWords];
};

// Its two coordinates, or nothing at infinity.
TORVA_V1_POINT point_of(const Bytes& octets) {
    TORVA_V1_POINT point;
    bignum::octets_to_words(point.x, ecc::kWords, octets.data(), octets.size() / 2);
    bignum::octets_to_words(point.y, ecc::kWords, octets.data() + octets.size() / 2, octets.size() / 2);
    return point;
}

TEST(EcPoints, MultiplesMeetTheirVectors) {
    const std::vector<Vector> vectors = load_vectors("ec_points.txt");
    with_each_row(ecc::binary_multiply, [&](auto*) {
        for (const Vector& vector : vectors) {
            SCOPED_TRACE("curve " + vector.text("curve") + ", k = " + vector.text("k"));
            const std::int32_t id = std::stoi(vector.text("curve"));
            const Scalar k(vector.bytes("k")), v(vector.bytes("v"));
            const TORVA_V1_POINT p = point_of(vector.bytes("p"));
            const auto expect = [&](const char* name, auto multiply, auto... arguments) {
                TORVA_V1_POINT r;
                std::memset(&r, 0x5a, sizeof r);
                ASSERT_EQ(multiply(r, id, arguments...), !vector.text(name).empty()) << name;
                const TORVA_V1_POINT expected = point_of(vector.bytes(name));
                ASSERT_EQ(std::memcmp(&r, &expected, sizeof r), 0) << name;
            };
            expect("kg", ecc::multiply_base, k.words);
            expect("kp", ecc::multiply, k.words, p);
            expect("both", ecc::multiply_two_vt, k.words, v.words, p);
        }
    });
}

TEST(EcPoints, ScalarsModuloTheOrder) {
    Scalar order;
    for (const Vector& vector : load_vectors("ec_points.txt")) {
        SCOPED_TRACE("curve " + vector.text("curve") + ", k = " + vector.text("k"));
        const std::int32_t id = std::stoi(vector.text("curve"));
        Scalar full(vector.bytes("k")), other(vector.bytes("v")), a, b, r;
        ecc::order(order.words, id);
        const Integer n = order.integer();
        ecc::scalar_reduce(a.words, id, full.words, 6);
        ecc::scalar_reduce(b.words, id, other.words, 6);
        EXPECT_EQ(a.integer(), full.integer() % n);
        EXPECT_EQ(b.integer(), other.integer() % n);
        std::uint32_t wide[12];
        std::copy_n(other.words, 6, wide);
        std::copy_n(full.words, 6, wide + 6);
        ecc::scalar_reduce(r.words, id, wide, 12);
        EXPECT_EQ(r.integer(), ((full.integer() << 192) + other.integer()) % n);
        ecc::scalar_add(r.words, id, a.words, b.words);
        EXPECT_EQ(r.integer(), (a.integer() + b.integer()) % n);
        ecc::scalar_subtract(r.words, id, a.words, b.words);
        EXPECT_EQ(r.integer(), (a.integer() + n - b.integer()) % n);
        ecc::scalar_multiply(r.words, id, a.words, b.words);
        EXPECT_EQ(r.integer(), a.integer() * b.integer() % n);
        ecc::scalar_invert(r.words, id, a.words);
        EXPECT_EQ(r.integer() * a.integer() % n, a.integer() == Integer() ? Integer() : Integer(1));
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

}  // namespace
