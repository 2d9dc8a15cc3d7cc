#include "digests.h"

#include <morvane/primitives.h>

namespace morvane::bench {
namespace {

template <auto OneShot>
void add(Digests& all, const char* primitive) {
    all.push_back({primitive, kOurs, [](std::uint8_t* digest, const std::uint8_t* message, std::size_t size) {
                       OneShot(digest, message, static_cast<std::uint32_t>(size));
                   }});
}

}  // namespace

void add_ours(Digests& all) {
    add<E_SHA1>(all, "sha1");
    add<E_SHA>(all, "sha0");
    all.push_back({"hmac-sha1", kOurs, [](std::uint8_t* mac, const std::uint8_t* message, std::size_t size) {
                       E_HMAC_SHA1(message, static_cast<std::uint32_t>(size), kMacKey, kMacKeyBytes, mac);
                   }});
}

}  // namespace morvane::bench
