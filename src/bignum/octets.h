// Octet strings of a fixed length, most significant octet first, to words and back. The time depends on the lengths only.
#pragma once

#include "bignum/limb.h"

namespace morvane::bignum {

// All `count` words from the octets; these fit them.
inline void octets_to_words(Word* words, std::size_t count, const std::uint8_t* octets, std::size_t size) noexcept {
    for (std::size_t i = 0; i < count; ++i) words[i] = 0;
    for (std::size_t i = 0; i < size; ++i) words[i / 4] |= Word{octets[size - 1 - i]} << 8 * (i % 4);
}

// `size` octets of the words, zeros in front of the highest word.
inline void words_to_octets(std::uint8_t* octets, std::size_t size, const Word* words, std::size_t count) noexcept {
    for (std::size_t i = 0; i < size; ++i) {
        const Word word = i / 4 < count ? words[i / 4] : 0;
        octets[size - 1 - i] = static_cast<std::uint8_t>(word >> 8 * (i % 4));
    }
}

}  // namespace morvane::bignum
