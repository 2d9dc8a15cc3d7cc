// The random sources the command knows by name.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace morvane::tool {

struct RandomSource {
    std::string_view name;
    void (*fill)(std::uint8_t* bytes, std::uint32_t count);  // the bytes are initialised before
    std::string_view note;
};

// The first one is used when none is named.
std::span<const RandomSource> all_random_sources();

}  // namespace morvane::tool
