// Sessions of the provider for tests, and what a failed call leaves.
#pragma once

#include <morvane/csp.h>

#include "support/bytes.h"

#include <gtest/gtest.h>

// A call that fails has -1 for a result and leaves this code.
#define EXPECT_FAILS(call, code)     \
    do {                             \
        EXPECT_EQ(call, -1);         \
        EXPECT_EQ(GetError(), code); \
    } while (false)

namespace morvane::test {

struct Session : CspSession {
    Session(std::uint32_t type, std::uint32_t of_algorithm) : CspSession{} {
        context_type = type;
        algorithm = of_algorithm;
    }
    CspHandle handle() { return reinterpret_cast<CspHandle>(static_cast<CspSession*>(this)); }
    CSSM_CONTEXT_ATTRIBUTE& add(std::uint32_t type) {
        attributes = own;
        CSSM_CONTEXT_ATTRIBUTE& attribute = own[number_of_attributes++];
        attribute.AttributeType = type;
        attribute.AttributeLength = 0xdeadbeef;  // never read
        return attribute;
    }
    Session& with(std::uint32_t type, std::uint32_t value) { return add(type).Attribute.Uint32 = value, *this; }
    Session& with(CSSM_KEY* key) { return add(CSP_ATTR_KEY).Attribute.Key = key, *this; }
    Session& with(CSSM_DATA* iv) { return add(CSP_ATTR_INIT_VECTOR).Attribute.Data = iv, *this; }
    operator CspHandle() { return handle(); }

    CSSM_CONTEXT_ATTRIBUTE own[6] = {};
};

}  // namespace morvane::test
