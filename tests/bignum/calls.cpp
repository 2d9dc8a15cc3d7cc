#include "bignum/calls.h"

#include <gtest/gtest.h>
#include <functional>
#include <map>

namespace morvane::test {
namespace {

// Any function as one of a result and up to three operands; functions without a status answer kNoStatus.
constexpr std::int32_t kNoStatus = -1;
using Call = std::function<std::int32_t(ENUM* r, const ENUM* a, const ENUM* b, const ENUM* c)>;

std::int32_t integer(const ENUM* x) {
    const std::int64_t word = x->length != 0 ? std::int64_t{x->words[0]} : 0;
    return static_cast<std::int32_t>(x->sign != 0 ? -word : word);
}

template <typename Parameter>
Parameter as(const ENUM* x) {
    if constexpr (std::is_pointer_v<Parameter>) {
        return x;
    } else {
        return static_cast<Parameter>(integer(x));
    }
}

template <typename Status, typename... Parameters, std::size_t... I>
Call call(Status (*run)(ENUM*, Parameters...), std::index_sequence<I...>) {
    return [run](ENUM* r, const ENUM* a, const ENUM* b, const ENUM* c) {
        const ENUM* const operands[] = {a, b, c};
        if constexpr (!std::is_void_v<Status>) return run(r, as<Parameters>(operands[I])...);
        if constexpr (std::is_void_v<Status>) run(r, as<Parameters>(operands[I])...);
        return kNoStatus;
    };
}
template <typename Status, typename... Parameters>
Call call(Status (*run)(ENUM*, Parameters...)) {
    return call(run, std::index_sequence_for<Parameters...>{});
}

// A function whose answer is a number, which becomes the record.
template <typename Answer, typename... Parameter>
Call call(Answer (*run)(const ENUM*, Parameter...)) {
    return [run](ENUM* r, const ENUM* a, [[maybe_unused]] const ENUM* b, const ENUM*) {
        const std::int64_t answer = run(a, as<Parameter>(b)...);
        EN_U32ToENUM(r, static_cast<std::uint32_t>(answer < 0 ? -answer : answer));
        r->sign = answer < 0 ? 1 : 0;
        return kNoStatus;
    };
}

std::size_t words_in(const ENUM* x) { return static_cast<std::size_t>(x->length); }

std::int32_t quotient(ENUM* q, const ENUM* a, const ENUM* d) {
    Number rest(Number::junk(std::min(words_in(a), words_in(d))));
    return EN_Div(q, rest, a, d);
}
std::int32_t remainder(ENUM* r, const ENUM* a, const ENUM* d) { return EN_Div(nullptr, r, a, d); }
std::int32_t masked(ENUM* r, const ENUM* a, std::int32_t bits) {
    Number x({a->sign, Words(a->words, a->words + a->length)});
    const std::int32_t status = EN_MaskBit(x, bits);
    if (status != 0) EN_Copy(r, x);
    return status;
}

const std::map<std::string, Call> kCalls = {{"EN_UComp", call(EN_UComp)},
                                            {"EN_Comp", call(EN_Comp)},
                                            {"EN_GetFilledBitNum", call(EN_GetFilledBitNum)},
                                            {"EN_IsBitSet", call(EN_IsBitSet)},
                                            {"EN_MaskBit", call(masked)},
                                            {"EN_Copy", call(EN_Copy)},
                                            {"EN_Add", call(EN_Add)},
                                            {"EN_Sub", call(EN_Sub)},
                                            {"EN_SubU32", call(EN_SubU32)},
                                            {"EN_LShift1", call(EN_LShift1)},
                                            {"EN_RShift1", call(EN_RShift1)},
                                            {"EN_LShift", call(EN_LShift)},
                                            {"EN_RShift", call(EN_RShift)},
                                            {"EN_Mul", call(EN_Mul)},
                                            {"EN_Sqr", call(EN_Sqr)},
                                            {"quotient", call(quotient)},
                                            {"remainder", call(remainder)},
                                            {"EN_Mod", call(EN_Mod)},
                                            {"EN_Mod_Add", call(EN_Mod_Add)},
                                            {"EN_Mod_Sub", call(EN_Mod_Sub)},
                                            {"EN_Mod_Mul", call(EN_Mod_Mul)},
                                            {"EN_Mod_MulA", call(EN_Mod_MulA)},
                                            {"EN_Mod_MulB", call(EN_Mod_MulB)},
                                            {"EN_Mod_MulAB", call(EN_Mod_MulAB)},
                                            {"EN_Mod_Sqr", call(EN_Mod_Sqr)},
                                            {"EN_Mod_SqrA", call(EN_Mod_SqrA)},
                                            {"EN_Mod_Inv", call(EN_Mod_Inv)},
                                            {"EN_GCD", call(EN_GCD)},
                                            {"EN_LCM", call(EN_LCM)},
                                            {"EN_ModU32", call(EN_ModU32)},
                                            {"EN_Mod_Exp", call(EN_Mod_Exp)},
                                            {"EN_Mod_ExpA", call(EN_Mod_ExpA)}};

}  // namespace

void expect_result(const std::string& name, const std::vector<Value>& operands, bool same, std::size_t room,
                   const std::optional<Value>& expected) {
    const std::size_t places = name == "EN_Mul" || name == "EN_Sqr" ? 1 : operands.size() + 1;
    for (std::size_t place = 0; place < places; ++place) {
        SCOPED_TRACE(testing::Message() << name << " in place of operand " << place << ", same " << same);
        std::vector<std::unique_ptr<Number>> numbers;
        std::array<ENUM*, 3> records{};
        numbers.push_back(std::make_unique<Number>(Number::junk(room)));
        for (std::size_t i = 0; i < operands.size(); ++i) {
            numbers.push_back(std::make_unique<Number>(operands[i], place == i + 1 ? room : 0));
            records[i] = i == 1 && same ? records[0] : static_cast<ENUM*>(*numbers.back());
        }
        Number& r = *numbers[place];
        const Value before = r.value();
        const std::int32_t status = kCalls.at(name)(r, records[0], records[1], records[2]);
        EXPECT_EQ(r.value(), expected.value_or(before));
        EXPECT_TRUE(status == kNoStatus || status == (expected ? 1 : 0)) << status;
        for (std::size_t i = 0; i < operands.size(); ++i) {
            EXPECT_TRUE(i + 1 == place || numbers[i + 1]->value() == operands[i]) << "operand " << i << " was changed";
        }
    }
}

}  // namespace morvane::test
