#include "rows.h"

#include <morvane/primitives.h>

#include "hash/md5.h"

namespace morvane::bench {
namespace {

void has160(std::uint8_t* digest, const std::uint8_t* message, std::uint32_t size) {
    E_HAS160(digest, message, static_cast<std::int32_t>(size));
}

// SHA-2 reports the length of the digest besides.
template <auto OneShot>
void call(std::uint8_t* digest, const std::uint8_t* message, std::size_t size) {
    if constexpr (requires { OneShot(digest, message, std::uint32_t{}); }) {
        OneShot(digest, message, static_cast<std::uint32_t>(size));
    } else {
        std::uint32_t digest_bytes = 0;
        OneShot(digest, &digest_bytes, message, static_cast<std::uint32_t>(size));
    }
}

template <auto OneShot>
void add(Rows& all, const char* primitive) {
    all.push_back({primitive, kOurs, call<OneShot>});
}

}  // namespace

void add_ours(Rows& all) {
    add<E_MD2>(all, "md2");
    add<E_MD4>(all, "md4");
    add<hash::md5>(all, "md5");
    add<has160>(all, "has160");
    add<E_RIPEMD160>(all, "ripemd160");
    add<E_SHA1>(all, "sha1");
    add<E_SHA256>(all, "sha256");
    add<E_SHA384>(all, "sha384");
    add<E_SHA512>(all, "sha512");
    add<E_SHA>(all, "sha0");
    all.push_back({"hmac-sha1", kOurs, [](std::uint8_t* mac, const std::uint8_t* message, std::size_t size) {
                       E_HMAC_SHA1(message, static_cast<std::uint32_t>(size), kMacKey, kMacKeyBytes, mac);
                   }});
}

}  // namespace morvane::bench
