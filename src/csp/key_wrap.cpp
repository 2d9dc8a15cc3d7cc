// CSP_WrapKey and CSP_UnwrapKey: keys enciphered under keys.
#include "csp/cipher_table.h"
#include "csp/error.h"
#include "csp/key_service.h"
#include "csp/padding.h"

#include <morvane/asn1.h>

#include <algorithm>
#include <cstring>

namespace {

using namespace morvane;
using namespace morvane::csp;

// What a session's wrapping key does to bytes.
struct Wrapping {
    const CspSession& session;
    const CSSM_KEY& key;
    const CspCipherTable* table;  // null for RSA
    std::uint32_t mode;
};

bool is_rsa(const CspSession& session) noexcept { return session.algorithm == CSP_ALG_RSA; }

// An RSA key from its DER; false if that is none.
bool load_rsa(E_RSA_KEY& rsa, const CSSM_KEY& key, void (*get)(E_RSA_KEY*, const std::uint8_t**, std::uint32_t)) noexcept {
    E_RSA_Init(&rsa);
    const std::uint8_t* position = key.KeyData.Data;
    get(&rsa, &position, key.KeyData.Length);
    return position == key.KeyData.Data + key.KeyData.Length && position != key.KeyData.Data;
}

struct RsaKey {
    E_RSA_KEY key{};

