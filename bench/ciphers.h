// What all cipher rows share: the ciphers with their keys, the iv and the modes.
//
// The key is set up once and is no part of a message's time; the iv is set for each message. RC4 has no iv: its rows go on
// in one key stream. A key set-up serves both directions: of IDEA, whose subkeys for deciphering are inverses, every side
// makes both halves.
#pragma once

#include "rows.h"

#include <array>
#include <span>
#include <utility>

namespace morvane::bench {

// The beginning of it is the key of every cipher. As three DES keys it is K1 K2 K1, two-key triple DES for peers that know
// only the one with three.
inline constexpr std::uint8_t kKey[24] = {0x13, 0x57, 0x9b, 0xdf, 0x02, 0x46, 0x8a, 0xce, 0x31, 0x75, 0xb9, 0xfd,
                                          0x20, 0x64, 0xa8, 0xec, 0x13, 0x57, 0x9b, 0xdf, 0x02, 0x46, 0x8a, 0xce};
inline constexpr std::uint8_t kThreeKeys[24] = {0x13, 0x57, 0x9b, 0xdf, 0x02, 0x46, 0x8a, 0xce, 0x31, 0x75, 0xb9, 0xfd,
                                                0x20, 0x64, 0xa8, 0xec, 0x6d, 0x2a, 0x19, 0xf8, 0x43, 0xb5, 0xc7, 0x0e};

struct Cipher {
    const char* name;
    std::span<const std::uint8_t> key;
    std::size_t block_bytes;
};

inline constexpr Cipher kDes{"des", std::span(kKey).first(8), 8};
inline constexpr Cipher kDes3{"des3", std::span(kKey).first(16), 8};
inline constexpr Cipher kDes3InThree{"des3", kKey, 8};
inline constexpr Cipher kDes33Key{"des3-3key", kThreeKeys, 8};
inline constexpr Cipher kSeed{"seed", std::span(kKey).first(16), 16};
inline constexpr Cipher kIdea{"idea", std::span(kKey).first(16), 8};
inline constexpr Cipher kBlowfish{"blowfish", std::span(kKey).first(16), 8};
inline constexpr Cipher kRc2{"rc2", std::span(kKey).first(16), 8};
inline constexpr Cipher kRc5{"rc5", std::span(kKey).first(16), 8};
inline constexpr Cipher kRc4{"rc4", std::span(kKey).first(16), 1};

inline constexpr int kRc2Bits = 128;  // of effective key
inline constexpr int kRc5Rounds = 16;

// A shorter block takes the first bytes.
using Iv = std::array<std::uint8_t, 16>;
inline constexpr Iv kIv{0xa0, 0xb1, 0xc2, 0xd3, 0xe4, 0xf5, 0x06, 0x17, 0x28, 0x39, 0x4a, 0x5b, 0x6c, 0x7d, 0x8e, 0x9f};

enum class Mode { kEcb, kCbc, kCfb, kCfb8, kOfb };  // feedback of a whole block, but for kCfb8

struct ModeRow {
    const char* suffix;  // of the primitive
    Mode mode;
    bool encrypt;
};

inline constexpr ModeRow kModes[] = {
    {"-ecb-enc", Mode::kEcb, true},   {"-ecb-dec", Mode::kEcb, false},   {"-cbc-enc", Mode::kCbc, true},
    {"-cbc-dec", Mode::kCbc, false},  {"-cfb-enc", Mode::kCfb, true},    {"-cfb-dec", Mode::kCfb, false},
    {"-cfb8-enc", Mode::kCfb8, true}, {"-cfb8-dec", Mode::kCfb8, false}, {"-ofb", Mode::kOfb, true},
};

// A row of a key set-up; what it works on is captured in the call.
template <typename SetUp>
void add_key_setup(Rows& all, const Cipher& cipher, const char* library, SetUp set_up, bool assembler = false) {
    all.push_back({cipher.name, library,
                   [set_up = std::move(set_up)](std::uint8_t*, const std::uint8_t*, std::size_t) { set_up(); }, Kind::kKey,
                   assembler});
}

}  // namespace morvane::bench
