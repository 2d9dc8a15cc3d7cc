// The ciphers the command knows by name, and the primitives behind each of them.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace morvane::tool {

enum class Mode { kEcb, kCbc, kCfb, kOfb, kStream };
inline constexpr std::size_t kModes = 5;
inline constexpr std::size_t kMaxBlockBytes = 16;

// What a key schedule takes beside the key.
enum class Parameter { kNone, kEffectiveBits, kRounds };

// Enciphers or deciphers whole steps in place: blocks, in CFB and OFB feedback_bits / 8 bytes each, bytes of a stream
// cipher. chain is the iv or what the call before made of it, in the order of bytes that other programs use.
using Transform = void (*)(void* schedule, std::span<std::uint8_t> data, std::uint8_t* chain, int feedback_bits);

// Both are null where the library lacks a mode.
struct Directions {
    Transform encrypt;
    Transform decrypt;
};

using Modes = std::array<Directions, kModes>;

struct Keying {
    std::size_t schedule_bytes;
    void (*set_key)(void* schedule, std::span<const std::uint8_t> key, int parameter);
};

// A cipher whose modes depend on the length of the key has several rows of one name, each for other lengths.
struct Cipher {
    std::string_view name;
    std::size_t block_bytes;  // 1 for a stream cipher
    std::size_t min_key_bytes;
    std::size_t max_key_bytes;
    Parameter parameter;
    std::string_view note;
    Keying keying;
    Modes modes;

    const Directions& in(Mode mode) const { return modes[static_cast<std::size_t>(mode)]; }
    bool takes_key_of(std::size_t bytes) const { return bytes >= min_key_bytes && bytes <= max_key_bytes; }
    std::string key_lengths() const;  // "8", "1-72"
};

std::span<const Cipher> all_ciphers();

// "cbc"; empty for kStream.
std::string_view name_of(Mode mode);

}  // namespace morvane::tool
