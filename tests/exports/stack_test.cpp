// 32-bit callers keep the stack aligned to four bytes only. A routine that trusted it to be aligned to sixteen would fault
// here at three of the four offsets.
#include <morvane/primitives.h>

#include "csp/test_session.h"
#include "support/stack_call.h"

#if defined(__i386__)

namespace {

using namespace morvane::test;

TEST(StackAlignment, CallsWorkAtEveryOffset) {
    Bytes message = repeated("0123456789", 30), digest(20);
    for (const std::uint32_t offset : kStackOffsets) {
        call_at(offset, E_SHA, digest.data(), message.data(), size32(message));
        call_at(offset, E_MySHA1, digest.data(), message.data());
        call_at(offset, E_HMAC_SHA1, message.data(), size32(message), message.data(), 100, digest.data());
        Session session(CSP_CONTEXT_DIGEST, CSP_ALG_SHA1);
        CSSM_DATA input = {size32(message), message.data()}, output = {20, digest.data()};
        EXPECT_EQ(call_at(offset, CSP_DigestDataInit, 100, session.handle(), nullptr), 0U);
        EXPECT_EQ(call_at(offset, CSP_DigestDataUpdate, 100, session.handle(), &input, 1), 0U);
        EXPECT_EQ(call_at(offset, CSP_DigestDataFinal, 100, session.handle(), &output), 0U);
        EXPECT_EQ(to_hex(digest), "8e7fd677f6da2e2f7ae92f64367dcbf423d7f042") << "offset " << offset;
    }
}

}  // namespace

#endif
