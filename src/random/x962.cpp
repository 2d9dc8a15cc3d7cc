// The generator of ANSI X9.62 (FIPS 186-2, appendix 3): scalars for a group of given order.
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

constexpr std::uint32_t kRoundOctets = 20;
constexpr std::uint32_t kRoundBits = 8 * kRoundOctets;

// Writes 20 octets for each round and moves the key on.
void expand(std::uint8_t* octets, std::uint32_t rounds, std::uint8_t* key, std::uint32_t& key_len) noexcept {
    SecretArray<std::uint8_t, E_SHA1_BLOCK_BYTES> block;
    SecretArray<std::uint8_t, kRoundOctets> current;
    fit_octets(current.items.data(), kRoundOctets, key, key_len);
    for (std::uint32_t i = 0; i < rounds; ++i, octets += kRoundOctets) {
        copy_bytes(block.items.data(), current.items.data(), kRoundOctets);
        E_MySHA1(octets, block.items.data());
        add_octets(current.items.data(), octets, kRoundOctets, 1);
    }
    key_len = put_minimal(key, current.items.data(), kRoundOctets);
}

}  // namespace

std::uint32_t E_X9_62RandomBytes(std::uint8_t* k, std::uint32_t* k_len, std::uint32_t bits, std::uint8_t* xkey,
                                 std::uint32_t* xkey_len, const std::uint8_t* n, std::uint32_t n_len) {
    *k_len = 0;
    const std::uint32_t rounds = bits / kRoundBits + (bits % kRoundBits != 0 ? 1 : 0);
    WorkRecord limit(n_len / 4 + 1), scalar(std::size_t{rounds} * (kRoundOctets / 4) + 1);
    if (!limit || !scalar) return 0;
    EN_U8ToENUM(limit.get(), n, n_len);
    if (is_zero(*limit)) return 0;
    EN_SubU32(limit.get(), limit.get(), 1);
    if (is_zero(*limit)) return 0;

    expand(k, rounds, xkey, *xkey_len);
    // The division and the shortest form tell a little about how long the numbers are.
    declare_known(k, std::size_t{rounds} * kRoundOctets);
    EN_U8ToENUM(scalar.get(), k, rounds * kRoundOctets);
    if (EN_Mod(scalar.get(), scalar.get(), limit.get()) == 0) return 0;
    EN_AddU32(scalar.get(), scalar.get(), 1);
    *k_len = static_cast<std::uint32_t>(EN_ENUMToU8(k, scalar.get()));
    declare_secret(k, *k_len);
    return *k_len;
}

std::uint32_t E_GenerateRandom_X962(std::uint32_t /*curve*/, std::uint8_t* k, std::uint32_t* k_len, const std::uint8_t* n,
                                    std::uint8_t n_len) {
    WorkRecord random(kRoundOctets / 4);
    EN_Random(random.get(), kRoundBits, 1, 1);
    SecretArray<std::uint8_t, kRoundOctets> xkey;
    words_to_octets(xkey.items.data(), kRoundOctets, random->words, kRoundOctets / 4);
    std::uint32_t xkey_len = kRoundOctets;
    return E_X9_62RandomBytes(k, k_len, 2 * kRoundBits, xkey.items.data(), &xkey_len, n, n_len);
}
