// A toolkit context for tests.
#pragma once

#include <morvane/toolkit.h>

#include "support/bytes.h"

#include <gtest/gtest.h>
#include <cstdlib>

namespace morvane::test {

// A context whose allocations are counted; one of them may be made to fail. Whatever a call leaves behind is a failure.
class Toolkit : public testing::Test {
protected:
    static constexpr int kNever = -1;

    void SetUp() override {
        const K_ALLOCATOR allocator = {
            [](void* user, std::size_t bytes) { return static_cast<Toolkit*>(user)->allocate(bytes); },
            [](void* user, void* block) { static_cast<Toolkit*>(user)->release(block); }, this};
        context = K_NewContext(&allocator);
        ASSERT_NE(context, nullptr);
        ASSERT_EQ(K_KCCInit(context), 0);
    }
    void TearDown() override {
        K_KCCTerm(context);
        EXPECT_EQ(K_EndContext(context), 0U) << "blocks left";
        EXPECT_EQ(live, 0);
    }

    void* allocate(std::size_t bytes) {
        if (failing-- == 0) return nullptr;
        ++live;
        return std::malloc(bytes);
    }
    void release(void* block) {
        if (block != nullptr) --live;
        std::free(block);
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

    // Every allocation of a call fails in turn; `call` gets which.
    template <typename Call>
    void fail_each_allocation(Call call) {
        const int before = live;
        for (int n = 0;; ++n) {
            failing = n;
            const bool went_well = call(n);
            const bool failed = failing < 0;
            failing = kNever;
            ASSERT_EQ(went_well, !failed) << "allocation " << n;
            if (!failed) break;
            ASSERT_EQ(live, before) << "allocation " << n;
        }
    }

    K_CONTEXT* context = nullptr;
    int failing = kNever;
    int live = 0;
};

inline CSSM_DATA view(const Bytes& bytes) { return {size32(bytes), const_cast<std::uint8_t*>(bytes.data())}; }

}  // namespace morvane::test
