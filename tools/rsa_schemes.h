// The RSA schemes the command knows by name, over the toolkit and, as toolkit.h says, the primitives.
#pragma once

#include "rsa_key.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace morvane::tool {

struct RsaHash {
    std::string_view name;
    std::int32_t id;                    // the library's number for it
    std::size_t field_bytes;            // what it takes in OAEP and PSS
    std::span<const std::uint8_t> oid;  // content of its OBJECT IDENTIFIER
};

inline constexpr std::uint8_t kOidMd5[] = {0x2a, 0x86, 0x48, 0x86, 0xf7, 0x0d, 0x02, 0x05};
inline constexpr std::uint8_t kOidSha1[] = {0x2b, 0x0e, 0x03, 0x02, 0x1a};
inline constexpr std::uint8_t kOidHas160[] = {0x2a, 0x83, 0x1a, 0x8c, 0x9a, 0x44, 0x01, 0x02};
inline constexpr std::uint8_t kOidSha256[] = {0x60, 0x86, 0x48, 0x01, 0x65, 0x03, 0x04, 0x02, 0x01};
inline constexpr std::uint8_t kOidSha384[] = {0x60, 0x86, 0x48, 0x01, 0x65, 0x03, 0x04, 0x02, 0x02};
inline constexpr std::uint8_t kOidSha512[] = {0x60, 0x86, 0x48, 0x01, 0x65, 0x03, 0x04, 0x02, 0x03};

inline constexpr std::int32_t kSha1 = 0;

inline constexpr RsaHash kRsaHashes[] = {
    {"md5", 1, 20, kOidMd5},       {"sha1", kSha1, 20, kOidSha1}, {"has160", 5, 20, kOidHas160},
    {"sha256", 6, 32, kOidSha256}, {"sha384", 7, 48, kOidSha384}, {"sha512", 8, 64, kOidSha512},
};

enum class Padding { kPkcs1, kOaep, kOldOaep, kPss };

struct RsaScheme {
    std::string_view name;
    Padding padding;
    bool enciphers;
    bool signs;
};

inline constexpr RsaScheme kRsaSchemes[] = {
    {"pkcs1", Padding::kPkcs1, true, true},
    {"oaep", Padding::kOaep, true, false},
    {"oaep-sha1-old", Padding::kOldOaep, true, false},
    {"pss", Padding::kPss, false, true},
};

struct RsaJob {
    explicit RsaJob(const RsaKey& its_key) : key(its_key) {}

    Padding padding = Padding::kPkcs1;
    const RsaHash* hash = nullptr;
    const RsaHash* mask_hash = nullptr;
    std::vector<std::uint8_t> label;
    std::int32_t salt_bytes = 0;
    const RsaKey& key;
};

// Of a plaintext, as long as the key has room for one; nothing for a key that is too short for the scheme.
std::optional<std::size_t> most_plain_bytes(const RsaJob& job);

// The plaintext has no more than most_plain_bytes.
Secret rsa_encrypt(const RsaJob& job, std::span<const std::uint8_t> plain);

// Nothing when it is no ciphertext of that key and scheme. Throws std::runtime_error when the key itself is damaged.
std::optional<Secret> rsa_decrypt(const RsaJob& job, std::span<const std::uint8_t> cipher);

// The data is what is signed, but for kPkcs1 its digest. Nothing when the key is too short for the hash and the salt.
// Throws std::runtime_error when the key itself is damaged.
std::optional<Secret> rsa_sign(const RsaJob& job, std::span<const std::uint8_t> data);
bool rsa_verify(const RsaJob& job, std::span<const std::uint8_t> data, std::span<const std::uint8_t> signature);

}  // namespace morvane::tool
