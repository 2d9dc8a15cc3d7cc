// The hashes that the newer RSA schemes choose by number, their fields in encoded messages, and MGF1.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <span>

namespace morvane::pk {

using Octets = std::span<const std::uint8_t>;

inline constexpr std::int32_t kSha1 = 0;  // as is every number that no other hash has
inline constexpr std::size_t kMaxFieldBytes = 64;

// The octets that a digest takes in an encoded message.
std::size_t field_bytes(std::int32_t hash) noexcept;

// Writes the digest of the parts, one after the other. Returns its length, or 0, with nothing written, if `out` is shorter.
std::size_t digest(std::int32_t hash, std::span<std::uint8_t> out, std::initializer_list<Octets> parts) noexcept;

// Fills a field: the digest and, for MD5, four zeros behind it. The field overlaps no part.
void fill_field(std::int32_t hash, std::uint8_t* field, std::initializer_list<Octets> parts) noexcept;

// text ^= MGF1(seed), whose blocks are fields.
void apply_mgf1(std::int32_t hash, std::span<std::uint8_t> text, Octets seed) noexcept;

}  // namespace morvane::pk
