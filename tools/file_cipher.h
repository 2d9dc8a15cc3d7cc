// Enciphering and deciphering whole inputs of any length.
#pragma once

#include "ciphers.h"
#include "secret.h"

#include <stdexcept>
#include <string>
#include <vector>

namespace morvane::tool {

struct CipherJob {
    const Cipher* cipher = nullptr;
    Mode mode = Mode::kStream;
    bool encrypt = true;
    bool padding = true;    // in ECB and CBC: that of PKCS #5, for any length of a block; the other modes have none
    int feedback_bits = 0;  // in CFB and OFB: a multiple of 8
    int parameter = 0;
    Secret key;
    std::vector<std::uint8_t> iv;  // a block; empty in ECB and for a stream cipher
};

// The input cannot be what was enciphered with that key, iv and cipher. Its text is a complete message.
struct DamageError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// Reads the input and fills the output, each "-" for a standard stream or a file; one file may be both if it is to be
// replaced. Throws InputError, OutputError or DamageError.
void run_cipher(const CipherJob& job, const std::string& input, const std::string& output, bool replace);

}  // namespace morvane::tool
