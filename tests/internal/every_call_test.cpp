// Every call of the toolkit and of the provider, while each of its allocations fails in turn, and with nulls.
#include "toolkit/every_call.h"
#include "support/failing_heap.h"

#include <climits>

namespace {

using namespace morvane::test;

// A call, and which of its arguments may be null: a label.
const std::set<std::pair<std::string_view, std::size_t>> kOptional = {{"CSP_GenerateKey", 4}};
const std::set<std::string_view> kGoWithoutInit = {"K_KCCInit",   "K_GenRandom",         "K_GenMac",
                                                   "K_VerifyMac", "K_WTLSPublicKey2RSA", "K_RSAPublicKey2WTLS"};

// A failure has its code, hands nothing out, leaves nothing behind and wipes what it frees; then the call works.
TEST(EveryCall, FailsCleanly) {
    const std::size_t live_at_first = FailingHeap::live();
    {
        Calls calls;
        for (const CallRow& row : kCallRows) {
            SCOPED_TRACE(row.name);
            const bool is_toolkit = row.name[0] == 'K';
            const auto outputs = calls.outputs();
            const std::size_t live = FailingHeap::live();
            const auto expect_as_before = [&](std::uint32_t code, std::size_t live_now = FailingHeap::live()) {
                EXPECT_EQ(live_now, live);
                EXPECT_EQ(calls.outputs(), outputs);
                EXPECT_TRUE(!is_toolkit || code == UINT32_MAX || calls.context->last_error == code) << code;
            };
            if (row.nulls != nullptr) {
                // Where the run time is static, the test's own functions and traces are on this heap.
                const std::function<void(std::size_t, std::uint32_t)> check = [&](std::size_t argument,
                                                                                  std::uint32_t code) {
                    const bool is_optional = kOptional.contains({row.name, argument});
                    if (is_optional) CSP_FreeKey(0, nullptr, &calls.p.des);
                    const std::size_t live_now = FailingHeap::live();
                    SCOPED_TRACE(argument);
                    EXPECT_EQ(code == 0, is_optional) << code;
                    expect_as_before(code, live_now);
                };
                const FailingHeap heap(INT_MAX);
                row.nulls(calls, check);
            }
            if (is_toolkit && !kGoWithoutInit.contains(row.name)) {
                void* const crypto = std::exchange(calls.context->crypto, nullptr);
                EXPECT_EQ(row.call(calls), std::uint32_t{KERR_NOT_READY});
                calls.context->crypto = crypto;
                expect_as_before(KERR_NOT_READY);
            }
            Codes seen;
            for (int n = 0;; ++n) {
                SCOPED_TRACE(testing::Message() << "allocation " << n);
                std::uint32_t code = 0;
                bool has_failed = false;
                {
                    const FailingHeap heap(n, FailingHeap::Then::kWorks);
                    code = row.call(calls);
                    has_failed = heap.has_failed();
                    EXPECT_EQ(heap.dirty(), 0);
                }
                // Division by a long modulus is quicker with space, and goes without it.
                if (code == 0 && has_failed && &row == &kCallRows.back()) {
                    K_free(calls.context, calls.k.long_block.Data);
                    calls.k.long_block = {};
                    continue;
                }
                ASSERT_EQ(code != 0, has_failed) << code;
                if (code == 0) break;
                seen.insert(code);
                expect_as_before(code);
            }
            Codes codes = row.codes;
            codes.erase(0);
            EXPECT_EQ(seen, codes);
        }
        const FailingHeap heap(INT_MAX);
        calls.release();
        EXPECT_EQ(heap.dirty(), 0);
    }
    EXPECT_EQ(FailingHeap::live(), live_at_first);
}

TEST(EveryCall, IsInTheTable) {
    std::set<std::string> names = {"K_KCCTerm"};
    for (const CallRow& row : kCallRows) names.insert(row.name);
#define EXPORT(function, name, convention, bytes, target) #target,
    for (const std::string name : {
#include "export_table.inc"
         }) {
        EXPECT_TRUE((name.rfind("K_", 0) != 0 && name.rfind("CSP_", 0) != 0) || names.count(name) == 1) << name;
    }
}

}  // namespace
