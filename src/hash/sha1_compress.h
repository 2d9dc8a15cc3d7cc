// The compression functions of SHA-1 and SHA-0.
#pragma once

#include "cpu/cpu.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace morvane::hash {

inline constexpr std::size_t kSha1BlockBytes = 64;
inline constexpr std::size_t kSha1DigestBytes = 20;
inline constexpr std::array<std::uint32_t, 5> kSha1Initial = {0x67452301, 0xEFCDAB89, 0x98BADCFE, 0x10325476, 0xC3D2E1F0};

// Folds count blocks of 64 bytes, at any alignment, into the five words of state.
using Sha1CompressFn = void(std::uint32_t* state, const std::uint8_t* blocks, std::size_t count);

Sha1CompressFn sha1_compress_portable;
Sha1CompressFn sha1_compress_sse2;
Sha1CompressFn sha1_compress_sha;  // needs SSSE3, SSE4.1 and the SHA instructions

extern cpu::Dispatch<Sha1CompressFn, 3> sha1_compress;

// SHA-0: no rotation in the message expansion. There is no accelerated form.
Sha1CompressFn sha0_compress;
// The same for one block that is already in host-order words.
void sha0_compress_words(std::uint32_t* state, const std::uint32_t* words);

}  // namespace morvane::hash
