// CSP_GenerateKey and CSP_FreeKey: secret keys.
#include "csp/cipher_table.h"
#include "csp/error.h"
#include "csp/key_service.h"

#include <morvane/random.h>

#include <cstdlib>

namespace {

using namespace morvane::csp;

// As long as the longest key of any cipher.
constexpr std::uint32_t kMostRandomBytes = 256;

}  // namespace

int32_t MORVANE_STDCALL CSP_GenerateKey(uint32_t /*csp*/, CspHandle handle, const CSSM_CONTEXT* context, uint32_t usage,
                                        uint32_t attributes, const CSSM_DATA* label, CSSM_KEY* key) {
    const CspSession* const session = resolve(handle, context);
    if (session == nullptr) return fail(CSP_ERR_NO_CONTEXT);
    if (session->context_type != CSP_CONTEXT_KEYGEN) return fail(CSP_ERR_WRONG_CONTEXT_TYPE);
    if (key == nullptr) return fail(CSP_ERR_NULL_POINTER);
    const CipherChoice cipher = find_cipher_table(session->algorithm, CSP_MODE_ECB);
    if (cipher.table == nullptr) return fail(cipher.error);
    const CSSM_DATA bytes = label == nullptr ? CSSM_DATA{0, nullptr} : *label;
    const bool is_random = bytes.Data == nullptr && bytes.Length == 0;
    const std::uint32_t otherwise = cipher.table->key_bytes != 0 ? cipher.table->key_bytes : bytes.Length;
    const std::uint32_t key_bytes = integer_attribute(*session, CSP_ATTR_BLOCK_SIZE, otherwise);
    if (is_random ? key_bytes > kMostRandomBytes : bytes.Data == nullptr || bytes.Length < key_bytes) {
        return fail(CSP_ERR_BAD_KEY);
    }
    morvane::SecretArray<std::uint8_t, kMostRandomBytes> random;
    if (is_random) RAND_Bytes(random.items.data(), static_cast<std::int32_t>(key_bytes));
    const std::uint8_t* const key_data = is_random ? random.items.data() : bytes.Data;
    const std::uint32_t code = make_secret_key(*key, *session, session->algorithm, key_data, key_bytes, usage, attributes);
    return code == 0 ? kSuccess : fail(code);
}

int32_t MORVANE_STDCALL CSP_FreeKey(uint32_t /*csp*/, const CSSM_DATA* /*pass_phrase*/, CSSM_KEY* key) {
    if (key == nullptr) return fail(CSP_ERR_NULL_POINTER);
    if (key->KeyData.Data == nullptr) return kSuccess;
    morvane::wipe(key->KeyData.Data, key->KeyData.Length);
    std::free(key->KeyData.Data);
    key->KeyData = {0, nullptr};
    return kSuccess;
}
