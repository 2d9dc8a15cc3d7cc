// Block buffering and padding, written once for every Merkle-Damgard digest that buffers raw bytes.
//
// A digest describes itself by a policy:
//
//     struct Sha1 {
//         using Context = E_SHA1_CTX;                                 // the caller-owned record
//         static constexpr std::size_t kBlockBytes = 64;
//         static std::uint8_t* block(Context&);                       // the partial block
//         static std::size_t used(const Context&);                    // bytes waiting in it, below kBlockBytes
//         static void count(Context&, std::uint32_t bytes);           // adds to the message length
//         static Length<8> length(const Context&);                    // the message length, as it ends the last block
//         static void compress(Context&, const std::uint8_t* blocks, std::size_t count);
//     };
#pragma once

#include "base/bytes.h"

#include <array>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace morvane::hash {

// The field that ends the last block: 64-bit words whose bytes in memory are the bytes of the block.
template <std::size_t Bytes>
using Length = std::array<std::uint64_t, Bytes / 8>;

template <typename D>
concept BlockDigest = requires(typename D::Context& ctx, const typename D::Context& fixed, std::uint8_t* bytes) {
    { D::block(ctx) } -> std::same_as<std::uint8_t*>;
    { D::used(fixed) } -> std::same_as<std::size_t>;
    D::count(ctx, std::uint32_t{});
    D::length(fixed).size();
    D::compress(ctx, bytes, std::size_t{});
};

// Absorbs len bytes. Whole blocks are compressed where they lie; data is not read when len is 0.
template <BlockDigest D>
inline void absorb(typename D::Context& ctx, const std::uint8_t* data, std::uint32_t len) noexcept {
    if (len == 0) return;
    const std::size_t used = D::used(ctx);
    std::size_t left = len;
    D::count(ctx, len);
    if (used != 0) {
        const std::size_t room = D::kBlockBytes - used;
        if (left < room) {
            std::memcpy(D::block(ctx) + used, data, left);
            return;
        }
        std::memcpy(D::block(ctx) + used, data, room);
        D::compress(ctx, D::block(ctx), 1);
        data += room;
        left -= room;
    }
    const std::size_t whole = left / D::kBlockBytes;
    if (whole != 0) {
        D::compress(ctx, data, whole);
        data += whole * D::kBlockBytes;
        left -= whole * D::kBlockBytes;
    }
    if (left != 0) std::memcpy(D::block(ctx), data, left);
}

// Appends 0x80, zeros and the message length, and compresses what that fills: one block, or two. The record's block ends as
// the last one compressed.
template <BlockDigest D>
inline void pad(typename D::Context& ctx) noexcept {
    const auto length = D::length(ctx);
    constexpr std::size_t kLengthAt = D::kBlockBytes - sizeof length;
    std::uint8_t* const block = D::block(ctx);
    const std::size_t used = D::used(ctx);
    if (used == 0) {
        // The whole block is padding. It is stored in the pieces in which compression loads it: a load that gathers several
        // smaller stores would wait until the blocks before this one are done with.
        using Piece [[gnu::vector_size(16)]] = std::uint64_t;
        std::array<Piece, D::kBlockBytes / sizeof(Piece)> padding{};
        padding.front() = Piece{as_le(std::uint64_t{0x80}), 0};
        padding.back() = Piece{length.size() == 1 ? 0 : length.front(), length.back()};
        std::memcpy(block, padding.data(), sizeof padding);
    } else {
        block[used] = 0x80;
        std::memset(block + used + 1, 0, D::kBlockBytes - used - 1);
        if (used >= kLengthAt) {
            D::compress(ctx, block, 1);
            std::memset(block, 0, kLengthAt);
        }
        std::memcpy(block + kLengthAt, length.data(), sizeof length);
    }
    D::compress(ctx, block, 1);
}

// The message length in bits as two words, low and high, with carry.
inline void count_bits(std::uint32_t& low, std::uint32_t& high, std::uint32_t bytes) noexcept {
    const std::uint32_t added = bytes << 3;
    low += added;
    high += (low < added ? 1U : 0U) + (bytes >> 29);
}

}  // namespace morvane::hash
