// E_SHA1_*: SHA-1 (FIPS 180-1) on caller-owned contexts, and E_MySHA1, its compression function alone.
#include <morvane/hash.h>

#include "base/bytes.h"
#include "hash/block_digest.h"
#include "hash/sha1_compress.h"

#include <algorithm>

// Programs keep these records on their stacks and in their own structures.
static_assert(sizeof(E_SHA1_CTX) == 92 && offsetof(E_SHA1_CTX, block) == 8 && offsetof(E_SHA1_CTX, state) == 72);

namespace morvane::hash {
namespace {

struct Sha1 {
    using Context = E_SHA1_CTX;
    static constexpr std::size_t kBlockBytes = kSha1BlockBytes;

    static std::uint8_t* block(Context& ctx) noexcept { return reinterpret_cast<std::uint8_t*>(ctx.block); }
    static std::size_t used(const Context& ctx) noexcept { return (ctx.count_lo >> 3) % kBlockBytes; }
    static void count(Context& ctx, std::uint32_t bytes) noexcept { count_bits(ctx.count_lo, ctx.count_hi, bytes); }
    static Length<8> length(const Context& ctx) noexcept {
        return {as_be(std::uint64_t{ctx.count_hi} << 32 | ctx.count_lo)};
    }
    static void compress(Context& ctx, const std::uint8_t* blocks, std::size_t count) noexcept {
        sha1_compress.get()(ctx.state, blocks, count);
    }
};

void put_state(const std::uint32_t* state, std::uint8_t* digest) noexcept {
    for (std::size_t i = 0; i < kSha1Initial.size(); ++i) store_be(digest + 4 * i, state[i]);
}

}  // namespace
}  // namespace morvane::hash

using namespace morvane;
using namespace morvane::hash;

void E_SHA1_Init(E_SHA1_CTX* ctx) {
    ctx->count_lo = 0;
    ctx->count_hi = 0;
    std::copy(kSha1Initial.begin(), kSha1Initial.end(), ctx->state);
}

void E_SHA1_Update(E_SHA1_CTX* ctx, const uint8_t* data, uint32_t len) { absorb<Sha1>(*ctx, data, len); }

void E_SHA1_Final(E_SHA1_CTX* ctx, uint8_t* digest) {
    pad<Sha1>(*ctx);
    // The record keeps its last block as host-order words, whatever order the compression reads.
    for (std::uint32_t& word : ctx->block) word = load_be<std::uint32_t>(reinterpret_cast<const std::uint8_t*>(&word));
    put_state(ctx->state, digest);
}

void E_SHA1(uint8_t* digest, const uint8_t* data, uint32_t len) {
    E_SHA1_CTX ctx;
    E_SHA1_Init(&ctx);
    absorb<Sha1>(ctx, data, len);
    pad<Sha1>(ctx);
    put_state(ctx.state, digest);
}

void E_MySHA1(uint8_t* digest, const uint8_t* block) {
    std::array<std::uint32_t, 5> state = kSha1Initial;
    sha1_compress.get()(state.data(), block, 1);
    put_state(state.data(), digest);
}
