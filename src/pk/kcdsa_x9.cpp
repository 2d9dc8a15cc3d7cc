// KCDSA domains that anybody can verify to be random: TTAS.KO-12.0001, with HAS-160.
#include "pk/kcdsa_x9.h"

#include "bignum/octets.h"
#include "bignum/record.h"
#include "bignum/work_record.h"
#include "pk/domain.h"
#include "pk/group.h"
#include "prime/miller_rabin.h"

#include <morvane/hash.h>
#include <morvane/kcdsa.h>
#include <morvane/random.h>

#include <algorithm>

using namespace morvane::bignum;

namespace morvane::pk {
namespace {

constexpr std::size_t kDigest = E_HAS160_DIGEST_BYTES;
constexpr std::uint32_t kMaxCount = 1U << 24;
constexpr std::int32_t kSeedBits = 160;
constexpr std::int32_t kMinPBits = 1024;
constexpr std::int32_t kMinQBits = 16;
constexpr std::int32_t kMinJBits = 32;

// PPGF(octets): the digests of the octets and a counter of one octet, the first digest at the least significant end, modulo
// 2^bits; with the highest bit set and odd.
void expand(ENUM& x, std::span<const std::uint8_t> octets, std::size_t bits) noexcept {
    std::uint8_t number[4 * kGroupWords + kDigest];
    const std::size_t size = (bits + kDigest * 8 - 1) / (kDigest * 8) * kDigest;
    std::uint8_t counter = 0;
    for (std::size_t at = size; at != 0; ++counter) {
        at -= kDigest;
        E_HAS160_CTX ctx;
        E_HAS160_Init(&ctx);
        E_HAS160_Update(&ctx, octets.data(), static_cast<std::int32_t>(octets.size()));
        E_HAS160_Update(&ctx, &counter, 1);
        E_HAS160_Final(&ctx, number + at);
    }
    const std::size_t words = (bits + 31) / 32;
    octets_to_words(x.words, words, number + (size - std::min(size, 4 * words)), std::min(size, 4 * words));
    const auto top = static_cast<unsigned>((bits - 1) % 32);
    x.words[words - 1] &= (Word{2} << top) - 1;
    x.sign = 0;
    set_length(x, words);
}

void set_ends(ENUM& x, std::size_t bits) noexcept {
    const std::size_t words = (bits + 31) / 32;
    for (std::size_t i = words_in(x); i < words; ++i) x.words[i] = 0;
    x.words[(bits - 1) / 32] |= Word{1} << (bits - 1) % 32;
    x.words[0] |= 1;
    set_length(x, words);
}

bool is_prime(const ENUM& x, prime::Verdict& verdict) noexcept {
    verdict = prime::test(x, false, EN_Random);
    return verdict == prime::Verdict::kPrime;
}

}  // namespace

Seeded domain_of_seed(E_KCDSA_KEY& domain, ENUM& twice_j, std::uint32_t& count, const SeedOctets& seed, std::size_t p_bits,
                      std::size_t q_bits) noexcept {
    WorkRecord j(kGroupWords + 1);
    prime::Verdict verdict{};
    const auto failed = [&verdict] { return verdict == prime::Verdict::kNoMemory ? Seeded::kNoMemory : Seeded::kUnfit; };
    // Four bits of J are given: 1000 at the top.
    expand(*j, seed, p_bits - q_bits - 4);
    set_ends(*j, p_bits - q_bits);
    if (!is_prime(*j, verdict)) return failed();
    EN_LShift1(&twice_j, j.get());

    std::uint8_t counted[sizeof(SeedOctets) + 4];
    std::copy(std::begin(seed), std::end(seed), counted);
    WorkRecord p(2 * kGroupWords + 1);
    for (count = 1; count <= kMaxCount; ++count) {
        for (std::size_t i = 0; i < 4; ++i)
            counted[sizeof(SeedOctets) + i] = static_cast<std::uint8_t>(count >> (24 - 8 * i));
        expand(domain.q, counted, q_bits);
        set_ends(domain.q, q_bits);
        EN_Mul(p.get(), &twice_j, &domain.q);
        EN_AddU32(p.get(), p.get(), 1);
        if (EN_GetFilledBitNum(p.get()) > p_bits) continue;
        if (is_prime(domain.q, verdict) && is_prime(*p, verdict)) {
            EN_Copy(&domain.p, p.get());
            return Seeded::kDone;
        }
        if (verdict == prime::Verdict::kNoMemory) return Seeded::kNoMemory;
    }
    return Seeded::kUnfit;
}

}  // namespace morvane::pk

using namespace morvane::pk;

void E_KCDSA_GenerateX9Key(E_KCDSA_KEY* key, std::int32_t p_bits, std::int32_t q_bits, std::uint8_t* seed,
                           std::uint32_t* count) {
    if (!are_sizes(p_bits, q_bits) || p_bits < kMinPBits || q_bits < kMinQBits || p_bits - q_bits < kMinJBits) return;
    WorkKey made;
    WorkRecord twice_j(kGroupWords + 1);
    WorkRecord random(kSeedBits / 32);
    SeedOctets octets;
    std::uint32_t found = 0;
    Seeded result = Seeded::kUnfit;
    while (result == Seeded::kUnfit) {
        EN_Random(random.get(), kSeedBits, 0, 0);
        words_to_octets(octets, sizeof octets, random->words, words_in(*random));
        result = domain_of_seed(made.key, *twice_j, found, octets, static_cast<std::size_t>(p_bits),
                                static_cast<std::size_t>(q_bits));
    }
    if (result == Seeded::kNoMemory) return;
    do {
        if (!draw_generator(made.key, *twice_j)) return;
    } while (made.key.g.length == 0);
    if (!generate_pair(made.key, q_bits, PublicKey::kOfInverse)) return;
    made.give(*key);
    std::copy(std::begin(octets), std::end(octets), seed);
    *count = found;
}
