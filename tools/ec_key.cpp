#include "ec_key.h"

#include "command_line.h"

#include <array>

namespace morvane::tool {
namespace {

constexpr std::array<std::uint8_t, 7> kOid = {0x2a, 0x86, 0x48, 0xce, 0x3d, 0x02, 0x01};  // 1.2.840.10045.2.1

}  // namespace

constinit const CurveKey::Kind EcKey::kKind{.name = "EC",
                                            .hash = "sha1",
                                            .oid = kOid,
                                            .bare_private_keys = true,
                                            .inverse = false,
                                            .generate = TORVA_V1_ECC_KeyPairGeneration_X962};

std::vector<std::uint8_t> EcKey::sign(const SignatureOptions& options, const std::string& input) const {
    const std::vector<std::uint8_t> data = data_to_sign(options, input);
    const TORVA_V1_OPAQUE8 message = opaque(data), d = private_key();
    std::vector<std::uint8_t> signature(E_ECDSA_SIGNATURE_OCTETS);
    TORVA_V1_OPAQUE8 out = opaque(signature);
    if (E_ECDSA_Sign(curve().id, params(), &message, &out, &d) != 0) {
        throw KeyError("the library makes no signature with it");
    }
    signature.resize(static_cast<std::size_t>(out.count));
    return signature;
}

bool EcKey::verify(const SignatureOptions& options, const std::string& input, Bytes signature) const {
    const std::vector<std::uint8_t> data = data_to_sign(options, input);
    const TORVA_V1_OPAQUE8 message = opaque(data), block = opaque(signature), point = public_key();
    return E_ECDSA_Verify(curve().id, params(), &message, &block, &point) == 1;
}

// Leading zeros of the x-coordinate always stay, as others have it.
Secret EcKey::agree(const Key& peer, bool /*padded*/) const {
    const auto* const other = dynamic_cast<const EcKey*>(&peer);
    if (other == nullptr) throw MismatchError("is a key of another kind");
    if (&other->curve() != &curve()) throw MismatchError("is on another curve than the own key");
    const TORVA_V1_OPAQUE8 d = private_key(), point = other->public_key();
    Secret secret(std::vector<std::uint8_t>(E_EC_SHARED_OCTETS));
    TORVA_V1_OPAQUE8 out = opaque(*secret);
    if (E_ECC_ECDH_Primitive(curve().id, params(), &d, &point, &out) != 0) {
        throw KeyError("the library agrees on no secret with it");
    }
    (*secret).resize(static_cast<std::size_t>(out.count));
    return secret;
}

std::optional<std::vector<std::uint8_t>> EcKey::encrypt(Bytes message) const {
    const TORVA_V1_OPAQUE8 in = opaque(message), point = public_key();
    std::vector<std::uint8_t> ciphertext(message.size() + overhead());
    TORVA_V1_OPAQUE8 out = opaque(ciphertext);
    if (E_ECC_Encryption(curve().id, params(), &in, &out, &point) != 0) return std::nullopt;
    return ciphertext;
}

std::optional<Secret> EcKey::decrypt(Bytes ciphertext) const {
    if (ciphertext.size() <= overhead()) return std::nullopt;
    const TORVA_V1_OPAQUE8 in = opaque(ciphertext), d = private_key();
    Secret message(std::vector<std::uint8_t>(ciphertext.size() - overhead()));
    TORVA_V1_OPAQUE8 out = opaque(*message);
    if (E_ECC_Decryption(curve().id, params(), &in, &out, &d) != 0) return std::nullopt;
    return message;
}

std::unique_ptr<Key> read_ec_key(const KeyFile& file) { return read_curve_key<EcKey>(file); }

std::function<std::unique_ptr<Key>()> prepare_ec_key(const KeyOptions& options, const Key* domain) {
    return prepare_curve_key<EcKey>(options, domain);
}

}  // namespace morvane::tool
