#include "asn1/groups.h"

#include <morvane/asn1.h>

using namespace morvane::asn1;

namespace {

// A bare INTEGER.
void get_integer(ENUM E_DSA_KEY::*member, E_DSA_KEY* key, const std::uint8_t** input, std::uint32_t length) noexcept {
    if (key == nullptr || input == nullptr || *input == nullptr) return;
    Reader reader(*input, length);
    reader.get_number(key->*member, E_DSA_WORDS);
    *input = reader.position();
}

}  // namespace

std::int32_t E_ASN1_PutDSAParams(const E_DSA_KEY* key, std::uint8_t* out) { return put(key, out, kDsaParams); }

std::int32_t E_ASN1_GetDSAParamsBytes(const E_DSA_KEY* key) { return put(key, nullptr, kDsaParams); }

void E_ASN1_GetDSAParams(E_DSA_KEY* key, const std::uint8_t** input, std::uint32_t length) {
    get_at(key, input, length, kDsaParams);
}

std::int32_t E_ASN1_PutDSAPublicKey(const E_DSA_KEY* key, std::uint8_t* out) { return put(key, out, kDsaPublicKey); }

std::int32_t E_ASN1_GetDSAPublicKeyBytes(const E_DSA_KEY* key) { return put(key, nullptr, kDsaPublicKey); }

void E_ASN1_GetDSAPublicKey(E_DSA_KEY* key, const std::uint8_t** input, std::uint32_t length) {
    get_at(key, input, length, kDsaPublicKey);
}

std::int32_t E_ASN1_PutDSAPrivateKey(const E_DSA_KEY* key, std::uint8_t* out) { return put(key, out, kDsaPrivateKey); }

std::int32_t E_ASN1_GetDSAPrivateKeyBytes(const E_DSA_KEY* key) { return put(key, nullptr, kDsaPrivateKey); }

void E_ASN1_GetDSAPrivateKey(E_DSA_KEY* key, const std::uint8_t** input, std::uint32_t length) {
    get_at(key, input, length, kDsaPrivateKey);
}

// KCDSA keys are written as those of DSA.

std::int32_t E_ASN1_PutKCDSAParams(const E_KCDSA_KEY* key, std::uint8_t* out) { return put(key, out, kDsaParams); }

std::int32_t E_ASN1_GetKCDSAParamsBytes(const E_KCDSA_KEY* key) { return put(key, nullptr, kDsaParams); }

void E_ASN1_GetKCDSAParams(E_KCDSA_KEY* key, const std::uint8_t** input, std::uint32_t length) {
    get_at(key, input, length, kDsaParams);
}

std::int32_t E_ASN1_PutKCDSAPublicKey(const E_KCDSA_KEY* key, std::uint8_t* out) { return put(key, out, kDsaPublicKey); }

std::int32_t E_ASN1_GetKCDSAPublicKeyBytes(const E_KCDSA_KEY* key) { return put(key, nullptr, kDsaPublicKey); }

void E_ASN1_GetKCDSAPublicKey(E_KCDSA_KEY* key, const std::uint8_t** input, std::uint32_t length) {
    get_at(key, input, length, kDsaPublicKey);
}

std::int32_t E_ASN1_PutKCDSAPrivateKey(const E_KCDSA_KEY* key, std::uint8_t* out) { return put(key, out, kDsaPrivateKey); }

std::int32_t E_ASN1_GetKCDSAPrivateKeyBytes(const E_KCDSA_KEY* key) { return put(key, nullptr, kDsaPrivateKey); }

void E_ASN1_GetKCDSAPrivateKey(E_KCDSA_KEY* key, const std::uint8_t** input, std::uint32_t length) {
    get_at(key, input, length, kDsaPrivateKey);
}

std::int32_t E_ASN1_PutParameters_KCDSA(const E_KCDSA_KEY* key, std::uint8_t* out) { return put(key, out, kDsaParams); }

void E_ASN1_GetParameters_KCDSA(E_KCDSA_KEY* key, const std::uint8_t** input, std::uint32_t length) {
    get_at(key, input, length, kDsaParams);
}

void E_ASN1_GetKey_KCDSA(E_KCDSA_KEY* key, const std::uint8_t** input, std::uint32_t length) {
    if (input == nullptr) return;
    const std::uint8_t* const start = *input;
    get_at(key, input, length, kDsaPrivateKey);
    if (*input == start) get_at(key, input, length, kDsaPublicKey);
}

void E_ASN1_GetEncPublicKey_KCDSA(E_KCDSA_KEY* key, const std::uint8_t** input, std::uint32_t length) {
    get_integer(&E_KCDSA_KEY::y, key, input, length);
}

void E_ASN1_GetEncPrivateKey_KCDSA(E_KCDSA_KEY* key, const std::uint8_t** input, std::uint32_t length) {
    get_integer(&E_KCDSA_KEY::x, key, input, length);
}

std::int32_t E_ASN1_PutDHParams(const E_DH_KEY* key, std::uint8_t* out) { return put(key, out, kDhParams); }

std::int32_t E_ASN1_GetDHParamsBytes(const E_DH_KEY* key) { return put(key, nullptr, kDhParams); }

void E_ASN1_GetDHParams(E_DH_KEY* key, const std::uint8_t** input, std::uint32_t length) {
    get_at(key, input, length, kDhParams);
}
