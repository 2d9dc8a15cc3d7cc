// What the readers and the writer can do and no exported function shows.
#include "asn1/rsa.h"
#include "support/bytes.h"

#include <gtest/gtest.h>

namespace {

using namespace morvane::asn1;
using namespace morvane::test;

template <typename Body>
std::string encoded(const Body& body) {
    Bytes der(static_cast<std::size_t>(encode(nullptr, body)));
    encode(der.data(), body);
    return to_hex(der);
}

TEST(DerWriter, TagsAndLengthsOfEveryForm) {
    const auto empty = [](Tag tag) { return encoded([tag](Writer& writer) { writer.put(tag, [](Writer&) {}); }); };
    EXPECT_EQ(empty({30, true, TagClass::kContext}), "be00");
    EXPECT_EQ(empty({31}), "1f1f00");
    EXPECT_EQ(empty({127, false, TagClass::kPrivate}), "df7f00");
    EXPECT_EQ(empty({201, true, TagClass::kApplication}), "7fc90100") << "low-order group first";
    EXPECT_EQ(empty({0x4321 << 1}), "1fc28c0200");
    EXPECT_EQ(empty({0xffffffff}), "1fffffffff0f00");
    EXPECT_EQ(encoded([](Writer& writer) {
                  writer.put_indefinite(kSequence, [](Writer& content) { content.put_number(ENUM{}); });
              }),
              "30800201000000");
    const std::pair<std::uint64_t, const char*> lengths[] = {
        {127, "7f"}, {128, "8180"}, {255, "81ff"}, {256, "820100"}, {0x10000, "83010000"}, {0x123456789a, "85123456789a"}};
    for (const auto& [length, hex] : lengths) {
        EXPECT_EQ(encoded([length = length](Writer& writer) { writer.put_length(length); }), hex);
    }
}

TEST(DerReader, SaysWhereAKeyIsRefused) {
    const std::pair<const char*, Refusal> rows[] = {
        {"3106020103020105", Refusal::kHeader},        {"3006030103020105", Refusal::kFirstInteger},
        {"3006020103030105", Refusal::kSecondInteger}, {"3003020103", Refusal::kSecondInteger},
        {"3009020103020105020107", Refusal::kEnd},     {"3006020103020105", Refusal::kNone}};
    E_RSA_KEY key = {};
    E_RSA_Init(&key);
    for (const auto& [hex, refusal] : rows) {
        const Bytes der = from_hex(hex);
        Reader input(der.data(), der.size());
        EXPECT_EQ(get(key, input, kRsaPublicKey), refusal) << hex;
        EXPECT_EQ(input.at_end(), refusal == Refusal::kNone) << hex;
    }
    EXPECT_EQ(static_cast<int>(Refusal::kEnd), 227);
    const Bytes high_tag = from_hex("1f1f00");
    Reader input(high_tag.data(), high_tag.size()), content;
    EXPECT_TRUE(!input.get({31}, content) && input.position() == high_tag.data());
}

}  // namespace
