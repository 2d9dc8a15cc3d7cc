// Encryption and signatures with RSA keys.
#include "toolkit/digest_info.h"
#include "toolkit/key_record.h"

#include <morvane/asn1.h>
#include <morvane/bignum.h>

#include <algorithm>

namespace {

using namespace morvane::toolkit;

using RsaKey = KeyRecord<E_RSA_KEY>;
using Get = void(E_RSA_KEY*, const std::uint8_t**, std::uint32_t);

std::uint32_t modulus_bytes(const E_RSA_KEY& key) noexcept { return (EN_GetFilledBitNum(&key.n) + 7) / 8; }

// Lets `transform` fill a buffer of the modulus' length, and hands out as much of it as that says; a negative number, or 0
// where that is a failure, is one.
template <typename Transform>
std::uint32_t with_key(K_CONTEXT* context, Get* get, const CSSM_DATA& key, CSSM_DATA& output, std::uint32_t code,
                       std::int32_t least, Transform transform) noexcept {
    RsaKey rsa(E_RSA_Init);
    if (!rsa.read(get, key)) return code;
    Buffer out(context, modulus_bytes(*rsa.get()), 1);
    if (!out) return KERR_MEMORY;
    const std::int32_t size = transform(out.get(), rsa.get());
    if (size < least) return code;
    out.set_length(static_cast<std::uint32_t>(size));
    out.hand_out(output);
    return 0;
}

// The four block operations.
using Block = std::int32_t(std::uint8_t*, const std::uint8_t*, std::int32_t, const E_RSA_KEY*);

std::int32_t transform(K_CONTEXT* context, const CSSM_DATA* key, const CSSM_DATA* input, CSSM_DATA* output, Get* get,
                       Block* block, std::uint32_t code, std::int32_t least) noexcept {
    return operate(context, has_data(key) && has_data(input) && output != nullptr, [&] {
        if (!is_length(*input)) return code;
        return with_key(context, get, *key, *output, code, least, [&](std::uint8_t* out, const E_RSA_KEY* rsa) {
            return block(out, input->Data, length_of(*input), rsa);
        });
    });
}

constexpr std::int32_t kOaepHash = 0;  // SHA-1, for the label and for the masks

using Oaep = std::int32_t(std::int32_t, std::int32_t, std::uint8_t*, const std::uint8_t*, std::int32_t, const std::uint8_t*,
                          std::int32_t, const E_RSA_KEY*);

std::int32_t transform_oaep(K_CONTEXT* context, const CSSM_DATA* key, const CSSM_DATA* label, const CSSM_DATA* input,
                            CSSM_DATA* output, Get* get, Oaep* oaep, std::uint32_t code) noexcept {
    return operate(context, has_data(key) && has_data(input) && output != nullptr, [&] {
        const CSSM_DATA text = label != nullptr ? *label : CSSM_DATA{0, nullptr};
        if (!is_length(*input) || !is_length(text)) return code;
        return with_key(context, get, *key, *output, code, 0, [&](std::uint8_t* out, const E_RSA_KEY* rsa) {
            return oaep(kOaepHash, kOaepHash, out, input->Data, length_of(*input), text.Data, length_of(text), rsa);
        });
    });
}

// Whether the signature opens to the DigestInfo, all of it.
bool opens_to(const DigestInfo& info, const CSSM_DATA& signature, E_RSA_KEY* key) noexcept {
    std::uint8_t opened[4 * E_RSA_MODULUS_WORDS];
    if (signature.Length != modulus_bytes(*key)) return false;
    const std::int32_t size = E_RSA_Public_Decrypt(opened, signature.Data, length_of(signature), key);
    return size == static_cast<std::int32_t>(info.size) && std::equal(opened, opened + info.size, info.bytes);
}

}  // namespace

int32_t K_RSAPublicEncrypt(K_CONTEXT* context, const CSSM_DATA* key, const CSSM_DATA* input, CSSM_DATA* output) {
    return transform(context, key, input, output, E_ASN1_GetRSAPublicKey, E_RSA_Public_Encrypt, KERR_RSA_PUBLIC_ENCRYPT, 1);
}

int32_t K_RSAPrivateDecrypt(K_CONTEXT* context, const CSSM_DATA* key, const CSSM_DATA* input, CSSM_DATA* output) {
    return transform(context, key, input, output, E_ASN1_GetRSAPrivateKey, E_RSA_Private_Decrypt, KERR_RSA_PRIVATE_DECRYPT,
                     1);
}

