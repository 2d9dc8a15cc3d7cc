#include "ecc/agreement.h"

#include <morvane/ecc_schemes.h>
#include <morvane/hash.h>

#include "base/bytes.h"
#include "bignum/octets.h"

#include <algorithm>

namespace morvane::ecc {

bool agree(SharedSecret& z, std::int32_t curve, const Word* d, const TORVA_V1_POINT& q) noexcept {
    TORVA_V1_POINT point;
    const bool is_done = multiply(point, curve, d, q);
    if (is_done) bignum::words_to_octets(z.items.data(), coordinate_octets(curve), point.x, kWords);
    wipe(&point, sizeof point);
    return is_done;
}

void derive(std::uint8_t* out, std::size_t size, Octets z, Octets shared_info, std::size_t offset) noexcept {
    SecretArray<std::uint8_t, E_SHA1_DIGEST_BYTES> block;
    E_SHA1_CTX hash;
    auto counter = static_cast<std::uint32_t>(offset / E_SHA1_DIGEST_BYTES);
    std::size_t skipped = offset % E_SHA1_DIGEST_BYTES;
    while (size > 0) {
        std::uint8_t counter_octets[4];
        store_be(counter_octets, ++counter);
        E_SHA1_Init(&hash);
        for (const Octets part : {z, Octets(counter_octets), shared_info})
            E_SHA1_Update(&hash, part.data(), static_cast<std::uint32_t>(part.size()));
        E_SHA1_Final(&hash, block.items.data());
        const std::size_t now = std::min(size, E_SHA1_DIGEST_BYTES - skipped);
        copy_bytes(out, block.items.data() + skipped, now);
        out += now;
        size -= now;
        skipped = 0;
    }
    wipe(&hash, sizeof hash);
}

namespace {

constexpr std::int32_t kBadArgument = -1;
constexpr std::int32_t kCannotAgree = -4;

// Reads both keys and agrees.
bool agree(SharedSecret& z, std::int32_t curve, const E_EC_PARAMS* params, const TORVA_V1_OPAQUE8* private_key,
           const TORVA_V1_OPAQUE8* public_key) noexcept {
    Scalar d;
    TORVA_V1_POINT q;
    return read_private_key(d, curve, private_key) && read_public_key(q, curve, params, public_key) &&
           agree(z, curve, d, q);
}

std::optional<Octets> info_of(const TORVA_V1_OPAQUE8* shared_info) noexcept {
    return shared_info == nullptr ? Octets() : octets_of(shared_info);
}

bool can_derive(const TORVA_V1_OPAQUE8* shared_info, std::int32_t length, const TORVA_V1_OPAQUE8* out) noexcept {
    return info_of(shared_info) && length > 0 && has_room(out);
}

void put_key(TORVA_V1_OPAQUE8& out, std::int32_t length, Octets z, const TORVA_V1_OPAQUE8* shared_info) noexcept {
    derive(out.octets, static_cast<std::size_t>(length), z, *info_of(shared_info));
    out.count = length;
}

}  // namespace
}  // namespace morvane::ecc

using namespace morvane::ecc;

std::int32_t TORVA_V1_ECDHPrimitive(std::int32_t curveId, const E_EC_PARAMS* params, const TORVA_V1_OPAQUE8* privateKey,
                                    const TORVA_V1_OPAQUE8* publicPoint, TORVA_V1_OPAQUE8* sharedOut) {
    SharedSecret z;
    if (!has_room(sharedOut) || !agree(z, curveId, params, privateKey, publicPoint)) return kCannotAgree;
    const std::size_t size = coordinate_octets(curveId);
    morvane::copy_bytes(sharedOut->octets, z.items.data(), size);
    sharedOut->count = static_cast<std::int32_t>(size);
    return 0;
}

std::int32_t TORVA_V1_DeriveKeyData(const TORVA_V1_OPAQUE8* secret, const TORVA_V1_OPAQUE8* sharedInfo, std::int32_t length,
                                    TORVA_V1_OPAQUE8* keyOut) {
    const std::optional<Octets> z = octets_of(secret);
    if (!z || z->empty() || !can_derive(sharedInfo, length, keyOut)) return kBadArgument;
    put_key(*keyOut, length, *z, sharedInfo);
    return 0;
}

std::int32_t E_ECC_X9_63_KAS_OPDHS(std::int32_t curveId, const E_EC_PARAMS* params, const TORVA_V1_OPAQUE8* privateKey,
                                   const TORVA_V1_OPAQUE8* publicKey, const TORVA_V1_OPAQUE8* sharedInfo,
                                   std::int32_t length, TORVA_V1_OPAQUE8* keyOut) {
    if (!can_derive(sharedInfo, length, keyOut)) return kBadArgument;
    SharedSecret z;
    if (!agree(z, curveId, params, privateKey, publicKey)) return kCannotAgree;
    put_key(*keyOut, length, {z.items.data(), coordinate_octets(curveId)}, sharedInfo);
    return 0;
}

std::int32_t E_ECC_X9_63_FUMS(std::int32_t curveId, const E_EC_PARAMS* params, const TORVA_V1_OPAQUE8* staticPrivateKey,
                              const TORVA_V1_OPAQUE8* ephemeralPrivateKey, const TORVA_V1_OPAQUE8* staticPublicKey,
                              const TORVA_V1_OPAQUE8* ephemeralPublicKey, const TORVA_V1_OPAQUE8* sharedInfo,
                              std::int32_t length, TORVA_V1_OPAQUE8* keyOut) {
    if (!can_derive(sharedInfo, length, keyOut)) return kBadArgument;
    SharedSecret of_ephemeral, of_static;
    if (!agree(of_ephemeral, curveId, params, ephemeralPrivateKey, ephemeralPublicKey) ||
        !agree(of_static, curveId, params, staticPrivateKey, staticPublicKey)) {
        return kCannotAgree;
    }
    const std::size_t size = coordinate_octets(curveId);
    morvane::SecretArray<std::uint8_t, 2 * kMostCoordinateOctets> z;
    morvane::copy_bytes(z.items.data(), of_ephemeral.items.data(), size);
    morvane::copy_bytes(z.items.data() + size, of_static.items.data(), size);
    put_key(*keyOut, length, {z.items.data(), 2 * size}, sharedInfo);
    return 0;
}
