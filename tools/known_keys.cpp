#include "known_keys.h"

#include "octets.h"

#include <morvane/asn1.h>

namespace morvane::tool {
namespace {

template <typename Record>
std::unique_ptr<Record> read(void (*init)(Record*), void (*get)(Record*, const std::uint8_t**, std::uint32_t),
                             std::string_view hex) {
    auto record = std::make_unique<Record>();
    init(record.get());
    const Octets der = octets(hex);
    const std::uint8_t* position = der.data();
    get(record.get(), &position, size32(der));
    return record;
}

}  // namespace

std::unique_ptr<E_RSA_KEY> known_rsa_key() { return read(E_RSA_Init, E_ASN1_GetRSAPrivateKey, kRsaKey); }
std::unique_ptr<E_DSA_KEY> known_dsa_key() { return read(E_DSA_Init, E_ASN1_GetDSAPrivateKey, kDsaKey); }
std::unique_ptr<E_DSA_KEY> known_kcdsa_key() { return read(E_KCDSA_Init, E_ASN1_GetKCDSAPrivateKey, kKcdsaKey); }

}  // namespace morvane::tool
