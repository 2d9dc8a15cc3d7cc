// ECDSA with given scalars: published examples. The DER block of numbers that no curve here has.
#include "ecc/ecdsa.h"
#include "ecc/signature_block.h"

#include "bignum/octets.h"
#include "support/bytes.h"

#include <gtest/gtest.h>
#include <morvane/hash.h>

namespace {

using namespace morvane::ecc;
using namespace morvane::test;

struct Words {
    explicit Words(const std::string& hex) {
        const Bytes octets = from_hex(std::string(hex.size() % 2, '0') + hex);
        morvane::bignum::octets_to_words(words, kWords, octets.data(), octets.size());
    }
    operator Word*() { return words; }
    Word words[kWords];
};

std::string hex(const Word* words) {
    Bytes octets(21);
    morvane::bignum::words_to_octets(octets.data(), octets.size(), words, kWords);
    return to_hex(octets);
}

TEST(Ecdsa, EqualsPublishedExamples) {
    struct Example {
        std::int32_t curve;
        const char *d, *text, *k, *r, *s;
    };
    constexpr const char* kKey = "9a4d6792295a7f730fc3f2b49cbc0f62e862272f";  // of RFC 6979, A.2.4
    constexpr Example kExamples[] = {
        {7, "aa374ffc3ce144e6b073307972cb6d57b2a4e982", "abc", "7b012db7681a3f28b9185c8b2ac5d528decd52da",
         "00ce2873e5be449563391feb47ddcba2dc16379191", "003480ec1371a091a464b31ce47df0cb8aa2d98b54"},
        {3, kKey, "sample", "9744429fa741d12de2be8316e35e84db9e5df1cd", "030c45b80ba0e1406c4efbbb7000d6de4fa465d505",
         "038d87df89493522fc4cd7de1553bd9dbba2123011"},
        {3, kKey, "test", "14cab9192f39c8a0ea8e81b4b87574228c99cd681", "01375bef93f21582f601497036a7dc8014a99c2b79",
         "0254b7f1472fffee9002d081bb8ce819cce6e687f9"}};
    for (const Example& example : kExamples) {
        SCOPED_TRACE(example.r);
        const Bytes text = from_text(example.text);
        Bytes digest(20);
        E_SHA1(digest.data(), text.data(), size32(text));
        Words e(to_hex(digest)), d(example.d), k(example.k), r(""), s("");
        EXPECT_EQ(ecdsa_sign(r, s, example.curve, e, d, k), Signed::kYes);
        EXPECT_EQ(hex(r), example.r);
        EXPECT_EQ(hex(s), example.s);
        TORVA_V1_POINT q;
        ASSERT_TRUE(multiply_base(q, example.curve, d));
        EXPECT_TRUE(ecdsa_verify_vt(example.curve, e, r, s, q));
    }
}

TEST(Ecdsa, BlocksHaveTheShortestIntegers) {
    Words r("80" + std::string(38, '1') + "7f"), s("7f");
    Bytes octets(50);
    TORVA_V1_OPAQUE8 block = {0, octets.data()};
    put_ecdsa_block(block, r, s);
    ASSERT_EQ(block.count, 29);
    EXPECT_EQ(to_hex(octets.data(), 29),
              "301b0216"
              "00"
              "80" +
                  std::string(38, '1') +
                  "7f"
                  "02017f");
}

}  // namespace
