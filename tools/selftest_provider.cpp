// Self-tests of the provider layer: MACs and encryption, by sessions and by the attributes of a context.
#include "selftest.h"

#include <morvane/cipher.h>
#include <morvane/csp.h>

namespace morvane::tool {
namespace {

// A session with a key record and, for encryption, mode and iv.
class Session {
public:
    Session(std::uint32_t type, std::uint32_t algorithm, Octets key) : key_data_(std::move(key)) {
        key_.KeyHeader.AlgorithmId = algorithm;
        key_.KeyHeader.BlobType = key_.KeyHeader.KeyClass = 2;
        key_.KeyData = {size32(key_data_), key_data_.data()};
        attributes_[0] = {CSP_ATTR_KEY, 0, {}};
        attributes_[0].Attribute.Key = &key_;
        attributes_[1] = {CSP_ATTR_MODE, 0, {CSP_MODE_CBC}};
        attributes_[2] = {CSP_ATTR_INIT_VECTOR, 0, {}};
        attributes_[2].Attribute.Data = &iv_;
        session_.context_type = type;
        session_.algorithm = algorithm;
        session_.number_of_attributes = 3;
        session_.attributes = attributes_;
    }
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
    ~Session() = default;

    CspHandle handle() { return reinterpret_cast<CspHandle>(&session_); }

private:
    Octets key_data_, iv_bytes_ = octets("1234567890abcdef");
    CSSM_DATA iv_ = {size32(iv_bytes_), iv_bytes_.data()};
    CSSM_KEY key_{};
    CSSM_CONTEXT_ATTRIBUTE attributes_[3]{};
    CspSession session_{};
};

template <typename Schedule>
Octets expanded(std::uint32_t (*expand)(Schedule*, const std::uint8_t*), std::string_view key) {
    Octets data(sizeof(Schedule));
    expand(reinterpret_cast<Schedule*>(data.data()), octets(key).data());
    return data;
}

Octets des_key() { return expanded(E_DES_KeySchedule, "0123456789abcdef"); }
// Of which the first half counts in MACs.
Octets des3_key() { return expanded(E_DES3_KeySchedule, "0123456789abcdeffedcba9876543210"); }
Octets md5_key() { return Octets(16, 0x0b); }

struct Mac {
    std::string_view name;
    std::uint32_t algorithm;
    Octets (*key)();
    std::string_view message, mac;
};

// The example of FIPS 113; RFC 2202, section 2.
constexpr Mac kMacs[] = {
    {"mac-des", CSP_ALG_DES, des_key, "7654321 Now is the time for ", "f1d30f6849312ca4"},
    {"mac-des3", CSP_ALG_DES3, des3_key, "7654321 Now is the time for ", "f1d30f6849312ca4"},
    {"mac-md5", CSP_ALG_MD5, md5_key, "Hi There", "9294727a3638bb1c13f48ef8158bfc9d"},
};

bool generates(const Mac& row) {
    Octets message = text_octets(row.message), room(128);
    const CSSM_DATA input = {size32(message), message.data()};
    CSSM_DATA output = {size32(room), room.data()};
    Session session(CSP_CONTEXT_MAC, row.algorithm, row.key());
    if (CSP_GenerateMac(0, session.handle(), nullptr, &input, 1, &output) != 0) return false;
    room.resize(output.Length);
    return room == octets(row.mac);
}

bool verifies(const Mac& row, Octets message) {
    Octets mac = octets(row.mac);
    const CSSM_DATA input = {size32(message), message.data()}, expected = {size32(mac), mac.data()};
    Session session(CSP_CONTEXT_MAC, row.algorithm, row.key());
    return CSP_VerifyMac(0, session.handle(), nullptr, &input, 1, &expected) == 0;
}

// FIPS 81, the example of CBC, in two pieces that end inside a block.
bool enciphers(const Octets& key) {
    Octets plain = text_octets("Now is the time for all "), out(32);
    const CSSM_DATA pieces[] = {{11, plain.data()}, {size32(plain) - 11, plain.data() + 11}};
    const CSSM_DATA room = {size32(out), out.data()};
    Session session(CSP_CONTEXT_SYMMETRIC, CSP_ALG_DES, key);
    std::uint32_t written = 0;
    Octets last(8);
    CSSM_DATA rest = {8, last.data()};
    if (CSP_EncryptData(0, session.handle(), nullptr, pieces, 2, &room, 1, &written, &rest) != 0) return false;
    out.resize(written);
    return out == octets("e5c7cdde872bf27c43e934008c389c0f683788499a7c05f6");
}

}  // namespace

void add_provider_tests(SelfTests& all) {
    for (const Mac& row : kMacs) {
        all.push_back({std::string(row.name), [&row] { return generates(row) && verifies(row, text_octets(row.message)); },
                       [&row] { return !verifies(row, with_changed_bit(text_octets(row.message), 3)); }});
    }
    all.push_back({"provider-encryption", [] { return enciphers(des_key()); },
                   [] { return !enciphers(with_changed_bit(des_key(), 60)); }});
}

}  // namespace morvane::tool
