// E_SHA_*: SHA-0 (FIPS 180) in the record of SHA-1, with a rule of its own for turning bytes into words.
//
// The block is held as host-order words while it fills: a call that brings n bytes into it converts n >> 2 words. The
// conversion starts at word 0 wherever the new bytes landed; stored digests depend on it. So a word may be turned twice, or
// not at all, when a message comes in pieces, and the digest is the standard's only while every call finds the block empty.
#include <morvane/hash.h>

#include "base/bytes.h"
#include "hash/block_digest.h"
#include "hash/sha1_compress.h"

#include <algorithm>

namespace {

using namespace morvane;
using namespace morvane::hash;

constexpr std::size_t kBlockWords = kSha1BlockBytes / 4;
constexpr std::size_t kLengthWord = kBlockWords - 2;

std::size_t used_bytes(const E_SHA1_CTX& ctx) { return (ctx.count_lo >> 3) % kSha1BlockBytes; }

std::uint8_t* block_bytes(E_SHA1_CTX& ctx) { return reinterpret_cast<std::uint8_t*>(ctx.block); }

std::uint32_t turned(std::uint32_t word) { return load_be<std::uint32_t>(reinterpret_cast<std::uint8_t*>(&word)); }

// Brings bytes into the block and converts as many words, from word 0, as they would fill.
void fill(E_SHA1_CTX& ctx, std::size_t at, const std::uint8_t* data, std::size_t size) {
    copy_bytes(block_bytes(ctx) + at, data, size);
    std::for_each_n(ctx.block, size / 4, [](std::uint32_t& word) { word = turned(word); });
}

}  // namespace

void E_SHA_Update(E_SHA1_CTX* ctx, const uint8_t* data, uint32_t len) {
    if (len == 0) return;
    const std::size_t used = used_bytes(*ctx);
    std::size_t left = len;
    count_bits(ctx->count_lo, ctx->count_hi, len);
    if (used != 0) {
        const std::size_t taken = std::min(left, kSha1BlockBytes - used);
        fill(*ctx, used, data, taken);
        if (used + taken < kSha1BlockBytes) return;
        sha0_compress_words(ctx->state, ctx->block);
        data += taken;
        left -= taken;
    }
    sha0_compress(ctx->state, data, left / kSha1BlockBytes);
    const std::size_t rest = left % kSha1BlockBytes;
    fill(*ctx, 0, data + (left - rest), rest);
}

void E_SHA_Final(E_SHA1_CTX* ctx, uint8_t* digest) {
    const std::size_t used = used_bytes(*ctx);
    std::uint8_t* const block = block_bytes(*ctx);
    block[used] = 0x80;
    std::memset(block + used + 1, 0, kSha1BlockBytes - used - 1);
    ctx->block[used / 4] = turned(ctx->block[used / 4]);  // the words before it were converted as they came
    if (used / 4 >= kLengthWord) {
        sha0_compress_words(ctx->state, ctx->block);
        std::fill_n(ctx->block, kLengthWord, 0);
    }
    ctx->block[kLengthWord] = ctx->count_hi;
    ctx->block[kLengthWord + 1] = ctx->count_lo;
    sha0_compress_words(ctx->state, ctx->block);
    for (std::size_t i = 0; i < kSha1Initial.size(); ++i) store_be(digest + 4 * i, ctx->state[i]);
}

void E_SHA(uint8_t* digest, const uint8_t* data, uint32_t len) {
    E_SHA1_CTX ctx;
    E_SHA1_Init(&ctx);
    E_SHA_Update(&ctx, data, len);
    E_SHA_Final(&ctx, digest);
}
