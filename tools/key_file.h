// RSA keys and the files that hold them.
#pragma once

#include "secret.h"

#include <morvane/pk.h>

#include <memory>
#include <string>

namespace morvane::tool {

// A key, cleared at the end of its life.
class RsaKey {
public:
    RsaKey();

    E_RSA_KEY* get() const { return record_.get(); }
    std::size_t bits() const;
    std::size_t bytes() const { return (bits() + 7) / 8; }  // of the modulus, and of what a key makes

private:
    struct Wipe {
        void operator()(E_RSA_KEY* key) const;
    };
    std::unique_ptr<E_RSA_KEY, Wipe> record_;
};

enum class KeyPart { kPublic, kPrivate };

// Reads a key in DER or PEM, as PKCS #1 has it or inside a SubjectPublicKeyInfo (X.509) or PrivateKeyInfo (PKCS #8). A
// private key serves where a public one is wanted. Throws InputError.
RsaKey read_rsa_key(const std::string& name, KeyPart wanted);

// In the forms of PKCS #1.
Secret to_der(const RsaKey& key, KeyPart part);
Secret to_pem(const RsaKey& key, KeyPart part);

}  // namespace morvane::tool
