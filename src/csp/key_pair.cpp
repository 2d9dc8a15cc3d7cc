// CSP_GenerateKeyPair and CSP_GenerateAlgorithmParams: what public-key algorithms need, in DER.
#include "csp/key_pair.h"

#include "csp/error.h"
#include "csp/key_service.h"
#include "csp/table.h"

#include <morvane/asn1.h>
#include <morvane/bignum.h>

namespace morvane::csp {

E_DH_KEY dh_parameters;

namespace {

constexpr std::uint32_t kPublicExponent = 65537;
constexpr std::uint32_t kGenerator = 2;

// The order's bits for a prime modulus of so many: what is customary with 1024, and FIPS 186-3 has with 2048.
constexpr std::int32_t order_bits(std::int32_t bits) noexcept { return bits < 2048 ? 160 : 256; }

// How a record's two keys are written.
template <typename Key>
struct Encoded {
    std::int32_t (*put_public)(const Key*, std::uint8_t*);
    std::int32_t (*put_private)(const Key*, std::uint8_t*);
};

constexpr Encoded<E_RSA_KEY> kRsa{E_ASN1_PutRSAPublicKey, E_ASN1_PutRSAPrivateKey};
constexpr Encoded<E_DSA_KEY> kDsa{E_ASN1_PutDSAPublicKey, E_ASN1_PutDSAPrivateKey};

// A key record, wiped at the end of its life.
template <typename Key>
struct Record {
    Key key{};
    explicit Record(void (*init)(Key*)) noexcept { init(&key); }
    ~Record() { wipe(&key, sizeof key); }
    Record(const Record&) = delete;
    Record& operator=(const Record&) = delete;
};

struct PairOutput {
    CSSM_KEY& public_key;
    CSSM_KEY& private_key;
    KeyKind public_kind;
    KeyKind private_kind;
};

// Both encodings, or neither.
template <typename Key>
std::uint32_t hand_out(const Key& key, const Encoded<Key>& encoded, const CspSession& session, PairOutput& out) noexcept {
    const auto public_size = static_cast<std::uint32_t>(encoded.put_public(&key, nullptr));
    const auto private_size = static_cast<std::uint32_t>(encoded.put_private(&key, nullptr));
    Output public_der, private_der;
    std::uint32_t code = public_der.prepare(out.public_key.KeyData, public_size);
    if (code == 0) code = private_der.prepare(out.private_key.KeyData, private_size);
    if (code != 0) return code;
    encoded.put_public(&key, public_der.get());
    encoded.put_private(&key, private_der.get());
    out.public_key.KeyHeader = make_header(session, out.public_kind);
    out.private_key.KeyHeader = make_header(session, out.private_kind);
    public_der.hand_out(out.public_key.KeyData, public_size);
    private_der.hand_out(out.private_key.KeyData, private_size);
    return 0;
}

using MakePair = std::uint32_t(const CspSession&, std::int32_t bits, PairOutput&) noexcept;

std::uint32_t make_rsa(const CspSession& session, std::int32_t bits, PairOutput& out) noexcept {
    Record<E_RSA_KEY> made(E_RSA_Init);
    E_RSA_GenerateKey(&made.key, bits, kPublicExponent);
    if (made.key.n.length == 0) return CSP_ERR_PRIMITIVE_FAILED;
    return hand_out(made.key, kRsa, session, out);
}

template <auto Generate>
std::uint32_t make_in_group(const CspSession& session, std::int32_t bits, PairOutput& out) noexcept {
    Record<E_DSA_KEY> made(E_DSA_Init);
    Generate(&made.key, bits, order_bits(bits));
    if (made.key.y.length == 0) return CSP_ERR_PRIMITIVE_FAILED;
    return hand_out(made.key, kDsa, session, out);
}

// Makes parameters and puts them out.
using MakeParams = std::uint32_t(std::int32_t bits, CSSM_DATA& out) noexcept;

template <typename Key>
std::uint32_t hand_out(const Key& key, std::int32_t (*put)(const Key*, std::uint8_t*), CSSM_DATA& out) noexcept {
    const auto size = static_cast<std::uint32_t>(put(&key, nullptr));
    Output der;
    if (const std::uint32_t code = der.prepare(out, size); code != 0) return code;
    put(&key, der.get());
    der.hand_out(out, size);
    return 0;
}

std::uint32_t make_dh_params(std::int32_t bits, CSSM_DATA& out) noexcept {
    Record<E_DH_KEY> made(E_DH_Init);
    E_DH_GenerateParameters(&made.key, bits, kGenerator);
    if (made.key.p.length == 0) return CSP_ERR_PRIMITIVE_FAILED;
    const std::uint32_t code = hand_out(made.key, E_ASN1_PutDHParams, out);
    if (code != 0) return code;
    E_DH_Init(&dh_parameters);
    EN_Copy(&dh_parameters.p, &made.key.p);
    EN_Copy(&dh_parameters.g, &made.key.g);
    return 0;
}

template <auto Generate>
std::uint32_t make_group_params(std::int32_t bits, CSSM_DATA& out) noexcept {
    Record<E_DSA_KEY> made(E_DSA_Init);
    Generate(&made.key, bits, order_bits(bits));
    if (made.key.p.length == 0) return CSP_ERR_PRIMITIVE_FAILED;
    return hand_out(made.key, E_ASN1_PutDSAParams, out);
}

struct Algorithm {
    std::uint32_t algorithm;
    MakePair* make_pair;
    MakeParams* make_params;
};

constexpr std::array<Algorithm, 8> kAlgorithms{{
    {CSP_ALG_DH, nullptr, make_dh_params},
    {CSP_ALG_RSA, make_rsa, nullptr},
    {CSP_ALG_DSA, make_in_group<E_DSA_GenerateKey>, make_group_params<E_DSA_GenerateKey>},
    {CSP_ALG_MD5_WITH_RSA, make_rsa, nullptr},
    {CSP_ALG_MD2_WITH_RSA, make_rsa, nullptr},
    {CSP_ALG_SHA1_WITH_RSA, make_rsa, nullptr},
    {CSP_ALG_SHA1_WITH_DSA, make_in_group<E_DSA_GenerateKey>, make_group_params<E_DSA_GenerateKey>},
    {CSP_ALG_HAS160_WITH_KCDSA, make_in_group<E_KCDSA_GenerateKey>, make_group_params<E_KCDSA_GenerateKey>},
}};
static_assert(is_sorted_table(kAlgorithms));

}  // namespace
}  // namespace morvane::csp

