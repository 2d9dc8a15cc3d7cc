// Key pairs, signatures, agreement and encryption on elliptic curves.
#include "toolkit/key_record.h"

#include <morvane/ecc_schemes.h>

namespace {

using namespace morvane::toolkit;

// A buffer as the primitives take it.
TORVA_V1_OPAQUE8 octets_of(const CSSM_DATA& data) noexcept { return {length_of(data), data.Data}; }

template <typename... Data>
bool are_lengths(const Data&... data) noexcept {
    return (is_length(data) && ...);
}

// Lets `fill` write octets into a buffer with `room` for them, and hands them out if it answers 0.
template <typename Fill>
std::uint32_t fill_and_hand_out(K_CONTEXT* context, std::uint32_t room, CSSM_DATA& output, std::uint32_t code,
                                Fill fill) noexcept {
    Buffer buffer(context, room, 1);
    if (!buffer) return KERR_MEMORY;
    TORVA_V1_OPAQUE8 octets{0, buffer.get()};
    if (fill(&octets) != 0) return code;
    buffer.set_length(static_cast<std::uint32_t>(octets.count));
    buffer.hand_out(output);
    return 0;
}

// A pair by a generator of the primitives.
using Generate = std::int32_t(std::int32_t, const E_EC_PARAMS*, TORVA_V1_OPAQUE8*, TORVA_V1_OPAQUE8*);

std::int32_t generate(K_CONTEXT* context, std::int32_t curve, CSSM_DATA* public_key, CSSM_DATA* private_key,
                      Generate* generator) noexcept {
    return operate(context, public_key != nullptr && private_key != nullptr, [&]() -> std::uint32_t {
        E_EC_PARAMS params;
        if (E_ECParams_Init(curve, &params) != 0) return KERR_KEYGEN;
        Buffer open(context, E_EC_POINT_OCTETS, 1);
        Buffer secret(context, E_EC_PRIVATE_KEY_OCTETS, 1);
        if (!open || !secret) return KERR_OUTPUT_ALLOC;
        TORVA_V1_OPAQUE8 open_octets{0, open.get()};
        TORVA_V1_OPAQUE8 secret_octets{0, secret.get()};
        if (generator(curve, &params, &secret_octets, &open_octets) != 0) return KERR_KEYGEN;
        open.set_length(static_cast<std::uint32_t>(open_octets.count));
        secret.set_length(static_cast<std::uint32_t>(secret_octets.count));
        open.hand_out(*public_key);
        secret.hand_out(*private_key);
        return 0;
    });
}

using Verify = std::int32_t(std::int32_t, const E_EC_PARAMS*, const TORVA_V1_OPAQUE8*, const TORVA_V1_OPAQUE8*,
                            const TORVA_V1_OPAQUE8*);

std::int32_t verify(K_CONTEXT* context, std::int32_t curve, const CSSM_DATA* public_key, const CSSM_DATA* message,
                    const CSSM_DATA* signature, Verify* verifier) noexcept {
    return operate(context, has_data(public_key) && has_data(message) && has_data(signature), [&]() -> std::uint32_t {
        E_EC_PARAMS params;
        if (!are_lengths(*public_key, *message, *signature) || E_ECParams_Init(curve, &params) != 0) return KERR_VERIFY;
        const TORVA_V1_OPAQUE8 key = octets_of(*public_key), text = octets_of(*message), block = octets_of(*signature);
        return verifier(curve, &params, &text, &block, &key) == 1 ? 0 : KERR_VERIFY;
    });
}

}  // namespace

int32_t K_GenerateECCKeyPair(K_CONTEXT* context, int32_t curve, CSSM_DATA* public_key, CSSM_DATA* private_key) {
    return generate(context, curve, public_key, private_key, E_ECC_GenerateKeyPair);
}

int32_t K_GenerateECKCDSAKeyPair(K_CONTEXT* context, int32_t curve, CSSM_DATA* public_key, CSSM_DATA* private_key) {
    return generate(context, curve, public_key, private_key, E_ECC_GenerateKeyPair_ECKCDSA);
}

int32_t K_ECDSASign(K_CONTEXT* context, int32_t curve, const CSSM_DATA* private_key, const CSSM_DATA* message,
                    CSSM_DATA* signature) {
    return operate(context, has_data(private_key) && has_data(message) && signature != nullptr, [&]() -> std::uint32_t {
        E_EC_PARAMS params;
        if (!are_lengths(*private_key, *message) || E_ECParams_Init(curve, &params) != 0) return KERR_SIGN;
        const TORVA_V1_OPAQUE8 key = octets_of(*private_key), text = octets_of(*message);
        return fill_and_hand_out(context, E_ECDSA_SIGNATURE_OCTETS, *signature, KERR_SIGN,
                                 [&](TORVA_V1_OPAQUE8* out) { return E_ECDSA_Sign(curve, &params, &text, out, &key); });
    });
}

