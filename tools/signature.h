// Signing and verifying files with keys of any kind.
#pragma once

#include "key.h"

namespace morvane::tool {

struct SignatureFiles {
    std::string key, input, signature;
    bool force = false;    // replaces a signature that is there
    bool as_json = false;  // of verifying
};

// Of the one kind of keys, or of any. They throw UsageError, InputError and OutputError.
void sign_file(const SignatureFiles& files, const SignatureOptions& options, const KeyKind* kind);
// Prints what it finds, and throws MismatchError for a bad signature.
void verify_file(const SignatureFiles& files, const SignatureOptions& options, const KeyKind* kind);

}  // namespace morvane::tool
