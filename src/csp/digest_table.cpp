#include "csp/digest_table.h"

#include <morvane/hash.h>

#include "base/wipe.h"
#include "csp/table.h"
#include "hash/md5.h"

#include <cstdlib>

namespace morvane::csp {
namespace {

// A digest primitive on a state of unnamed type.
struct Primitive {
    std::uint32_t algorithm;
    std::uint32_t digest_bytes;
    std::size_t state_bytes;
    void (*init)(void* state);
    void (*update)(void* state, const std::uint8_t* data, std::uint32_t len);
    void (*final)(void* state, std::uint8_t* digest);
};

template <auto Init, auto Update, auto Final, typename Context>
constexpr Primitive primitive(std::uint32_t algorithm, std::uint32_t digest_bytes, void (*)(Context*)) {
    return {
        algorithm,
        digest_bytes,
        sizeof(Context),
        [](void* state) { Init(static_cast<Context*>(state)); },
        [](void* state, const std::uint8_t* data, std::uint32_t len) { Update(static_cast<Context*>(state), data, len); },
        [](void* state, std::uint8_t* digest) { Final(static_cast<Context*>(state), digest); },
    };
}

template <auto Init, auto Update, auto Final>
constexpr Primitive primitive(std::uint32_t algorithm, std::uint32_t digest_bytes) {
    return primitive<Init, Update, Final>(algorithm, digest_bytes, Init);
}

// A data buffer's length is unsigned, HAS-160's is signed: more than it can take goes in by two calls.
void update_has160(E_HAS160_CTX* ctx, const std::uint8_t* data, std::uint32_t len) {
    constexpr std::uint32_t kMost = 0x40000000;
    for (; len > kMost; len -= kMost, data += kMost) E_HAS160_Update(ctx, data, kMost);
    E_HAS160_Update(ctx, data, static_cast<std::int32_t>(len));
}

// MD5 begins as MD4 does: initial value and record are the same, only update and final differ.
constexpr std::array kPrimitives = {
    primitive<E_MD2_Init, E_MD2_Update, E_MD2_Final>(CSP_ALG_MD2, E_MD2_DIGEST_BYTES),
    primitive<E_MD4_Init, E_MD4_Update, E_MD4_Final>(CSP_ALG_MD4, E_MD4_DIGEST_BYTES),
    primitive<E_MD4_Init, hash::md5_update, hash::md5_final>(CSP_ALG_MD5, E_MD4_DIGEST_BYTES),
    primitive<E_SHA1_Init, E_SHA1_Update, E_SHA1_Final>(CSP_ALG_SHA1, E_SHA1_DIGEST_BYTES),
    primitive<E_RIPEMD160_Init, E_RIPEMD160_Update, E_RIPEMD160_Final>(CSP_ALG_RIPEMD160, E_RIPEMD160_DIGEST_BYTES),
    primitive<E_HAS160_Init, update_has160, E_HAS160_Final>(CSP_ALG_HAS160, E_HAS160_DIGEST_BYTES),
};
static_assert(is_sorted_table(kPrimitives));

// The operations look their primitive up by the identifier they are given. A signature identifier has none, though it has
// a digest table: a digest begun under it hashes nothing and fails nowhere. Programs rely on its silence.

bool init_digest(std::uint32_t algorithm, void** state) noexcept {
    *state = nullptr;
    const Primitive* const digest = find_row(kPrimitives, algorithm);
    if (digest == nullptr) return true;
    *state = std::calloc(1, digest->state_bytes);
    if (*state == nullptr) return false;
    digest->init(*state);
    return true;
}

bool update_digest(const CSSM_DATA& data, void* state, std::uint32_t algorithm) noexcept {
    const Primitive* const digest = find_row(kPrimitives, algorithm);
    if (digest == nullptr) return true;
    if (state == nullptr) return false;
    digest->update(state, data.Data, data.Length);
    return true;
}

bool final_digest(CSSM_DATA& output, void* state, std::uint32_t algorithm) noexcept {
    const Primitive* const digest = find_row(kPrimitives, algorithm);
    if (digest == nullptr) return true;
    if (state == nullptr) return false;
    digest->final(state, output.Data);
    output.Length = digest->digest_bytes;
    wipe(state, digest->state_bytes);
    std::free(state);
    return true;
}

constexpr CspDigestTable kDigest16 = {16, init_digest, update_digest, final_digest};
constexpr CspDigestTable kDigest20 = {20, init_digest, update_digest, final_digest};

struct Selection {
    std::uint32_t algorithm;
    const CspDigestTable* table;
};

constexpr std::array kSelections = {
    Selection{CSP_ALG_MD2, &kDigest16},
    Selection{CSP_ALG_MD4, &kDigest16},
    Selection{CSP_ALG_MD5, &kDigest16},
    Selection{CSP_ALG_SHA1, &kDigest20},
    Selection{CSP_ALG_RIPEMD160, &kDigest20},
    Selection{CSP_ALG_MD5_WITH_RSA, &kDigest16},
    Selection{CSP_ALG_MD2_WITH_RSA, &kDigest16},
    Selection{CSP_ALG_SHA1_WITH_RSA, &kDigest20},
    Selection{CSP_ALG_SHA1_WITH_DSA, &kDigest20},
    Selection{CSP_ALG_HAS160, &kDigest20},
    Selection{CSP_ALG_HAS160_WITH_KCDSA, &kDigest20},
};
static_assert(is_sorted_table(kSelections));

}  // namespace

const CspDigestTable* find_digest_table(std::uint32_t algorithm) noexcept {
    const Selection* const row = find_row(kSelections, algorithm);
    return row == nullptr ? nullptr : row->table;
}

}  // namespace morvane::csp
