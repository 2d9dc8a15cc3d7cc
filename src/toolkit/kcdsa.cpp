// Signatures with KCDSA keys.
#include "toolkit/key_record.h"

#include <morvane/asn1.h>
#include <morvane/bignum.h>

namespace {

using namespace morvane::toolkit;

using KcdsaKey = KeyRecord<E_KCDSA_KEY>;

// More than any signature has beside its numbers r and s.
constexpr std::uint32_t kOverhead = 40;

// Lets `sign` fill a buffer, for a key from its DER.
template <typename Sign>
std::uint32_t sign_with(K_CONTEXT* context, const CSSM_DATA& der, const CSSM_DATA& input, CSSM_DATA& signature,
                        Sign sign) noexcept {
    KcdsaKey key(E_DSA_Init);
    if (!is_length(input) || !key.read(E_ASN1_GetKCDSAPrivateKey, der)) return KERR_SIGN;
    Buffer out(context, 2 * ((EN_GetFilledBitNum(&key->q) + 7) / 8), kOverhead);
    if (!out) return KERR_MEMORY;
    std::int32_t size = 0;
    if (sign(out.get(), &size, key.get()) != 1) return KERR_SIGN;
    out.set_length(static_cast<std::uint32_t>(size));
    out.hand_out(signature);
    return 0;
}

template <typename Verify>
std::uint32_t verify_with(const CSSM_DATA& der, const CSSM_DATA& input, const CSSM_DATA& signature,
                          Verify verify) noexcept {
    KcdsaKey key(E_DSA_Init);
    const bool valid = is_length(input) && is_length(signature) && key.read(E_ASN1_GetKCDSAPublicKey, der) &&
                       verify(length_of(input), length_of(signature), key.get()) == 1;
    return valid ? 0 : KERR_VERIFY;
}

}  // namespace

int32_t K_KCDSASign(K_CONTEXT* context, int32_t hash, const CSSM_DATA* key, const CSSM_DATA* message,
                    CSSM_DATA* signature) {
    return operate(context, has_data(key) && has_data(message) && signature != nullptr, [&] {
        return sign_with(context, *key, *message, *signature,
                         [&](std::uint8_t* out, std::int32_t* size, const E_KCDSA_KEY* kcdsa) {
                             return E_KCDSA_Sign_New(hash, message->Data, length_of(*message), out, size, kcdsa);
                         });
    });
}

int32_t K_KCDSAVerify(K_CONTEXT* context, int32_t hash, const CSSM_DATA* key, const CSSM_DATA* message,
                      const CSSM_DATA* signature) {
    return operate(context, has_data(key) && has_data(message) && has_data(signature), [&] {
        return verify_with(*key, *message, *signature,
                           [&](std::int32_t size, std::int32_t sig_size, const E_KCDSA_KEY* kcdsa) {
                               return E_KCDSA_Verify_New(hash, message->Data, size, signature->Data, sig_size, kcdsa);
                           });
    });
}

int32_t K_KCDSASignHash(K_CONTEXT* context, const CSSM_DATA* key, const CSSM_DATA* hash, CSSM_DATA* signature) {
    return operate(context, has_data(key) && has_data(hash) && signature != nullptr, [&] {
        return sign_with(context, *key, *hash, *signature,
                         [&](std::uint8_t* out, std::int32_t* size, const E_KCDSA_KEY* kcdsa) {
                             return E_KCDSA_Sign(hash->Data, length_of(*hash), out, size, kcdsa);
                         });
    });
}

int32_t K_KCDSAVerifyHash(K_CONTEXT* context, const CSSM_DATA* key, const CSSM_DATA* hash, const CSSM_DATA* signature) {
    return operate(context, has_data(key) && has_data(hash) && has_data(signature), [&] {
        return verify_with(*key, *hash, *signature,
                           [&](std::int32_t size, std::int32_t sig_size, const E_KCDSA_KEY* kcdsa) {
                               return E_KCDSA_Verify(hash->Data, size, signature->Data, sig_size, kcdsa);
                           });
    });
}
