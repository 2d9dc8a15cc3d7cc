#include "toolkit/digest_info.h"

#include <morvane/hash.h>

#include <algorithm>
#include <initializer_list>
#include <iterator>

namespace morvane::toolkit {
namespace {

struct Hash {
    std::uint32_t selector;
    std::uint8_t oid_size;
    std::uint8_t oid[9];
};

constexpr Hash kHashes[] = {
    {K_HASH_MD2, 8, {0x2a, 0x86, 0x48, 0x86, 0xf7, 0x0d, 2, 2}},  // 1.2.840.113549.2.2
    {K_HASH_MD5, 8, {0x2a, 0x86, 0x48, 0x86, 0xf7, 0x0d, 2, 5}},
    {K_HASH_SHA1, 5, {0x2b, 14, 3, 2, 26}},  // 1.3.14.3.2.26
    {K_HASH_MD4, 8, {0x2a, 0x86, 0x48, 0x86, 0xf7, 0x0d, 2, 4}},
    {K_HASH_RIPEMD160, 5, {0x2b, 36, 3, 2, 1}},                      // 1.3.36.3.2.1
    {K_HASH_HAS160, 8, {0x2a, 0x83, 0x1a, 0x8c, 0x9a, 0x44, 1, 2}},  // 1.2.410.200004.1.2
    {K_SIGN_SHA256, 9, {0x60, 0x86, 0x48, 1, 0x65, 3, 4, 2, 1}},     // 2.16.840.1.101.3.4.2.1
    {K_SIGN_SHA384, 9, {0x60, 0x86, 0x48, 1, 0x65, 3, 4, 2, 2}},
    {K_SIGN_SHA512, 9, {0x60, 0x86, 0x48, 1, 0x65, 3, 4, 2, 3}},
};

constexpr std::uint32_t kMostDigestBytes = E_SHA512_DIGEST_BYTES;

// The digest's length, 0 if there is no memory.
std::uint32_t digest(std::uint8_t* out, K_CONTEXT* context, std::uint32_t selector, const CSSM_DATA& message) noexcept {
    constexpr decltype(E_SHA256)* kSha2[] = {E_SHA256, E_SHA384, E_SHA512};
    if (selector >= K_SIGN_SHA256) {
        std::uint32_t length = 0;
        kSha2[selector - K_SIGN_SHA256](out, &length, message.Data, message.Length);
        return length;
    }
    CSSM_DATA made = {0, nullptr};
    if (hash_message(context, selector, message, made) != 0) return 0;
    copy_bytes(out, made.Data, made.Length);
    K_free(context, made.Data);
    return made.Length;
}

}  // namespace

std::uint32_t DigestInfo::set(K_CONTEXT* context, std::uint32_t selector, const CSSM_DATA& message,
                              std::uint32_t refused) noexcept {
    const Hash* const hash = std::ranges::find(kHashes, selector, &Hash::selector);
    if (hash == std::end(kHashes)) return refused;
    std::uint8_t value[kMostDigestBytes];
    const std::uint32_t length = digest(value, context, selector, message);
    if (length == 0) return KERR_MEMORY;
    size = 0;
    const auto put = [this](std::size_t octet) { bytes[size++] = static_cast<std::uint8_t>(octet); };
    // SEQUENCE { SEQUENCE { OBJECT IDENTIFIER, NULL }, OCTET STRING }
    const std::size_t algorithm = 2U + hash->oid_size + 2U;
    for (const std::size_t octet : {std::size_t{0x30}, 2 + algorithm + 2 + length, std::size_t{0x30}, algorithm,
                                    std::size_t{0x06}, std::size_t{hash->oid_size}}) {
        put(octet);
    }
    for (std::size_t i = 0; i < hash->oid_size; ++i) put(hash->oid[i]);
    for (const std::size_t octet : {0x05U, 0x00U, 0x04U, length}) put(octet);
    for (std::size_t i = 0; i < length; ++i) put(value[i]);
    return 0;
}

}  // namespace morvane::toolkit
