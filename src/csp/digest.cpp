// CSP_DigestData*: the digest services.
#include <morvane/csp.h>

#include "csp/digest_table.h"
#include "csp/error.h"
#include "csp/session.h"

#include <cstdlib>

namespace {

using namespace morvane::csp;

// Applies the rules for an output buffer, allocating it where the caller asks for that. 0 or the code of the broken rule.
std::uint32_t prepare_output(CSSM_DATA& output, std::uint32_t digest_bytes) noexcept {
    if ((output.Length == 0) != (output.Data == nullptr)) return CSP_ERR_BAD_DATA;
    if (output.Data == nullptr) {
        output.Data = static_cast<std::uint8_t*>(std::calloc(digest_bytes, 1));
        return output.Data == nullptr ? CSP_ERR_MEMORY : 0;
    }
    return output.Length < digest_bytes ? CSP_ERR_OUTPUT_TOO_SHORT : 0;
}

}  // namespace

int32_t MORVANE_STDCALL CSP_DigestDataInit(uint32_t /*csp*/, CspHandle handle, const CSSM_CONTEXT* context) {
    CspSession* const session = resolve(handle, context);
    if (session == nullptr) return fail(CSP_ERR_NO_CONTEXT);
    if (session->context_type != CSP_CONTEXT_DIGEST) return fail(CSP_ERR_WRONG_CONTEXT_TYPE);
    const CspDigestTable* const table = find_digest_table(session->algorithm);
    if (table == nullptr) return fail(CSP_ERR_UNKNOWN_ALGORITHM);
    session->digest_table = table;
    void* state = nullptr;
    if (!table->init(session->algorithm, &state)) return fail(CSP_ERR_PRIMITIVE_FAILED);
    session->state = state;
    return kSuccess;
}

int32_t MORVANE_STDCALL CSP_DigestDataUpdate(uint32_t /*csp*/, CspHandle handle, const CSSM_DATA* buffers, uint32_t count) {
    const CspSession* const session = session_of(handle);
    if (session == nullptr) return fail(CSP_ERR_NO_CONTEXT);
    if (buffers == nullptr) return fail(CSP_ERR_NULL_POINTER);
    if (count == 0) return fail(CSP_ERR_NO_BUFFERS);
    const CspDigestTable* const table = session->digest_table;
    for (std::uint32_t i = 0; i < count; ++i) {
        if (buffers[i].Data == nullptr) return fail(CSP_ERR_BAD_DATA);
        if (table == nullptr || !table->update(buffers[i], session->state, session->algorithm)) {
            return fail(CSP_ERR_PRIMITIVE_FAILED);
        }
    }
    return kSuccess;
}

int32_t MORVANE_STDCALL CSP_DigestDataFinal(uint32_t /*csp*/, CspHandle handle, CSSM_DATA* output) {
    const CspSession* const session = session_of(handle);
    if (session == nullptr) return fail(CSP_ERR_NO_CONTEXT);
    if (output == nullptr) return fail(CSP_ERR_NULL_POINTER);
    const CspDigestTable* const table = session->digest_table;
    if (table == nullptr) return fail(CSP_ERR_PRIMITIVE_FAILED);
    if (const std::uint32_t code = prepare_output(*output, table->digest_bytes); code != 0) return fail(code);
    if (!table->final(*output, session->state, session->algorithm)) return fail(CSP_ERR_PRIMITIVE_FAILED);
    return kSuccess;
}
