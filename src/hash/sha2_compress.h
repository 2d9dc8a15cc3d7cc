// The compression functions of SHA-256 and of SHA-384 and SHA-512 (FIPS 180-2).
#pragma once

#include "cpu/cpu.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace morvane::hash {

// Folds count blocks of 64 bytes, at any alignment, into the eight words of state.
using Sha256CompressFn = void(std::uint32_t* state, const std::uint8_t* blocks, std::size_t count);
Sha256CompressFn sha256_compress_portable;
Sha256CompressFn sha256_compress_sha;  // needs SSSE3, SSE4.1 and the SHA instructions
extern cpu::Dispatch<Sha256CompressFn, 2> sha256_compress;

// Folds count blocks of 128 bytes into the eight 64-bit words of state, each held as two words, the low one first. The
// first two of the others are built with 64-bit registers only, those with lanes with 32-bit registers only.
using Sha512CompressFn = void(std::uint32_t* state, const std::uint8_t* blocks, std::size_t count);
Sha512CompressFn sha512_compress_portable;
Sha512CompressFn sha512_compress_avx512;  // needs AVX-512, BMI1 and BMI2
Sha512CompressFn sha512_compress_avx2;    // needs AVX2, BMI1 and BMI2
Sha512CompressFn sha512_compress_lanes_avx512;
Sha512CompressFn sha512_compress_lanes_avx2;
Sha512CompressFn sha512_compress_lanes_sse2;
inline constexpr std::size_t kSha512Rows = sizeof(void*) == 8 ? 3 : 4;
extern cpu::Dispatch<Sha512CompressFn, kSha512Rows> sha512_compress;

// The first bits of the fractional parts of the cube roots of the first primes: the constants of the rounds.
alignas(16) extern const std::array<std::uint32_t, 64> kSha256Constants;
extern const std::array<std::uint64_t, 81> kSha512Constants;  // and a zero, for those who read two at a time

}  // namespace morvane::hash
