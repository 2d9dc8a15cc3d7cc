// The calls on points.
#include "base/wipe.h"
#include "ecc/any_binary.h"
#include "ecc/secp160r1.h"

#include <algorithm>

namespace {

using namespace morvane;
using namespace morvane::ecc;

constexpr std::size_t kCombTeeth = 4;
constexpr std::size_t kCombDistance = 32 * kWords / kCombTeeth;
static_assert(TORVA_V1_COMB_POINTS == 1 << kCombTeeth);

// A scalar of any count of words up to six.
struct Scalar {
    SecretArray<Word, kWords> words;
    bool fits;

    Scalar(const std::uint32_t* k, std::int32_t count) noexcept : fits(count >= 0 && count <= E_EC_WORDS) {
        if (fits) std::copy_n(k, count, words.items.data());
    }
    const Word* get() const noexcept { return words.items.data(); }
};

// What the calls need of a curve, in the records of the calls.
class P160Curve {
public:
    using Point = p160::Jacobian;

    static Point load(const TORVA_V1_PROJECTIVE& p) noexcept { return {element(p.x), element(p.y), element(p.z)}; }
    static Point load(const TORVA_V1_POINT& p) noexcept {
        const p160::Affine point = p160::load(p);
        return p160::is_infinite(point) ? Point{p160::kOne, p160::kOne, {}} : jacobian(point);
    }
    static void store(TORVA_V1_PROJECTIVE& r, const Point& p) noexcept {
        words_of(r.x, p160::canonical(p.x));
        words_of(r.y, p160::canonical(p.y));
        words_of(r.z, p160::canonical(p.z));
    }
    static void store(TORVA_V1_POINT& r, const Point& p) noexcept { p160::store(r, affine(p)); }
    static Point twice(const Point& p) noexcept { return p160::twice(p); }
    static Point plus(const Point& p, const Point& q) noexcept { return plus_vt(p, q); }

private:
    static p160::Element element(const Word* words) noexcept { return p160::element_of(limbs_of(words)); }
};

class BinaryCurve {
public:
    using Point = BinaryProjective;

    explicit BinaryCurve(const AnyBinaryCurve& curve) noexcept : curve_(curve) {}

    Point load(const TORVA_V1_PROJECTIVE& p) const noexcept { return {reduced(p.x), reduced(p.y), reduced(p.z)}; }
    Point load(const TORVA_V1_POINT& p) const noexcept { return projective({reduced(p.x), reduced(p.y)}); }
    static void store(TORVA_V1_PROJECTIVE& r, const Point& p) noexcept {
        words_of(r.x, p.x);
        words_of(r.y, p.y);
        words_of(r.z, p.z);
    }
    void store(TORVA_V1_POINT& r, const Point& p) const noexcept {
        const BinaryPoint point = curve_.affine(p);
        words_of(r.x, point.x);
        words_of(r.y, point.y);
    }
    Point twice(const Point& p) const noexcept { return curve_.twice(p); }
    Point plus(const Point& p, const Point& q) const noexcept { return curve_.plus(p, q); }

private:
    Polynomial reduced(const Word* words) const noexcept { return curve_.reduced(polynomial_of(words)); }

    const AnyBinaryCurve& curve_;
};

// Runs work(curve) with the arithmetic of a curve: 0, or -1 if there is none.
template <typename Work>
std::int32_t with_curve(std::int32_t id, const E_EC_PARAMS* params, Work work) noexcept {
    if (id == kSecp160r1) {
        work(P160Curve());
        return 0;
    }
    const AnyBinaryCurve binary(id, params);
    if (!binary) return -1;
    work(BinaryCurve(binary));
    return 0;
}

}  // namespace

