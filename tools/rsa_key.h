// RSA keys: files, generation and signatures.
#pragma once

#include "key.h"

#include <morvane/pk.h>

namespace morvane::tool {

class RsaKey final : public Key {
public:
    explicit RsaKey(KeyPart part);

    KeyPart part() const override { return part_; }
    EncodedKey encode(KeyPart wanted) const override;  // in the forms of PKCS #1
    void tell(Json& json) const override;
    std::vector<std::uint8_t> sign(const SignatureOptions& options, const std::string& input) const override;
    bool verify(const SignatureOptions& options, const std::string& input, Bytes signature) const override;

    E_RSA_KEY* get() const { return record_.get(); }
    Secret der(KeyPart wanted) const;  // the public or the private key, as the toolkit takes it
    std::size_t bits() const;
    std::size_t bytes() const { return (bits() + 7) / 8; }  // of the modulus, and of what a key makes

private:
    struct Wipe {
        void operator()(E_RSA_KEY* key) const;
    };
    std::unique_ptr<E_RSA_KEY, Wipe> record_;
    KeyPart part_;
};

// For the table of kinds.
std::unique_ptr<Key> read_rsa_key(const KeyFile& file);
std::function<std::unique_ptr<Key>()> prepare_rsa_key(const KeyOptions& options, const Key* domain);

}  // namespace morvane::tool
