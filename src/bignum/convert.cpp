#include "bignum/record.h"

#include <algorithm>

using namespace morvane::bignum;

void EN_U32ToENUM(ENUM* x, std::uint32_t u) {
    x->sign = 0;
    x->length = 1;
    x->words[0] = u;
}

void EN_U8ToENUM(ENUM* x, const std::uint8_t* octets, std::uint32_t n) {
    // Leading zeros first, so that no more words are touched than the value has.
    const std::uint8_t* const end = octets + n;
    const std::uint8_t* const first = std::find_if(octets, end, [](std::uint8_t octet) { return octet != 0; });
    const auto bytes = static_cast<std::size_t>(end - first);
    const std::size_t words = (bytes + 3) / 4;
    for (std::size_t i = 0; i < words; ++i) {
        Word word = 0;
        for (std::size_t k = std::min<std::size_t>(4, bytes - 4 * i); k > 0; --k)
            word = word << 8 | end[-4 * static_cast<std::ptrdiff_t>(i) - static_cast<std::ptrdiff_t>(k)];
        x->words[i] = word;
    }
    x->sign = 0;
    set_length(*x, words);
}

std::int32_t EN_ENUMToU8(std::uint8_t* octets, const ENUM* x) {
    const std::uint32_t count = EN_GetFilledBitNum(x) / 8 + static_cast<std::uint32_t>(EN_GetFilledBitNum(x) % 8 != 0);
    for (std::uint32_t i = 0; i < count; ++i) {
        octets[count - 1 - i] = static_cast<std::uint8_t>(x->words[i / 4] >> 8 * (i % 4));
    }
    return static_cast<std::int32_t>(count);
}
