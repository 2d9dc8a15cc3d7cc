// Key pairs: K_GenerateRSAKey and its relatives.
#include "toolkit/key_record.h"

#include <morvane/asn1.h>
#include <morvane/bignum.h>

namespace {

using namespace morvane::toolkit;

// Longer than any key in DER.
constexpr std::uint32_t kKeyRoom = 5000;

// The header's words.
constexpr std::uint32_t kAnyUse = 0x80000000;
constexpr std::uint32_t kAttributes = 0x20000000;

// The key pairs of K_GenAssymetricKey.
struct Kind {
    std::uint32_t selector;
    std::uint32_t algorithm;
};
constexpr Kind kKinds[] = {{K_PAIR_RSA, CSP_ALG_RSA}, {K_PAIR_DSA, CSP_ALG_DSA}, {K_PAIR_KCDSA, CSP_ALG_HAS160_WITH_KCDSA}};

std::uint32_t algorithm_of(std::uint32_t selector) noexcept {
    for (const Kind& kind : kKinds) {
        if (kind.selector == selector) return kind.algorithm;
    }
    return 0;  // which the provider refuses
}

// A pair on its way out: both keys' bytes, in the context's memory.
class Pair {
public:
    explicit Pair(K_CONTEXT* context) noexcept
        : context_(context), open_(context, kKeyRoom, 1), secret_(context, kKeyRoom, 1) {}
    explicit operator bool() const noexcept { return open_ && secret_; }
    Buffer& open() noexcept { return open_; }
    Buffer& secret() noexcept { return secret_; }

    // Copies of the right length for the caller.
    std::uint32_t hand_out(CSSM_DATA& public_key, CSSM_DATA& private_key) noexcept {
        Buffer open_copy(context_, open_.data(), 1);
        Buffer secret_copy(context_, secret_.data(), 1);
        if (!open_copy || !secret_copy) return KERR_OUTPUT_ALLOC;
        open_copy.hand_out(public_key);
        secret_copy.hand_out(private_key);
        return 0;
    }

private:
    K_CONTEXT* context_;
    Buffer open_;
    Buffer secret_;
};

std::uint32_t generate(K_CONTEXT* context, std::uint32_t algorithm, std::uint32_t bits, CSSM_DATA& public_key,
                       CSSM_DATA& private_key) noexcept {
    Request<1> request(context, CSP_CONTEXT_KEYGEN, algorithm);
    if (!request) return KERR_MEMORY;
    Pair pair(context);
    if (!pair) return KERR_OUTPUT_ALLOC;
    request.set(0, CSP_ATTR_BLOCK_SIZE, bits);
    CSSM_KEY open{}, secret{};
    open.KeyData = pair.open().data();
    secret.KeyData = pair.secret().data();
    if (CSP_GenerateKeyPair(kProvider, request.handle(), nullptr, kAnyUse, kAttributes, nullptr, &open, kAnyUse,
                            kAttributes, nullptr, &secret) != 0) {
        return KERR_KEYGEN;
    }
    pair.open().set_length(open.KeyData.Length);
    pair.secret().set_length(secret.KeyData.Length);
    return pair.hand_out(public_key, private_key);
}

std::uint32_t generate_in_domain(K_CONTEXT* context, const CSSM_DATA& params, CSSM_DATA& public_key,
                                 CSSM_DATA& private_key) noexcept {
    KeyRecord<E_KCDSA_KEY> key(E_DSA_Init);
    if (!key.read(E_ASN1_GetKCDSAParams, params)) return KERR_KEYGEN;
    E_KCDSA_GenerateXY(key.get(), 0, static_cast<std::int32_t>(EN_GetFilledBitNum(&key->q)));
    if (key->x.length <= 0) return KERR_KEYGEN;
    Pair pair(context);
    if (!pair) return KERR_OUTPUT_ALLOC;
    pair.open().set_length(static_cast<std::uint32_t>(E_ASN1_PutKCDSAPublicKey(key.get(), pair.open().get())));
    pair.secret().set_length(static_cast<std::uint32_t>(E_ASN1_PutKCDSAPrivateKey(key.get(), pair.secret().get())));
    return pair.hand_out(public_key, private_key);
}

}  // namespace

int32_t K_GenAssymetricKey(K_CONTEXT* context, uint32_t selector, uint32_t bits, CSSM_DATA* public_key,
                           CSSM_DATA* private_key) {
    return operate(context, public_key != nullptr && private_key != nullptr,
                   [&] { return generate(context, algorithm_of(selector), bits, *public_key, *private_key); });
}

int32_t K_GenerateRSAKey(K_CONTEXT* context, uint32_t bits, CSSM_DATA* public_key, CSSM_DATA* private_key) {
    return K_GenAssymetricKey(context, K_PAIR_RSA, bits, public_key, private_key);
}

int32_t K_GenerateKCDSAKeyPair(K_CONTEXT* context, uint32_t bits, CSSM_DATA* public_key, CSSM_DATA* private_key) {
    return K_GenAssymetricKey(context, K_PAIR_KCDSA, bits, public_key, private_key);
}

int32_t K_GenerateKCDSAKeyPair_Params(K_CONTEXT* context, const CSSM_DATA* params, CSSM_DATA* public_key,
                                      CSSM_DATA* private_key) {
    return operate(context, has_data(params) && public_key != nullptr && private_key != nullptr,
                   [&] { return generate_in_domain(context, *params, *public_key, *private_key); });
}
