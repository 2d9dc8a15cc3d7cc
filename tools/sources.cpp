#include "sources.h"

#include <morvane/random.h>

namespace morvane::tool {
namespace {

// The pools count in signed numbers; nobody draws so many bytes at once.
template <void (*Draw)(std::uint8_t*, std::int32_t)>
void fill_from(std::uint8_t* bytes, std::uint32_t count) {
    Draw(bytes, static_cast<std::int32_t>(count));
}

constexpr RandomSource kSources[] = {
    {"pool", fill_from<RAND_Bytes>, "for keys, too; seeded by the system"},
    {"key-pool", fill_from<E_GenerateRandom_RSA>, "for keys, too; seeded by the system"},
    {"md5-chain", E_GenerateRandom_MD5, "not for secrets"},
    {"des", E_GenerateRandom_DES, "not for secrets"},
};

}  // namespace

std::span<const RandomSource> all_random_sources() { return kSources; }

}  // namespace morvane::tool
