// 32-bit callers keep the stack aligned to four bytes only. A routine that trusted it to be aligned to sixteen would fault
// here at three of the four offsets.
#include <morvane/csp.h>
#include <morvane/primitives.h>

#include "support/bytes.h"
#include "support/stack_call.h"

#include <gtest/gtest.h>

#if defined(__i386__)

namespace {

using namespace morvane::test;

TEST(StackAlignment, DigestsWorkAtEveryOffset) {
    const Bytes message = repeated("0123456789", 30);
    Bytes expected(20);
    E_SHA1(expected.data(), message.data(), size32(message));
    for (const std::uint32_t offset : kStackOffsets) {
        Bytes digest(20);
        call_at(offset, E_SHA1, digest.data(), message.data(), size32(message));
        EXPECT_EQ(digest, expected) << "offset " << offset;
        call_at(offset, E_SHA, digest.data(), message.data(), size32(message));
        call_at(offset, E_MySHA1, digest.data(), message.data());
        call_at(offset, E_HMAC_SHA1, message.data(), size32(message), message.data(), 100, digest.data());
    }
}

TEST(StackAlignment, ProviderServicesWorkAtEveryOffset) {
    Bytes message = from_text("abc");
    for (const std::uint32_t offset : kStackOffsets) {
        CspSession session{};
        session.context_type = CSP_CONTEXT_DIGEST;
        session.algorithm = CSP_ALG_SHA1;
        const auto handle = reinterpret_cast<CspHandle>(&session);
        Bytes digest(20);
        CSSM_DATA input = {3, message.data()};
        CSSM_DATA output = {20, digest.data()};
        EXPECT_EQ(call_at(offset, CSP_DigestDataInit, 100, handle, nullptr), 0U);
        EXPECT_EQ(call_at(offset, CSP_DigestDataUpdate, 100, handle, &input, 1), 0U);
        EXPECT_EQ(call_at(offset, CSP_DigestDataFinal, 100, handle, &output), 0U);
        EXPECT_EQ(to_hex(digest), "a9993e364706816aba3e25717850c26c9cd0d89d");
    }
}

}  // namespace

#endif
