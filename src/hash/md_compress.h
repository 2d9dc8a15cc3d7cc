// The compression functions of MD4 (RFC 1320), MD5 (RFC 1321), RIPEMD-160 and HAS-160: little-endian words, blocks of 64
// bytes. Each folds count blocks, at any alignment, into the words of state: four for MD4 and MD5, five for the others.
#pragma once

#include <cstddef>
#include <cstdint>

namespace morvane::hash {

using MdCompressFn = void(std::uint32_t* state, const std::uint8_t* blocks, std::size_t count);

MdCompressFn md4_compress;
MdCompressFn md5_compress;
MdCompressFn ripemd160_compress;
MdCompressFn has160_compress;

}  // namespace morvane::hash
