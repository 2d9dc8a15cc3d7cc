// Keys for ECDSA, Diffie-Hellman and encryption on curves.
#pragma once

#include "curve_key.h"

namespace morvane::tool {

class EcKey final : public CurveKey {
public:
    EcKey() : CurveKey(kKind) {}

    std::vector<std::uint8_t> sign(const SignatureOptions& options, const std::string& input) const override;
    bool verify(const SignatureOptions& options, const std::string& input, Bytes signature) const override;
    Secret agree(const Key& peer, bool padded) const override;

    // Bytes that encryption adds.
    std::size_t overhead() const { return static_cast<std::size_t>(params()->overhead); }
    // Nothing when the library does not do it: the message is empty; the ciphertext was not made for this key, or is
    // damaged.
    std::optional<Secret> encrypt(Bytes message) const;
    std::optional<Secret> decrypt(Bytes ciphertext) const;

private:
    static const Kind kKind;
};

// For the table of kinds.
std::unique_ptr<Key> read_ec_key(const KeyFile& file);
std::function<std::unique_ptr<Key>()> prepare_ec_key(const KeyOptions& options, const Key* domain);

}  // namespace morvane::tool
