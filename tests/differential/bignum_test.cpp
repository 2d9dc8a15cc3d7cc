// Every operation on numbers that hurt, against GMP.
#include "differential/bignum_cases.h"

namespace {

using namespace morvane::test;

TEST(Bignum, EqualsGmp) {
    constexpr std::uint32_t kSeed = 20300;
    for (const auto& operation : kOperations) {
        Source source{Random(kSeed)};
        for (int i = 0; i < 3000 && !HasFailure(); ++i) {
            SCOPED_TRACE(testing::Message() << "case " << i << ", seed " << kSeed);
            const Operands x = source.operands(operation.operands, operation.last);
            check(operation.name, operation.operands, x, operation.expected(x));
        }
    }
}

TEST(Bignum, EqualsGmpInPowers) {
    constexpr std::uint32_t kSeed = 20303;
    Source source{Random(kSeed)};
    for (std::uint32_t i = 0; i < 1200 && !HasFailure(); ++i) {
        SCOPED_TRACE(testing::Message() << "case " << i << ", seed " << kSeed);
        const std::uint32_t words = 1 + i % 80;
        const Operands x = source.of_power(words, i % 8 == 0 ? words + 1 : 4);
        check(i % 2 == 0 ? "EN_Mod_Exp" : "EN_Mod_ExpA", 3, x, power(x.a, x.b, x.c));
    }
}

}  // namespace
