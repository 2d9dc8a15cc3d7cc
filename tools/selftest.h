// What `morvane selftest` runs: for every algorithm an answer that is known, and a change that must be noticed. Known
// answers are those of tests/vectors and of the tests, or published ones; each table names its source.
#pragma once

#include "hex.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace morvane::tool {

using Octets = std::vector<std::uint8_t>;

struct SelfTest {
    std::string name;
    std::function<bool()> knows;    // the known answer comes out
    std::function<bool()> notices;  // with one bit of an input changed it does not, or is refused
};

using SelfTests = std::vector<SelfTest>;

void add_digest_tests(SelfTests& all);
void add_cipher_tests(SelfTests& all);
void add_number_tests(SelfTests& all);
void add_random_tests(SelfTests& all);
void add_rsa_tests(SelfTests& all);
void add_group_tests(SelfTests& all);
void add_curve_tests(SelfTests& all);
void add_encoding_tests(SelfTests& all);
void add_provider_tests(SelfTests& all);
void add_toolkit_tests(SelfTests& all);

// Of a constant in a table: digits that are none throw std::bad_optional_access.
inline Octets octets(std::string_view hex) { return from_hex(hex).value(); }
inline Octets text_octets(std::string_view text) { return {text.begin(), text.end()}; }

inline Octets with_changed_bit(Octets bytes, std::size_t at) {
    bytes.at(at) ^= 0x10;
    return bytes;
}

inline std::uint32_t size32(const Octets& bytes) { return static_cast<std::uint32_t>(bytes.size()); }
inline std::int32_t signed_size(const Octets& bytes) { return static_cast<std::int32_t>(bytes.size()); }

}  // namespace morvane::tool
