#include "sources.h"

#include "toolkit.h"

#include <morvane/random.h>

#include <algorithm>

namespace morvane::tool {
namespace {

// The pools count in signed numbers; nobody draws so many bytes at once.
template <void (*Draw)(std::uint8_t*, std::int32_t)>
void fill_from(std::uint8_t* bytes, std::uint32_t count) {
    Draw(bytes, static_cast<std::int32_t>(count));
}

// What the toolkit draws, by its selector.
template <std::uint32_t Selector>
void fill_by_toolkit(std::uint8_t* bytes, std::uint32_t count) {
    const auto draw = [count](K_CONTEXT* context, CSSM_DATA* out) {
        out->Length = count;
        return K_GenRandom(context, Selector, count, &out->Data);
    };
    std::ranges::copy(*toolkit::make(toolkit::kNoRefusal, draw).value(), bytes);
}

constexpr std::uint32_t kDes = 0, kMd5Chain = 1;

constexpr RandomSource kSources[] = {
    {"pool", fill_from<RAND_Bytes>, "for keys, too; seeded by the system"},
    {"key-pool", fill_from<E_GenerateRandom_RSA>, "for keys, too; seeded by the system"},
    {"md5-chain", fill_by_toolkit<kMd5Chain>, "not for secrets"},
    {"des", fill_by_toolkit<kDes>, "not for secrets"},
};

}  // namespace

std::span<const RandomSource> all_random_sources() { return kSources; }

}  // namespace morvane::tool