int32_t K_RSAPrivateEncrypt(K_CONTEXT* context, const CSSM_DATA* key, const CSSM_DATA* input, CSSM_DATA* output) {
    if (context != nullptr && key != nullptr && key->Length == 0) return finish(context, KERR_EMPTY_KEY);
    return transform(context, key, input, output, E_ASN1_GetRSAPrivateKey, E_RSA_Private_Encrypt, KERR_RSA_PRIVATE_ENCRYPT,
                     1);
}

int32_t K_RSAPublicDecrypt(K_CONTEXT* context, const CSSM_DATA* key, const CSSM_DATA* input, CSSM_DATA* output) {
    return transform(context, key, input, output, E_ASN1_GetRSAPublicKey, E_RSA_Public_Decrypt, KERR_RSA_PUBLIC_DECRYPT, 0);
}

int32_t K_RSAPublicEncryptOAEP(K_CONTEXT* context, const CSSM_DATA* key, const CSSM_DATA* label, const CSSM_DATA* input,
                               CSSM_DATA* output) {
    return transform_oaep(context, key, label, input, output, E_ASN1_GetRSAPublicKey, E_RSAES_OAEP_Encrypt,
                          KERR_RSA_PUBLIC_ENCRYPT);
}

int32_t K_RSAPrivateDecryptOAEP(K_CONTEXT* context, const CSSM_DATA* key, const CSSM_DATA* label, const CSSM_DATA* input,
                                CSSM_DATA* output) {
    return transform_oaep(context, key, label, input, output, E_ASN1_GetRSAPrivateKey, E_RSAES_OAEP_Decrypt,
                          KERR_RSA_PRIVATE_DECRYPT);
}

int32_t K_RSASign(K_CONTEXT* context, uint32_t selector, const CSSM_DATA* key, const CSSM_DATA* message,
                  CSSM_DATA* signature) {
    return operate(context, has_data(key) && has_data(message) && signature != nullptr, [&]() -> std::uint32_t {
        DigestInfo info;
        if (const std::uint32_t code = info.set(context, selector, *message, KERR_SIGN); code != 0) return code;
        return with_key(context, E_ASN1_GetRSAPrivateKey, *key, *signature, KERR_SIGN, 1,
                        [&](std::uint8_t* out, const E_RSA_KEY* rsa) {
                            return E_RSA_Private_Encrypt(out, info.bytes, static_cast<std::int32_t>(info.size), rsa);
                        });
    });
}

int32_t K_RSAVerify(K_CONTEXT* context, uint32_t selector, const CSSM_DATA* key, const CSSM_DATA* message,
                    const CSSM_DATA* signature) {
    return operate(context, has_data(key) && has_data(message) && has_data(signature), [&]() -> std::uint32_t {
        DigestInfo info;
        if (const std::uint32_t code = info.set(context, selector, *message, KERR_VERIFY); code != 0) return code;
        RsaKey rsa(E_RSA_Init);
        const bool valid = rsa.read(E_ASN1_GetRSAPublicKey, *key) && opens_to(info, *signature, rsa.get());
        return valid ? 0 : KERR_VERIFY;
    });
}

int32_t K_RSASignPSS(K_CONTEXT* context, int32_t hash, int32_t salt_length, const CSSM_DATA* key, const CSSM_DATA* message,
                     CSSM_DATA* signature) {
    return operate(context, has_data(key) && has_data(message) && signature != nullptr, [&]() -> std::uint32_t {
        if (!is_length(*message)) return KERR_SIGN;
        return with_key(
            context, E_ASN1_GetRSAPrivateKey, *key, *signature, KERR_SIGN, 1, [&](std::uint8_t* out, const E_RSA_KEY* rsa) {
                std::int32_t size = 0;
                const std::int32_t done =
                    E_RSASSA_PSS_Sign(hash, hash, out, &size, message->Data, length_of(*message), salt_length, rsa);
                return done == 1 ? size : 0;
            });
    });
}

int32_t K_RSAVerifyPSS(K_CONTEXT* context, int32_t hash, int32_t salt_length, const CSSM_DATA* key,
                       const CSSM_DATA* message, const CSSM_DATA* signature) {
    return operate(context, has_data(key) && has_data(message) && has_data(signature), [&]() -> std::uint32_t {
        RsaKey rsa(E_RSA_Init);
        const bool valid = is_length(*message) && is_length(*signature) && rsa.read(E_ASN1_GetRSAPublicKey, *key) &&
                           E_RSASSA_PSS_Verify(hash, hash, message->Data, length_of(*message), signature->Data,
                                               length_of(*signature), salt_length, rsa.get()) == 1;
        return valid ? 0 : KERR_VERIFY;
    });
}
