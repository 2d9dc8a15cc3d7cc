// DER of RSA keys and integers, as programs see it.
#include <morvane/asn1.h>
#include <morvane/bignum.h>

#include "support/numbers.h"
#include "support/vectors.h"

#include <gtest/gtest.h>

namespace {

using namespace morvane::test;

struct Key : E_RSA_KEY {
    Key() : E_RSA_KEY{} { E_RSA_Init(this); }
};

// What a writer gives, which must be what it counts.
template <typename Put>
Bytes written(Put put) {
    Bytes der(static_cast<std::size_t>(put(nullptr)));
    EXPECT_EQ(put(der.data()), static_cast<std::int32_t>(der.size()));
    return der;
}

// How far a reader moves on.
template <typename Record>
std::ptrdiff_t taken(void (*get)(Record*, const std::uint8_t**, std::uint32_t), Record* record, const Bytes& der) {
    const std::uint8_t* position = der.data();
    get(record, &position, size32(der));
    return position - der.data();
}

void append(Bytes& to, std::uint8_t tag, const Bytes& content) {
    const std::size_t size = content.size();
    to.push_back(tag);
    if (size >= 256) to.insert(to.end(), {0x82, static_cast<std::uint8_t>(size >> 8)});
    if (size >= 128 && size < 256) to.push_back(0x81);
    to.push_back(static_cast<std::uint8_t>(size));
    to.insert(to.end(), content.begin(), content.end());
}

// A SEQUENCE of INTEGERs whose contents are these.
Bytes sequence(const std::vector<Bytes>& contents) {
    Bytes inner, der;
    for (const Bytes& content : contents) append(inner, 0x02, content);
    append(der, 0x30, inner);
    return der;
}

TEST(RsaDer, PublicKeyOf1024BitsHas140Bytes) {
    Bytes n(129, 0xc3);
    n[0] = 0;
    const Bytes der = sequence({n, {1, 0, 1}});
    Bytes longer = der;
    longer.push_back(0x30);
    Key key;
    EXPECT_EQ(taken(E_ASN1_GetRSAPublicKey, static_cast<E_RSA_KEY*>(&key), longer), 140) << "what follows is the caller's";
    EXPECT_EQ(E_ASN1_GetRSAPublicKeyBytes(&key), 140);
    EXPECT_EQ(written([&](std::uint8_t* out) { return E_ASN1_PutRSAPublicKey(&key, out); }), der);
}

TEST(RsaDer, MembersFillTheirStoragesAndNoMore) {
    constexpr std::size_t kBytes[] = {600, 4, 600, 300, 300, 300, 300, 300};
    std::vector<Bytes> contents = {{0}};
    for (const std::size_t bytes : kBytes) {
        contents.emplace_back(1 + bytes, 0xff);
        contents.back()[0] = 0;
    }
    Key key;
    const Bytes full = sequence(contents);
    EXPECT_EQ(taken<E_RSA_KEY>(E_ASN1_GetRSAPrivateKey, &key, full), static_cast<std::ptrdiff_t>(full.size()));
    EXPECT_EQ(written([&](std::uint8_t* out) { return E_ASN1_PutRSAPrivateKey(&key, out); }), full);
    EXPECT_EQ(E_ASN1_GetRSAPrivateKeyBytes(&key), static_cast<std::int32_t>(full.size()));

    for (std::size_t i = 0; i < std::size(kBytes); ++i) {
        std::vector<Bytes> larger = contents;
        larger[1 + i][0] = 1;
        Key fresh;
        EXPECT_EQ(taken<E_RSA_KEY>(E_ASN1_GetRSAPrivateKey, &fresh, sequence(larger)), 0) << "member " << i;
        const ENUM* const members[] = {&fresh.n, &fresh.e, &fresh.d, &fresh.p, &fresh.q, &fresh.dP, &fresh.dQ, &fresh.qInv};
        for (std::size_t k = 0; k < std::size(members); ++k) {
            const std::int32_t words = k < i ? static_cast<std::int32_t>(kBytes[k] / 4) : 0;
            EXPECT_EQ(members[k]->length, words) << "members before the refused one are in place, not it and what follows";
            EXPECT_EQ(members[k]->words[0], words == 0 ? 0 : 0xffffffff);
        }
    }
    contents[0] = {1};
    EXPECT_EQ(taken<E_RSA_KEY>(E_ASN1_GetRSAPrivateKey, &key, sequence(contents)), 0) << "version";
    key.e.length = 2;
    EXPECT_EQ(E_ASN1_PutRSAPublicKey(&key, nullptr), -1);
}

TEST(IntegerDer, EnumsAreTwosComplements) {
    std::vector<std::unique_ptr<Number>> numbers;
    std::vector<ENUM> values;
    Bytes all;
    for (const Vector& vector : load_vectors("integers.txt")) {
        numbers.push_back(std::make_unique<Number>(vector.text("value").c_str()));
        const ENUM& value = values.emplace_back(**numbers.back());
        const Bytes integer = vector.bytes("der");
        Bytes der;
        append(der, 0x30, integer);
        EXPECT_EQ(to_hex(written([&](std::uint8_t* out) { return E_ASN1_PutENUM(&value, 1, out); })), to_hex(der));
        EXPECT_EQ(E_ASN1_GetENUMBytes(&value, 1), static_cast<std::int32_t>(der.size()));
        all.insert(all.end(), integer.begin(), integer.end());
    }
    Bytes der;
    append(der, 0x30, all);
    const auto count = static_cast<std::uint32_t>(values.size());
    EXPECT_EQ(written([&](std::uint8_t* out) { return E_ASN1_PutENUM(values.data(), count, out); }), der);
    EXPECT_EQ(to_hex(written([&](std::uint8_t* out) { return E_ASN1_PutENUM(values.data(), 0, out); })), "3000");
}

TEST(IntegerDer, U32) {
    const std::pair<std::uint32_t, const char*> rows[] = {{0, "3003020100"},
                                                          {127, "300302017f"},
                                                          {128, "300402020080"},
                                                          {0x12345678, "3006020412345678"},
                                                          {0xffffffff, "3007020500ffffffff"}};
    for (const auto& [value, hex] : rows) {
        const Bytes der = written([value = value](std::uint8_t* out) { return E_ASN1_PutU32(value, out); });
        EXPECT_EQ(to_hex(der), hex);
        EXPECT_EQ(E_ASN1_GetU32Bytes(value), static_cast<std::int32_t>(der.size()));
        std::uint32_t read = 77;
        EXPECT_EQ(taken(E_ASN1_GetU32, &read, der), static_cast<std::ptrdiff_t>(der.size()));
        EXPECT_EQ(read, value);
    }
}

TEST(Der, NullArguments) {
    Key key;
    const std::uint8_t der[] = {0x30, 3, 2, 1, 0};
    const std::uint8_t *position = der, *nowhere = nullptr;
    std::uint32_t value = 77;
    EXPECT_EQ(E_ASN1_PutRSAPublicKey(nullptr, nullptr), 0);
    EXPECT_EQ(E_ASN1_GetRSAPrivateKeyBytes(nullptr), 0);
    EXPECT_EQ(E_ASN1_PutENUM(nullptr, 5, nullptr), 0);
    E_ASN1_GetU32(nullptr, &position, sizeof der);
    E_ASN1_GetU32(&value, &nowhere, sizeof der);
    E_ASN1_GetU32(&value, nullptr, sizeof der);
    E_ASN1_GetRSAPublicKey(nullptr, &position, sizeof der);
    E_ASN1_GetRSAPublicKey(&key, &nowhere, sizeof der);
    E_ASN1_GetRSAPublicKey(&key, nullptr, sizeof der);
    EXPECT_EQ(position, der);
    EXPECT_EQ(value, 77U);
}

}  // namespace