std::int32_t TORVA_V1_ScalarMultiplicationOnEllipticCurves(std::int32_t curve, const E_EC_PARAMS* params,
                                                           const std::uint32_t* k, std::int32_t k_words,
                                                           const TORVA_V1_POINT* p, TORVA_V1_POINT* r) {
    const Scalar scalar(k, k_words);
    if (!scalar.fits) return -1;
    if (is_built_in(curve)) {
        multiply(*r, curve, scalar.get(), *p);
        return 0;
    }
    const AnyBinaryCurve binary(curve, params);
    if (!binary) return -1;
    const BinaryCurve points(binary);
    points.store(*r, binary.multiple(scalar.get(), points.load(*p)));
    return 0;
}

std::int32_t TORVA_V1_psmul(std::int32_t curve, const E_EC_PARAMS* params, const std::uint32_t* k, std::int32_t k_words,
                            const TORVA_V1_PROJECTIVE* p, TORVA_V1_PROJECTIVE* r) {
    TORVA_V1_POINT point;
    if (TORVA_V1_toAffine(curve, params, p, &point) != 0) return -1;
    if (TORVA_V1_ScalarMultiplicationOnEllipticCurves(curve, params, k, k_words, &point, &point) != 0) return -1;
    return TORVA_V1_toProjective(curve, params, &point, r);
}

std::int32_t TORVA_V1_pdouble(std::int32_t curve, const E_EC_PARAMS* params, const TORVA_V1_PROJECTIVE* p,
                              TORVA_V1_PROJECTIVE* r) {
    return with_curve(curve, params, [&](const auto& points) { points.store(*r, points.twice(points.load(*p))); });
}

std::int32_t TORVA_V1_padd(std::int32_t curve, const E_EC_PARAMS* params, const TORVA_V1_PROJECTIVE* p,
                           const TORVA_V1_PROJECTIVE* q, TORVA_V1_PROJECTIVE* r) {
    return with_curve(curve, params,
                      [&](const auto& points) { points.store(*r, points.plus(points.load(*p), points.load(*q))); });
}

std::int32_t TORVA_V1_toProjective(std::int32_t curve, const E_EC_PARAMS* params, const TORVA_V1_POINT* p,
                                   TORVA_V1_PROJECTIVE* r) {
    return with_curve(curve, params, [&](const auto& points) { points.store(*r, points.load(*p)); });
}

std::int32_t TORVA_V1_toAffine(std::int32_t curve, const E_EC_PARAMS* params, const TORVA_V1_PROJECTIVE* p,
                               TORVA_V1_POINT* r) {
    return with_curve(curve, params, [&](const auto& points) { points.store(*r, points.load(*p)); });
}

std::int32_t TORVA_V1_combPrecompute(std::int32_t curve, const E_EC_PARAMS* params, const TORVA_V1_POINT* p,
                                     TORVA_V1_POINT* table) {
    return with_curve(curve, params, [&](const auto& points) {
        auto tooth = points.load(*p);
        table[0] = {};
        for (std::size_t size = 1; size < TORVA_V1_COMB_POINTS; size *= 2) {
            for (std::size_t i = 0; i < size; ++i) points.store(table[size + i], points.plus(tooth, points.load(table[i])));
            for (std::size_t i = 0; i < kCombDistance; ++i) tooth = points.twice(tooth);
        }
    });
}

std::int32_t TORVA_V1_combMultiply(std::int32_t curve, const E_EC_PARAMS* params, const std::uint32_t* k,
                                   std::int32_t k_words, const TORVA_V1_POINT* table, TORVA_V1_POINT* r) {
    const Scalar scalar(k, k_words);
    if (!scalar.fits) return -1;
    return with_curve(curve, params, [&](const auto& points) {
        auto sum = points.load(TORVA_V1_POINT{});
        for (std::size_t at = kCombDistance; at-- != 0;) {
            sum = points.twice(sum);
            Word entry = 0;
            for (std::size_t j = 0; j < kCombTeeth; ++j) entry |= bits_at(scalar.get(), at + j * kCombDistance, 1) << j;
            sum = points.plus(sum, points.load(table[entry]));
        }
        points.store(*r, sum);
    });
}
