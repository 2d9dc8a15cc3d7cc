// Any EN_ operation on any operands gives what GMP gives, in the room that morvane/bignum.h states.
#include "fuzz.h"

#include "differential/bignum_cases.h"

using namespace morvane::test;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Source source(choices_of(data, size));
    const std::uint32_t chosen = source.random.below(std::size(kOperations) + 2);
    if (chosen < std::size(kOperations)) {
        const Operation& operation = kOperations[chosen];
        const Operands x = source.operands(operation.operands, operation.last);
        check(operation.name, operation.operands, x, operation.expected(x));
    } else {
        const std::uint32_t words = 1 + source.random.below(40);
        const Operands x = source.of_power(words, source.random.below(2) == 0 ? words + 1 : 4);
        check(chosen % 2 == 0 ? "EN_Mod_Exp" : "EN_Mod_ExpA", 3, x, power(x.a, x.b, x.c));
    }
    return 0;
}
