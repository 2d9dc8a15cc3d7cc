// Points as strangers send them, and their multiples. Whether a point is one is decided here by the curve's equation in
// slow arithmetic, and what its multiples are by additions alone.
#include <morvane/ecc.h>

#include "fuzz.h"
#include "support/integer.h"

#include <algorithm>
#include <bitset>
#include <cstring>

using namespace morvane::test;

namespace {

using Element = std::bitset<192>;  // a field element of degree below 163, or six words
using Coordinate = std::uint32_t[E_EC_WORDS];

struct Curve {
    std::int32_t id;
    E_EC_PARAMS params;
    Element traced;           // the powers of x whose trace is 1
    TORVA_V1_POINT two = {};  // the point of order 2 on a curve over GF(2^163): (0, sqrt(b))

    explicit Curve(std::int32_t of);
    bool is_prime() const { return id == 7; }
    std::size_t octets() const { return is_prime() ? 20 : 21; }
    TORVA_V1_POINT base() const {
        TORVA_V1_POINT point = {};
        std::copy_n(params.x_words, params.x.length, point.x);
        std::copy_n(params.y_words, params.y.length, point.y);
        return point;
    }
};

Element element(const std::uint32_t* words, std::size_t count = E_EC_WORDS) {
    Element e;
    for (std::size_t i = 0; i < 32 * count; ++i) e[i] = (words[i / 32] >> i % 32 & 1) != 0;
    return e;
}

Element product(const Curve& curve, const Element& a, const Element& b) {
    Element r;
    const Element polynomial = element(curve.params.field_words);
    for (std::size_t i = 163; i-- > 0;) {
        r <<= 1;
        if (r[163]) r ^= polynomial;
        if (b[i]) r ^= a;
    }
    return r;
}

Integer integer(const Coordinate& words) {
    const Integer any(ENUM{0, E_EC_WORDS, const_cast<std::uint32_t*>(words)});
    return Integer(any.octets());
}

bool is_on(const Curve& curve, const TORVA_V1_POINT& point) {
    if (curve.is_prime()) {
        const Integer p = Integer(curve.params.field), x = integer(point.x), y = integer(point.y);
        return y * y % p == (x * x % p * x + Integer(curve.params.a) * x + Integer(curve.params.b)) % p;
    }
    const Element x = element(point.x), y = element(point.y), xx = product(curve, x, x);
    return (product(curve, y, y) ^ product(curve, x, y)) ==
           (product(curve, xx, x ^ element(curve.params.a_words, static_cast<std::size_t>(curve.params.a.length))) ^
            element(curve.params.b_words, static_cast<std::size_t>(curve.params.b.length)));
}

Curve::Curve(std::int32_t of) : id(of) {
    E_ECParams_Init(of, &params);
    if (is_prime()) return;
    for (std::size_t i = 0; i < 163; ++i) {
        Element x, sum;
        x[i] = true;
        for (int k = 0; k < 163; ++k, x = product(*this, x, x)) sum ^= x;
        traced[i] = sum[0];
    }
    Element root = element(params.b_words, static_cast<std::size_t>(params.b.length));
    for (int i = 0; i < 162; ++i) root = product(*this, root, root);
    for (std::size_t i = 0; i < root.size(); ++i) two.y[i / 32] |= static_cast<std::uint32_t>(root[i]) << i % 32;
}

bool trace(const Curve& curve, const Element& x) { return (x & curve.traced).count() % 2 != 0; }

// Whether a point on the curve is in the subgroup: all are on curve 7; of the others those are whose half is a point.
bool is_in_subgroup(const Curve& curve, const TORVA_V1_POINT& point) {
    if (curve.is_prime()) return true;
    const Element a = element(curve.params.a_words, static_cast<std::size_t>(curve.params.a.length));
    return trace(curve, element(point.x)) == trace(curve, a);
}

// By doubling and adding.
TORVA_V1_POINT multiple(const Curve& curve, const Element& k, const TORVA_V1_POINT& point) {
    TORVA_V1_PROJECTIVE sum = {}, p;
    TORVA_V1_toProjective(curve.id, &curve.params, &point, &p);
    for (std::size_t i = k.size(); i-- > 0;) {
        TORVA_V1_pdouble(curve.id, &curve.params, &sum, &sum);
        if (k[i]) TORVA_V1_padd(curve.id, &curve.params, &sum, &p, &sum);
    }
    TORVA_V1_POINT result;
    TORVA_V1_toAffine(curve.id, &curve.params, &sum, &result);
    return result;
}

std::int32_t validity(const Curve& curve, const Bytes& octets) {
    const std::size_t size = 2 * curve.octets() + 1;
    const auto last = std::min<std::size_t>(octets.size(), size);
    if (octets.empty() || std::count(octets.begin() + 1, octets.begin() + static_cast<std::ptrdiff_t>(last), 0) + 1 ==
                              static_cast<std::ptrdiff_t>(last)) {
        return -1;
    }
    if (octets.size() != size) return -2;
    Bytes uncompressed = octets;
    uncompressed[0] = 4;
    const TORVA_V1_OPAQUE8 encoded = {static_cast<std::int32_t>(size), uncompressed.data()};
    TORVA_V1_POINT point = {};
    EXPECT_EQ(TORVA_V1_opaque8ToECPoints(curve.id, &encoded, &point), 1);
    for (const auto* const coordinate : {&point.x, &point.y}) {
        if (curve.is_prime() ? EN_Comp(integer(*coordinate), Integer(curve.params.field)) > 0 : (*coordinate)[5] > 7) {
            return -2;
        }
    }
    if (!is_on(curve, point)) return -3;
    return is_in_subgroup(curve, point) ? 1 : -4;
}

// A multiple of the base point, with the point of order two added to it or not, as octets, some of which are changed.
Bytes octets_of(const Curve& curve, Random& random) {
    if (random.below(4) == 0) return random.bytes(random.below(50));
    std::uint32_t scalar[E_EC_WORDS] = {1 + random.below(1000)};
    const TORVA_V1_POINT base = curve.base();
    TORVA_V1_POINT point;
    TORVA_V1_ScalarMultiplicationOnEllipticCurves(curve.id, &curve.params, scalar, E_EC_WORDS, &base, &point);
    if (!curve.is_prime() && random.below(4) == 0) {
        TORVA_V1_PROJECTIVE a, b;
        TORVA_V1_toProjective(curve.id, &curve.params, random.below(4) == 0 ? &curve.two : &point, &a);
        TORVA_V1_toProjective(curve.id, &curve.params, &curve.two, &b);
        TORVA_V1_padd(curve.id, &curve.params, &a, &b, &a);
        TORVA_V1_toAffine(curve.id, &curve.params, random.below(4) == 0 ? &b : &a, &point);
    }
    Bytes octets(E_EC_POINT_OCTETS);
    TORVA_V1_OPAQUE8 encoded = {0, octets.data()};
    TORVA_V1_ECPointsToopaque8(curve.id, 1, &point, &encoded);
    octets.resize(static_cast<std::size_t>(encoded.count));
    for (std::uint32_t edits = random.below(4); edits > 1; --edits) {
        octets[random.below(size32(octets))] ^= static_cast<std::uint8_t>(random.below(256));
    }
    return octets;
}

// Every way to a multiple, also by the rules for curves that somebody else fills in.
void expect_multiples(const Curve& curve, const Bytes& octets, Random& random) {
    TORVA_V1_POINT point, table[TORVA_V1_COMB_POINTS], product;
    const TORVA_V1_OPAQUE8 encoded = {static_cast<std::int32_t>(octets.size()), const_cast<std::uint8_t*>(octets.data())};
    TORVA_V1_opaque8ToECPoints(curve.id, &encoded, &point);
    std::uint32_t scalar[E_EC_WORDS];
    for (std::uint32_t& word : scalar) word = random.below(4) == 0 ? 0 - random.below(3) : random.below(UINT32_MAX);
    if (random.below(2) == 0) {  // near a multiple of the order
        Integer near = Integer(curve.params.n) * Integer(random.below(4)) + Integer(random.below(4));
        std::fill_n(std::copy_n(near->words, std::min(near->length, E_EC_WORDS), scalar),
                    E_EC_WORDS - std::min(near->length, E_EC_WORDS), 0);
    }
    const auto words = static_cast<std::int32_t>(random.below(E_EC_WORDS + 1));
    const TORVA_V1_POINT expected = multiple(curve, element(scalar, static_cast<std::size_t>(words)), point);
    const auto expect_product = [&] { EXPECT_EQ(std::memcmp(&product, &expected, sizeof product), 0) << to_hex(octets); };
    TORVA_V1_PROJECTIVE p, twice, sum;
    TORVA_V1_toProjective(curve.id, &curve.params, &point, &p);
    TORVA_V1_pdouble(curve.id, &curve.params, &p, &twice);
    TORVA_V1_padd(curve.id, &curve.params, &p, &p, &sum);
    TORVA_V1_toAffine(curve.id, &curve.params, &twice, &product);
    TORVA_V1_toAffine(curve.id, &curve.params, &sum, &table[0]);
    EXPECT_EQ(std::memcmp(&product, &table[0], sizeof product), 0) << "p + p for " << to_hex(octets);
    for (const std::int32_t id : {curve.id, 11}) {
        if (id == 11 && (curve.is_prime() || random.below(4) != 0)) continue;
        EXPECT_EQ(TORVA_V1_ScalarMultiplicationOnEllipticCurves(id, &curve.params, scalar, words, &point, &product), 0);
        expect_product();
        EXPECT_EQ(TORVA_V1_combPrecompute(id, &curve.params, &point, table), 0);
        EXPECT_EQ(TORVA_V1_combMultiply(id, &curve.params, scalar, words, table, &product), 0);
        expect_product();
    }
}

// Whatever the parameters and the points: no harm.
void expect_no_harm(Random& random, const Curve& of) {
    Curve curve = of;
    E_ECParams_Init(curve.id, &curve.params);
    for (auto* const words : {&curve.params.field_words, &curve.params.a_words, &curve.params.b_words}) {
        for (std::uint32_t edits = random.below(3); edits != 0; --edits) {
            const std::uint32_t bit = random.below(32 * E_EC_WORDS);
            (*words)[bit / 32] ^= 1U << bit % 32;
        }
    }
    curve.params.a.length = static_cast<std::int32_t>(random.below(9)) - 1;
    TORVA_V1_POINT point, product;
    for (auto* const words : {&point.x, &point.y}) {
        for (std::uint32_t& word : *words) word = random.below(UINT32_MAX);
    }
    const std::uint32_t scalar[] = {random.below(UINT32_MAX), 7, random.below(9), 1};
    TORVA_V1_ScalarMultiplicationOnEllipticCurves(random.below(2) == 0 ? 11 : 22, &curve.params, scalar, 4, &point,
                                                  &product);
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Curve curves[] = {Curve(3), Curve(5), Curve(7)};
    Random random = choices_of(data, size);
    const std::uint32_t chosen = random.below(8);
    if (chosen == 7) return expect_no_harm(random, curves[0]), 0;
    const Curve& curve = curves[chosen % 3];
    Bytes octets = octets_of(curve, random);
    const std::int32_t expected = validity(curve, octets);
    const TORVA_V1_OPAQUE8 encoded = {static_cast<std::int32_t>(octets.size()), octets.data()};
    EXPECT_EQ(TORVA_V1_IsValidPoint(curve.id, &curve.params, &encoded), expected) << curve.id << " " << to_hex(octets);
    if ((expected == 1 || expected == -4) && octets[0] == 4 && random.below(4) == 0)
        expect_multiples(curve, octets, random);
    return 0;
}
