// CSP_QuerySize and CSP_QuerySizeInBits: block lengths and key sizes.
#include <morvane/csp.h>

#include "csp/cipher_table.h"
#include "csp/error.h"
#include "csp/session.h"

using namespace morvane::csp;

int32_t MORVANE_STDCALL CSP_QuerySize(uint32_t /*csp*/, CspHandle handle, const CSSM_CONTEXT* context, uint32_t /*encrypt*/,
                                      uint32_t /*count*/, CspSizePair* sizes) {
    const CspSession* const session = resolve(handle, context);
    if (session == nullptr) return fail(CSP_ERR_NO_CONTEXT);
    if (sizes == nullptr) return fail(CSP_ERR_NULL_POINTER);
    const CipherChoice cipher = find_cipher_table(session->algorithm, CSP_MODE_ECB);
    if (cipher.table == nullptr) return fail(cipher.error);
    *sizes = {cipher.table->block_bytes, cipher.table->block_bytes};
    return kSuccess;
}

int32_t MORVANE_STDCALL CSP_QuerySizeInBits(uint32_t /*csp*/, CspHandle handle, const CSSM_KEY* key, CspSizePair* sizes) {
    const CspSession* const session = session_of(handle);
    if (session == nullptr) return fail(CSP_ERR_NO_CONTEXT);
    if (key == nullptr) {
        const CSSM_CONTEXT_ATTRIBUTE* const attribute = find_attribute(*session, CSP_ATTR_KEY);
        if (attribute == nullptr || attribute->Attribute.Key == nullptr) return fail(CSP_ERR_NO_KEY);
        key = attribute->Attribute.Key;
    }
    if (key->KeyData.Data == nullptr) return fail(CSP_ERR_BAD_KEY);
    if (sizes == nullptr) return fail(CSP_ERR_NULL_POINTER);
    constexpr std::uint32_t kBitsPerByte = 8;
    *sizes = {key->KeyHeader.LogicalKeySizeInBits, key->KeyData.Length * kBitsPerByte};
    return kSuccess;
}
