#include "algorithms.h"

#include <morvane/csp.h>

#include <algorithm>

namespace morvane::tool {
namespace {

constexpr std::string_view kBroken = "broken: only to verify old data";
constexpr std::string_view kShort = "short by today's measure: for existing formats";

constexpr Algorithm kAlgorithms[] = {
    {"md2", CSP_ALG_MD2, Kind::kDigest, 16, kBroken},
    {"md4", CSP_ALG_MD4, Kind::kDigest, 16, kBroken},
    {"md5", CSP_ALG_MD5, Kind::kDigest, 16, kBroken},
    {"sha1", CSP_ALG_SHA1, Kind::kDigest, 20, kBroken},
    {"ripemd160", CSP_ALG_RIPEMD160, Kind::kDigest, 20, kShort},
    {"has160", CSP_ALG_HAS160, Kind::kDigest, 20, kShort},
    {"sha256", 0, Kind::kDigest, 32, ""},
    {"sha384", 0, Kind::kDigest, 48, ""},
    {"sha512", 0, Kind::kDigest, 64, ""},
};

// Not std::tolower: names are ASCII whatever the locale.
char to_lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

}  // namespace

bool same_name(std::string_view one, std::string_view other) {
    return std::ranges::equal(one, other, {}, to_lower, to_lower);
}

bool Algorithm::is_called(std::string_view other) const { return same_name(name, other); }

std::span<const Algorithm> all_algorithms() { return kAlgorithms; }

const Algorithm* find_algorithm(Kind kind, std::string_view name) {
    const auto* const found =
        std::ranges::find_if(kAlgorithms, [&](const Algorithm& row) { return row.kind == kind && row.is_called(name); });
    return found == std::end(kAlgorithms) ? nullptr : found;
}

std::string_view name_of(Kind kind) {
    switch (kind) {
        case Kind::kDigest:
            return "digest";
    }
    return {};
}

}  // namespace morvane::tool
