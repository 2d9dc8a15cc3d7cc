#include "pk/domain.h"

#include "bignum/record.h"
#include "bignum/work_record.h"
#include "pk/group.h"

#include <morvane/prime.h>
#include <morvane/random.h>

using namespace morvane::bignum;

namespace morvane::pk {
namespace {

constexpr std::int32_t kMaxBits = 32 * E_DSA_WORDS;
constexpr std::int32_t kMinBits = 2;

// Of the numbers of pBits bits that are drawn, one in pBits / 3 is prime: so many that are not tell of a q that has none.
constexpr std::int32_t kDrawsPerBit = 16;

constexpr std::size_t kRoom = kGroupWords + 1;

}  // namespace

void WorkKey::take_domain(const E_DSA_KEY& from) noexcept {
    for (ENUM E_DSA_KEY::*const member : {&E_DSA_KEY::p, &E_DSA_KEY::q, &E_DSA_KEY::g}) {
        set(key.*member, 0, group_member(from.*member));
    }
}

void WorkKey::give(E_DSA_KEY& to) const noexcept {
    for (ENUM E_DSA_KEY::*const member : {&E_DSA_KEY::x, &E_DSA_KEY::y, &E_DSA_KEY::p, &E_DSA_KEY::q, &E_DSA_KEY::g}) {
        EN_Copy(&(to.*member), &(key.*member));
    }
}

bool are_bits(std::int32_t bits) noexcept { return bits > 0 && bits <= kMaxBits; }

bool are_sizes(std::int32_t p_bits, std::int32_t q_bits) noexcept {
    return q_bits >= kMinBits && p_bits > q_bits && p_bits <= kMaxBits;
}

bool draw_generator(E_DSA_KEY& domain, const ENUM& exponent) noexcept {
    WorkRecord h(kRoom);
    EN_Random(h.get(), static_cast<std::int32_t>(EN_GetFilledBitNum(&domain.p)), 1, 1);
    domain.g.length = 0;
    if (EN_Mod(h.get(), h.get(), &domain.p) == 0) return false;
    EN_Mod_Exp(&domain.g, h.get(), &exponent, &domain.p);
    if (is_zero(domain.g)) return false;  // there was no memory
    if (significant_words(domain.g) == 1 && domain.g.words[0] == 1) domain.g.length = 0;
    return true;
}

bool generate_domain(E_DSA_KEY& domain, std::int32_t p_bits, std::int32_t q_bits) noexcept {
    WorkRecord x(kRoom);
    WorkRecord twice_q(kRoom);
    WorkRecord rest(kRoom);
    domain.g.length = 0;
    while (domain.g.length == 0) {
        if (EN_GeneratePrimeRSA(&domain.q, q_bits) == 0) return false;
        EN_LShift1(twice_q.get(), &domain.q);
        for (std::int32_t draws = 0; domain.g.length == 0 && draws < kDrawsPerBit * p_bits; ++draws) {
            EN_Random(x.get(), p_bits, 1, 1);
            if (EN_Mod(rest.get(), x.get(), twice_q.get()) == 0) return false;
            EN_Sub(x.get(), x.get(), rest.get());
            EN_AddU32(x.get(), x.get(), 1);
            if (EN_GetFilledBitNum(x.get()) != static_cast<std::uint32_t>(p_bits) || EN_IsPrime(x.get()) == 0) continue;
            EN_Copy(&domain.p, x.get());
            if (EN_Div(rest.get(), nullptr, x.get(), &domain.q) == 0 || !draw_generator(domain, *rest)) return false;
        }
    }
    return true;
}

bool set_pair(E_DSA_KEY& key, const ENUM& random, PublicKey kind) noexcept {
    const Group group(key);
    Scalars scalars(group);
    WorkRecord reduced(std::max(words_in(random), kRoom));
    if (!scalars || !reduced) return false;
    EN_Copy(reduced.get(), &random);
    // A division tells a little of its operands; of as many words as q has, load() needs none.
    if (words_in(random) > group.q().size() && EN_Mod(reduced.get(), &random, &key.q) == 0) return false;
    Scalar x;
    Scalar exponent;
    SecretArray<Word, kGroupWords> words;
    scalars.load(x, magnitude(*reduced));
    if (scalars.is_zero(x)) return false;
    exponent.items = x.items;
    if (kind == PublicKey::kOfInverse && !scalars.invert(exponent, x)) return false;
    if (!group.raise_g(key.y.words, scalars.words(words, exponent))) return false;
    set_normalised_length(key.y, group.p().size());
    set(key.x, 0, scalars.words(words, x));
    set_normalised_length(key.x, group.q().size());
    return true;
}

bool generate_pair(E_DSA_KEY& key, std::int32_t x_bits, PublicKey kind) noexcept {
    if (!are_bits(x_bits)) return false;
    WorkRecord random(kRoom);
    for (int i = 0; i < kAttempts; ++i) {
        EN_Random(random.get(), x_bits, 0, 0);
        if (set_pair(key, *random, kind)) return true;
    }
    return false;
}

}  // namespace morvane::pk
