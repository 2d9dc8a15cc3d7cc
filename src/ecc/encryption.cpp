// Encryption to a public point: the scheme of ANSI X9.63 with SHA-1.
#include <morvane/ecc_schemes.h>
#include <morvane/hash.h>

#include "base/bytes.h"
#include "base/equal.h"
#include "ecc/agreement.h"

#include <algorithm>

namespace {

using namespace morvane;
using namespace morvane::ecc;

constexpr std::int32_t kFailed = -1;
constexpr std::size_t kTagOctets = E_SHA1_DIGEST_BYTES;
constexpr std::size_t kChunk = std::size_t{50} * E_SHA1_DIGEST_BYTES;  // whole digests of the derived key

using Tag = SecretArray<std::uint8_t, kTagOctets>;

// HMAC of RFC 2104 with SHA-1 for a key of 20 octets. E_HMAC_SHA1 is another function, for peers of its own.
void authenticate(Tag& tag, const Tag& key, Octets text) noexcept {
    E_SHA1_CTX hash;
    for (const std::uint8_t pad : {std::uint8_t{0x36}, std::uint8_t{0x5c}}) {
        SecretArray<std::uint8_t, E_SHA1_BLOCK_BYTES> block;
        copy_bytes(block.items.data(), key.items.data(), kTagOctets);
        for (std::uint8_t& octet : block.items) octet ^= pad;
        E_SHA1_Init(&hash);
        E_SHA1_Update(&hash, block.items.data(), E_SHA1_BLOCK_BYTES);
        E_SHA1_Update(&hash, text.data(), static_cast<std::uint32_t>(text.size()));
        E_SHA1_Final(&hash, tag.items.data());
        text = tag.items;  // the outer hash is over the inner one
    }
    wipe(&hash, sizeof hash);
}

// The tag over a masked message, with the octets of the derived key behind those that mask it.
void authenticate_masked(Tag& tag, Octets z, Octets masked) noexcept {
    Tag key;
    derive(key.items.data(), kTagOctets, z, {}, masked.size());
    authenticate(tag, key, masked);
}

void mask(std::uint8_t* out, Octets in, Octets z) noexcept {
    SecretArray<std::uint8_t, kChunk> stream;
    for (std::size_t done = 0; done < in.size(); done += kChunk) {
        const std::size_t now = std::min(in.size() - done, kChunk);
        derive(stream.items.data(), now, z, {}, done);
        for (std::size_t i = 0; i < now; ++i) out[done + i] = static_cast<std::uint8_t>(in[done + i] ^ stream.items[i]);
    }
}

}  // namespace

std::int32_t TORVA_V1_ECC_getLengthOfMessageToBeEncrypted(const E_EC_PARAMS* params, std::int32_t length) {
    const std::int64_t sum = std::int64_t{length} + params->overhead;
    return sum > INT32_MAX ? kFailed : static_cast<std::int32_t>(sum);
}

std::int32_t TORVA_V1_ECC_getLengthOfOriginalMessage(const E_EC_PARAMS* params, const TORVA_V1_OPAQUE8* ciphertext) {
    if (ciphertext->count <= params->overhead) return kFailed;
    return ciphertext->count - params->overhead;
}

std::int32_t E_ECC_Encryption(std::int32_t curveId, const E_EC_PARAMS* params, const TORVA_V1_OPAQUE8* message,
                              TORVA_V1_OPAQUE8* ciphertextOut, const TORVA_V1_OPAQUE8* publicKey) {
    const std::optional<Octets> text = octets_of(message);
    Scalar k;
    TORVA_V1_POINT q, ephemeral;
    if (!text || text->empty() || !has_room(ciphertextOut) || !read_public_key(q, curveId, params, publicKey)) {
        return kFailed;
    }
    const std::size_t point = point_octets(curveId);
    if (text->size() > INT32_MAX - point - kTagOctets) return kFailed;
    SharedSecret shared;
    draw(k, curveId, E_GenerateRandom_X962);
    if (!multiply_base(ephemeral, curveId, k) || !agree(shared, curveId, k, q)) return kFailed;

    const Octets z(shared.items.data(), coordinate_octets(curveId));
    std::uint8_t* const masked = ciphertextOut->octets + point;
    put_point(*ciphertextOut, curveId, ephemeral);
    mask(masked, *text, z);
    Tag tag;
    authenticate_masked(tag, z, {masked, text->size()});
    copy_bytes(masked + text->size(), tag.items.data(), kTagOctets);
    ciphertextOut->count = static_cast<std::int32_t>(point + text->size() + kTagOctets);
    return 0;
}

std::int32_t E_ECC_Decryption(std::int32_t curveId, const E_EC_PARAMS* params, const TORVA_V1_OPAQUE8* ciphertext,
                              TORVA_V1_OPAQUE8* messageOut, const TORVA_V1_OPAQUE8* privateKey) {
    const std::optional<Octets> octets = octets_of(ciphertext);
    Scalar d;
    if (!octets || !has_room(messageOut) || !read_private_key(d, curveId, privateKey)) return kFailed;
    const std::size_t point = point_octets(curveId);
    if (octets->size() <= point + kTagOctets) return kFailed;
    const TORVA_V1_OPAQUE8 ephemeral = {static_cast<std::int32_t>(point), ciphertext->octets};
    const Octets masked = octets->subspan(point, octets->size() - point - kTagOctets);
    TORVA_V1_POINT q;
    SharedSecret shared;
    if (!read_public_key(q, curveId, params, &ephemeral) || !agree(shared, curveId, d, q)) return kFailed;

    const Octets z(shared.items.data(), coordinate_octets(curveId));
    Tag tag;
    authenticate_masked(tag, z, masked);
    if (!are_equal_secrets(tag.items.data(), octets->last(kTagOctets).data(), kTagOctets)) return kFailed;
    mask(messageOut->octets, masked, z);
    messageOut->count = static_cast<std::int32_t>(masked.size());
    return 0;
}
