// Integers of any size: lengths, signs, the two zeros, room, and results in place of operands.
#include "bignum/calls.h"
#include "support/vectors.h"

#include <gtest/gtest.h>
#include <algorithm>
#include <sstream>

namespace {

using namespace morvane::test;

class BignumVectors : public testing::TestWithParam<const char*> {};

TEST_P(BignumVectors, ValuesLengthsSignsAndRoomAreThose) {
    for (const Vector& vector : load_vectors(GetParam())) {
        const std::string& name = vector.text("call");
        for (const auto& [key, expected] : vector.fields()) {
            if (key == "call") continue;
            SCOPED_TRACE(name + ": " + key);
            const std::size_t bracket = key.find(" [");
            std::istringstream list(key.substr(0, bracket) + ",");
            std::vector<Value> operands;
            bool same = false;
            for (std::string text; std::getline(list >> std::ws, text, ',');) {
                same = same || text == "@";
                operands.push_back(text == "@" ? operands[0] : Value(text.c_str()));
            }
            const std::size_t room = std::stoul(key.substr(bracket + 2));
            const auto result = expected == "unchanged" ? std::nullopt : std::optional<Value>(expected.c_str());
            expect_result(name, operands, same, room, result);
            if (name == "EN_Mod_Exp") expect_result("EN_Mod_ExpA", operands, same, room, result);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Files, BignumVectors, testing::Values("bignum.txt", "bignum_gmp.txt"));

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

}  // namespace
