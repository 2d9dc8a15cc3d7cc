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
    template <std::size_t Count>
    void give(const CSSM_CONTEXT_ATTRIBUTE (&all)[Count], std::size_t count = Count) {
        attributes = all;
        number_of_attributes = static_cast<std::uint32_t>(count);
    }
};

}  // namespace morvane::test
