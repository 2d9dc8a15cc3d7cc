#include "csp/session.h"

#include "csp/error.h"

#include <cstddef>
#include <cstdlib>

namespace {

// The layouts that 32-bit programs are compiled against.
[[maybe_unused]] constexpr bool kWords32 = sizeof(void*) == 4;
static_assert(!kWords32 || (sizeof(CSSM_DATA) == 8 && sizeof(CSSM_KEYHEADER) == 76 && sizeof(CSSM_KEY) == 84));
static_assert(!kWords32 || (sizeof(CSSM_CONTEXT) == 20 && sizeof(CSSM_CONTEXT_ATTRIBUTE) == 12));
static_assert(!kWords32 || (sizeof(CspSession) == 1076 && offsetof(CspSession, chain) == 32 &&
                            offsetof(CspSession, carried) == 48 && offsetof(CspSession, carried_bytes) == 1072));
static_assert(offsetof(CSSM_KEYHEADER, LogicalKeySizeInBits) == 36 && sizeof(CspSizePair) == 8);

}  // namespace

namespace morvane::csp {

CspSession* session_of(CspHandle handle) noexcept {
    return reinterpret_cast<CspSession*>(handle);  // NOLINT(performance-no-int-to-ptr): a handle is an address
}

CspSession* resolve(CspHandle handle, const CSSM_CONTEXT* context) noexcept {
    if (context == nullptr) return session_of(handle);
    auto* const session = static_cast<CspSession*>(std::calloc(1, sizeof(CspSession)));
    if (session == nullptr) return nullptr;
    session->context_type = context->ContextType;
    session->algorithm = context->AlgorithmType;
    session->number_of_attributes = context->NumberOfAttributes;
    session->attributes = context->ContextAttributes;
    return session;
}

const CSSM_CONTEXT_ATTRIBUTE* find_attribute(const CspSession& session, std::uint32_t type) noexcept {
    const std::uint32_t count = session.attributes == nullptr ? 0 : session.number_of_attributes;
    for (std::uint32_t i = 0; i < count; ++i) {
        if (session.attributes[i].AttributeType == type) return &session.attributes[i];
    }
    store_error(CSP_ERR_NO_ATTRIBUTE);
    return nullptr;
}

const CSSM_KEY* key_of(const CspSession& session) noexcept {
    const CSSM_CONTEXT_ATTRIBUTE* const attribute = find_attribute(session, CSP_ATTR_KEY);
    return attribute == nullptr ? nullptr : attribute->Attribute.Key;
}

}  // namespace morvane::csp
