#include "ecc/scheme.h"

#include "bignum/octets.h"

namespace morvane::ecc {
namespace {

using bignum::octets_to_words;
using bignum::words_to_octets;

constexpr std::uint8_t kKeyBlock = 0x02;
constexpr std::size_t kBlockHead = 2;

constexpr std::int32_t kUncompressed = 1;
constexpr std::uint8_t kUncompressedPoint = 0x04;
constexpr std::int32_t kValid = 1;

constexpr std::size_t kGeneratorRoom = 40;  // E_GenerateRandom_X962 works in as many

}  // namespace

std::optional<Octets> octets_of(const TORVA_V1_OPAQUE8* record) noexcept {
    if (record == nullptr || record->octets == nullptr || record->count < 0) return std::nullopt;
    return Octets(record->octets, static_cast<std::size_t>(record->count));
}

bool is_zero(const Word* k) noexcept {
    Word any = 0;
    for (std::size_t i = 0; i < kWords; ++i) any |= k[i];
    return known(any == 0);
}

bool is_scalar(std::int32_t curve, const Word* k) noexcept {
    Word n[kWords];
    order(n, curve);
    std::uint64_t borrow = 0;
    for (std::size_t i = 0; i < kWords; ++i) borrow = (std::uint64_t{k[i]} - n[i] - borrow) >> 63;
    return known(borrow != 0) && !is_zero(k);
}

bool fits_coordinate(std::int32_t curve, const Word* k) noexcept {
    return coordinate_octets(curve) == kMostCoordinateOctets || known(k[kWords - 1] == 0);
}

bool read_scalar(Word* k, std::int32_t curve, std::optional<Octets> octets) noexcept {
    if (!is_built_in(curve) || !octets || octets->empty() || octets->size() > kOrderOctets) return false;
    octets_to_words(k, kWords, octets->data(), octets->size());
    return is_scalar(curve, k);
}

bool read_private_key(Word* d, std::int32_t curve, const TORVA_V1_OPAQUE8* key) noexcept {
    const std::optional<Octets> octets = octets_of(key);
    if (!is_built_in(curve) || !octets) return false;
    const std::size_t size = coordinate_octets(curve);
    const bool is_block = octets->size() == kBlockHead + size && (*octets)[0] == kKeyBlock && (*octets)[1] == size;
    return read_scalar(d, curve, is_block ? octets->subspan(kBlockHead) : *octets);
}

bool read_public_key(TORVA_V1_POINT& q, std::int32_t curve, const E_EC_PARAMS* params,
                     const TORVA_V1_OPAQUE8* key) noexcept {
    const std::optional<Octets> octets = octets_of(key);
    return is_built_in(curve) && octets && octets->size() == point_octets(curve) && octets->front() == kUncompressedPoint &&
           TORVA_V1_IsValidPoint(curve, params, key) == kValid && TORVA_V1_opaque8ToECPoints(curve, key, &q) == 1;
}

void put_scalar(TORVA_V1_OPAQUE8& out, std::int32_t curve, const Word* k) noexcept {
    const std::size_t size = coordinate_octets(curve);
    words_to_octets(out.octets, size, k, kWords);
    out.count = static_cast<std::int32_t>(size);
}

void put_point(TORVA_V1_OPAQUE8& out, std::int32_t curve, const TORVA_V1_POINT& p) noexcept {
    TORVA_V1_ECPointsToopaque8(curve, kUncompressed, &p, &out);
}

void draw(Word* k, std::int32_t curve, decltype(E_GenerateRandom_X962)* generator) noexcept {
    Word n[kWords];
    std::uint8_t n_octets[kOrderOctets];
    order(n, curve);
    words_to_octets(n_octets, kOrderOctets, n, kWords);
    SecretArray<std::uint8_t, kGeneratorRoom> octets;
    std::uint32_t size = 0;
    while (size == 0) generator(static_cast<std::uint32_t>(curve), octets.items.data(), &size, n_octets, kOrderOctets);
    octets_to_words(k, kWords, octets.items.data(), size);
}

}  // namespace morvane::ecc
