// Secret keys of the provider.
#include <morvane/cipher.h>
#include <morvane/csp.h>

#include "csp/expect_fails.h"
#include "support/bytes.h"

#include <gtest/gtest.h>
#include <cstring>
#include <set>

namespace {

using namespace morvane::test;

class CspKey : public testing::Test {
protected:
    void begin(std::uint32_t algorithm) {
        session = {};
        session.context_type = CSP_CONTEXT_KEYGEN;
        session.algorithm = algorithm;
        session.attributes = attributes.data();
        attributes.clear();
    }
    void add(std::uint32_t type, std::uint32_t value) {
        CSSM_CONTEXT_ATTRIBUTE attribute{};
        attribute.AttributeType = type;
        attribute.Attribute.Uint32 = value;
        add(attribute);
    }
    void add(std::uint32_t type, const CSSM_DATE* date) {
        CSSM_CONTEXT_ATTRIBUTE attribute{};
        attribute.AttributeType = type;
        attribute.Attribute.Date = date;
        add(attribute);
    }
    void add(const CSSM_CONTEXT_ATTRIBUTE& attribute) {
        attributes.push_back(attribute);
        session.attributes = attributes.data();
        session.number_of_attributes = static_cast<std::uint32_t>(attributes.size());
    }
    std::int32_t generate(const CSSM_DATA* label, CSSM_KEY* key) {
        return CSP_GenerateKey(100, reinterpret_cast<CspHandle>(&session), nullptr, 3, 0x20000000, label, key);
    }
    // The data of a key that the library allocates.
    Bytes generated(std::uint32_t key_bytes) {
        CSSM_DATA label = {key_bytes, bytes.data()};
        CSSM_KEY key{};
        EXPECT_EQ(generate(&label, &key), 0);
        const Bytes data(key.KeyData.Data, key.KeyData.Data + key.KeyData.Length);
        EXPECT_EQ(CSP_FreeKey(100, nullptr, &key), 0);
        EXPECT_EQ(key.KeyData.Data, nullptr);
        return data;
    }

