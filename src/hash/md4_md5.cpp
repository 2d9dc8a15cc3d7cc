// E_MD4_* and the internal MD5, which share their record and its initialisation.
#include "hash/little_endian_digest.h"
#include "hash/md5.h"

#include <algorithm>

static_assert(sizeof(E_MD5_CTX) == 88 && offsetof(E_MD5_CTX, state) == 8 && offsetof(E_MD5_CTX, block) == 24);

namespace morvane::hash {
namespace {

using Md4 = LittleEndianDigest<E_MD5_CTX, md4_compress>;
using Md5 = LittleEndianDigest<E_MD5_CTX, md5_compress>;

template <typename D>
void finish(E_MD5_CTX& ctx, std::uint8_t* digest) noexcept {
    const std::size_t used = D::used(ctx);
    pad<D>(ctx);
    // The padding and the length count as absorbed: the record's count afterwards includes them.
    const std::size_t blocks = used < D::kBlockBytes - 8 ? 1 : 2;
    D::count(ctx, static_cast<std::uint32_t>(blocks * D::kBlockBytes - used));
    put_little_endian(ctx.state, digest);
}

template <typename D>
void digest_at_once(std::uint8_t* digest, const std::uint8_t* data, std::uint32_t len) noexcept {
    E_MD5_CTX ctx;
    E_MD4_Init(&ctx);
    absorb<D>(ctx, data, len);
    pad<D>(ctx);
    put_little_endian(ctx.state, digest);
}

}  // namespace

void md5_update(E_MD5_CTX* ctx, const std::uint8_t* data, std::uint32_t len) noexcept { absorb<Md5>(*ctx, data, len); }

void md5_final(E_MD5_CTX* ctx, std::uint8_t* digest) noexcept { finish<Md5>(*ctx, digest); }

void md5(std::uint8_t* digest, const std::uint8_t* data, std::uint32_t len) noexcept {
    digest_at_once<Md5>(digest, data, len);
}

}  // namespace morvane::hash

using namespace morvane::hash;

void E_MD4_Init(E_MD5_CTX* ctx) {
    constexpr std::uint32_t kInitial[] = {0x67452301, 0xEFCDAB89, 0x98BADCFE, 0x10325476};
    ctx->count_lo = 0;
    ctx->count_hi = 0;
    std::copy(std::begin(kInitial), std::end(kInitial), ctx->state);
}

void E_MD4_Update(E_MD5_CTX* ctx, const uint8_t* data, uint32_t len) { absorb<Md4>(*ctx, data, len); }

void E_MD4_Final(E_MD5_CTX* ctx, uint8_t* digest) { finish<Md4>(*ctx, digest); }

void E_MD4(uint8_t* digest, const uint8_t* data, uint32_t len) { digest_at_once<Md4>(digest, data, len); }
