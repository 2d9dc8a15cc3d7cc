// What `morvane selftest` runs: for every algorithm an answer that is known, and a change that must be noticed. Known
// answers are those of tests/vectors and of the tests, or published ones; each table names its source.
#pragma once

#include "octets.h"

#include <functional>
#include <string>
#include <vector>

namespace morvane::tool {

struct SelfTest {
    std::string name;
    std::function<bool()> knows;    // the known answer comes out
    std::function<bool()> notices;  // with one bit of an input changed it does not, or is refused
};

using SelfTests = std::vector<SelfTest>;

inline Octets with_changed_bit(Octets bytes, std::size_t at) {
    bytes.at(at) ^= 0x10;
    return bytes;
}

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

}  // namespace morvane::tool
