// E_SHA256_*: SHA-256 (FIPS 180-2) on caller-owned contexts.
#include <morvane/hash.h>

#include "base/bytes.h"
#include "hash/block_digest.h"
#include "hash/sha2_compress.h"

#include <algorithm>

static_assert(sizeof(E_SHA256_CTX) == 104 && offsetof(E_SHA256_CTX, count_lo) == 32 && offsetof(E_SHA256_CTX, block) == 40);

namespace {

using namespace morvane;
using namespace morvane::hash;

struct Sha256 {
    using Context = E_SHA256_CTX;
    static constexpr std::size_t kBlockBytes = 64;

    static std::uint8_t* block(Context& ctx) noexcept { return ctx.block; }
    static std::size_t used(const Context& ctx) noexcept { return (ctx.count_lo >> 3) % kBlockBytes; }
    // No carry from the low word into the high one: each time the low word wraps, the length in the padding is short by
    // 2^32 bits. Digests of messages that pass 512 MiB in several updates depend on it.
    static void count(Context& ctx, std::uint32_t bytes) noexcept {
        ctx.count_lo += bytes << 3;
        ctx.count_hi += bytes >> 29;
    }
    static Length<8> length(const Context& ctx) noexcept {
        return {as_be(std::uint64_t{ctx.count_hi} << 32 | ctx.count_lo)};
    }
    static void compress(Context& ctx, const std::uint8_t* blocks, std::size_t count) noexcept {
        sha256_compress.get()(ctx.state, blocks, count);
    }
};

}  // namespace

void E_SHA256_Init(E_SHA256_CTX* ctx) {
    constexpr std::uint32_t kInitial[] = {0x6a09e667, 0xbb67ae85, 0x3c6ef372, 0xa54ff53a,
                                          0x510e527f, 0x9b05688c, 0x1f83d9ab, 0x5be0cd19};
    std::copy(std::begin(kInitial), std::end(kInitial), ctx->state);
    ctx->count_lo = 0;
    ctx->count_hi = 0;
}

void E_SHA256_Update(E_SHA256_CTX* ctx, const uint8_t* data, uint32_t len) { absorb<Sha256>(*ctx, data, len); }

void E_SHA256_Final(E_SHA256_CTX* ctx, uint8_t* digest) {
    pad<Sha256>(*ctx);
    for (std::size_t i = 0; i < 8; ++i) store_be(digest + 4 * i, ctx->state[i]);
}

void E_SHA256(uint8_t* digest, uint32_t* digest_len, const uint8_t* data, uint32_t len) {
    E_SHA256_CTX ctx;
    E_SHA256_Init(&ctx);
    E_SHA256_Update(&ctx, data, len);
    E_SHA256_Final(&ctx, digest);
    *digest_len = E_SHA256_DIGEST_BYTES;
}
