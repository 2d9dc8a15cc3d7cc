// Integers of any size: lengths, signs, the two zeros, room, and results in place of operands.
#include "support/numbers.h"
#include "support/vectors.h"

#include <gtest/gtest.h>
#include <algorithm>
#include <functional>
#include <sstream>

namespace {

using namespace morvane::test;

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

std::int32_t quotient(ENUM* q, const ENUM* a, const ENUM* d) { return EN_Div(q, nullptr, a, d); }
std::int32_t remainder(ENUM* r, const ENUM* a, const ENUM* d) { return EN_Div(nullptr, r, a, d); }
std::int32_t masked(ENUM* r, const ENUM* a, std::int32_t bits) {
    Number x(Value{a->sign, Words(a->words, a->words + a->length)});
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

// The result is a record of its own, then each of the operands.
void expect_result(const std::string& name, const std::vector<std::string>& operands, std::size_t room,
                   const std::string& expected) {
    const std::size_t places = name == "EN_Mul" || name == "EN_Sqr" ? 1 : operands.size() + 1;
    for (std::size_t place = 0; place < places; ++place) {
        SCOPED_TRACE("in place of operand " + std::to_string(place));
        std::vector<std::unique_ptr<Number>> numbers;
        std::array<ENUM*, 3> records{};
        numbers.push_back(std::make_unique<Number>(Number::junk(room)));
        for (std::size_t i = 0; i < operands.size(); ++i) {
            numbers.push_back(std::make_unique<Number>(operands[i].c_str(), place == i + 1 ? room : 0));
            records[i] = operands[i] == "@" ? records[0] : static_cast<ENUM*>(*numbers.back());
        }
        Number& r = *numbers[place];
        const Value before = r.value();
        const std::int32_t status = kCalls.at(name)(r, records[0], records[1], records[2]);
        EXPECT_EQ(r.value(), expected == "unchanged" ? before : Value(expected.c_str()));
        EXPECT_TRUE(status == kNoStatus || status == (expected == "unchanged" ? 0 : 1)) << status;
    }
}

TEST(Bignum, GivesTheStatedLengthsSignsAndZeros) {
    for (const Vector& vector : load_vectors("bignum.txt")) {
        const std::string& name = vector.text("call");
        for (const auto& [key, expected] : vector.fields()) {
            if (key == "call") continue;
            SCOPED_TRACE(name + ": " + key);
            const std::size_t bracket = key.find(" [");
            std::istringstream list(key.substr(0, bracket) + ",");
            std::vector<std::string> operands;
            for (std::string operand; std::getline(list >> std::ws, operand, ',');) operands.push_back(operand);
            const std::size_t room = std::stoul(key.substr(bracket + 2));
            expect_result(name, operands, room, expected);
            if (name == "EN_Mod_Exp") expect_result("EN_Mod_ExpA", operands, room, expected);
        }
    }
}

TEST(Bignum, RecordsLiveOnTheHeap) {
    using Owner = std::unique_ptr<ENUM, decltype(&EN_Destroy)>;
    const Owner four(EN_Create(4), EN_Destroy), none(EN_Create(0), EN_Destroy);
    EXPECT_TRUE(four->sign == 0 && four->length == 4 && std::count(four->words, four->words + 4, 0U) == 4);
    EXPECT_EQ(none->length, 0);
    EN_U32ToENUM(none.get(), 7);  // there is room for one word
    EXPECT_EQ(EN_Create(0x80000000), nullptr);
    EN_Destroy(nullptr);

    Number negative("-3 2 1"), empty("");
    const Owner clone(EN_Clone(negative), EN_Destroy), zero(EN_Clone(empty), EN_Destroy);
    EXPECT_EQ(EN_Comp(clone.get(), negative), 0);
    EXPECT_EQ(zero->length, 0);
    EN_U32ToENUM(zero.get(), 0);
    EXPECT_EQ(EN_UComp(zero.get(), four.get()), -3);
    zero->length = -3;  // counts as 0
    EXPECT_EQ(EN_UComp(zero.get(), four.get()), -4);

    EXPECT_EQ(EN_Expand(clone.get(), 3), 3U);
    clone->length = 2;
    EXPECT_EQ(EN_Expand(clone.get(), 5000), 0U);
    EXPECT_TRUE(clone->sign == 1 && clone->length == 2 && clone->words[0] == 1 && clone->words[1] == 2);
    EXPECT_EQ(std::count(clone->words + 2, clone->words + 5000, 0U), 4998);  // also where a word had been
}

TEST(Bignum, ConvertsOctets) {
    for (const auto& [octets, value] : std::map<std::string, const char*>{{"", ""},
                                                                          {"0000000000", ""},
                                                                          {"00000100000000", "1 0"},
                                                                          {"01ff", "1ff"},
                                                                          {"80000000", "80000000"},
                                                                          {"0000000001020304050607", "10203 4050607"},
                                                                          {"aabbccddee", "aa bbccddee"}}) {
        const Bytes bytes = from_hex(octets);
        const Value expected = value;
        Number x(Number::junk(expected.words.size()));
        EN_U8ToENUM(x, bytes.data(), size32(bytes));
        EXPECT_EQ(x.value(), expected);
        Bytes written(1 + (EN_GetFilledBitNum(x) + 7) / 8, 0x77);
        EXPECT_EQ(EN_ENUMToU8(written.data(), x), static_cast<std::int32_t>(written.size() - 1));
        EXPECT_EQ(to_hex(written), octets.substr(std::min(octets.find_first_not_of('0'), octets.size()) / 2 * 2) + "77");
    }
    Number zero("0");
    EXPECT_EQ(EN_ENUMToU8(nullptr, zero), 0);
}

// What must hold whatever the operands are, for the builds that have no other library to compare with.
TEST(Bignum, KeepsTheLawsOfArithmetic) {
    constexpr std::uint32_t kSeed = 20301;
    Random random(kSeed);
    for (std::uint32_t i = 0; i < 3000; ++i) {
        SCOPED_TRACE(testing::Message() << "case " << i << ", seed " << kSeed);
        const std::uint32_t n = 1 + random.below(i % 50 == 0 ? 75 : 9), wide = 2 * n + 2;
        Number a({0, shaped_words(random, 1 + random.below(2 * n))}), m({0, shaped_words(random, n)});
        Number q("", wide), r("", wide), s("", 2 * wide), t("", 2 * wide), u("", 2 * wide);
        EN_Div(q, r, a, m);  // a = q m + r
        ASSERT_LT(EN_Comp(r, m), 0);
        EN_Mul(s, q, m);
        EN_Add(s, s, r);
        EN_Sub(s, s, a);
        ASSERT_EQ(s.value(), "");

        EN_Add(t, q, r);  // (q + r)^2 - (q - r)^2 = 4 q r
        EN_Sqr(s, t);
        EN_Sub(t, q, r);
        EN_Sqr(u, t);
        EN_Sub(s, s, u);
        EN_RShift(s, s, 2);
        EN_Mul(t, q, r);
        EN_Sub(s, s, t);
        ASSERT_EQ(EN_GetFilledBitNum(s), 0U);

        EN_GCD(t, a, m);
        EN_Mod_Inv(s, a, m);
        EN_Mod_Mul(s, s, a, m);  // 1 or, without an inverse and modulo 1, 0
        EN_Mod(s, s, m);
        ASSERT_EQ(s.value(), t.value() == "1" && m.value() != "1" ? "1" : "");

        EN_Mod_Exp(u, q, t, m);  // q^t q^r = q^(t + r)
        EN_Mod_Exp(s, q, r, m);
        EN_Mod_Mul(s, s, u, m);
        EN_Add(t, t, r);
        EN_Mod_Exp(u, q, t, m);
        EN_Mod_Sub(s, s, u, m);
        EN_Mod(s, s, m);
        ASSERT_EQ(s.value(), "");
    }
}

}  // namespace
