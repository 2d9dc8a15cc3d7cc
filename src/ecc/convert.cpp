// Words and points as octets.
#include "base/bytes.h"
#include "bignum/octets.h"
#include "ecc/curve.h"

namespace {

using namespace morvane;
using namespace morvane::ecc;

constexpr std::size_t kTrimmedFromOctets = 20;  // longer results lose leading zeros

constexpr std::uint8_t kUncompressed = 0x04;
constexpr std::uint8_t kCompressed = 0x02;
constexpr std::uint8_t kHybrid = 0x06;

}  // namespace

std::int32_t TORVA_V1_opaque8ToLongs(std::int32_t fixed, const TORVA_V1_OPAQUE8* octets, std::uint32_t* words) {
    if (octets->count <= 0) return -1;
    const auto size = static_cast<std::size_t>(octets->count);
    std::size_t count = size / 4 + (size % 4 != 0 ? 1 : 0);
    if (fixed != 0) {
        if (count > kWords) return -2;
        count = kWords;
    }
    bignum::octets_to_words(words, count, octets->octets, size);
    return static_cast<std::int32_t>(count);
}

std::int32_t TORVA_V1_LongsToopaque8(std::int32_t count, const std::uint32_t* words, TORVA_V1_OPAQUE8* octets) {
    if (count < 1) return -1;
    const auto used = static_cast<std::size_t>(count);
    std::size_t size = 4 * used;
    if (size > kTrimmedFromOctets) {
        const std::uint32_t top = words[used - 1];
        size -= static_cast<std::size_t>(top < 1U << 24) + static_cast<std::size_t>(top < 1U << 16) +
                static_cast<std::size_t>(top < 1U << 8);
    }
    bignum::words_to_octets(octets->octets, size, words, used);
    octets->count = static_cast<std::int32_t>(size);
    return octets->count;
}

std::int32_t TORVA_V1_ECPointsToopaque8(std::int32_t curve, std::int32_t form, const TORVA_V1_POINT* point,
                                        TORVA_V1_OPAQUE8* octets) {
    // An unknown curve is a success that does nothing: callers have always checked the identifier before.
    if (!is_known(curve)) return 1;
    if (form != 1) return form == 2 ? -1 : form == 3 ? -2 : -3;
    const std::size_t size = coordinate_octets(curve);
    octets->octets[0] = kUncompressed;
    bignum::words_to_octets(octets->octets + 1, size, point->x, kWords);
    bignum::words_to_octets(octets->octets + 1 + size, size, point->y, kWords);
    octets->count = static_cast<std::int32_t>(2 * size + 1);
    return 1;
}

std::int32_t TORVA_V1_opaque8ToECPoints(std::int32_t curve, const TORVA_V1_OPAQUE8* octets, TORVA_V1_POINT* point) {
    if (!is_known(curve)) return 1;
    const std::uint8_t form = octets->octets[0];
    if (form != kUncompressed) return form == kCompressed ? -1 : form == kHybrid ? -2 : -3;
    const std::size_t size = coordinate_octets(curve);
    bignum::octets_to_words(point->x, kWords, octets->octets + 1, size);
    bignum::octets_to_words(point->y, kWords, octets->octets + 1 + size, size);
    return 1;
}
