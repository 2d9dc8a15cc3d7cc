// E_HAS160_*: HAS-160 on caller-owned contexts.
#include <morvane/hash.h>

#include "hash/little_endian_digest.h"
#include "hash/sha1_compress.h"

#include <algorithm>

static_assert(sizeof(E_HAS160_CTX) == 92 && offsetof(E_HAS160_CTX, state) == 8 && offsetof(E_HAS160_CTX, block) == 28);

using namespace morvane::hash;
using Has160 = LittleEndianDigest<E_HAS160_CTX, has160_compress>;

void E_HAS160_Init(E_HAS160_CTX* ctx) {
    ctx->count_lo = 0;
    ctx->count_hi = 0;
    std::copy(kSha1Initial.begin(), kSha1Initial.end(), ctx->state);  // the same five words
}

void E_HAS160_Update(E_HAS160_CTX* ctx, const uint8_t* data, int32_t len) {
    if (len > 0) absorb<Has160>(*ctx, data, static_cast<std::uint32_t>(len));
}

void E_HAS160_Final(E_HAS160_CTX* ctx, uint8_t* digest) {
    pad<Has160>(*ctx);
    put_little_endian(ctx->state, digest);
}

void E_HAS160(uint8_t* digest, const uint8_t* data, int32_t len) {
    E_HAS160_CTX ctx;
    E_HAS160_Init(&ctx);
    E_HAS160_Update(&ctx, data, len);
    E_HAS160_Final(&ctx, digest);
}
