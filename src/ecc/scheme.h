// What the schemes share: octet strings from outside, scalars, keys.
#pragma once

#include <morvane/ecc.h>
#include <morvane/random.h>

#include "base/known.h"
#include "base/wipe.h"
#include "ecc/curve.h"

#include <optional>
#include <span>

namespace morvane::ecc {

using Octets = std::span<const std::uint8_t>;

// A secret number below 2^192, wiped at its end.
struct Scalar : SecretArray<Word, kWords> {
    operator Word*() noexcept { return items.data(); }
    operator const Word*() const noexcept { return items.data(); }
};

// What arithmetic modulo an order uses of the stack, with copies of its operands.
inline constexpr std::size_t kScalarStack = 1024;

inline constexpr std::size_t kOrderOctets = 21;  // of n, on all three curves
inline constexpr std::size_t kMostCoordinateOctets = 21;

inline std::size_t point_octets(std::int32_t curve) noexcept { return 2 * coordinate_octets(curve) + 1; }

// An input's octets; nothing for a record, pointer or count that is none.
std::optional<Octets> octets_of(const TORVA_V1_OPAQUE8* record) noexcept;

inline bool has_room(const TORVA_V1_OPAQUE8* out) noexcept { return out != nullptr && out->octets != nullptr; }

// Times of these two depend on the answer only, which may be known: what is refused is no key and no signature.
bool is_zero(const Word* k) noexcept;
bool is_scalar(std::int32_t curve, const Word* k) noexcept;  // from 1 to n - 1

// Whether k fits the octets of a coordinate, as it must in a private key and in s of EC-KCDSA. The answer may be known.
bool fits_coordinate(std::int32_t curve, const Word* k) noexcept;

// k from 1 to kOrderOctets octets. False if there are fewer or more, or k is not from 1 to n - 1.
bool read_scalar(Word* k, std::int32_t curve, std::optional<Octets> octets) noexcept;

// False, too, for a curve that is not built in.
bool read_private_key(Word* d, std::int32_t curve, const TORVA_V1_OPAQUE8* key) noexcept;
bool read_public_key(TORVA_V1_POINT& q, std::int32_t curve, const E_EC_PARAMS* params,
                     const TORVA_V1_OPAQUE8* key) noexcept;

// Writes the scalar in a coordinate's octets, zeros first; the point in its octets.
void put_scalar(TORVA_V1_OPAQUE8& out, std::int32_t curve, const Word* k) noexcept;
void put_point(TORVA_V1_OPAQUE8& out, std::int32_t curve, const TORVA_V1_POINT& p) noexcept;

// k = a random scalar from 1 to n - 1 of a built-in curve.
void draw(Word* k, std::int32_t curve, decltype(E_GenerateRandom_X962)* generator) noexcept;

// What came of signing with one k.
enum class Signed { kYes, kTryAnotherK, kFailed };

}  // namespace morvane::ecc
