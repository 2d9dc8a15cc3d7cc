#include "pk/hash_select.h"

#include <morvane/hash.h>

#include "base/bytes.h"
#include "base/wipe.h"
#include "hash/md5.h"

#include <algorithm>
#include <iterator>

namespace morvane::pk {
namespace {

struct Hash {
    std::int32_t id;
    std::size_t digest_bytes;
    std::size_t field_bytes;
    void (*run)(std::uint8_t* out, std::initializer_list<Octets> parts);
};

// Hashes and wipes the context: what the parts hold may be the seed that hides a message.
template <auto Init, auto Update, auto Final, typename Context>
constexpr Hash hash(std::int32_t id, std::size_t digest_bytes, std::size_t field_bytes, void (*)(Context*)) {
    return {id, digest_bytes, field_bytes, [](std::uint8_t* out, std::initializer_list<Octets> parts) {
                Context ctx{};
                Init(&ctx);
                for (const Octets part : parts) Update(&ctx, part.data(), static_cast<std::uint32_t>(part.size()));
                Final(&ctx, out);
                wipe(&ctx, sizeof ctx);
            }};
}

template <auto Init, auto Update, auto Final>
constexpr Hash hash(std::int32_t id, std::size_t digest_bytes, std::size_t field_bytes) {
    return hash<Init, Update, Final>(id, digest_bytes, field_bytes, Init);
}

// No message here is longer than a signed length says.
void update_has160(E_HAS160_CTX* ctx, const std::uint8_t* data, std::uint32_t len) {
    E_HAS160_Update(ctx, data, static_cast<std::int32_t>(len));
}

// SHA-1 comes last: it answers to all numbers that are not listed. MD5's field is as long as SHA-1's.
constexpr Hash kHashes[] = {
    hash<E_MD4_Init, hash::md5_update, hash::md5_final>(1, 16, 20),
    hash<E_HAS160_Init, update_has160, E_HAS160_Final>(5, E_HAS160_DIGEST_BYTES, 20),
    hash<E_SHA256_Init, E_SHA256_Update, E_SHA256_Final>(6, E_SHA256_DIGEST_BYTES, 32),
    hash<E_SHA384_Init, E_SHA384_Update, E_SHA384_Final>(7, E_SHA384_DIGEST_BYTES, 48),
    hash<E_SHA512_Init, E_SHA512_Update, E_SHA512_Final>(8, E_SHA512_DIGEST_BYTES, kMaxFieldBytes),
    hash<E_SHA1_Init, E_SHA1_Update, E_SHA1_Final>(kSha1, E_SHA1_DIGEST_BYTES, 20),
};

const Hash& find_hash(std::int32_t id) noexcept {
    const Hash* const last = std::end(kHashes) - 1;
    return *std::find_if(std::begin(kHashes), last, [&](const Hash& row) { return row.id == id; });
}

}  // namespace

std::size_t field_bytes(std::int32_t hash) noexcept { return find_hash(hash).field_bytes; }

std::size_t digest(std::int32_t hash, std::span<std::uint8_t> out, std::initializer_list<Octets> parts) noexcept {
    const Hash& row = find_hash(hash);
    if (out.size() < row.digest_bytes) return 0;
    row.run(out.data(), parts);
    return row.digest_bytes;
}

void fill_field(std::int32_t hash, std::uint8_t* field, std::initializer_list<Octets> parts) noexcept {
    const std::span<std::uint8_t> room(field, field_bytes(hash));
    std::fill(room.begin() + static_cast<std::ptrdiff_t>(digest(hash, room, parts)), room.end(), std::uint8_t{0});
}

void apply_mgf1(std::int32_t hash, std::span<std::uint8_t> text, Octets seed) noexcept {
    const std::size_t step = field_bytes(hash);
    SecretArray<std::uint8_t, kMaxFieldBytes> block;
    std::uint8_t counter[4];
    std::uint32_t count = 0;
    for (std::size_t done = 0; done < text.size(); done += step) {
        store_be(counter, count++);
        fill_field(hash, block.items.data(), {seed, counter});
        const std::size_t size = std::min(step, text.size() - done);
        for (std::size_t i = 0; i < size; ++i) text[done + i] ^= block.items[i];
    }
}

}  // namespace morvane::pk
