// Whether a point that came from outside may be multiplied with a secret.
#include "bignum/octets.h"
#include "bignum/record.h"
#include "ecc/any_binary.h"
#include "ecc/secp160r1.h"

#include <algorithm>

namespace {

using namespace morvane;
using namespace morvane::ecc;

constexpr std::int32_t kValid = 1;
constexpr std::int32_t kEmpty = -1;
constexpr std::int32_t kOutOfRange = -2;
constexpr std::int32_t kOffCurve = -3;
constexpr std::int32_t kWrongOrder = -4;

// p itself passes and counts as 0.
bool is_above_p(const Word* coordinate) noexcept {
    Limb borrow = 0;
    static_cast<void>(subtract(p160::kPrime.limbs(), limbs_of(coordinate), borrow));
    return borrow != 0;
}

// Of curves that somebody else describes: no equation, n times the point.
bool has_order_of_record(std::int32_t id, const E_EC_PARAMS* params, const BinaryPoint& point) noexcept {
    const AnyBinaryCurve curve(id, params);
    if (!curve || !is_member(params->n)) return false;
    const std::size_t count = bignum::significant_words(params->n);
    if (count == 0) return false;
    Word n[kWords]{};
    std::copy_n(params->n.words, count, n);
    return is_zero(curve.multiple(n, projective(point)).z);
}

}  // namespace

std::int32_t TORVA_V1_IsValidPoint(std::int32_t curve, const E_EC_PARAMS* params, const TORVA_V1_OPAQUE8* octets) {
    if (!is_known(curve) || octets->count <= 0) return kEmpty;
    const std::size_t size = coordinate_octets(curve);
    const auto count = static_cast<std::size_t>(octets->count);
    const std::uint8_t* const x = octets->octets + 1;
    const std::uint8_t* const end = octets->octets + std::min(count, 2 * size + 1);
    if (std::all_of(x, end, [](std::uint8_t octet) { return octet == 0; })) return kEmpty;
    if (count != 2 * size + 1) return kOutOfRange;

    TORVA_V1_POINT point;
    bignum::octets_to_words(point.x, kWords, x, size);
    bignum::octets_to_words(point.y, kWords, x + size, size);
    if (curve == kSecp160r1) {
        if (is_above_p(point.x) || is_above_p(point.y)) return kOutOfRange;
        // The order of the group is n itself, a prime, so that every point of the curve has order n.
        return p160::is_on_curve(p160::load(point)) ? kValid : kOffCurve;
    }
    constexpr Word kAboveTop = ~Word{7};
    if (((point.x[kWords - 1] | point.y[kWords - 1]) & kAboveTop) != 0) return kOutOfRange;
    const BinaryPoint coordinates{polynomial_of(point.x), polynomial_of(point.y)};
    if (!is_built_in(curve)) return has_order_of_record(curve, params, coordinates) ? kValid : kWrongOrder;
    if (!is_on_binary_curve(curve, coordinates)) return kOffCurve;
    return is_in_binary_subgroup(curve, coordinates) ? kValid : kWrongOrder;
}
