// A toolkit context for tests.
#pragma once

#include <morvane/toolkit.h>

#include "support/bytes.h"

#include <gtest/gtest.h>

namespace morvane::test {

// A context that is ready. Whatever a call leaves behind is a failure.
class Toolkit : public testing::Test {
protected:
    void SetUp() override {
        context = K_NewContext(nullptr);
        ASSERT_NE(context, nullptr);
        ASSERT_EQ(K_KCCInit(context), 0);
    }
    void TearDown() override {
        K_KCCTerm(context);
        EXPECT_EQ(K_EndContext(context), 0U) << "blocks left";
    }

    // The bytes that a call has handed out, given back.
    Bytes taken(CSSM_DATA& output) {
        const Bytes bytes(output.Data, output.Data + output.Length);
        K_free(context, output.Data);
        output = {0, nullptr};
        return bytes;
    }

    Bytes hash(std::uint32_t selector, const Bytes& bytes) {
        const CSSM_DATA input = {size32(bytes), const_cast<std::uint8_t*>(bytes.data())};
        CSSM_DATA digest = {0, nullptr};
        EXPECT_EQ(K_GenHash(context, selector, &input, &digest), 0);
        return taken(digest);
    }

    K_CONTEXT* context = nullptr;
};

inline CSSM_DATA view(const Bytes& bytes) { return {size32(bytes), const_cast<std::uint8_t*>(bytes.data())}; }

}  // namespace morvane::test
