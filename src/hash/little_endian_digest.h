// The block buffering of the digests with little-endian words: MD4, MD5, HAS-160 and RIPEMD-160.
#pragma once

#include "base/bytes.h"
#include "hash/block_digest.h"
#include "hash/md_compress.h"

namespace morvane::hash {

template <typename Record, MdCompressFn Compress>
struct LittleEndianDigest {
    using Context = Record;
    static constexpr std::size_t kBlockBytes = 64;

    static std::uint8_t* block(Context& ctx) noexcept { return reinterpret_cast<std::uint8_t*>(ctx.block); }
    static std::size_t used(const Context& ctx) noexcept { return (ctx.count_lo >> 3) % kBlockBytes; }
    static void count(Context& ctx, std::uint32_t bytes) noexcept { count_bits(ctx.count_lo, ctx.count_hi, bytes); }
    static Length<8> length(const Context& ctx) noexcept {
        return {as_le(std::uint64_t{ctx.count_hi} << 32 | ctx.count_lo)};
    }
    static void compress(Context& ctx, const std::uint8_t* blocks, std::size_t count) noexcept {
        Compress(ctx.state, blocks, count);
    }
};

template <std::size_t Words>
inline void put_little_endian(const std::uint32_t (&state)[Words], std::uint8_t* digest) noexcept {
    for (std::size_t i = 0; i < Words; ++i) store_le(digest + 4 * i, state[i]);
}

}  // namespace morvane::hash
