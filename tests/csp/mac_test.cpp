// MACs in pieces: the order of the checks, DES MACs computed by their definition, HMAC-MD5 by published vectors.
#include <morvane/cipher.h>

#include "csp/test_session.h"
#include "support/seeded.h"
#include "support/vectors.h"

#include <algorithm>
#include <cstdlib>

namespace {

using namespace morvane::test;

// A MAC session with a key record of this data. What the record says of itself matters to DES only.
struct Mac : Session {
    Bytes data;
    CSSM_KEY key{};

    Mac(std::uint32_t of, Bytes key_data) : Session(CSP_CONTEXT_MAC, of), data(std::move(key_data)) {
        key.KeyHeader.AlgorithmId = of;
        if (of != CSP_ALG_MD5) key.KeyHeader.BlobType = key.KeyHeader.KeyClass = 2;
        key.KeyData = {size32(data), data.data()};
        with(&key);
    }
    std::int32_t init() { return CSP_GenerateMacInit(100, handle(), nullptr); }
    std::int32_t final(CSSM_DATA& mac) { return CSP_GenerateMacFinal(0xffffffff, handle(), &mac); }
    std::int32_t verify(Bytes expected, std::uint32_t length) {
        const CSSM_DATA mac = {length, expected.data()};
        return CSP_VerifyMacFinal(0, handle(), &mac);
    }
    // Updates of several buffers each, cut anywhere.
    void absorb(Bytes message, Random& random) {
        std::vector<CSSM_DATA> buffers;
        std::uint32_t at = 0;
        do {
            const std::uint32_t now = std::min(random.below(random.below(4) == 0 ? 2000 : 40), size32(message) - at);
            std::uint8_t no_bytes = 0;
            buffers.push_back({now, message.empty() ? &no_bytes : message.data() + at});
            at += now;
            if (at == message.size() || random.below(3) == 0) {
                EXPECT_EQ(CSP_GenerateMacUpdate(0, handle(), buffers.data(), static_cast<std::uint32_t>(buffers.size())),
                          0);
                buffers.clear();
            }
        } while (at < message.size());
    }
    // The MAC in a buffer of the library's.
    Bytes finish() {
        CSSM_DATA mac = {0, nullptr};
        EXPECT_EQ(final(mac), 0);
        Bytes bytes(mac.Data, mac.Data + mac.Length);
        std::free(mac.Data);
        return bytes;
    }
};

constexpr std::uint8_t kUserKey[] = "A key of 16 byte";

Bytes des_key() {
    Bytes bytes(sizeof(E_DES_KEY_SCHEDULE));
    E_DES_KeySchedule(reinterpret_cast<E_DES_KEY_SCHEDULE*>(bytes.data()), kUserKey);
    return bytes;
}
Bytes des3_key() {  // of which the first half counts
    Bytes bytes = des_key();
    bytes.resize(sizeof(E_DES3_KEY_SCHEDULE), 0x77);
    return bytes;
}

// The last block of CBC over the message and 1 to 8 zero bytes; 8 zero bytes alone when it is empty.
Bytes des_mac_by_definition(Bytes message) {
    E_DES_KEY_SCHEDULE schedule;
    E_DES_KeySchedule(&schedule, kUserKey);
    message.resize(message.size() / 8 * 8 + 8);
    const Bytes zero(8);
    E_DES_CBC_Encrypt(message.data(), message.data(), &schedule, size32(message), zero.data());
    return {message.end() - 8, message.end()};
}

TEST(CspMac, InitChecksInOrder) {
    constexpr struct {
        std::uint32_t code;
        void (*mend)(Mac&);
    } kSteps[] = {
        {CSP_ERR_WRONG_CONTEXT_TYPE, [](Mac&) {}},
        {CSP_ERR_KEY_ATTRIBUTE_MISSING, [](Mac& mac) { mac.context_type = CSP_CONTEXT_MAC; }},
        {CSP_ERR_BAD_KEY, [](Mac& mac) { mac.number_of_attributes = 1; }},
        {CSP_ERR_BAD_KEY, [](Mac& mac) { mac.own[0].Attribute.Key = &mac.key; }},
        {CSP_ERR_BAD_KEY, [](Mac& mac) { mac.key.KeyData.Data = mac.data.data(); }},
        {CSP_ERR_BAD_KEY, [](Mac& mac) { mac.key.KeyHeader.BlobType = 2; }},
        {CSP_ERR_BAD_KEY, [](Mac& mac) { mac.key.KeyHeader.Format = 0; }},
        {CSP_ERR_KEY_CLASS, [](Mac& mac) { mac.key.KeyHeader.AlgorithmId = CSP_ALG_SEED; }},
        {CSP_ERR_UNKNOWN_ALGORITHM, [](Mac& mac) { mac.key.KeyHeader.KeyClass = 2; }},
        {CSP_ERR_MAC_KEY_TOO_SHORT, [](Mac& mac) { mac.algorithm = mac.key.KeyHeader.AlgorithmId = CSP_ALG_DES3; }},
    };
    for (const auto init : {CSP_GenerateMacInit, CSP_VerifyMacInit}) {
        EXPECT_FAILS(init(100, 0, nullptr), CSP_ERR_NO_CONTEXT);
        Mac mac(CSP_ALG_SEED, Bytes(256));
        mac.context_type = CSP_CONTEXT_DIGEST;
        mac.number_of_attributes = 0;
        mac.own[0].Attribute.Key = nullptr;
        mac.key.KeyHeader = {};
        mac.key.KeyHeader.Format = 1;
        mac.key.KeyData = {255, nullptr};
        for (const auto& step : kSteps) {
            SCOPED_TRACE(testing::Message() << "step " << &step - kSteps);
            step.mend(mac);
            EXPECT_FAILS(init(100, mac.handle(), nullptr), step.code);
        }
        mac.key.KeyData.Length = 256;
        EXPECT_EQ(init(100, mac.handle(), nullptr), 0);
    }
    Mac des(CSP_ALG_DES, Bytes(127));
    EXPECT_FAILS(des.init(), CSP_ERR_MAC_KEY_TOO_SHORT);
    Mac md5(CSP_ALG_MD5, Bytes(5));
    md5.key.KeyData.Data = nullptr;
    EXPECT_FAILS(md5.init(), CSP_ERR_BAD_KEY);
    md5.own[0].Attribute.Key = nullptr;
    EXPECT_FAILS(md5.init(), CSP_ERR_BAD_KEY);
}

TEST(CspMac, UpdateAndFinalsCheckInOrder) {
    Bytes room(200);
    CSSM_DATA bad = {200, nullptr}, good = {200, room.data()};
    Mac mac(CSP_ALG_DES, des_key());
    for (const auto update : {CSP_GenerateMacUpdate, CSP_VerifyMacUpdate}) {
        EXPECT_FAILS(update(100, 0, nullptr, 0), CSP_ERR_NO_CONTEXT);
        EXPECT_FAILS(update(100, mac.handle(), nullptr, 0), CSP_ERR_NULL_POINTER);
        EXPECT_FAILS(update(100, mac.handle(), &bad, 0), CSP_ERR_NO_BUFFERS);
        EXPECT_FAILS(update(100, mac.handle(), &bad, 1), CSP_ERR_BAD_DATA);
        EXPECT_FAILS(update(100, mac.handle(), &good, 1), CSP_ERR_PRIMITIVE_FAILED);  // nothing was begun
    }
    for (const bool verifying : {false, true}) {
        const auto final = [&](CspHandle handle, CSSM_DATA* output) {
            return verifying ? CSP_VerifyMacFinal(100, handle, output) : CSP_GenerateMacFinal(100, handle, output);
        };
        bad = {8, nullptr};
        EXPECT_FAILS(final(0, nullptr), CSP_ERR_NO_CONTEXT);
        EXPECT_FAILS(final(mac.handle(), nullptr), CSP_ERR_NULL_POINTER);
        EXPECT_FAILS(final(mac.handle(), &bad), CSP_ERR_BAD_DATA);
        EXPECT_FAILS(final(mac.handle(), &good), CSP_ERR_PRIMITIVE_FAILED);
    }
    bad = {0, room.data()};
    EXPECT_FAILS(mac.final(bad), CSP_ERR_BAD_DATA);

    ASSERT_EQ(mac.init(), 0);
    const CSSM_DATA buffers[] = {{3, room.data()}, {0, nullptr}, {8, nullptr}};
    EXPECT_FAILS(CSP_GenerateMacUpdate(100, mac.handle(), buffers, 3), CSP_ERR_BAD_DATA);
    mac.own[0].AttributeType = 0;
    EXPECT_FAILS(CSP_GenerateMacUpdate(100, mac.handle(), &good, 1), CSP_ERR_PRIMITIVE_FAILED);  // the key is gone
    EXPECT_FAILS(mac.final(good), CSP_ERR_PRIMITIVE_FAILED);
    EXPECT_FAILS(CSP_VerifyMacFinal(100, mac.handle(), &good), CSP_ERR_PRIMITIVE_FAILED);
}

// All that is asked of one MAC, however the message is cut. `room` is what a buffer must have.
void expect_mac(Mac& mac, const Bytes& message, const Bytes& expected, std::uint32_t room, Random& random) {
    const bool is_md5 = mac.algorithm == CSP_ALG_MD5;
    const auto feed = [&] {
        ASSERT_EQ((random.below(2) == 0 ? CSP_GenerateMacInit : CSP_VerifyMacInit)(100, mac.handle(), nullptr), 0);
        mac.absorb(message, random);
    };
    for (const std::uint32_t more : {0U, 1U, 900U}) {
        Bytes memory(room + more, 0xee);
        CSSM_DATA output = {room - 1 - more % 2 * 7, memory.data()};
        feed();
        EXPECT_FAILS(mac.final(output), CSP_ERR_OUTPUT_TOO_SHORT);
        EXPECT_EQ(memory, Bytes(room + more, 0xee));
        if (is_md5) {
            EXPECT_EQ(to_hex(mac.finish()), to_hex(expected)) << "the state survives";
        } else {
            EXPECT_NE(mac.finish(), expected) << "the last step has been taken";
        }
        feed();
        output.Length = room + more;
        EXPECT_EQ(mac.final(output), 0);
        EXPECT_EQ(output.Length, expected.size());
        EXPECT_EQ(to_hex(memory), to_hex(expected) + to_hex(Bytes(memory.size() - expected.size(), 0xee)));
        feed();
        EXPECT_EQ(to_hex(mac.finish()), to_hex(expected));
    }
    EXPECT_FAILS(CSP_VerifyMacFinal(100, 0, nullptr), CSP_ERR_NO_CONTEXT);
    for (std::uint32_t i = 0; i <= size32(expected); ++i) {  // each octet changed; none
        Bytes given = expected;
        if (i < expected.size()) given[i] ^= 0x10;
        feed();
        EXPECT_EQ(mac.verify(given, size32(given)), i < expected.size() ? -1 : 0);
        feed();
        EXPECT_EQ(mac.verify(expected, i), is_md5 && i < 16 ? -1 : 0)
            << "of so short a MAC, DES looks at eight all the same";
    }
    EXPECT_EQ(GetError(), CSP_ERR_NO_CONTEXT) << "kept by a MAC that differs";
}

TEST(CspMac, HoweverTheMessageIsCut) {
    Seeded random(20269);
    Mac des(CSP_ALG_DES, des_key()), des3(CSP_ALG_DES3, des3_key());
    for (const std::uint32_t length : {0U, 3U, 8U, 13U, 16U, 600U, 1029U}) {
        SCOPED_TRACE(length);
        const Bytes message = random.bytes(length);
        for (Mac* const mac : {&des, &des3}) expect_mac(*mac, message, des_mac_by_definition(message), 128, random);
        ASSERT_EQ(des.init(), 0);
        EXPECT_EQ(des.finish(), des_mac_by_definition({})) << "no Update at all";
    }
    for (const Vector& vector : load_vectors("hmac_md5.txt")) {
        SCOPED_TRACE(vector.text("mac"));
        Mac mac(CSP_ALG_MD5, vector.bytes("key"));
        expect_mac(mac, vector.bytes("message"), vector.bytes("mac"), 16, random);
    }
}

TEST(CspMac, AtOnceWithASessionOnly) {
    Bytes message = from_text("message"), room(128);
    const CSSM_DATA buffer = {7, message.data()};
    Mac mac(CSP_ALG_DES, des_key());
    CSSM_DATA output = {128, room.data()};
    EXPECT_EQ(CSP_GenerateMac(100, mac.handle(), nullptr, &buffer, 1, &output), 0);
    EXPECT_EQ(to_hex(room.data(), output.Length), to_hex(des_mac_by_definition(message)));
    EXPECT_EQ(CSP_VerifyMac(100, mac.handle(), nullptr, &buffer, 1, &output), 0);
    room[7] ^= 1;
    EXPECT_EQ(CSP_VerifyMac(100, mac.handle(), nullptr, &buffer, 1, &output), -1);

    const CSSM_CONTEXT context = {CSP_CONTEXT_MAC, CSP_ALG_DES, 0, 1, mac.own};
    for (const auto& [handle, code] : {std::pair{CspHandle{0}, CSP_ERR_NO_CONTEXT}, {mac.handle(), CSP_ERR_KEY_CLASS}}) {
        mac.key.KeyHeader.KeyClass = handle == 0 ? 2 : 1;
        EXPECT_FAILS(CSP_GenerateMac(100, handle, &context, &buffer, 1, &output), code);
        EXPECT_FAILS(CSP_VerifyMac(100, handle, &context, &buffer, 1, &output), code);
    }
}

}  // namespace