    CspSession session{};
    std::vector<CSSM_CONTEXT_ATTRIBUTE> attributes;
    Bytes bytes = from_hex("000102030405060708090a0b0c0d0e0f");
};

// The record, extended with zeros to the length that the provider gives it.
template <typename Record>
Bytes data_of(const Record& record, std::size_t size = sizeof(Record)) {
    const auto* const first = reinterpret_cast<const std::uint8_t*>(&record);
    Bytes data(first, first + sizeof record);
    data.resize(size);
    return data;
}

TEST_F(CspKey, DataIsTheExpandedKey) {
    const std::uint8_t* const key = bytes.data();
    E_DES_KEY_SCHEDULE des;
    E_DES_KeySchedule(&des, key);
    begin(CSP_ALG_DES);
    EXPECT_EQ(generated(8), data_of(des));
    EXPECT_EQ(generated(16), data_of(des)) << "the first bytes count";

    E_DES3_KEY_SCHEDULE des3;
    E_DES3_KeySchedule(&des3, key);
    begin(CSP_ALG_DES3);
    EXPECT_EQ(generated(16), data_of(des3));

    E_IDEA_KEY_SCHEDULE idea;
    E_IDEA_KeySchedule(&idea, key);
    begin(CSP_ALG_IDEA);
    EXPECT_EQ(generated(16), data_of(idea, 432));

    E_SEED_KEY_SCHEDULE seed;
    E_SEED_KeySchedule(&seed, key);
    begin(CSP_ALG_SEED);
    EXPECT_EQ(generated(16), data_of(seed));

    E_BF_KEY_SCHEDULE blowfish;
    E_BF_KeySchedule(&blowfish, key, 5);
    begin(CSP_ALG_BLOWFISH);
    EXPECT_EQ(generated(5), data_of(blowfish));

    E_RC4_STATE rc4;
    E_RC4_KeySchedule(&rc4, key, 13);
    begin(CSP_ALG_RC4);
    EXPECT_EQ(generated(13), data_of(rc4));

    E_RC2_KEY_SCHEDULE rc2;
    E_RC2_KeySchedule(&rc2, key, 8, 1024);
    begin(CSP_ALG_RC2);
    add(CSP_ATTR_BLOCK_SIZE, 8);
    EXPECT_EQ(generated(16), data_of(rc2));
    E_RC2_KeySchedule(&rc2, key, 8, 40);
    add(CSP_ATTR_EFFECTIVE_BITS, 40);
    EXPECT_EQ(generated(8), data_of(rc2));

    E_RC5_KEY_SCHEDULE rc5;
    E_RC5_KeySchedule(&rc5, key, 16, 16);
    begin(CSP_ALG_RC5);
    EXPECT_EQ(generated(16), data_of(rc5));
    E_RC5_KeySchedule(&rc5, key, 16, 12);
    add(CSP_ATTR_ROUNDS, 12);
    EXPECT_EQ(generated(16), data_of(rc5));
}

TEST_F(CspKey, HeaderSaysWhatItIs) {
    const CSSM_DATE first = {{1, 2}}, last = {{3, 4}};
    begin(CSP_ALG_DES3);
    add(CSP_ATTR_START_DATE, &first);
    add(CSP_ATTR_END_DATE, &last);
    const CSSM_DATA label = {16, bytes.data()};
    Bytes room(300, 0xee);
    CSSM_KEY key;
    std::memset(&key, 0xee, sizeof key);
    key.KeyData = {300, room.data()};
    ASSERT_EQ(generate(&label, &key), 0);
    EXPECT_EQ(key.KeyData.Data, room.data());
    EXPECT_EQ(key.KeyData.Length, 256U);
    EXPECT_EQ(room[256], 0xee);
    CSSM_KEYHEADER expected{};
    expected.BlobType = 2;
    expected.AlgorithmId = CSP_ALG_DES3;
    expected.KeyClass = 2;
    expected.LogicalKeySizeInBits = 128;
    expected.KeyAttr = 0x20000000;
    expected.KeyUsage = 3;
    expected.StartDate = first;
    expected.EndDate = last;
    EXPECT_EQ(std::memcmp(&key.KeyHeader, &expected, sizeof expected), 0);
}

TEST_F(CspKey, IsRandomWithoutALabel) {
    const CSSM_DATA empty = {0, nullptr};
    std::set<std::string> seen;
    begin(CSP_ALG_DES3);
    for (const CSSM_DATA* const label : {static_cast<const CSSM_DATA*>(nullptr), &empty, &empty}) {
        Bytes room(256);
        CSSM_KEY key{};
        key.KeyData = {256, room.data()};
        EXPECT_EQ(generate(label, &key), 0);
        EXPECT_EQ(key.KeyHeader.LogicalKeySizeInBits, 128U);
        seen.insert(to_hex(room.data(), 128));
        seen.insert(to_hex(room.data() + 128, 128));
    }
    EXPECT_EQ(seen.size(), 6U) << "of the schedules of both halves of three keys";

    CSSM_KEY key{};
    begin(CSP_ALG_RC4);
    EXPECT_FAILS(generate(nullptr, &key), CSP_ERR_BAD_KEY);  // how long is not said
    add(CSP_ATTR_BLOCK_SIZE, 256);
    EXPECT_EQ(generate(nullptr, &key), 0);
    EXPECT_EQ(CSP_FreeKey(100, nullptr, &key), 0);
    attributes[0].Attribute.Uint32 = 257;
    EXPECT_FAILS(generate(nullptr, &key), CSP_ERR_BAD_KEY);
}

TEST_F(CspKey, ChecksInOrder) {
    begin(CSP_ALG_SHA1);
    const CSSM_DATA no_data = {8, nullptr}, short_label = {15, bytes.data()}, label = {16, bytes.data()};
    CSSM_KEY key{};
    session.context_type = CSP_CONTEXT_MAC;
    EXPECT_FAILS(CSP_GenerateKey(100, 0, nullptr, 0, 0, nullptr, nullptr), CSP_ERR_NO_CONTEXT);
    EXPECT_FAILS(generate(nullptr, nullptr), CSP_ERR_WRONG_CONTEXT_TYPE);
    session.context_type = CSP_CONTEXT_KEYGEN;
    EXPECT_FAILS(generate(nullptr, nullptr), CSP_ERR_NULL_POINTER);
    EXPECT_FAILS(generate(nullptr, &key), CSP_ERR_UNKNOWN_ALGORITHM);
    begin(CSP_ALG_SEED);
    Bytes room(127);
    key.KeyData = {127, nullptr};
    EXPECT_FAILS(generate(&no_data, &key), CSP_ERR_BAD_KEY);
    EXPECT_FAILS(generate(&short_label, &key), CSP_ERR_BAD_KEY);
    EXPECT_FAILS(generate(&label, &key), CSP_ERR_BAD_DATA);
    key.KeyData.Data = room.data();
    EXPECT_FAILS(generate(&label, &key), CSP_ERR_OUTPUT_TOO_SHORT);
    key.KeyData = {0, nullptr};
    add(CSP_ATTR_BLOCK_SIZE, 8);
    EXPECT_FAILS(generate(&label, &key), CSP_ERR_BAD_KEY);  // SEED has no such keys
    EXPECT_EQ(key.KeyData.Data, nullptr);
    EXPECT_FAILS(CSP_FreeKey(100, nullptr, nullptr), CSP_ERR_NULL_POINTER);
    EXPECT_EQ(CSP_FreeKey(100, nullptr, &key), 0);
}

}  // namespace
