// The block ciphers as rows of one table, so that a test is written once for all of them.
#pragma once

#include <morvane/cipher.h>

#include "support/bytes.h"

#include <array>
#include <bit>
#include <functional>
#include <ostream>

namespace morvane::test {

// Becomes a pointer to whatever record a function wants.
struct Record {
    void* bytes;
    template <typename Schedule>
    operator Schedule*() const {
        return static_cast<Schedule*>(bytes);
    }
};

enum Mode { kEcb, kCbc, kNoPad, kCfb, kOfb };

// What any mode wants, and leaves out of these what it does not know.
using ModeFunction = std::function<void(const std::uint8_t* in, std::uint8_t* out, Record, std::uint32_t len,
                                        std::uint8_t* iv, std::int32_t width_bits)>;
using BothWays = std::array<ModeFunction, 2>;  // [0] encrypts and [1] decrypts

struct Cipher {
    const char* name;
    const char* vectors;
    std::size_t block;
    std::endian order;   // of the words of a block
    std::size_t key;     // bytes, 0 for any number
    std::size_t record;  // bytes of the schedule
    void (*schedule)(Record, const Bytes& key, std::int32_t number);
    std::array<std::function<void(std::uint32_t*, Record)>, 2> words;
    std::array<BothWays, 5> modes;  // by Mode; empty where there is none

    // number is what RC2 and RC5 take beside the key.
    Bytes scheduled(const Bytes& with, std::int32_t number = 0) const;
    // Blowfish and IDEA take the iv of CBC with the bytes of each half in reverse.
    Bytes cbc_iv(Bytes iv) const;
};

extern const std::vector<Cipher> kCiphers;
const Cipher& cipher_named(std::string_view name);

// One direction of one mode with one key.
struct Job {
    const Cipher& cipher;
    Bytes schedule;
    Mode mode;
    bool decrypting;
    std::int32_t width_bits = 0;  // of CFB and OFB

    bool exists() const { return cipher.modes[mode][0] != nullptr; }
    bool feeds_back() const { return mode == kCfb || mode == kOfb; }
    bool has_good_width() const { return width_bits > 0 && width_bits <= static_cast<std::int32_t>(8 * cipher.block); }
    // The bytes that a call may be cut at.
    std::size_t step() const;
    std::size_t rounded(std::size_t len) const { return (len + cipher.block - 1) / cipher.block * cipher.block; }
    void call(const std::uint8_t* in, std::uint8_t* out, std::size_t len, std::uint8_t* iv) const;
};
std::ostream& operator<<(std::ostream& to, const Job& job);

}  // namespace morvane::test
