// A block as a value: its bytes in 64-bit limbs, limb i being bytes 8 * i and on, read little-endian.
#pragma once

#include "base/bytes.h"

#include <array>

namespace morvane::cipher {

template <std::size_t Bytes>
struct Block {
    static constexpr std::size_t kLimbs = Bytes / 8;
    std::array<std::uint64_t, kLimbs> limbs{};

    static Block load(const std::uint8_t* bytes) noexcept {
        Block block;
        for (std::size_t i = 0; i < kLimbs; ++i) block.limbs[i] = load_le<std::uint64_t>(bytes + 8 * i);
        return block;
    }

    // The first count bytes, the others zero.
    static Block load(const std::uint8_t* bytes, std::size_t count) noexcept {
        Block block;
        for (std::size_t i = 0; i < count; ++i) block.limbs[i / 8] |= std::uint64_t{bytes[i]} << (i % 8 * 8);
        return block;
    }

    void store(std::uint8_t* bytes) const noexcept {
        for (std::size_t i = 0; i < kLimbs; ++i) store_le(bytes + 8 * i, limbs[i]);
    }

    // Only the first count bytes.
    void store(std::uint8_t* bytes, std::size_t count) const noexcept {
        for (std::size_t i = 0; i < count; ++i) bytes[i] = static_cast<std::uint8_t>(limbs[i / 8] >> (i % 8 * 8));
    }

    friend Block operator^(Block a, const Block& b) noexcept {
        for (std::size_t i = 0; i < kLimbs; ++i) a.limbs[i] ^= b.limbs[i];
        return a;
    }
    friend Block operator&(Block a, const Block& b) noexcept {
        for (std::size_t i = 0; i < kLimbs; ++i) a.limbs[i] &= b.limbs[i];
        return a;
    }
};

// The two 32-bit words of a limb: the first four bytes, read in the given order, and the last four.
struct WordPair {
    std::uint32_t first;
    std::uint32_t second;

    static constexpr WordPair of(std::uint64_t limb, std::endian order) noexcept {
        const auto low = static_cast<std::uint32_t>(limb);
        const auto high = static_cast<std::uint32_t>(limb >> 32);
        return order == std::endian::little ? WordPair{low, high} : WordPair{byteswap(low), byteswap(high)};
    }
    constexpr std::uint64_t limb(std::endian order) const noexcept {
        const std::uint32_t low = order == std::endian::little ? first : byteswap(first);
        const std::uint32_t high = order == std::endian::little ? second : byteswap(second);
        return low | std::uint64_t{high} << 32;
    }
};

}  // namespace morvane::cipher
