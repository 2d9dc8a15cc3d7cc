// E_SHA384_* and E_SHA512_* (FIPS 180-2): one record and one compression; initial value and digest length differ.
#include <morvane/hash.h>

#include "base/bytes.h"
#include "hash/block_digest.h"
#include "hash/sha2_compress.h"
#include "hash/sha512_rounds.h"

static_assert(sizeof(E_SHA512_CTX) == 208 && offsetof(E_SHA512_CTX, count) == 64 && offsetof(E_SHA512_CTX, block) == 80);

namespace {

using namespace morvane;
using namespace morvane::hash;

struct Sha512 {
    using Context = E_SHA512_CTX;
    static constexpr std::size_t kBlockBytes = 128;

    static std::uint8_t* block(Context& ctx) noexcept { return ctx.block; }
    static std::size_t used(const Context& ctx) noexcept { return (ctx.count[0] >> 3) % kBlockBytes; }
    static void count(Context& ctx, std::uint32_t bytes) noexcept {
        std::uint64_t carry = std::uint64_t{bytes} << 3;
        for (std::uint32_t& word : ctx.count) {
            carry += word;
            word = static_cast<std::uint32_t>(carry);
            carry >>= 32;
        }
    }
    static Length<16> length(const Context& ctx) noexcept {
        return {as_be(std::uint64_t{ctx.count[3]} << 32 | ctx.count[2]),
                as_be(std::uint64_t{ctx.count[1]} << 32 | ctx.count[0])};
    }
    static void compress(Context& ctx, const std::uint8_t* blocks, std::size_t count) noexcept {
        sha512_compress.get()(ctx.state, blocks, count);
    }
};

using Initial = std::array<std::uint64_t, 8>;

constexpr Initial kInitial384 = {0xcbbb9d5dc1059ed8, 0x629a292a367cd507, 0x9159015a3070dd17, 0x152fecd8f70e5939,
                                 0x67332667ffc00b31, 0x8eb44a8768581511, 0xdb0c2e0d64f98fa7, 0x47b5481dbefa4fa4};
constexpr Initial kInitial512 = {0x6a09e667f3bcc908, 0xbb67ae8584caa73b, 0x3c6ef372fe94f82b, 0xa54ff53a5f1d36f1,
                                 0x510e527fade682d1, 0x9b05688c2b3e6c1f, 0x1f83d9abfb41bd6b, 0x5be0cd19137e2179};

void init(E_SHA512_CTX& ctx, const Initial& initial) noexcept {
    for (std::size_t i = 0; i < initial.size(); ++i) set_sha512_state_word(ctx.state, i, initial[i]);
    for (std::uint32_t& word : ctx.count) word = 0;
}

void finish(E_SHA512_CTX& ctx, std::uint8_t* digest, std::size_t digest_bytes) noexcept {
    pad<Sha512>(ctx);
    for (std::size_t i = 0; i < digest_bytes / 8; ++i) store_be(digest + 8 * i, sha512_state_word(ctx.state, i));
}

}  // namespace

void E_SHA384_Init(E_SHA512_CTX* ctx) { init(*ctx, kInitial384); }

void E_SHA384_Update(E_SHA512_CTX* ctx, const uint8_t* data, uint32_t len) { absorb<Sha512>(*ctx, data, len); }

void E_SHA384_Final(E_SHA512_CTX* ctx, uint8_t* digest) { finish(*ctx, digest, E_SHA384_DIGEST_BYTES); }

void E_SHA384(uint8_t* digest, uint32_t* digest_len, const uint8_t* data, uint32_t len) {
    E_SHA512_CTX ctx;
    E_SHA384_Init(&ctx);
    E_SHA384_Update(&ctx, data, len);
    E_SHA384_Final(&ctx, digest);
    *digest_len = E_SHA384_DIGEST_BYTES;
}

void E_SHA512_Init(E_SHA512_CTX* ctx) { init(*ctx, kInitial512); }

void E_SHA512_Update(E_SHA512_CTX* ctx, const uint8_t* data, uint32_t len) { absorb<Sha512>(*ctx, data, len); }

void E_SHA512_Final(E_SHA512_CTX* ctx, uint8_t* digest) { finish(*ctx, digest, E_SHA512_DIGEST_BYTES); }

void E_SHA512(uint8_t* digest, uint32_t* digest_len, const uint8_t* data, uint32_t len) {
    E_SHA512_CTX ctx;
    E_SHA512_Init(&ctx);
    E_SHA512_Update(&ctx, data, len);
    E_SHA512_Final(&ctx, digest);
    *digest_len = E_SHA512_DIGEST_BYTES;
}
