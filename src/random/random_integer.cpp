#include "random/random_integer.h"

#include "bignum/record.h"
#include "platform/platform.h"
#include "random/pool.h"

#include <morvane/random.h>

#include <algorithm>

namespace morvane::random {

void random_integer(ENUM& x, std::int32_t bits, bool top, bool bottom, Source source) noexcept {
    const std::size_t bit_count = bits > 0 ? static_cast<std::size_t>(bits) : 0;
    const std::size_t count = (bit_count + 7) / 8;
    const std::size_t words = (count + 3) / 4;
    // The octets are drawn where the words will be: nothing to allocate, nothing to wipe.
    auto* const octets = reinterpret_cast<std::uint8_t*>(x.words);
    std::fill(x.words, x.words + words, 0);
    const std::uint32_t now = platform::seconds();
    RAND_Seed(reinterpret_cast<const std::uint8_t*>(&now), sizeof now);
    source(octets, static_cast<std::int32_t>(count));
    x.sign = 0;
    bignum::set_length(x, words);
    if (count == 0) return;

    const std::size_t highest = (bit_count - 1) % 8;  // bit of the first octet
    const auto kept = static_cast<std::uint8_t>((2U << highest) - 1);
    if (!top) {
        octets[0] |= static_cast<std::uint8_t>(1U << highest);
    } else if (highest > 0) {
        octets[0] |= static_cast<std::uint8_t>(3U << (highest - 1));
    } else {
        octets[0] = 1;
        if (count > 1) octets[1] |= 0x80;  // the second highest bit is there
    }
    octets[0] &= kept;
    if (bottom) octets[count - 1] |= 1;
    std::reverse(octets, octets + count);  // words lie least significant octet first
}

}  // namespace morvane::random

using namespace morvane::random;

void EN_Random(ENUM* x, std::int32_t bits, std::int32_t top, std::int32_t bottom) {
    random_integer(*x, bits, top != 0, bottom != 0, RAND_Bytes);
}
