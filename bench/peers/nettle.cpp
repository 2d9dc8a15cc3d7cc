#include "rows.h"

#include <nettle/hmac.h>
#include <nettle/md2.h>
#include <nettle/md4.h>
#include <nettle/md5.h>
#include <nettle/ripemd160.h>
#include <nettle/sha1.h>
#include <nettle/sha2.h>

namespace morvane::bench {
namespace {

template <typename Context, auto Init, auto Update, auto Finish, std::size_t Bytes>
void add(Rows& all, const char* primitive) {
    all.push_back({primitive, "nettle", [](std::uint8_t* digest, const std::uint8_t* message, std::size_t size) {
                       Context context;
                       Init(&context);
                       Update(&context, size, message);
                       Finish(&context, Bytes, digest);
                   }});
}

}  // namespace

void add_nettle(Rows& all) {
    add<md2_ctx, nettle_md2_init, nettle_md2_update, nettle_md2_digest, 16>(all, "md2");
    add<md4_ctx, nettle_md4_init, nettle_md4_update, nettle_md4_digest, 16>(all, "md4");
    add<md5_ctx, nettle_md5_init, nettle_md5_update, nettle_md5_digest, 16>(all, "md5");
    add<ripemd160_ctx, nettle_ripemd160_init, nettle_ripemd160_update, nettle_ripemd160_digest, 20>(all, "ripemd160");
    add<sha1_ctx, nettle_sha1_init, nettle_sha1_update, nettle_sha1_digest, 20>(all, "sha1");
    add<sha256_ctx, nettle_sha256_init, nettle_sha256_update, nettle_sha256_digest, 32>(all, "sha256");
    add<sha512_ctx, nettle_sha384_init, nettle_sha512_update, nettle_sha384_digest, 48>(all, "sha384");
    add<sha512_ctx, nettle_sha512_init, nettle_sha512_update, nettle_sha512_digest, 64>(all, "sha512");
    all.push_back({"hmac-sha1", "nettle", [](std::uint8_t* mac, const std::uint8_t* message, std::size_t size) {
                       hmac_sha1_ctx context;
                       nettle_hmac_sha1_set_key(&context, kMacKeyBytes, kMacKey);
                       nettle_hmac_sha1_update(&context, size, message);
                       nettle_hmac_sha1_digest(&context, kMacBytes, mac);
                   }});
}

}  // namespace morvane::bench
