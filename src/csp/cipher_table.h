// The tables of the block ciphers and stream ciphers, one for each algorithm and mode.
#pragma once

#include <morvane/csp.h>

#include <cstdint>

namespace morvane::csp {

// Makes a key schedule in `record`, which has room for a table's expanded_key_bytes and for the cipher's record.
// `parameter` is RC2's effective bits and RC5's rounds; the others ignore it. False when the cipher has no keys of that
// length.
using SetKeyFn = bool(void* record, const std::uint8_t* key, std::uint32_t key_bytes, std::int32_t parameter) noexcept;

// Enciphers or deciphers len bytes of a stream under the key record's expanded key and moves `chain` on to what follows.
//   in       a last partial block is read whole by ECB and CBC decryption
//   out      ECB and CBC encryption write a last partial block whole; full-block feedback leaves it out
//   written  becomes the number of bytes written
// A len of 0 changes nothing. False when the key record is not there or is shorter than the schedule.
using CipherFn = bool(const CSSM_KEY* key, const std::uint8_t* in, std::uint8_t* out, std::uint32_t len,
                      std::uint32_t* written, std::uint8_t* chain) noexcept;

}  // namespace morvane::csp

// Eight words. All sizes in bytes.
struct CspCipherTable {
    std::uint32_t expanded_key_bytes;  // as the key services count it; for IDEA and RC5 not the size of the record
    std::uint32_t key_bytes;           // 0: variable
    std::uint32_t iv_bytes;            // 0: the mode has no initialisation vector
    std::uint32_t block_bytes;         // 0: a stream cipher
    morvane::csp::SetKeyFn* set_key;
    morvane::csp::CipherFn* encrypt;
    morvane::csp::CipherFn* decrypt;
    std::uint32_t zero;
};

namespace morvane::csp {

struct CipherChoice {
    const CspCipherTable* table;
    std::uint32_t error;  // where table is null: CSP_ERR_UNKNOWN_ALGORITHM or CSP_ERR_UNKNOWN_MODE
};

CipherChoice find_cipher_table(std::uint32_t algorithm, std::uint32_t mode) noexcept;

// What a key's data must have room for: the greater one of the table's expanded_key_bytes and the cipher's record. 0 for an
// unknown algorithm.
std::uint32_t expanded_key_room(std::uint32_t algorithm) noexcept;

}  // namespace morvane::csp
