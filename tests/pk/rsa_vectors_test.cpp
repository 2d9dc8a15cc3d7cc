// RSA by published vectors, and by encoded messages laid out by another program.
#include "pk/rsa_key.h"

namespace {

using namespace morvane::test;

// Calls with (key, record) for every record of a file that is not a key.
template <typename Use>
void for_records(const std::string& file, Use use) {
    RsaKey key;
    std::size_t number = 0;
    for (const Vector& record : load_vectors(file)) {
        SCOPED_TRACE(file + ", record " + std::to_string(++number));
        if (record.has("n")) {
            key = RsaKey(record);
        } else {
            use(key, record);
        }
    }
}

std::int32_t number_in(const Vector& record, const char* name) { return std::stoi(record.text(name)); }

TEST(RsaVectors, Pkcs1Signatures) {
    for_records("rsa_pkcs1_sign.txt", [](RsaKey& key, const Vector& record) {
        const Bytes info = record.bytes("info");
        const Bytes sig = record.bytes("block");
        EXPECT_EQ(E_RSA_Verify(info.data(), length_of(info), sig.data(), length_of(sig), key), 1);
        EXPECT_EQ(outcome_of([&](auto* out) { return E_RSA_Public_Decrypt(out, out, length_of(sig), key); }, sig),
                  message_outcome(info));
        if (key->d.length == 0) return;
        EXPECT_EQ(outcome_of([&](auto* out) { return E_RSA_Private_Encrypt(out, out, length_of(info), key); }, info),
                  message_outcome(sig));
    });
}

TEST(RsaVectors, Pkcs1Encryption) {
    for_records("rsa_pkcs1_crypt.txt", [](RsaKey& key, const Vector& record) {
        const Bytes block = record.bytes("block");
        EXPECT_EQ(outcome_of([&](auto* out) { return E_RSA_Private_Decrypt(out, out, length_of(block), key); }, block),
                  message_outcome(record.bytes("message")));
    });
}

TEST(RsaVectors, Oaep) {
    for_records("rsa_oaep.txt", [](RsaKey& key, const Vector& record) {
        const Bytes block = record.bytes("block");
        const Outcome expected = message_outcome(record.bytes("message"));
        const std::int32_t size = length_of(block);
        EXPECT_EQ(outcome_of([&](auto* out) { return E_RSAES_OAEP_Decrypt(2, 3, out, out, size, nullptr, 0, key); }, block),
                  expected);
        EXPECT_EQ(outcome_of([&](auto* out) { return E_RSA_Private_Decrypt_OAEP(out, out, size, nullptr, 0, key); }, block),
                  expected);
    });
}

// With 1025 bits, PSS clears no bit of the encoded message; here its top bit must be 0, which half of them have.
TEST(RsaVectors, Pss) {
    int refused = 0;
    for_records("rsa_pss.txt", [&](RsaKey& key, const Vector& record) {
        const Bytes message = record.bytes("message");
        const Bytes sig = record.bytes("block");
        const bool clear = EN_GetFilledBitNum(&key->n) % 8 != 1 || key.enciphered(sig)[1] < 0x80;
        testing::internal::CaptureStdout();
        EXPECT_EQ(E_RSASSA_PSS_Verify(0, 0, message.data(), length_of(message), sig.data(), length_of(sig), 20, key),
                  clear ? 1 : -1);
        EXPECT_EQ(testing::internal::GetCapturedStdout().empty(), clear);
        refused += clear ? 0 : 1;
    });
    EXPECT_GT(refused, 0);
}

TEST(RsaVectors, EncodedMessages) {
    for_records("rsa_encoded.txt", [](RsaKey& key, const Vector& record) {
        const std::string scheme = record.text("scheme");
        const std::int32_t hash = number_in(record, "hash");
        const std::int32_t mgf = number_in(record, "mgf");
        const Bytes message = record.bytes("message");
        const Bytes block =
            scheme == "pss" ? key.deciphered(record.bytes("encoded")) : key.enciphered(record.bytes("encoded"));
        const std::int32_t size = length_of(block);
        testing::internal::CaptureStdout();
        if (scheme == "pss") {
            EXPECT_EQ(E_RSASSA_PSS_Verify(hash, mgf, message.data(), length_of(message), block.data(), size,
                                          number_in(record, "salt"), key),
                      number_in(record, "result"));
        } else {
            const Bytes label = record.bytes("label");
            const Outcome expected = {number_in(record, "result"), number_in(record, "result") < 0 ? Bytes() : message};
            EXPECT_EQ(outcome_of(
                          [&](auto* out) {
                              return scheme == "older"
                                         ? E_RSA_Private_Decrypt_OAEP(out, out, size, label.data(), length_of(label), key)
                                         : E_RSAES_OAEP_Decrypt(hash, mgf, out, out, size, label.data(), length_of(label),
                                                                key);
                          },
                          block),
                      expected);
        }
        EXPECT_EQ(printed_text(testing::internal::GetCapturedStdout()), record.text("text"));
    });
}

}  // namespace
