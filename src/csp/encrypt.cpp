// CSP_EncryptData* and CSP_DecryptData*: encryption and decryption in pieces or at once.
#include "csp/cipher_stream.h"
#include "csp/error.h"
#include "csp/key_record.h"
#include "csp/padding.h"
#include "csp/scatter.h"
#include "csp/session.h"

#include <morvane/csp.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace {

using namespace morvane::csp;

// Which of a table's operations, encrypt or decrypt.
using Operation = CipherFn* CspCipherTable::*;

std::uint64_t total_length(const CSSM_DATA* buffers, std::uint32_t count) noexcept {
    std::uint64_t total = 0;
    for (std::uint32_t i = 0; i < count; ++i) total += buffers[i].Length;
    return total;
}

std::int32_t update(CspHandle handle, const CipherBuffers& buffers, std::uint32_t* written, Operation operation) noexcept {
    CspSession* const session = session_of(handle);
    if (session == nullptr) return fail(CSP_ERR_NO_CONTEXT);
    if (buffers.in == nullptr || buffers.out == nullptr || written == nullptr) return fail(CSP_ERR_NULL_POINTER);
    if (buffers.in_count == 0 || buffers.out_count == 0) return fail(CSP_ERR_NO_BUFFERS);
    if (total_length(buffers.out, buffers.out_count) < total_length(buffers.in, buffers.in_count)) {
        return fail(CSP_ERR_OUTPUT_TOO_SHORT);
    }
    *written = 0;
    if (buffers.in[0].Data == nullptr || !is_consistent(buffers.out[0])) return fail(CSP_ERR_BAD_DATA);
    if (session->cipher_table == nullptr) return fail(CSP_ERR_PRIMITIVE_FAILED);
    const std::uint32_t code = stream(*session, session->cipher_table->*operation, buffers, written);
    return code == 0 ? kSuccess : fail(code);
}

// Pads the session's carried bytes and enciphers or deciphers them into the remainder, which has room for a block.
bool finish(CspSession& session, Operation operation, std::uint32_t padding, CSSM_DATA& remainder) noexcept {
    const CspCipherTable& table = *session.cipher_table;
    const std::uint32_t carried = std::min(session.carried_bytes, table.block_bytes);
    std::uint32_t count = carried;
    pad_block(table, session.carried, count, padding);
    if (count != 0) {
        std::uint8_t block[CSP_CHAIN_BYTES] = {};  // zero behind the carried bytes, where decryption reads the block whole
        std::memcpy(block, session.carried, count);
        std::uint32_t written = 0;
        const bool done = (table.*operation)(key_of(session), block, remainder.Data, count, &written, session.chain);
        morvane::wipe(block, sizeof block);
        if (!done) return false;
        remainder.Length = written;
    } else {
        remainder.Length = 0;
    }
    session.carried_bytes = count;
    return true;
}

std::int32_t final(CspHandle handle, CSSM_DATA* remainder, Operation operation) noexcept {
    CspSession* const session = session_of(handle);
    if (session == nullptr) return fail(CSP_ERR_NO_CONTEXT);
    if (remainder == nullptr) return fail(CSP_ERR_NULL_POINTER);
    const CspCipherTable* const table = session->cipher_table;
    if (table == nullptr) return fail(CSP_ERR_PRIMITIVE_FAILED);
    if (!is_consistent(*remainder)) return fail(CSP_ERR_BAD_DATA);
    const bool allocates = remainder->Data == nullptr && table->block_bytes != 0;
    if (allocates) {
        remainder->Data = static_cast<std::uint8_t*>(std::calloc(table->block_bytes, 1));
        if (remainder->Data == nullptr) return fail(CSP_ERR_MEMORY);
    } else if (remainder->Length < table->block_bytes) {
        return fail(CSP_ERR_OUTPUT_TOO_SHORT);
    }
    const CSSM_CONTEXT_ATTRIBUTE* const padding = find_attribute(*session, CSP_ATTR_PADDING);
    if (finish(*session, operation, padding == nullptr ? kPadNone : padding->Attribute.Uint32, *remainder)) return kSuccess;
    if (allocates) {
        std::free(remainder->Data);
        remainder->Data = nullptr;
    }
    return fail(CSP_ERR_PRIMITIVE_FAILED);
}

