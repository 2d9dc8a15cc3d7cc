// Big numbers while the heap gives nothing.
#include "support/failing_heap.h"
#include "support/numbers.h"

#include <morvane/bignum.h>

#include <gtest/gtest.h>

#include <optional>

namespace {

using namespace morvane::test;

struct Numbers {
    explicit Numbers(std::size_t words)
        : odd({0, Words(words, 0xfffffff1)}),
          even({0, Words(words, 0xfffffff0)}),
          a({0, Words(words, 0x89abcdef)}),
          b({0, Words(words, 0x12345677)}),
          square({0, Words(2 * words, 0xc0000001)}) {}

    Number odd, even, a, b, square;
};

constexpr void (*kOperations[])(ENUM* r, Numbers& n) = {
    [](ENUM* r, Numbers& n) { EN_Mul(r, n.a, n.b); },
    [](ENUM* r, Numbers& n) { EN_Sqr(r, n.a); },
    [](ENUM* r, Numbers& n) { EN_Div(r, nullptr, n.square, n.a); },
    [](ENUM* r, Numbers& n) { EN_Mod(r, n.square, n.odd); },
    [](ENUM* r, Numbers& n) { EN_Mod_Mul(r, n.a, n.b, n.odd); },
    [](ENUM* r, Numbers& n) { EN_Mod_MulAB(r, n.square, n.square, n.odd); },
    [](ENUM* r, Numbers& n) { EN_GCD(r, n.a, n.b); },
    [](ENUM* r, Numbers& n) { EN_LCM(r, n.a, n.b); },
    [](ENUM* r, Numbers& n) { EN_Mod_Inv(r, n.b, n.odd); },
    [](ENUM* r, Numbers& n) { EN_Mod_Inv(r, n.b, n.even); },
    [](ENUM* r, Numbers& n) { EN_Mod_Exp(r, n.a, n.b, n.odd); },
    [](ENUM* r, Numbers& n) { EN_Mod_Exp(r, n.a, n.b, n.even); },
};

Value result_of(std::size_t operation, std::size_t words, bool with_heap) {
    Numbers numbers(words);
    Number r(Number::junk(2 * words + 1), 2 * words + 1);
    {
        std::optional<FailingHeap> heap;
        if (!with_heap) heap.emplace(0);
        kOperations[operation](r, numbers);
    }
    return r.value();
}

TEST(BignumWithoutHeap, ModuliOf75WordsNeedNone) {
    for (const std::size_t words : {64U, 75U}) {
        for (std::size_t i = 0; i < std::size(kOperations); ++i) {
            const Value value = result_of(i, words, true);
            EXPECT_NE(value, Number::junk(2 * words + 1)) << i;
            EXPECT_TRUE(result_of(i, words, false) == value) << i << ", " << words;
        }
    }
}

TEST(BignumWithoutHeap, LeavesTheResultOrIsDone) {
    // Products in place, as of whole limbs, need no work space.
    for (std::size_t i = 0; i < std::size(kOperations); ++i) {
        const Value value = result_of(i, 601, false);
        EXPECT_TRUE(value == Number::junk(1203) || (i < 2 && value == result_of(i, 601, true))) << i;
    }
}

}  // namespace