    RsaKey() = default;
    ~RsaKey() { wipe(&key, sizeof key); }
    RsaKey(const RsaKey&) = delete;
    RsaKey& operator=(const RsaKey&) = delete;
};

constexpr std::uint32_t kMostRsaBytes = 4 * E_RSA_MODULUS_WORDS;

std::uint32_t wrap_by_rsa(const Wrapping& with, const CSSM_DATA& in, CSSM_DATA& out) noexcept {
    RsaKey rsa;
    if (!load_rsa(rsa.key, with.key, E_ASN1_GetRSAPublicKey)) return CSP_ERR_BAD_KEY;
    if (in.Length > kMostRsaBytes) return CSP_ERR_PRIMITIVE_FAILED;
    SecretArray<std::uint8_t, kMostRsaBytes> block;
    const std::int32_t size =
        E_RSA_Public_Encrypt(block.items.data(), in.Data, static_cast<std::int32_t>(in.Length), &rsa.key);
    if (size <= 0) return CSP_ERR_PRIMITIVE_FAILED;
    Output wrapped;
    if (const std::uint32_t code = wrapped.prepare(out, static_cast<std::uint32_t>(size)); code != 0) return code;
    std::memcpy(wrapped.get(), block.items.data(), static_cast<std::size_t>(size));
    wrapped.hand_out(out, static_cast<std::uint32_t>(size));
    return 0;
}

std::uint32_t unwrap_by_rsa(const Wrapping& with, const CSSM_DATA& in, CSSM_DATA& out) noexcept {
    RsaKey rsa;
    if (!load_rsa(rsa.key, with.key, E_ASN1_GetRSAPrivateKey)) return CSP_ERR_BAD_KEY;
    SecretArray<std::uint8_t, kMostRsaBytes> block;
    const std::int32_t size =
        in.Length > kMostRsaBytes
            ? -1
            : E_RSA_Private_Decrypt(block.items.data(), in.Data, static_cast<std::int32_t>(in.Length), &rsa.key);
    if (size <= 0) return CSP_ERR_PRIMITIVE_FAILED;
    Output key;
    if (const std::uint32_t code = key.prepare(out, static_cast<std::uint32_t>(size)); code != 0) return code;
    std::memcpy(key.get(), block.items.data(), static_cast<std::size_t>(size));
    key.hand_out(out, static_cast<std::uint32_t>(size));
    return 0;
}

// Runs the cipher over all the bytes, from the session's initialisation vector on.
std::uint32_t run(const Wrapping& with, CipherFn* operation, const std::uint8_t* in, std::uint8_t* out,
                  std::uint32_t size) noexcept {
    SecretArray<std::uint8_t, CSP_CHAIN_BYTES> chain;
    if (const std::uint32_t iv_bytes = with.table->iv_bytes; iv_bytes != 0) {
        const CSSM_CONTEXT_ATTRIBUTE* const attribute = find_attribute(with.session, CSP_ATTR_INIT_VECTOR);
        const CSSM_DATA* const iv = attribute == nullptr ? nullptr : attribute->Attribute.Data;
        if (iv == nullptr || iv->Data == nullptr || iv->Length < iv_bytes) return CSP_ERR_INIT_VECTOR;
        std::copy_n(iv->Data, iv_bytes, chain.items.begin());
    }
    std::uint32_t written = 0;
    return operation(&with.key, in, out, size, &written, chain.items.data()) ? 0 : CSP_ERR_PRIMITIVE_FAILED;
}

std::uint32_t wrap_by_cipher(const Wrapping& with, const CSSM_DATA& in, CSSM_DATA& out) noexcept {
    const std::uint32_t block = with.table->block_bytes;
    if (in.Length > UINT32_MAX - CSP_CHAIN_BYTES) return CSP_ERR_BAD_DATA;
    const std::uint32_t padding = block == 0 ? 0 : block - in.Length % block;
    const std::uint32_t size = in.Length + padding;
    Output padded, wrapped;
    std::uint32_t code = wrapped.prepare(out, size);
    if (code == 0) code = padded.prepare({0, nullptr}, size);
    if (code != 0) return code;
    std::memcpy(padded.get(), in.Data, in.Length);
    std::memset(padded.get() + in.Length, static_cast<int>(padding), padding);
    code = run(with, with.table->encrypt, padded.get(), wrapped.get(), size);
    if (code == 0) wrapped.hand_out(out, size);
    return code;
}

// Bytes of PKCS #5 padding at the end of whole blocks; 0 if it is none.
std::uint32_t padding_of(const std::uint8_t* bytes, std::uint32_t size, std::uint32_t block) noexcept {
    const std::uint32_t padding = bytes[size - 1];
    if (padding == 0 || padding > block) return 0;
    std::uint32_t difference = 0;
    for (std::uint32_t i = 1; i <= padding; ++i) difference |= bytes[size - i] ^ padding;
    return difference == 0 ? padding : 0;
}

std::uint32_t unwrap_by_cipher(const Wrapping& with, const CSSM_DATA& in, CSSM_DATA& out) noexcept {
    const std::uint32_t block = with.table->block_bytes;
    if (block != 0 && in.Length % block != 0) return CSP_ERR_PRIMITIVE_FAILED;
    Output padded, key;
    if (const std::uint32_t code = padded.prepare({0, nullptr}, in.Length); code != 0) return code;
    if (const std::uint32_t code = run(with, with.table->decrypt, in.Data, padded.get(), in.Length); code != 0) return code;
    const std::uint32_t padding = block == 0 ? 0 : padding_of(padded.get(), in.Length, block);
    if (block != 0 && padding == 0) return CSP_ERR_PRIMITIVE_FAILED;
    const std::uint32_t size = in.Length - padding;
    if (const std::uint32_t code = key.prepare(out, size); code != 0) return code;
    std::memcpy(key.get(), padded.get(), size);
    key.hand_out(out, size);
    return 0;
}

using Step = std::uint32_t(const Wrapping&, const CSSM_DATA& in, CSSM_DATA& out) noexcept;

// The checks of both services, and one of the steps. The source's data are there.
std::uint32_t transform(const CspSession& session, const CSSM_KEY& source, CSSM_KEY& result, Step* by_rsa, Step* by_cipher,
                        std::uint32_t& mode) noexcept {
    const CSSM_KEY* const key = key_of(session);
    if (key == nullptr) return CSP_ERR_KEY_ATTRIBUTE_MISSING;
    if (is_rsa(session)) {
        if (key->KeyData.Data == nullptr || key->KeyHeader.BlobType != kDerBlob) return CSP_ERR_BAD_KEY;
        return by_rsa({session, *key, nullptr, 0}, source.KeyData, result.KeyData);
    }
    if (!is_expanded_key(key, session.algorithm)) return CSP_ERR_BAD_KEY;
    const CSSM_CONTEXT_ATTRIBUTE* const attribute = find_attribute(session, CSP_ATTR_MODE);
    if (attribute == nullptr) return CSP_ERR_UNKNOWN_MODE;
    mode = attribute->Attribute.Uint32;
    const CipherChoice cipher = find_cipher_table(session.algorithm, mode);
    if (cipher.table == nullptr) return cipher.error;
    return by_cipher({session, *key, cipher.table, mode}, source.KeyData, result.KeyData);
}

bool is_cipher_context(const CspSession& session) noexcept {
    return session.context_type == CSP_CONTEXT_SYMMETRIC || session.context_type == CSP_CONTEXT_CIPHER_ALT;
}

}  // namespace

