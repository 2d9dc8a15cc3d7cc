// What opens a padded block without telling through time what is in it.
#pragma once

#include "base/bytes.h"
#include "base/known.h"
#include "base/mask.h"
#include "base/wipe.h"
#include "pk/rsa.h"

namespace morvane::pk {

// A block of the modulus' length, the shorter ones with zeros behind.
using Block = SecretArray<std::uint8_t, kMaxModulusBytes>;

// Zeros where nothing is found.
struct Position {
    std::uint32_t index;
    std::uint32_t octet;
    Mask found;
};

// The first octet from `begin` on that `is_wanted` masks. The time depends on begin and end.
template <typename Wanted>
Position find_first(const std::uint8_t* octets, std::size_t begin, std::size_t end, Wanted is_wanted) noexcept {
    Position first{};
    for (std::size_t i = begin; i < end; ++i) {
        const Mask here = is_wanted(octets[i]) & ~first.found;
        first.index |= static_cast<std::uint32_t>(i) & here;
        first.octet |= octets[i] & here;
        first.found = opaque(first.found | here);
    }
    return first;
}

// Moves octets[offset] and all that follow to the front; the rest become zeros. `size` is below 1024, offset at most size.
// The time depends on size alone.
inline void move_to_front(std::uint8_t* octets, std::size_t size, std::uint32_t offset) noexcept {
    static_assert(kMaxModulusBytes < 1024);
    for (std::size_t step = 512; step != 0; step /= 2) {
        const Mask keep = mask_if_zero(offset & static_cast<std::uint32_t>(step));
        for (std::size_t i = 0; i < size; ++i) {
            const std::uint8_t moved = i + step < size ? octets[i + step] : std::uint8_t{0};
            octets[i] = static_cast<std::uint8_t>(choose(keep, octets[i], moved));
        }
    }
}

// Hands a result over: the message in front of `octets` if its length is not negative. From here on the length is told.
inline std::int32_t hand_over(std::uint8_t* out, const std::uint8_t* octets, std::int32_t length) noexcept {
    length = known(length);
    if (length > 0) copy_bytes(out, octets, static_cast<std::size_t>(length));
    return length;
}

}  // namespace morvane::pk