using namespace morvane::csp;

int32_t MORVANE_STDCALL CSP_GenerateKeyPair(uint32_t /*csp*/, CspHandle handle, const CSSM_CONTEXT* context,
                                            uint32_t public_usage, uint32_t public_attributes,
                                            const CSSM_DATA* /*public_label*/, CSSM_KEY* public_key, uint32_t private_usage,
                                            uint32_t private_attributes, const CSSM_DATA* /*private_label*/,
                                            CSSM_KEY* private_key) {
    const CspSession* const session = resolve(handle, context);
    if (session == nullptr) return fail(CSP_ERR_NO_CONTEXT);
    if (session->context_type != CSP_CONTEXT_KEYGEN) return fail(CSP_ERR_WRONG_CONTEXT_TYPE);
    if (public_key == nullptr || private_key == nullptr) return fail(CSP_ERR_NULL_POINTER);
    const Algorithm* const algorithm = find_row(kAlgorithms, session->algorithm);
    if (algorithm == nullptr || algorithm->make_pair == nullptr) return fail(CSP_ERR_UNKNOWN_ALGORITHM);
    const CSSM_CONTEXT_ATTRIBUTE* const size = find_attribute(*session, CSP_ATTR_BLOCK_SIZE);
    if (size == nullptr) return kFailure;
    const std::uint32_t bits = size->Attribute.Uint32;
    PairOutput out{*public_key,
                   *private_key,
                   {kDerBlob, kPublicKeyClass, bits, public_usage, public_attributes},
                   {kDerBlob, kPrivateKeyClass, bits, private_usage, private_attributes}};
    const std::uint32_t code = algorithm->make_pair(*session, static_cast<std::int32_t>(bits), out);
    return code == 0 ? kSuccess : fail(code);
}

int32_t MORVANE_STDCALL CSP_GenerateAlgorithmParams(uint32_t /*csp*/, CspHandle handle, const CSSM_CONTEXT* context,
                                                    uint32_t bits, CSSM_DATA* params) {
    const CspSession* const session = resolve(handle, context);
    if (session == nullptr) return fail(CSP_ERR_NO_CONTEXT);
    if (session->context_type != CSP_CONTEXT_KEYGEN) return fail(CSP_ERR_WRONG_CONTEXT_TYPE);
    if (params == nullptr) return fail(CSP_ERR_NULL_POINTER);
    const Algorithm* const algorithm = find_row(kAlgorithms, session->algorithm);
    if (algorithm == nullptr || algorithm->make_params == nullptr) return fail(CSP_ERR_UNKNOWN_ALGORITHM);
    const std::uint32_t code = algorithm->make_params(static_cast<std::int32_t>(bits), *params);
    return code == 0 ? kSuccess : fail(code);
}
