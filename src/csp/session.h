// From handles to session records, and from sessions to their attributes.
#pragma once

#include <morvane/csp.h>

#include <cstdint>

namespace morvane::csp {

// The session record whose address is the handle; null for 0.
CspSession* session_of(CspHandle handle) noexcept;

// A fresh session record made from the context record, or, where that is null, session_of(handle). The fresh record comes
// from the heap and is never released. Null when both are null or memory is short.
CspSession* resolve(CspHandle handle, const CSSM_CONTEXT* context) noexcept;

// The first attribute of this type. Without one, stores CSP_ERR_NO_ATTRIBUTE and returns null.
const CSSM_CONTEXT_ATTRIBUTE* find_attribute(const CspSession& session, std::uint32_t type) noexcept;

// The key of a session's context. Null, with CSP_ERR_NO_ATTRIBUTE stored, when it has none.
const CSSM_KEY* key_of(const CspSession& session) noexcept;

}  // namespace morvane::csp