int32_t K_ECDSAVerify(K_CONTEXT* context, int32_t curve, const CSSM_DATA* public_key, const CSSM_DATA* message,
                      const CSSM_DATA* signature) {
    return verify(context, curve, public_key, message, signature, E_ECDSA_Verify);
}

int32_t K_ECKCDSASign(K_CONTEXT* context, int32_t curve, const CSSM_DATA* private_key, const CSSM_DATA* public_key,
                      const CSSM_DATA* message, CSSM_DATA* signature) {
    const bool has_inputs = has_data(private_key) && has_data(public_key) && has_data(message) && signature != nullptr;
    return operate(context, has_inputs, [&]() -> std::uint32_t {
        E_EC_PARAMS params;
        if (!are_lengths(*private_key, *public_key, *message) || E_ECParams_Init(curve, &params) != 0) return KERR_SIGN;
        const TORVA_V1_OPAQUE8 key = octets_of(*private_key), open = octets_of(*public_key), text = octets_of(*message);
        return fill_and_hand_out(context, E_ECKCDSA_SIGNATURE_OCTETS, *signature, KERR_SIGN, [&](TORVA_V1_OPAQUE8* out) {
            return E_ECKCDSA_Sign(curve, &params, &text, out, &key, &open);
        });
    });
}

int32_t K_ECKCDSAVerify(K_CONTEXT* context, int32_t curve, const CSSM_DATA* public_key, const CSSM_DATA* message,
                        const CSSM_DATA* signature) {
    return verify(context, curve, public_key, message, signature, E_ECKCDSA_Verify);
}

int32_t K_ECDH(K_CONTEXT* context, int32_t curve, const CSSM_DATA* private_key, const CSSM_DATA* public_key,
               CSSM_DATA* secret) {
    return operate(context, has_data(private_key) && has_data(public_key) && secret != nullptr, [&]() -> std::uint32_t {
        E_EC_PARAMS params;
        if (!are_lengths(*private_key, *public_key) || E_ECParams_Init(curve, &params) != 0) return KERR_AGREE;
        const TORVA_V1_OPAQUE8 key = octets_of(*private_key), point = octets_of(*public_key);
        return fill_and_hand_out(context, E_EC_SHARED_OCTETS, *secret, KERR_AGREE, [&](TORVA_V1_OPAQUE8* out) {
            return TORVA_V1_ECDHPrimitive(curve, &params, &key, &point, out);
        });
    });
}

int32_t K_ECC_Encryption(K_CONTEXT* context, int32_t curve, const CSSM_DATA* public_key, const CSSM_DATA* input,
                         CSSM_DATA* output) {
    return operate(context, has_data(public_key) && has_data(input) && output != nullptr, [&]() -> std::uint32_t {
        E_EC_PARAMS params;
        if (!are_lengths(*public_key, *input) || E_ECParams_Init(curve, &params) != 0) return KERR_ENCRYPT;
        const std::int32_t size = TORVA_V1_ECC_getLengthOfMessageToBeEncrypted(&params, length_of(*input));
        if (size < 0) return KERR_ENCRYPT;
        const TORVA_V1_OPAQUE8 key = octets_of(*public_key), text = octets_of(*input);
        return fill_and_hand_out(context, static_cast<std::uint32_t>(size), *output, KERR_ENCRYPT,
                                 [&](TORVA_V1_OPAQUE8* out) { return E_ECC_Encryption(curve, &params, &text, out, &key); });
    });
}

int32_t K_ECC_Decryption(K_CONTEXT* context, int32_t curve, const CSSM_DATA* private_key, const CSSM_DATA* input,
                         CSSM_DATA* output) {
    return operate(context, has_data(private_key) && has_data(input) && output != nullptr, [&]() -> std::uint32_t {
        E_EC_PARAMS params;
        if (!are_lengths(*private_key, *input) || E_ECParams_Init(curve, &params) != 0) return KERR_DECRYPT;
        const TORVA_V1_OPAQUE8 key = octets_of(*private_key), text = octets_of(*input);
        const std::int32_t size = TORVA_V1_ECC_getLengthOfOriginalMessage(&params, &text);
        if (size < 0) return KERR_DECRYPT;
        return fill_and_hand_out(context, static_cast<std::uint32_t>(size), *output, KERR_DECRYPT,
                                 [&](TORVA_V1_OPAQUE8* out) { return E_ECC_Decryption(curve, &params, &text, out, &key); });
    });
}
