// E_MD2_*: MD2 (RFC 1319) on caller-owned contexts.
#include <morvane/hash.h>

#include "base/bytes.h"
#include "hash/md2_table.h"

#include <algorithm>

static_assert(sizeof(E_MD2_CTX) == 52 && offsetof(E_MD2_CTX, block) == 32 && offsetof(E_MD2_CTX, count) == 48);

namespace {

using namespace morvane;
using namespace morvane::hash;

constexpr std::size_t kBlockBytes = sizeof E_MD2_CTX::block;
constexpr int kRounds = 18;

// The checksum and the state are two chains of table look-ups that do not depend on one another. The processor works on the
// next block's checksum while the rounds of this one wait for their table.
void compress(E_MD2_CTX& ctx, const std::uint8_t* blocks, std::size_t count) noexcept {
    for (; count != 0; --count, blocks += kBlockBytes) {
        std::array<std::uint8_t, 3 * kBlockBytes> x;
        std::uint8_t last = ctx.checksum[kBlockBytes - 1];
        for (std::size_t i = 0; i < kBlockBytes; ++i) {
            x[i] = ctx.state[i];
            x[kBlockBytes + i] = blocks[i];
            x[2 * kBlockBytes + i] = static_cast<std::uint8_t>(ctx.state[i] ^ blocks[i]);
            last = ctx.checksum[i] = static_cast<std::uint8_t>(ctx.checksum[i] ^ kMd2Table[blocks[i] ^ last]);
        }
        std::uint32_t t = 0;
        for (std::uint32_t round = 0; round < kRounds; ++round) {
            for (std::uint8_t& byte : x) t = byte = static_cast<std::uint8_t>(byte ^ kMd2Table[t]);
            t = (t + round) & 0xFF;
        }
        std::copy_n(x.begin(), kBlockBytes, ctx.state);
    }
}

}  // namespace

void E_MD2_Init(E_MD2_CTX* ctx) {
    std::fill_n(ctx->state, kBlockBytes, std::uint8_t{0});
    std::fill_n(ctx->checksum, kBlockBytes, std::uint8_t{0});
    ctx->count = 0;
}

void E_MD2_Update(E_MD2_CTX* ctx, const uint8_t* data, uint32_t len) {
    if (len == 0) return;
    const std::size_t used = ctx->count % kBlockBytes;
    std::size_t left = len;
    if (used != 0) {
        const std::size_t taken = std::min(left, kBlockBytes - used);
        copy_bytes(ctx->block + used, data, taken);
        ctx->count = static_cast<std::uint32_t>(used + taken);
        if (ctx->count < kBlockBytes) return;
        compress(*ctx, ctx->block, 1);
        data += taken;
        left -= taken;
    }
    compress(*ctx, data, left / kBlockBytes);
    ctx->count = static_cast<std::uint32_t>(left % kBlockBytes);
    copy_bytes(ctx->block, data + (left - ctx->count), ctx->count);
}

void E_MD2_Final(E_MD2_CTX* ctx, uint8_t* digest) {
    const std::size_t used = ctx->count % kBlockBytes;
    const std::size_t missing = kBlockBytes - used;
    std::fill_n(ctx->block + used, missing, static_cast<std::uint8_t>(missing));
    compress(*ctx, ctx->block, 1);
    std::uint8_t checksum[kBlockBytes];
    std::copy_n(ctx->checksum, kBlockBytes, checksum);  // compression changes it as it goes
    compress(*ctx, checksum, 1);
    std::copy_n(ctx->state, kBlockBytes, digest);
}

void E_MD2(uint8_t* digest, const uint8_t* data, uint32_t len) {
    E_MD2_CTX ctx;
    E_MD2_Init(&ctx);
    E_MD2_Update(&ctx, data, len);
    E_MD2_Final(&ctx, digest);
}
