// MD5 (RFC 1321), for the library's own use. E_MD4_Init begins it: the initial values are those of MD4.
#pragma once

#include <morvane/hash.h>

namespace morvane::hash {

void md5_update(E_MD5_CTX* ctx, const std::uint8_t* data, std::uint32_t len) noexcept;
void md5_final(E_MD5_CTX* ctx, std::uint8_t* digest) noexcept;  // 16 bytes
void md5(std::uint8_t* digest, const std::uint8_t* data, std::uint32_t len) noexcept;

}  // namespace morvane::hash
