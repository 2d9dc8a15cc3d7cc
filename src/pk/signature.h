// What signatures over a group have in common: their hash values, and the form of two INTEGERs.
#pragma once

#include "asn1/der.h"
#include "pk/group.h"

namespace morvane::pk {

inline constexpr std::int32_t kMaxHashBytes = 50;

inline bool fits_hash(std::int32_t hash_len, const Group& group) noexcept {
    return hash_len >= 0 && hash_len <= kMaxHashBytes && static_cast<std::size_t>(hash_len) <= group.q_bytes();
}

// The number in the octets; false if they are too many, or a negative number of them.
bool load_octets(ENUM& x, const std::uint8_t* octets, std::int32_t count) noexcept;

// SEQUENCE { INTEGER r, INTEGER s }, DER. Returns its length.
std::int32_t put_integers(std::uint8_t* out, const ENUM& r, const ENUM& s) noexcept;

// Reads exactly that into numbers with room for kGroupWords words.
bool get_integers(ENUM& r, ENUM& s, const std::uint8_t* in, std::int32_t length) noexcept;

// A scalar that everybody may know, as a record: r, s or e of a signature.
class ScalarNumber {
public:
    ScalarNumber(const Scalars& scalars, const Scalar& a) noexcept;
    const ENUM& operator*() const noexcept { return number_; }

private:
    SecretArray<Word, kGroupWords> words_;
    ENUM number_;
};

}  // namespace morvane::pk
