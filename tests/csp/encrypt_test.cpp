// Encryption and decryption in pieces: the order of the checks, and random calls on every cipher and mode beside the model.
#include "csp/encrypt_model.h"
#include "support/seeded.h"

namespace {

using namespace morvane::test;

TEST(CspEncrypt, AgreesWithTheModelOnRandomCalls) {
    Seeded random(20267);
    std::vector<Kind> kinds = kinds_with_key();
    kinds.push_back({CSP_ALG_NULL_CIPHER});
    for (const Kind& kind : kinds) {
        for (const bool decrypting : {false, true}) try_calls(kind, decrypting, 80, random);
    }
}

TEST(CspEncrypt, InitChecksInOrder) {
    // Everything is wrong at first and is mended step by step.
    constexpr struct {
        std::uint32_t code;
        void (*mend)(Stream&);
    } kSteps[] = {
        {CSP_ERR_KEY_ATTRIBUTE_MISSING, [](Stream&) {}},
        {CSP_ERR_WRONG_CONTEXT_TYPE, [](Stream& s) { s.number_of_attributes = 4; }},
        {CSP_ERR_BAD_KEY, [](Stream& s) { s.context_type = CSP_CONTEXT_SYMMETRIC; }},
        {CSP_ERR_BAD_KEY, [](Stream& s) { s.own[0].Attribute.Key = &s.key; }},
        {CSP_ERR_BAD_KEY, [](Stream& s) { s.key.KeyData.Data = s.key_room.data(); }},
        {CSP_ERR_BAD_KEY, [](Stream& s) { s.key.KeyHeader.BlobType = 2; }},
        {CSP_ERR_BAD_KEY, [](Stream& s) { s.key.KeyHeader.Format = 0; }},
        {CSP_ERR_UNKNOWN_MODE, [](Stream& s) { s.key.KeyHeader.AlgorithmId = CSP_ALG_SHA1; }},
        {CSP_ERR_UNKNOWN_ALGORITHM, [](Stream& s) { s.own[1].AttributeType = CSP_ATTR_MODE; }},
        {CSP_ERR_UNKNOWN_MODE, [](Stream& s) { s.algorithm = s.key.KeyHeader.AlgorithmId = CSP_ALG_SEED; }},
        {CSP_ERR_INIT_VECTOR, [](Stream& s) { s.own[1].Attribute.Uint32 = CSP_MODE_OFB; }},
        {CSP_ERR_INIT_VECTOR, [](Stream& s) { s.own[2].AttributeType = CSP_ATTR_INIT_VECTOR; }},
        {CSP_ERR_INIT_VECTOR, [](Stream& s) { s.own[2].Attribute.Data = &s.iv; }},
        {CSP_ERR_INIT_VECTOR, [](Stream& s) { s.iv.Data = s.iv_bytes.data(); }},
    };
    for (const bool decrypting : {false, true}) {
        Random random(1);
        Stream stream({CSP_ALG_RC4}, decrypting, random);
        EXPECT_FAILS((decrypting ? CSP_DecryptDataInit : CSP_EncryptDataInit)(100, 0, nullptr), CSP_ERR_NO_CONTEXT);
        stream.own[1].AttributeType = stream.own[2].AttributeType = 0;
        EXPECT_FAILS(stream.init(), CSP_ERR_UNKNOWN_MODE);  // RC4 takes any, but wants one
        stream.context_type = CSP_CONTEXT_MAC;
        stream.algorithm = CSP_ALG_SHA1;
        stream.number_of_attributes = 0;
        stream.own[0].Attribute.Key = nullptr;
        stream.key.KeyHeader.BlobType = stream.key.KeyHeader.Format = 1;
        stream.key.KeyData.Data = nullptr;
        stream.iv = {15, nullptr};
        for (const auto& step : kSteps) {
            SCOPED_TRACE(testing::Message() << "step " << &step - kSteps);
            step.mend(stream);
            EXPECT_FAILS(stream.init(), step.code);
        }
        stream.iv.Length = 16;
        EXPECT_EQ(stream.init(), 0);
    }
}

TEST(CspEncrypt, UpdateChecksInOrder) {
    Random random(2);
    for (const bool decrypting : {false, true}) {
        Stream stream(des_cbc(), decrypting, random);
        Bytes room(8);
        std::uint32_t written = kUntouched;
        CSSM_DATA in = {5, nullptr}, out = {4, nullptr};
        const CSSM_DATA huge[] = {{0xffffffff, room.data()}, {1, room.data()}};
        EXPECT_FAILS((decrypting ? CSP_DecryptDataUpdate : CSP_EncryptDataUpdate)(100, 0, nullptr, 0, nullptr, 0, nullptr),
                     CSP_ERR_NO_CONTEXT);
        EXPECT_FAILS(stream.update(nullptr, 0, &out, 0, &written), CSP_ERR_NULL_POINTER);
        EXPECT_FAILS(stream.update(&in, 0, nullptr, 0, &written), CSP_ERR_NULL_POINTER);
        EXPECT_FAILS(stream.update(&in, 0, &out, 0, nullptr), CSP_ERR_NULL_POINTER);
        EXPECT_FAILS(stream.update(&in, 0, &out, 1, &written), CSP_ERR_NO_BUFFERS);
        EXPECT_FAILS(stream.update(&in, 1, &out, 0, &written), CSP_ERR_NO_BUFFERS);
        EXPECT_FAILS(stream.update(&in, 1, &out, 1, &written), CSP_ERR_OUTPUT_TOO_SHORT);
        EXPECT_FAILS(stream.update(huge, 2, &out, 1, &written), CSP_ERR_OUTPUT_TOO_SHORT);
        EXPECT_EQ(written, kUntouched);
        out = {5, room.data()};
        EXPECT_FAILS(stream.update(&in, 1, &out, 1, &written), CSP_ERR_BAD_DATA);
        EXPECT_EQ(written, 0U);
        in = {0, room.data()};
        out = {0, room.data()};
        EXPECT_FAILS(stream.update(&in, 1, &out, 1, &written), CSP_ERR_BAD_DATA);
        out = {5, room.data()};
        EXPECT_FAILS(stream.update(&in, 1, &out, 1, &written), CSP_ERR_PRIMITIVE_FAILED);  // nothing was begun
    }
}

TEST(CspEncrypt, FinalChecksInOrderAndCanBeRepeated) {
    Random random(3);
    for (const bool decrypting : {false, true}) {
        Stream stream(des_cbc(), decrypting, random);
        Bytes room(8), bytes = random.bytes(5);
        CSSM_DATA output = {0, room.data()}, by_library = {0, nullptr};
        EXPECT_FAILS((decrypting ? CSP_DecryptDataFinal : CSP_EncryptDataFinal)(100, 0, nullptr), CSP_ERR_NO_CONTEXT);
        EXPECT_FAILS(stream.final(nullptr), CSP_ERR_NULL_POINTER);
        EXPECT_FAILS(stream.final(&output), CSP_ERR_PRIMITIVE_FAILED);  // nothing was begun
        ASSERT_EQ(stream.init(), 0);
        Model model(stream);
        const CSSM_DATA in = buffer_of(bytes), out = buffer_of(room);
        std::uint32_t written = 0;
        ASSERT_EQ(stream.update(&in, 1, &out, 1, &written), 0);
        model.carried = bytes;
        stream.own[3].Attribute.Uint32 = 9;
        EXPECT_FAILS(stream.final(&output), CSP_ERR_BAD_DATA);
        output = {8, nullptr};
        EXPECT_FAILS(stream.final(&output), CSP_ERR_BAD_DATA);
        output = {7, room.data()};
        EXPECT_FAILS(stream.final(&output), CSP_ERR_OUTPUT_TOO_SHORT);
        stream.own[3].Attribute.Uint32 = 6;
        stream.own[0].AttributeType = 0;
        EXPECT_FAILS(stream.final(&by_library), CSP_ERR_PRIMITIVE_FAILED);  // the key is gone
        EXPECT_EQ(by_library.Data, nullptr);
        stream.own[0].AttributeType = CSP_ATTR_KEY;
        output.Length = 8;
        EXPECT_EQ(stream.final(&output), 0);
        EXPECT_EQ(room, model.final(6).out);
    }
}

TEST(CspEncrypt, AKeyThatIsTooShortOrGoneEndsInFailure) {
    Random random(4);
    for (const Kind& kind : kinds_with_key()) {
        Stream stream(kind, random.below(2) != 0, random);
        SCOPED_TRACE(testing::Message() << "algorithm " << kind.algorithm << ", mode " << kind.mode);
        Bytes in = random.bytes(16), out(19, 0xee);
        const CSSM_DATA three = {3, in.data()}, whole = buffer_of(in), room = buffer_of(out);
        const Bytes kept = kind.block() == 0 ? Bytes() : Bytes(in.data(), in.data() + 3);
        std::uint32_t written = kUntouched;
        --stream.key.KeyData.Length;
        ASSERT_EQ(stream.init(), 0);
        expect_code(stream.update(&three, 1, &room, 1, &written), kept.empty() ? CSP_ERR_PRIMITIVE_FAILED : 0);
        EXPECT_FAILS(stream.update(&whole, 1, &room, 1, &written), CSP_ERR_PRIMITIVE_FAILED);
        ++stream.key.KeyData.Length;
        stream.own[0].AttributeType = 0;
        EXPECT_FAILS(stream.update(&whole, 1, &room, 1, &written), CSP_ERR_PRIMITIVE_FAILED);
        EXPECT_EQ(written, 0U);
        EXPECT_EQ(out, Bytes(19, 0xee));
        EXPECT_EQ(stream.kept(), kept);
    }
}

TEST(CspEncrypt, AtOnceWithASessionOnly) {
    Random random(5);
    for (const bool decrypting : {false, true}) {
        Stream stream(des_cbc(), decrypting, random);
        stream.own[3].Attribute.Uint32 = 6;
        Bytes in = random.bytes(20), out(20), rest(8);
        const CSSM_DATA from = buffer_of(in), to = buffer_of(out);
        CSSM_DATA remainder = buffer_of(rest);
        std::uint32_t written = 0;
        const auto at_once = [&](CspHandle handle, const CSSM_CONTEXT* context) {
            return (decrypting ? CSP_DecryptData : CSP_EncryptData)(100, handle, context, &from, 1, &to, 1, &written,
                                                                    &remainder);
        };
        EXPECT_EQ(at_once(stream.handle(), nullptr), 0);
        Model model(stream);
        EXPECT_EQ(Bytes(out.data(), out.data() + written), model.update({from}, {to}).out);
        EXPECT_EQ(rest, model.final(6).out);

        const CSSM_CONTEXT context = {CSP_CONTEXT_SYMMETRIC, CSP_ALG_DES, 0, 4, stream.own};
        EXPECT_FAILS(at_once(0, &context), CSP_ERR_NO_CONTEXT);  // of Update: Init had the context
        stream.key.KeyHeader.Format = 1;
        EXPECT_FAILS(at_once(stream.handle(), &context), CSP_ERR_BAD_KEY);
    }
}

}  // namespace
