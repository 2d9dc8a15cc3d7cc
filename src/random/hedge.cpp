#include "random/hedge.h"

#include "base/wipe.h"
#include "random/pool.h"

#include <morvane/hash.h>

void morvane::random::hedge(std::span<const std::uint32_t> private_key, std::span<const std::uint8_t> message) noexcept {
    SecretArray<std::uint8_t, E_SHA1_DIGEST_BYTES> digest;
    E_SHA1_CTX ctx;
    E_SHA1_Init(&ctx);
    E_SHA1_Update(&ctx, reinterpret_cast<const std::uint8_t*>(private_key.data()),
                  static_cast<std::uint32_t>(private_key.size_bytes()));
    E_SHA1_Update(&ctx, message.data(), static_cast<std::uint32_t>(message.size()));
    E_SHA1_Final(&ctx, digest.items.data());
    wipe(&ctx, sizeof ctx);
    RAND_Seed(digest.items.data(), E_SHA1_DIGEST_BYTES);
}
