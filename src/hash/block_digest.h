// Block buffering and padding, written once for every Merkle-Damgard digest that buffers raw bytes.
//
// A digest describes itself by a policy:
//
//     struct Sha1 {
//         using Context = E_SHA1_CTX;                                 // the caller-owned record
//         static constexpr std::size_t kBlockBytes = 64;
//         static constexpr std::size_t kLengthBytes = 8;              // of the message length in the last block
//         static std::uint8_t* block(Context&);                       // the partial block
//         static std::size_t used(const Context&);                    // bytes waiting in it, below kBlockBytes
//         static void count(Context&, std::uint32_t bytes);           // adds to the message length
//         static void put_length(const Context&, std::uint8_t* at);   // writes kLengthBytes of it
//         static void compress(Context&, const std::uint8_t* blocks, std::size_t count);
//     };
#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace morvane::hash {

template <typename D>
concept BlockDigest = requires(typename D::Context& ctx, const typename D::Context& fixed, std::uint8_t* bytes) {
    { D::block(ctx) }
    noexcept->std::same_as<std::uint8_t*>;
    { D::used(fixed) }
    noexcept->std::same_as<std::size_t>;
    { D::count(ctx, std::uint32_t{}) }
    noexcept;
    { D::put_length(fixed, bytes) }
    noexcept;
    { D::compress(ctx, bytes, std::size_t{}) }
    noexcept;
    requires D::kLengthBytes < D::kBlockBytes;
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

// Appends 0x80, zeros and the message length, and compresses what that fills: one block, or two.
template <BlockDigest D>
inline void pad(typename D::Context& ctx) noexcept {
    constexpr std::size_t kLengthAt = D::kBlockBytes - D::kLengthBytes;
    std::uint8_t* const block = D::block(ctx);
    const std::size_t used = D::used(ctx);
    block[used] = 0x80;
    std::memset(block + used + 1, 0, D::kBlockBytes - used - 1);
    if (used >= kLengthAt) {
        D::compress(ctx, block, 1);
        std::memset(block, 0, kLengthAt);
    }
    D::put_length(ctx, block + kLengthAt);
    D::compress(ctx, block, 1);
}

// The message length in bits as two words, low and high, with carry.
inline void count_bits(std::uint32_t& low, std::uint32_t& high, std::uint32_t bytes) noexcept {
    const std::uint32_t added = bytes << 3;
    low += added;
    high += (low < added ? 1U : 0U) + (bytes >> 29);
}

}  // namespace morvane::hash
