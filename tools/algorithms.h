// The digests the command knows by name; the ciphers have a table of their own.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace morvane::tool {

// Names are compared without regard to case.
bool same_name(std::string_view one, std::string_view other);

enum class Kind { kDigest };

struct Algorithm {
    std::string_view name;
    std::uint32_t id;  // a CSP_ALG_ value, or 0: the provider layer does not have it, the primitives are called
    Kind kind;
    std::uint32_t digest_bytes;
    std::string_view note;

    bool is_called(std::string_view other) const;
};

std::span<const Algorithm> all_algorithms();

// Null when there is none of that kind and name.
const Algorithm* find_algorithm(Kind kind, std::string_view name);

std::string_view name_of(Kind kind);

}  // namespace morvane::tool
