#include "rows.h"

#define CRYPTOPP_ENABLE_NAMESPACE_WEAK 1
#include <cryptopp/hmac.h>
#include <cryptopp/md2.h>
#include <cryptopp/md4.h>
#include <cryptopp/md5.h>
#include <cryptopp/ripemd.h>
#include <cryptopp/sha.h>
#include <memory>

namespace morvane::bench {
namespace {

template <typename Hash>
void add(Rows& all, const char* primitive) {
    all.push_back({primitive, "cryptopp",
                   [hash = std::make_shared<Hash>()](std::uint8_t* digest, const std::uint8_t* message, std::size_t size) {
                       hash->CalculateDigest(digest, message, size);
                   }});
}

}  // namespace

void add_cryptopp(Rows& all) {
    add<CryptoPP::Weak::MD2>(all, "md2");
    add<CryptoPP::Weak::MD4>(all, "md4");
    add<CryptoPP::Weak::MD5>(all, "md5");
    add<CryptoPP::RIPEMD160>(all, "ripemd160");
    add<CryptoPP::SHA1>(all, "sha1");
    add<CryptoPP::SHA256>(all, "sha256");
    add<CryptoPP::SHA384>(all, "sha384");
    add<CryptoPP::SHA512>(all, "sha512");
    const auto hmac = std::make_shared<CryptoPP::HMAC<CryptoPP::SHA1>>();
    all.push_back({"hmac-sha1", "cryptopp", [hmac](std::uint8_t* mac, const std::uint8_t* message, std::size_t size) {
                       hmac->SetKey(kMacKey, kMacKeyBytes);
                       hmac->CalculateDigest(mac, message, size);
                   }});
}

}  // namespace morvane::bench
