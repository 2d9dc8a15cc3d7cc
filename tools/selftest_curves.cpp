// Self-tests of the elliptic curves: signatures, agreement, derivation and encryption.
#include "selftest.h"

#include "curve_records.h"

namespace morvane::tool {
namespace {

// Private keys of everybody's, those of tests/ecc/schemes_test.cpp.
constexpr char kPrivate[] = "0123456789abcdeffedcba98765432100f1e2d3c";
constexpr char kNumberK[] = "0102030405060708090a0b0c0d0e0f1011121314";
constexpr char kSigned[] = "abc";
constexpr char kPlain[] = "attack at dawn";

// Made with OpenSSL and, the encryption around its agreement, with Python: the public key of kPrivate, its ECDSA signature,
// another side's public key, the secret that both have, and kPlain enciphered to kPrivate with that side's key; the public
// key of EC-KCDSA and its signature with kNumberK.
struct Row {
    std::int32_t curve;
    std::string_view name, public_key, ecdsa, peer, secret, cipher, eckcdsa_public, eckcdsa;
};

constexpr Row kRows[] = {
    {3, "sect163k1", "04063255b88d84c8642c7feef9e9f1171e760981dd5605a6b3f368a3e5d8cbcf14d6dd427ac18bbba50a04",
     "302e02150283246b561c84b52a18e0437a89e5beb334ab6fa1021503b16005e2f2aece559cc4486b505257d89aa2ab48",
     "040597eb529fcab4eb86aa483ea23f0c7761f81f65e5011e67ee7244bfc1e65b176d369fa96df82c730ec8",
     "06978c83970cb1f7f07110f19c121e0711226d8a53",
     "040597eb529fcab4eb86aa483ea23f0c7761f81f65e5011e67ee7244bfc1e65b176d369fa96df82c730ec85556645bdfe8fc1747"
     "af1877330fd124b369545b635d253c8b55bd796ec136933e56",
     "04029cddd03bb13bab78dee673a021de3aabf5e57b6b01ffef666d1273b63b2d5030dd3bc06a35901ec101",
     "302d04144a2eb03130daffb50d85b7e17b85daa52aa44256041503929cb352821d468c302ac21f20c3fc43a91db974"},
    {5, "c2pnb163v1", "04035f07b7167d9238143be5938ab67f0c94436ae30703a524b176a668cb7555a673419af33a5bb9b51137",
     "302e021503dfe63be4d7bd367e646b3a8c37ce4bc37e325d92021503847457c4dcf5193e1ba3baac1385de641d60eecd",
     "0403f314ca02989d402f1578ab0c1dce91331272a8ba074b7612ea3848d18b410393972037d18ea05fd54d",
     "02c697030104355dfa8a5e9ddee4a2af1b4f485666",
     "0403f314ca02989d402f1578ab0c1dce91331272a8ba074b7612ea3848d18b410393972037d18ea05fd54d7e26af520785cd4fe0"
     "20f5ca3332f5d31957aae18daaa5f6a25c6fbcd702a6fcd286",
     "0406f6444c08559f5830d8577799a1e0cd704a1cc82a023ba331e1853ad2f6832b4e789c464b62d0a679a1",
     "302d041454dcd2a1afd4900f8b4680e126bc8006ceaa28ff04150001d895fe3799b2f5d7c5f349fc3ab4d21f297aec"},
    {7, "secp160r1", "04719ba81e1367d155cf9401e4539356b2ec95bb0cf11e46cd91a6624b1ee963837e4167a2196f9885",
     "302d02143d66c0314ced093c8669dd1e1eb7d14943fe494d0215009be6df38fe6823ae550ebbf21fa424aa1b3c0384",
     "041d3c420f17273dce3d59806976f0acd3ff7956e78d90507614f41d60ac14bb17690b7aa2dbafeb72",
     "53c921e71589c812e20ef443f4549e8b13f19ed0",
     "041d3c420f17273dce3d59806976f0acd3ff7956e78d90507614f41d60ac14bb17690b7aa2dbafeb72b75f62281dc5318fe475f9"
     "492bbad9c6576f9fd6a3d7d27a7100ea7459f25f51004b",
     "04e1ea813c25f6cb46d29487f3a206bcdc11fae84bbc314c9a98a2300b173fd4abbd6dd7050b6348de",
     "302c041448432233d4fa25f90d6f798d5ce0d2a7ec831fb30414a86cd34d2913ef8f36c489d7788d93ec7c270812"},
};

bool verifies_ecdsa(const Row& row, const Octets& message, const Octets& signature) {
    CurveRecord curve(row.curve);
    return E_ECDSA_Verify(curve.id, &curve.params, OctetRecord(message), OctetRecord(signature),
                          OctetRecord(octets(row.public_key))) == 1;
}

bool signs_ecdsa(const Row& row) {
    CurveRecord curve(row.curve);
    const Octets message = text_octets(kSigned);
    OctetRecord signature(Octets(E_ECDSA_SIGNATURE_OCTETS));
    return E_ECDSA_Sign(curve.id, &curve.params, OctetRecord(message), signature, OctetRecord(octets(kPrivate))) == 0 &&
           verifies_ecdsa(row, message, signature.value());
}

bool verifies_eckcdsa(const Row& row, const Octets& message, const Octets& signature) {
    CurveRecord curve(row.curve);
    return E_ECKCDSA_Verify(curve.id, &curve.params, OctetRecord(message), OctetRecord(signature),
                            OctetRecord(octets(row.eckcdsa_public))) == 1;
}

bool signs_eckcdsa(const Row& row) {
    CurveRecord curve(row.curve);
    OctetRecord signature(Octets(E_ECKCDSA_SIGNATURE_OCTETS)), message(text_octets(kSigned)), own(octets(kPrivate));
    OctetRecord point(octets(row.eckcdsa_public));
    return E_ECKCDSA_Sign_givenK(curve.id, &curve.params, message, signature, own, point, OctetRecord(octets(kNumberK))) ==
               0 &&
           signature.value() == octets(row.eckcdsa) &&
           E_ECKCDSA_Sign(curve.id, &curve.params, message, signature, own, point) == 0 &&
           verifies_eckcdsa(row, message.value(), signature.value());
}

bool agrees(const Row& row, const Octets& peer) {
    CurveRecord curve(row.curve);
    OctetRecord secret(Octets(E_EC_SHARED_OCTETS));
    return E_ECC_ECDH_Primitive(curve.id, &curve.params, OctetRecord(octets(kPrivate)), OctetRecord(peer), secret) == 0 &&
           secret.value() == octets(row.secret);
}

bool opens(const Row& row, const Octets& cipher) {
    CurveRecord curve(row.curve);
    OctetRecord plain(Octets(cipher.size()));
    return E_ECC_Decryption(curve.id, &curve.params, OctetRecord(cipher), plain, OctetRecord(octets(kPrivate))) == 0 &&
           plain.value() == text_octets(kPlain);
}

bool enciphers(const Row& row) {
    CurveRecord curve(row.curve);
    OctetRecord cipher(Octets(128));
    return E_ECC_Encryption(curve.id, &curve.params, OctetRecord(text_octets(kPlain)), cipher,
                            OctetRecord(octets(row.public_key))) == 0 &&
           opens(row, cipher.value());
}

// A new pair agrees with the known one from both sides.
bool pair_serves(const Row& row) {
    CurveRecord curve(row.curve);
    OctetRecord own(Octets(E_EC_PRIVATE_KEY_OCTETS)), point(Octets(E_EC_POINT_OCTETS));
    OctetRecord here(Octets(E_EC_SHARED_OCTETS)), there(Octets(E_EC_SHARED_OCTETS));
    return E_ECC_GenerateKeyPair(curve.id, &curve.params, own, point) == 0 &&
           E_ECC_ECDH_Primitive(curve.id, &curve.params, own, OctetRecord(octets(row.public_key)), here) == 0 &&
           E_ECC_ECDH_Primitive(curve.id, &curve.params, OctetRecord(octets(kPrivate)), point, there) == 0 &&
           here.value() == there.value();
}

bool refuses_points_off(const Row& row) {
    CurveRecord curve(row.curve);
    const Octets point = octets(row.public_key);
    return TORVA_V1_IsValidPoint(curve.id, &curve.params, OctetRecord(with_changed_bit(point, point.size() - 1))) != 1;
}

// An example of ANSI X9.63 from NIST CAVP, kdf of SHA-1.
bool derives(Octets secret) {
    OctetRecord key(Octets(16));
    return TORVA_V1_DeriveKeyData(OctetRecord(std::move(secret)), nullptr, 16, key) == 0 &&
           key.value() == octets("bf71dffd8f4d99223936beb46fee8ccc");
}

}  // namespace

void add_curve_tests(SelfTests& all) {
    for (const Row& row : kRows) {
        std::string suffix("-");
        suffix += row.name;
        const Octets message = text_octets(kSigned), changed = with_changed_bit(message, 2);
        const Octets ecdsa = octets(row.ecdsa), eckcdsa = octets(row.eckcdsa), cipher = octets(row.cipher);
        all.push_back(
            {"ec-key-pair" + suffix, [&row] { return pair_serves(row); }, [&row] { return refuses_points_off(row); }});
        all.push_back({"ecdsa" + suffix, [=, &row] { return verifies_ecdsa(row, message, ecdsa) && signs_ecdsa(row); },
                       [=, &row] { return !verifies_ecdsa(row, changed, ecdsa); }});
        all.push_back({"eckcdsa" + suffix,
                       [=, &row] { return verifies_eckcdsa(row, message, eckcdsa) && signs_eckcdsa(row); },
                       [=, &row] { return !verifies_eckcdsa(row, changed, eckcdsa); }});
        all.push_back({"ecdh" + suffix, [&row] { return agrees(row, octets(row.peer)); },
                       [&row] { return !agrees(row, with_changed_bit(octets(row.peer), 20)); }});
        all.push_back({"ec-encryption" + suffix, [=, &row] { return opens(row, cipher) && enciphers(row); },
                       [=, &row] { return !opens(row, with_changed_bit(cipher, cipher.size() - 25)); }});
    }
    const Octets secret = octets("1c7d7b5f0597b03d06a018466ed1a93e30ed4b04dc64ccdd");
    all.push_back(
        {"derivation-x963", [=] { return derives(secret); }, [=] { return !derives(with_changed_bit(secret, 0)); }});
}

}  // namespace morvane::tool
