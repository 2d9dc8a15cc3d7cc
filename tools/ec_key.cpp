#include "ec_key.h"

#include "usage.h"

#include <array>

namespace morvane::tool {
namespace {

using toolkit::In;

constexpr std::array<std::uint8_t, 7> kOid = {0x2a, 0x86, 0x48, 0xce, 0x3d, 0x02, 0x01};  // 1.2.840.10045.2.1

}  // namespace

constinit const CurveKey::Kind EcKey::kKind{.name = "EC",
                                            .hash = "sha1",
                                            .oid = kOid,
                                            .bare_private_keys = true,
                                            .inverse = false,
                                            .generate = K_GenerateECCKeyPair};

std::vector<std::uint8_t> EcKey::sign(const SignatureOptions& options, const std::string& input) const {
    const std::vector<std::uint8_t> message = data_to_sign(options, input);
    std::optional<Secret> signature = toolkit::make(KERR_SIGN, K_ECDSASign, curve().id, private_key(), In(message));
    if (!signature) throw KeyError("the library makes no signature with it");
    return std::move(**signature);
}

bool EcKey::verify(const SignatureOptions& options, const std::string& input, Bytes signature) const {
    const std::vector<std::uint8_t> message = data_to_sign(options, input);
    return toolkit::check(KERR_VERIFY, K_ECDSAVerify, curve().id, public_key(), In(message), In(signature));
}

// Leading zeros of the x-coordinate always stay, as others have it.
Secret EcKey::agree(const Key& peer, bool /*padded*/) const {
    const auto* const other = dynamic_cast<const EcKey*>(&peer);
    if (other == nullptr) throw MismatchError("is a key of another kind");
    if (&other->curve() != &curve()) throw MismatchError("is on another curve than the own key");
    std::optional<Secret> secret = toolkit::make(KERR_AGREE, K_ECDH, curve().id, private_key(), other->public_key());
    if (!secret) throw KeyError("the library agrees on no secret with it");
    return std::move(*secret);
}

std::optional<Secret> EcKey::encrypt(Bytes message) const {
    return toolkit::make(KERR_ENCRYPT, K_ECC_Encryption, curve().id, public_key(), In(message));
}

std::optional<Secret> EcKey::decrypt(Bytes ciphertext) const {
    return toolkit::make(KERR_DECRYPT, K_ECC_Decryption, curve().id, private_key(), In(ciphertext));
}

std::unique_ptr<Key> read_ec_key(const KeyFile& file) { return read_curve_key<EcKey>(file); }

std::function<std::unique_ptr<Key>()> prepare_ec_key(const KeyOptions& options, const Key* domain) {
    return prepare_curve_key<EcKey>(options, domain);
}

}  // namespace morvane::tool
