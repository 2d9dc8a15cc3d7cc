// CSP_GenerateRandom: random bytes.
#include <morvane/csp.h>
#include <morvane/random.h>

#include "csp/error.h"
#include "csp/session.h"

using namespace morvane::csp;

int32_t MORVANE_STDCALL CSP_GenerateRandom(uint32_t /*csp*/, CspHandle handle, const CSSM_CONTEXT* context,
                                           CSSM_DATA* output) {
    const CspSession* const session = resolve(handle, context);
    if (session == nullptr) return fail(CSP_ERR_NO_CONTEXT);
    if (session->context_type != CSP_CONTEXT_RANDOM) return fail(CSP_ERR_WRONG_CONTEXT_TYPE);
    const CSSM_CONTEXT_ATTRIBUTE* const size = find_attribute(*session, CSP_ATTR_OUTPUT_SIZE);
    if (size == nullptr) return fail(CSP_ERR_NO_OUTPUT_SIZE);
    if (output == nullptr) return fail(CSP_ERR_NULL_POINTER);
    if (output->Length < size->Attribute.Uint32) return fail(CSP_ERR_BAD_DATA);
    if (session->algorithm != CSP_ALG_RANDOM && session->algorithm != CSP_ALG_RANDOM_ALT) {
        return fail(CSP_ERR_UNKNOWN_ALGORITHM);
    }
    output->Length = size->Attribute.Uint32;
    E_GenerateRandom(output->Data, output->Length, session->algorithm == CSP_ALG_RANDOM ? 0 : 1);
    return kSuccess;
}
