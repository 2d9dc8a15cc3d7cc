#include "asn1/rsa.h"

#include <morvane/asn1.h>

using namespace morvane::asn1;

std::int32_t E_ASN1_PutRSAPublicKey(const E_RSA_KEY* key, std::uint8_t* out) { return put(key, out, kRsaPublicKey); }

std::int32_t E_ASN1_GetRSAPublicKeyBytes(const E_RSA_KEY* key) { return put(key, nullptr, kRsaPublicKey); }

void E_ASN1_GetRSAPublicKey(E_RSA_KEY* key, const std::uint8_t** input, std::uint32_t length) {
    get_at(key, input, length, kRsaPublicKey);
}

std::int32_t E_ASN1_PutRSAPrivateKey(const E_RSA_KEY* key, std::uint8_t* out) { return put(key, out, kRsaPrivateKey); }

std::int32_t E_ASN1_GetRSAPrivateKeyBytes(const E_RSA_KEY* key) { return put(key, nullptr, kRsaPrivateKey); }

void E_ASN1_GetRSAPrivateKey(E_RSA_KEY* key, const std::uint8_t** input, std::uint32_t length) {
    get_at(key, input, length, kRsaPrivateKey);
}
