// Words from bytes and back, at any alignment.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace morvane {

constexpr std::uint32_t byteswap(std::uint32_t word) noexcept { return __builtin_bswap32(word); }
constexpr std::uint64_t byteswap(std::uint64_t word) noexcept { return __builtin_bswap64(word); }

// The word whose bytes in memory are those of `word` in little-endian or big-endian order.
template <typename Word>
constexpr Word as_le(Word word) noexcept {
    return std::endian::native == std::endian::little ? word : byteswap(word);
}
template <typename Word>
constexpr Word as_be(Word word) noexcept {
    return std::endian::native == std::endian::big ? word : byteswap(word);
}

template <typename Word>
inline Word load_native(const std::uint8_t* bytes) noexcept {
    Word word;
    std::memcpy(&word, bytes, sizeof word);
    return word;
}

template <typename Word>
inline Word load_le(const std::uint8_t* bytes) noexcept {
    return as_le(load_native<Word>(bytes));
}

template <typename Word>
inline Word load_be(const std::uint8_t* bytes) noexcept {
    return as_be(load_native<Word>(bytes));
}

template <typename Word>
inline void store_le(std::uint8_t* bytes, Word word) noexcept {
    const Word swapped = as_le(word);
    std::memcpy(bytes, &swapped, sizeof swapped);
}

template <typename Word>
inline void store_be(std::uint8_t* bytes, Word word) noexcept {
    const Word swapped = as_be(word);
    std::memcpy(bytes, &swapped, sizeof swapped);
}

// memcpy with a null source or target allowed when size is 0.
inline void copy_bytes(void* to, const void* from, std::size_t size) noexcept {
    if (size != 0) std::memcpy(to, from, size);
}

}  // namespace morvane
