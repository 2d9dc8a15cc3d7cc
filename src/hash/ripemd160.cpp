// E_RIPEMD160_*: RIPEMD-160 (ISO/IEC 10118-3) on caller-owned contexts.
#include <morvane/hash.h>

#include "hash/little_endian_digest.h"
#include "hash/sha1_compress.h"

#include <algorithm>

static_assert(sizeof(E_RIPEMD160_CTX) == 96 && offsetof(E_RIPEMD160_CTX, block) == 28 &&
              offsetof(E_RIPEMD160_CTX, num) == 92);

namespace {

using namespace morvane::hash;

// The record says itself how many bytes wait in its block.
struct Ripemd160 : LittleEndianDigest<E_RIPEMD160_CTX, ripemd160_compress> {
    static std::size_t used(const Context& ctx) noexcept { return ctx.num % kBlockBytes; }
    static void count(Context& ctx, std::uint32_t bytes) noexcept {
        count_bits(ctx.count_lo, ctx.count_hi, bytes);
        ctx.num = (ctx.num + bytes) % kBlockBytes;
    }
};

}  // namespace

void E_RIPEMD160_Init(E_RIPEMD160_CTX* ctx) {
    ctx->count_lo = 0;
    ctx->count_hi = 0;
    ctx->num = 0;
    std::copy(kSha1Initial.begin(), kSha1Initial.end(), ctx->state);  // the same five words
}

void E_RIPEMD160_Update(E_RIPEMD160_CTX* ctx, const uint8_t* data, uint32_t len) { absorb<Ripemd160>(*ctx, data, len); }

void E_RIPEMD160_Final(E_RIPEMD160_CTX* ctx, uint8_t* digest) {
    pad<Ripemd160>(*ctx);
    put_little_endian(ctx->state, digest);
}

void E_RIPEMD160(uint8_t* digest, const uint8_t* data, uint32_t len) {
    E_RIPEMD160_CTX ctx;
    E_RIPEMD160_Init(&ctx);
    E_RIPEMD160_Update(&ctx, data, len);
    E_RIPEMD160_Final(&ctx, digest);
}
