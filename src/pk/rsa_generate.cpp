// Keys from plain and from safe primes, and the private members from the primes.
#include "bignum/record.h"
#include "bignum/work_record.h"
#include "pk/rsa_key.h"

#include <morvane/prime.h>

#include <numeric>

using namespace morvane::bignum;

namespace morvane::pk {
namespace {

// Primes of 16 bits are the shortest that are always enough. The generators make them so that p - 1 has no odd divisor up
// to 17863: (p - 1) / 2 is itself prime, and an e of 32 bits has no more than two such divisors. Of 8 bits, there is one
// safe prime with the two highest bits set.
constexpr std::int32_t kMinModulusBits = 32;

using GeneratePrime = std::int32_t (*)(ENUM*, std::int32_t);

bool draw_prime(ENUM& prime, std::int32_t bits, Word e, GeneratePrime generate_prime) noexcept {
    do {
        if (generate_prime(&prime, bits) == 0) return false;
    } while (!suits(prime, e));
    return true;
}

void generate(E_RSA_KEY& key, std::int32_t bits, Word e, GeneratePrime generate_prime) noexcept {
    if (bits < kMinModulusBits || bits > kMaxModulusBits || e < 2 || e % 2 == 0) return;
    WorkRecord p(kPrimeWords);
    WorkRecord q(kPrimeWords);
    if (!draw_prime(*p, bits / 2, e, generate_prime)) return;
    do {
        if (!draw_prime(*q, bits - bits / 2, e, generate_prime)) return;
    } while (EN_UComp(p.get(), q.get()) == 0);
    set_key(key, *p, *q, e);
}

// d, dP, dQ and qInv from p, q and e, which are normalised and not 0. False, with nothing written, if there is no d or no
// qInv.
bool set_private_members(E_RSA_KEY& key, const ENUM& p, const ENUM& q, const ENUM& e) noexcept {
    WorkRecord below_p(kPrimeWords);
    WorkRecord below_q(kPrimeWords);
    WorkRecord multiple(2 * kPrimeWords);
    WorkRecord d(2 * kPrimeWords);
    WorkRecord d_p(kPrimeWords);
    WorkRecord d_q(kPrimeWords);
    WorkRecord q_inverse(kPrimeWords);
    EN_SubU32(below_p.get(), &p, 1);
    EN_SubU32(below_q.get(), &q, 1);
    // The least common multiple and not the product: d comes out shorter by some bits, and has always done so.
    if (EN_LCM(multiple.get(), below_p.get(), below_q.get()) == 0) return false;
    if (e.words[0] % 2 == 0) EN_RShift1(multiple.get(), multiple.get());
    EN_Mod_Inv(d.get(), &e, multiple.get());
    EN_Mod_Inv(q_inverse.get(), &q, &p);
    if (is_zero(*d) || is_zero(*q_inverse)) return false;
    if (EN_Mod(d_p.get(), d.get(), below_p.get()) == 0 || EN_Mod(d_q.get(), d.get(), below_q.get()) == 0) return false;
    EN_Copy(&key.d, d.get());
    EN_Copy(&key.dP, d_p.get());
    EN_Copy(&key.dQ, d_q.get());
    EN_Copy(&key.qInv, q_inverse.get());
    return true;
}

// A member's value, without zero words at the top; none if its length does not fit its storage.
template <std::size_t Room>
ENUM value_of(const ENUM& member, const std::uint32_t (&)[Room]) noexcept {
    ENUM value{0, 0, member.words};
    if (words_in(member) <= Room) set_length(value, significant_words(member));
    return value;
}

}  // namespace

bool suits(const ENUM& prime, Word e) noexcept {
    WorkRecord half(words_in(prime));
    if (!half) return false;
    EN_RShift1(half.get(), &prime);
    return std::gcd(EN_ModU32(half.get(), e), e) == 1;
}

bool set_key(E_RSA_KEY& key, const ENUM& p, const ENUM& q, Word e) noexcept {
    if (EN_UComp(&p, &q) < 0) return set_key(key, q, p, e);
    Word e_words[1];
    ENUM exponent{0, 1, e_words};
    EN_U32ToENUM(&exponent, e);
    if (!set_private_members(key, p, q, exponent)) return false;
    EN_Copy(&key.p, &p);
    EN_Copy(&key.q, &q);
    EN_Copy(&key.e, &exponent);
    EN_Mul(&key.n, &key.p, &key.q);
    return true;
}

}  // namespace morvane::pk

using namespace morvane::pk;

void E_RSA_GenerateKey(E_RSA_KEY* key, std::int32_t bits, std::uint32_t e) { generate(*key, bits, e, EN_GeneratePrimeRSA); }

void E_RSA_GenerateStrongKey(E_RSA_KEY* key, std::int32_t bits, std::uint32_t e) {
    generate(*key, bits, e, EN_GeneratePrimeStrongRSA);
}

void E_RSA_GenerateD(E_RSA_KEY* key) {
    const ENUM p = value_of(key->p, key->p_words);
    const ENUM q = value_of(key->q, key->q_words);
    const ENUM e = value_of(key->e, key->e_words);
    if (p.length != 0 && q.length != 0 && e.length != 0) set_private_members(*key, p, q, e);
}
