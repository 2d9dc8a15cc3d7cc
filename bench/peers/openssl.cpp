#include "rows.h"

#include <openssl/evp.h>
#include <openssl/hmac.h>
#include <memory>
// The older interface works on a context of the caller and is the faster one for short messages.
#define OPENSSL_SUPPRESS_DEPRECATED
#include <openssl/md4.h>
#include <openssl/md5.h>
#include <openssl/ripemd.h>
#include <openssl/sha.h>

#pragma GCC diagnostic ignored "-Wdeprecated-declarations"

namespace morvane::bench {
namespace {

template <typename Context, auto Init, auto Update, auto Final>
void add(Rows& all, const char* primitive) {
    all.push_back({primitive, "openssl", [](std::uint8_t* digest, const std::uint8_t* message, std::size_t size) {
                       Context context;
                       Init(&context);
                       Update(&context, message, size);
                       Final(digest, &context);
                   }});
}

}  // namespace

void add_openssl(Rows& all) {
    add<MD4_CTX, MD4_Init, MD4_Update, MD4_Final>(all, "md4");
    add<MD5_CTX, MD5_Init, MD5_Update, MD5_Final>(all, "md5");
    add<RIPEMD160_CTX, RIPEMD160_Init, RIPEMD160_Update, RIPEMD160_Final>(all, "ripemd160");
    add<SHA_CTX, SHA1_Init, SHA1_Update, SHA1_Final>(all, "sha1");
    add<SHA256_CTX, SHA256_Init, SHA256_Update, SHA256_Final>(all, "sha256");
    add<SHA512_CTX, SHA384_Init, SHA384_Update, SHA384_Final>(all, "sha384");
    add<SHA512_CTX, SHA512_Init, SHA512_Update, SHA512_Final>(all, "sha512");

    // Fetched once: EVP_sha1() would be looked up anew for each message.
    const std::shared_ptr<EVP_MD> sha1(EVP_MD_fetch(nullptr, "SHA1", nullptr), EVP_MD_free);
    const std::shared_ptr<HMAC_CTX> context(HMAC_CTX_new(), HMAC_CTX_free);
    all.push_back({"hmac-sha1", "openssl", [=](std::uint8_t* mac, const std::uint8_t* message, std::size_t size) {
                       HMAC_Init_ex(context.get(), kMacKey, kMacKeyBytes, sha1.get(), nullptr);
                       HMAC_Update(context.get(), message, size);
                       HMAC_Final(context.get(), mac, nullptr);
                   }});
}

}  // namespace morvane::bench
