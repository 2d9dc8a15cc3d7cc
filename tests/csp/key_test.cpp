// Secret keys of the provider.
#include "cipher/cipher_table.h"
#include "csp/test_session.h"

#include <cstring>
#include <set>

namespace {

using namespace morvane::test;

class CspKey : public testing::Test {
protected:
    void begin(std::uint32_t algorithm) { session = Session(CSP_CONTEXT_KEYGEN, algorithm); }
    std::int32_t generate(const CSSM_DATA* label, CSSM_KEY* key) {
        return CSP_GenerateKey(100, session.handle(), nullptr, 3, 0x20000000, label, key);
    }
    // The data of a key that the library allocates, of a label of so many bytes.
    Bytes generated(std::uint32_t key_bytes) {
        CSSM_DATA label = {key_bytes, bytes.data()};
        CSSM_KEY key{};
        EXPECT_EQ(generate(&label, &key), 0);
        const Bytes data(key.KeyData.Data, key.KeyData.Data + key.KeyData.Length);
        EXPECT_EQ(CSP_FreeKey(100, nullptr, &key), 0);
        EXPECT_EQ(key.KeyData.Data, nullptr);
        return data;
    }

    Session session{0, 0};
    Bytes bytes = from_hex("000102030405060708090a0b0c0d0e0f");
};

TEST_F(CspKey, DataIsTheExpandedKey) {
    const struct {
        std::uint32_t algorithm;
        const char* name;
        std::uint32_t label_bytes, key_bytes;  // the first ones of a label count
        std::uint32_t type;                    // of an attribute, 0 for none
        std::int32_t value;                    // for the schedule, also where no attribute says it
    } rows[] = {{CSP_ALG_DES, "des", 16, 8, 0, 0},
                {CSP_ALG_DES3, "two-key triple des", 16, 16, 0, 0},
                {CSP_ALG_IDEA, "idea", 16, 16, 0, 0},
                {CSP_ALG_SEED, "seed", 16, 16, 0, 0},
                {CSP_ALG_BLOWFISH, "blowfish", 5, 5, 0, 0},
                {CSP_ALG_RC2, "rc2", 16, 8, CSP_ATTR_BLOCK_SIZE, 8},
                {CSP_ALG_RC2, "rc2", 8, 8, CSP_ATTR_EFFECTIVE_BITS, 40},
                {CSP_ALG_RC5, "rc5", 16, 16, 0, 16},
                {CSP_ALG_RC5, "rc5", 16, 16, CSP_ATTR_ROUNDS, 12}};
    for (const auto& row : rows) {
        begin(row.algorithm);
        if (row.type != 0) session.with(row.type, static_cast<std::uint32_t>(row.value));
        const bool full = row.type == CSP_ATTR_BLOCK_SIZE;
        Bytes data =
            cipher_named(row.name).scheduled(Bytes(bytes.data(), &bytes[row.key_bytes - 1] + 1), full ? 1024 : row.value);
        if (row.algorithm == CSP_ALG_IDEA) data.resize(432);  // the length that the provider gives it
        EXPECT_EQ(generated(row.label_bytes), data) << row.name;
    }
    Bytes rc4(sizeof(E_RC4_STATE));
    E_RC4_KeySchedule(Record{rc4.data()}, bytes.data(), 13);
    begin(CSP_ALG_RC4);
    EXPECT_EQ(generated(13), rc4);
    begin(CSP_ALG_NULL_CIPHER);
    EXPECT_EQ(generated(5), Bytes());
}

TEST_F(CspKey, HeaderSaysWhatItIs) {
    const CSSM_DATE first = {{1, 2}}, last = {{3, 4}};
    begin(CSP_ALG_DES3);
    session.add(CSP_ATTR_START_DATE).Attribute.Date = &first;
    session.add(CSP_ATTR_END_DATE).Attribute.Date = &last;
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
    session.with(CSP_ATTR_BLOCK_SIZE, 256);
    EXPECT_EQ(generate(nullptr, &key), 0);
    EXPECT_EQ(CSP_FreeKey(100, nullptr, &key), 0);
    session.own[0].Attribute.Uint32 = 257;
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
    session.with(CSP_ATTR_BLOCK_SIZE, 8);
    EXPECT_FAILS(generate(&label, &key), CSP_ERR_BAD_KEY);  // SEED has no such keys
    EXPECT_EQ(key.KeyData.Data, nullptr);
    EXPECT_FAILS(CSP_FreeKey(100, nullptr, nullptr), CSP_ERR_NULL_POINTER);
    EXPECT_EQ(CSP_FreeKey(100, nullptr, &key), 0);
}

}  // namespace
