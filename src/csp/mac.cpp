// CSP_GenerateMac* and CSP_VerifyMac*: message authentication codes over data in pieces.
#include "base/bytes.h"
#include "csp/error.h"
#include "csp/key_record.h"
#include "csp/mac_table.h"
#include "csp/scatter.h"
#include "csp/session.h"

#include <morvane/csp.h>

namespace {

using namespace morvane::csp;

std::int32_t init(CspHandle handle, const CSSM_CONTEXT* context) noexcept {
    CspSession* const session = resolve(handle, context);
    if (session == nullptr) return fail(CSP_ERR_NO_CONTEXT);
    session->carried_bytes = 0;
    if (session->context_type != CSP_CONTEXT_MAC) return fail(CSP_ERR_WRONG_CONTEXT_TYPE);
    const CSSM_CONTEXT_ATTRIBUTE* const attribute = find_attribute(*session, CSP_ATTR_KEY);
    if (attribute == nullptr) return fail(CSP_ERR_KEY_ATTRIBUTE_MISSING);
    const CSSM_KEY* const key = attribute->Attribute.Key;
    if (session->algorithm == CSP_ALG_MD5) {
        if (key == nullptr) return fail(CSP_ERR_BAD_KEY);
    } else {
        if (!is_expanded_key(key, session->algorithm)) return fail(CSP_ERR_BAD_KEY);
        if (key->KeyHeader.KeyClass != kSessionKeyClass) return fail(CSP_ERR_KEY_CLASS);
    }
    const CspMacTable* const table = find_mac_table(session->algorithm);
    if (table == nullptr) return fail(CSP_ERR_UNKNOWN_ALGORITHM);
    session->mac_table = table;
    const std::uint32_t code = table->init(key, *session);
    return code == 0 ? kSuccess : fail(code);
}

// Absorbs one buffer. What the carried block has in it beyond the carried bytes is zero at all times.
std::uint32_t absorb(CspSession& session, const CSSM_KEY* key, const CSSM_DATA& buffer) noexcept {
    const CspMacTable& table = *session.mac_table;
    const std::uint32_t block_bytes = table.block_bytes;
    const std::uint8_t* bytes = buffer.Data;
    std::uint32_t left = buffer.Length;
    if (session.carried_bytes != 0 && left >= block_bytes - session.carried_bytes) {
        const std::uint32_t missing = block_bytes - session.carried_bytes;
        morvane::copy_bytes(session.carried + session.carried_bytes, bytes, missing);
        if (const std::uint32_t code = table.update(key, session, session.carried, block_bytes); code != 0) return code;
        std::memset(session.carried, 0, block_bytes);
        session.carried_bytes = 0;
        bytes += missing;
        left -= missing;
    }
    if (session.carried_bytes == 0 && left >= block_bytes) {
        const std::uint32_t whole = left & ~(block_bytes - 1);
        if (const std::uint32_t code = table.update(key, session, bytes, whole); code != 0) return code;
        bytes += whole;
        left -= whole;
    }
    morvane::copy_bytes(session.carried + session.carried_bytes, bytes, left);
    session.carried_bytes += left;
    return 0;
}

std::int32_t update(CspHandle handle, const CSSM_DATA* buffers, std::uint32_t count) noexcept {
    CspSession* const session = session_of(handle);
    if (session == nullptr) return fail(CSP_ERR_NO_CONTEXT);
    if (buffers == nullptr) return fail(CSP_ERR_NULL_POINTER);
    if (count == 0) return fail(CSP_ERR_NO_BUFFERS);
    if (buffers[0].Data == nullptr) return fail(CSP_ERR_BAD_DATA);
    const CspMacTable* const table = session->mac_table;
    if (table == nullptr || session->carried_bytes >= table->block_bytes) return fail(CSP_ERR_PRIMITIVE_FAILED);
    const CSSM_KEY* const key = key_of(*session);
    for (std::uint32_t i = 0; i < count; ++i) {
        if (buffers[i].Data == nullptr && buffers[i].Length != 0) return fail(CSP_ERR_BAD_DATA);
        if (absorb(*session, key, buffers[i]) != 0) return fail(CSP_ERR_PRIMITIVE_FAILED);
    }
    return kSuccess;
}

std::int32_t generate(CspHandle handle, CSSM_DATA* mac) noexcept {
    CspSession* const session = session_of(handle);
    if (session == nullptr) return fail(CSP_ERR_NO_CONTEXT);
    if (mac == nullptr) return fail(CSP_ERR_NULL_POINTER);
    if (!is_consistent(*mac)) return fail(CSP_ERR_BAD_DATA);
    if (session->mac_table == nullptr) return fail(CSP_ERR_PRIMITIVE_FAILED);
    const std::uint32_t code = session->mac_table->final(key_of(*session), *session, *mac);
    return code == 0 ? kSuccess : fail(code);
}

std::int32_t verify(CspHandle handle, const CSSM_DATA* expected) noexcept {
    CspSession* const session = session_of(handle);
    if (session == nullptr) return fail(CSP_ERR_NO_CONTEXT);
    if (expected == nullptr) return fail(CSP_ERR_NULL_POINTER);
    if (expected->Data == nullptr) return fail(CSP_ERR_BAD_DATA);
    if (session->mac_table == nullptr) return fail(CSP_ERR_PRIMITIVE_FAILED);
    const std::uint32_t code = session->mac_table->verify(key_of(*session), *session, *expected);
    if (code == kMacMismatch) return kFailure;
    return code == 0 ? kSuccess : fail(code);
}

}  // namespace

int32_t MORVANE_STDCALL CSP_GenerateMacInit(uint32_t /*csp*/, CspHandle handle, const CSSM_CONTEXT* context) {
    return init(handle, context);
}

int32_t MORVANE_STDCALL CSP_VerifyMacInit(uint32_t /*csp*/, CspHandle handle, const CSSM_CONTEXT* context) {
    return init(handle, context);
}

int32_t MORVANE_STDCALL CSP_GenerateMacUpdate(uint32_t /*csp*/, CspHandle handle, const CSSM_DATA* buffers,
                                              uint32_t count) {
    return update(handle, buffers, count);
}

int32_t MORVANE_STDCALL CSP_GenerateMacFinal(uint32_t /*csp*/, CspHandle handle, CSSM_DATA* mac) {
    return generate(handle, mac);
}

int32_t MORVANE_STDCALL CSP_VerifyMacFinal(uint32_t /*csp*/, CspHandle handle, const CSSM_DATA* expected) {
    return verify(handle, expected);
}

// The later steps go by the handle: a context record that was given makes a session of its own that they do not see.

int32_t MORVANE_STDCALL CSP_GenerateMac(uint32_t /*csp*/, CspHandle handle, const CSSM_CONTEXT* context,
                                        const CSSM_DATA* buffers, uint32_t count, CSSM_DATA* mac) {
    if (init(handle, context) != kSuccess) return kFailure;
    if (update(handle, buffers, count) != kSuccess) return kFailure;
    return generate(handle, mac);
}

int32_t MORVANE_STDCALL CSP_VerifyMac(uint32_t /*csp*/, CspHandle handle, const CSSM_CONTEXT* context,
                                      const CSSM_DATA* buffers, uint32_t count, const CSSM_DATA* expected) {
    if (init(handle, context) != kSuccess) return kFailure;
    if (update(handle, buffers, count) != kSuccess) return kFailure;
    return verify(handle, expected);
}
