// The generator of KCDSA's standard (TTAS.KO-12.0001) with HAS-160, for EC-KCDSA: scalars for a group of given order.
#include "base/wipe.h"
#include "bignum/octets.h"
#include "bignum/record.h"
#include "bignum/work_record.h"
#include "random/big_endian.h"

#include <morvane/hash.h>
#include <morvane/random.h>

namespace {

using namespace morvane;
using namespace morvane::bignum;
using namespace morvane::random;

constexpr std::size_t kDigest = E_HAS160_DIGEST_BYTES;
constexpr std::size_t kUsualOctets = 256;  // E_GenerateRandom_ECKCDSA needs no heap, which might fail for ever

// Numbers of some bits, in octets; all that follows is modulo a power of two.
struct Width {
    explicit Width(std::size_t of_bits) noexcept
        : octets((of_bits + 7) / 8), mask(static_cast<std::uint8_t>(0xff >> (8 * octets - of_bits))) {}

    std::size_t octets;
    std::uint8_t mask;  // of the first octet
};

using Octets = Work<std::uint8_t, kUsualOctets>;

// PPGF: the digests of seed and counter, the first one at the least significant end, cut to the width.
void expand(Octets& number, const Width& width, const std::uint8_t* seed, std::uint32_t seed_len) noexcept {
    SecretArray<std::uint8_t, kDigest> digest;
    E_HAS160_CTX ctx;
    std::uint8_t counter = 0;
    for (std::size_t left = width.octets; left > 0; ++counter) {
        const std::size_t now = std::min(left, kDigest);
        E_HAS160_Init(&ctx);
        E_HAS160_Update(&ctx, seed, static_cast<std::int32_t>(seed_len));
        E_HAS160_Update(&ctx, &counter, 1);
        E_HAS160_Final(&ctx, digest.items.data());
        left -= now;
        copy_bytes(number.get() + left, digest.items.data() + (kDigest - now), now);
    }
    wipe(&ctx, sizeof ctx);
    number[0] &= width.mask;
}

void add(Octets& sum, const Octets& addend, const Width& width) noexcept {
    add_octets(sum.get(), addend.get(), width.octets);
    sum[0] &= width.mask;
}

}  // namespace

std::uint32_t E_ECKCDSA_RandomBytes(std::uint8_t* k, std::uint32_t* k_len, const std::uint8_t* seed, std::uint32_t seed_len,
                                    std::uint8_t* xkey, std::uint32_t* xkey_len, const std::uint8_t* n,
                                    std::uint32_t n_len) {
    *k_len = 0;
    WorkRecord order(n_len / 4 + 1), scalar(n_len / 4 + 1);
    if (!order || !scalar) return 0;
    EN_U8ToENUM(order.get(), n, n_len);
    const Width width(EN_GetFilledBitNum(order.get()));
    if (width.octets == 0) return 0;
    Octets key(width.octets), from_seed(width.octets), value(width.octets);
    if (!key || !from_seed || !value) return 0;

    fit_octets(key.get(), width.octets, xkey, xkey == nullptr ? 0 : *xkey_len);
    key[0] &= width.mask;
    expand(from_seed, width, seed, seed_len);
    copy_bytes(value.get(), key.get(), width.octets);
    add(value, from_seed, width);
    const auto octets = static_cast<std::uint32_t>(width.octets);
    Octets result(width.octets);
    if (!result) return 0;
    expand(result, width, value.get(), octets);
    // The division and the shortest form tell a little about how long the numbers are.
    declare_known(result.get(), octets);
    EN_U8ToENUM(scalar.get(), result.get(), octets);
    if (EN_Mod(scalar.get(), scalar.get(), order.get()) == 0) return 0;
    *k_len = static_cast<std::uint32_t>(EN_ENUMToU8(k, scalar.get()));
    declare_secret(k, *k_len);

    if (xkey != nullptr) {
        fit_octets(value.get(), width.octets, k, *k_len);
        add(value, from_seed, width);
        expand(result, width, value.get(), octets);
        add(key, result, width);
        *xkey_len = put_minimal(xkey, key.get(), width.octets);
    }
    return *k_len;
}

std::uint32_t E_GenerateRandom_ECKCDSA(std::uint32_t /*curve*/, std::uint8_t* k, std::uint32_t* k_len,
                                       const std::uint8_t* n, std::uint8_t n_len) {
    *k_len = 0;
    const std::uint8_t* const end = n + n_len;
    n = std::find_if(n, end, [](std::uint8_t octet) { return octet != 0; });
    if (n == end || (end - n == 1 && *n == 1)) return 0;  // there is no scalar to find

    constexpr std::size_t kMostOctets = UINT8_MAX;
    constexpr std::int32_t kSeedBits = 160;
    WorkRecord random(kMostOctets / 4 + 1);
    SecretArray<std::uint8_t, kSeedBits / 8> seed;
    SecretArray<std::uint8_t, kMostOctets> xkey;
    const auto order_len = static_cast<std::uint32_t>(end - n);
    while (*k_len == 0) {
        EN_Random(random.get(), kSeedBits, 0, 0);
        words_to_octets(seed.items.data(), kSeedBits / 8, random->words, kSeedBits / 32);
        EN_Random(random.get(), static_cast<std::int32_t>(8 * order_len), 0, 0);
        words_to_octets(xkey.items.data(), order_len, random->words, (order_len + 3) / 4);
        std::uint32_t xkey_len = order_len;
        E_ECKCDSA_RandomBytes(k, k_len, seed.items.data(), kSeedBits / 8, xkey.items.data(), &xkey_len, n, order_len);
    }
    return *k_len;
}