// The later steps go by the handle: a context record that was given makes a session of its own that they do not see.
std::int32_t at_once(CspHandle handle, const CSSM_CONTEXT* context, const CipherBuffers& buffers, std::uint32_t* written,
                     CSSM_DATA* remainder, Operation operation) noexcept {
    if (CSP_EncryptDataInit(0, handle, context) != kSuccess) return kFailure;
    if (update(handle, buffers, written, operation) != kSuccess) return kFailure;
    return final(handle, remainder, operation);
}

}  // namespace

int32_t MORVANE_STDCALL CSP_EncryptDataInit(uint32_t /*csp*/, CspHandle handle, const CSSM_CONTEXT* context) {
    CspSession* const session = resolve(handle, context);
    if (session == nullptr) return fail(CSP_ERR_NO_CONTEXT);
    session->carried_bytes = 0;
    const CSSM_CONTEXT_ATTRIBUTE* const key = find_attribute(*session, CSP_ATTR_KEY);
    if (key == nullptr) return fail(CSP_ERR_KEY_ATTRIBUTE_MISSING);
    if (session->context_type != CSP_CONTEXT_SYMMETRIC && session->context_type != CSP_CONTEXT_CIPHER_ALT) {
        return fail(CSP_ERR_WRONG_CONTEXT_TYPE);
    }
    if (!is_expanded_key(key->Attribute.Key, session->algorithm)) return fail(CSP_ERR_BAD_KEY);
    const CSSM_CONTEXT_ATTRIBUTE* const mode = find_attribute(*session, CSP_ATTR_MODE);
    if (mode == nullptr) return fail(CSP_ERR_UNKNOWN_MODE);
    const CipherChoice cipher = find_cipher_table(session->algorithm, mode->Attribute.Uint32);
    if (cipher.table == nullptr) return fail(cipher.error);
    session->cipher_table = cipher.table;
    const std::uint32_t iv_bytes = cipher.table->iv_bytes;
    if (iv_bytes == 0) return kSuccess;
    const CSSM_CONTEXT_ATTRIBUTE* const attribute = find_attribute(*session, CSP_ATTR_INIT_VECTOR);
    const CSSM_DATA* const iv = attribute == nullptr ? nullptr : attribute->Attribute.Data;
    if (iv == nullptr || iv->Data == nullptr || iv->Length < iv_bytes) return fail(CSP_ERR_INIT_VECTOR);
    std::memcpy(session->chain, iv->Data, iv_bytes);
    return kSuccess;
}

int32_t MORVANE_STDCALL CSP_EncryptDataUpdate(uint32_t /*csp*/, CspHandle handle, const CSSM_DATA* in, uint32_t in_count,
                                              const CSSM_DATA* out, uint32_t out_count, uint32_t* written) {
    return update(handle, {in, in_count, out, out_count}, written, &CspCipherTable::encrypt);
}

int32_t MORVANE_STDCALL CSP_DecryptDataUpdate(uint32_t /*csp*/, CspHandle handle, const CSSM_DATA* in, uint32_t in_count,
                                              const CSSM_DATA* out, uint32_t out_count, uint32_t* written) {
    return update(handle, {in, in_count, out, out_count}, written, &CspCipherTable::decrypt);
}

int32_t MORVANE_STDCALL CSP_EncryptDataFinal(uint32_t /*csp*/, CspHandle handle, CSSM_DATA* remainder) {
    return final(handle, remainder, &CspCipherTable::encrypt);
}

int32_t MORVANE_STDCALL CSP_DecryptDataFinal(uint32_t /*csp*/, CspHandle handle, CSSM_DATA* remainder) {
    return final(handle, remainder, &CspCipherTable::decrypt);
}

int32_t MORVANE_STDCALL CSP_EncryptData(uint32_t /*csp*/, CspHandle handle, const CSSM_CONTEXT* context,
                                        const CSSM_DATA* in, uint32_t in_count, const CSSM_DATA* out, uint32_t out_count,
                                        uint32_t* written, CSSM_DATA* remainder) {
    return at_once(handle, context, {in, in_count, out, out_count}, written, remainder, &CspCipherTable::encrypt);
}

int32_t MORVANE_STDCALL CSP_DecryptData(uint32_t /*csp*/, CspHandle handle, const CSSM_CONTEXT* context,
                                        const CSSM_DATA* in, uint32_t in_count, const CSSM_DATA* out, uint32_t out_count,
                                        uint32_t* written, CSSM_DATA* remainder) {
    return at_once(handle, context, {in, in_count, out, out_count}, written, remainder, &CspCipherTable::decrypt);
}
