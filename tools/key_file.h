// The files that hold keys, as far as all kinds of keys have it in common.
#pragma once

#include "der.h"

#include <string>

namespace morvane::tool {

// What a file holds, in DER or PEM, and of a SubjectPublicKeyInfo (X.509) or PrivateKeyInfo (PKCS #8) its parts.
class KeyFile {
public:
    enum class Wrapping { kNone, kPublic, kPrivate };

    // Throws InputError when it cannot be read, is too long or its PEM text is damaged.
    explicit KeyFile(const std::string& name);

    // Whether the file, if it has no wrapping, may be of the kind of this name. The label of PEM tells.
    bool may_be(std::string_view kind) const;

    Bytes all() const { return *bytes_; }
    Wrapping wrapping() const { return wrapping_; }
    // With a wrapping:
    Bytes algorithm() const { return algorithm_; }    // the content of its OBJECT IDENTIFIER
    Bytes parameters() const { return parameters_; }  // what follows it, whole
    Bytes key() const { return key_; }

private:
    void unwrap_public();
    void unwrap_private();
    bool take_algorithm(Bytes& bytes);

    std::string label_;
    Secret bytes_;
    Wrapping wrapping_ = Wrapping::kNone;
    Bytes algorithm_, parameters_, key_;
};

Secret wrap_public(Bytes algorithm, Bytes parameters, Bytes key);
Secret wrap_private(Bytes algorithm, Bytes parameters, Bytes key);

}  // namespace morvane::tool