int32_t MORVANE_STDCALL CSP_WrapKey(uint32_t /*csp*/, CspHandle handle, const CSSM_CONTEXT* context,
                                    const CSSM_DATA* /*pass_phrase*/, const CSSM_KEY* key, CSSM_KEY* wrapped) {
    const CspSession* const session = resolve(handle, context);
    if (session == nullptr) return fail(CSP_ERR_NO_CONTEXT);
    if (!is_cipher_context(*session)) return fail(CSP_ERR_WRONG_CONTEXT_TYPE);
    if (key == nullptr || wrapped == nullptr) return fail(CSP_ERR_NULL_POINTER);
    if (key->KeyData.Data == nullptr || key->KeyData.Length == 0) return fail(CSP_ERR_BAD_KEY);
    std::uint32_t mode = 0;
    const std::uint32_t code = transform(*session, *key, *wrapped, wrap_by_rsa, wrap_by_cipher, mode);
    if (code != 0) return fail(code);
    wrapped->KeyHeader = key->KeyHeader;
    wrapped->KeyHeader.BlobType = kWrappedBlob;
    wrapped->KeyHeader.Format = key->KeyHeader.BlobType;
    wrapped->KeyHeader.WrapAlgorithmId = session->algorithm;
    wrapped->KeyHeader.WrapMode = mode;
    return kSuccess;
}

int32_t MORVANE_STDCALL CSP_UnwrapKey(uint32_t /*csp*/, CspHandle handle, const CSSM_CONTEXT* context,
                                      const CSSM_DATA* /*pass_phrase*/, const CSSM_KEY* wrapped, CSSM_KEY* key) {
    const CspSession* const session = resolve(handle, context);
    if (session == nullptr) return fail(CSP_ERR_NO_CONTEXT);
    if (!is_cipher_context(*session)) return fail(CSP_ERR_WRONG_CONTEXT_TYPE);
    if (wrapped == nullptr || key == nullptr) return fail(CSP_ERR_NULL_POINTER);
    if (wrapped->KeyData.Data == nullptr || wrapped->KeyData.Length == 0 || wrapped->KeyHeader.BlobType != kWrappedBlob ||
        wrapped->KeyHeader.WrapAlgorithmId != session->algorithm) {
        return fail(CSP_ERR_BAD_KEY);
    }
    std::uint32_t mode = 0;
    const CSSM_KEYHEADER header = wrapped->KeyHeader;
    const std::uint32_t code = transform(*session, *wrapped, *key, unwrap_by_rsa, unwrap_by_cipher, mode);
    if (code != 0) return fail(code);
    key->KeyHeader = header;
    key->KeyHeader.BlobType = header.Format;
    key->KeyHeader.Format = kNoFormat;
    key->KeyHeader.WrapAlgorithmId = 0;
    key->KeyHeader.WrapMode = 0;
    return kSuccess;
}
