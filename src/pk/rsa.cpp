#include "pk/rsa.h"

#include "base/equal.h"
#include "base/wipe.h"
#include "bignum/octets.h"
#include "bignum/power.h"
#include "bignum/record.h"
#include "bignum/residues.h"

using namespace morvane;
using namespace morvane::bignum;

namespace morvane::pk {
namespace {

constexpr std::size_t kModulusWords = E_RSA_MODULUS_WORDS;
constexpr std::size_t kPrimeWords = E_RSA_PRIME_WORDS;

// What exponentiation uses of the stack, but for its tables, which it wipes itself.
constexpr std::size_t kUsedStack = 16384;

using ModulusWords = SecretArray<Word, kModulusWords>;

// The words of a member's value; none if its length does not fit its storage.
template <std::size_t Room>
std::span<const Word> value_of(const ENUM& member, const std::uint32_t (&)[Room]) noexcept {
    return words_in(member) <= Room ? magnitude(member).first(significant_words(member)) : std::span<const Word>{};
}

std::span<const Word> modulus_of(const E_RSA_KEY& key) noexcept { return value_of(key.n, key.n_words); }

// The members for Chinese remainders, as far as their words tell fit for it: odd primes of the same length in limbs, as the
// primes of a modulus of an even number of words are.
struct Parts {
    std::span<const Word> p, q, dP, dQ, qInv;

    explicit Parts(const E_RSA_KEY& key) noexcept
        : p(value_of(key.p, key.p_words)),
          q(value_of(key.q, key.q_words)),
          dP(value_of(key.dP, key.dP_words)),
          dQ(value_of(key.dQ, key.dQ_words)),
          qInv(value_of(key.qInv, key.qInv_words)) {}

    bool are_there() const noexcept { return !p.empty() && !q.empty() && !dP.empty() && !dQ.empty() && !qInv.empty(); }
    // That the primes are odd is known.
    bool are_regular(std::size_t modulus_words) const noexcept {
        const std::size_t limbs = limbs_for(p.size());
        return known((p[0] & q[0] & 1) != 0) && limbs_for(q.size()) == limbs && limbs_for(modulus_words) <= 2 * limbs &&
               limbs_for(dP.size()) <= limbs && limbs_for(dQ.size()) <= limbs && limbs_for(qInv.size()) <= limbs;
    }
};

// A value zero-extended to `count` limbs.
void extend(Limb* limbs, std::size_t count, std::span<const Word> value) noexcept {
    std::fill_n(limbs, count, 0);
    load_limbs(limbs, value.data(), value.size());
}

constexpr std::size_t kPrimeLimbs = limbs_for(kPrimeWords);
using PrimeLimbs = SecretArray<Limb, kPrimeLimbs>;
using ProductLimbs = SecretArray<Limb, 2 * kPrimeLimbs>;

// Garner's way: m = mQ + q ((mP - mQ) qInv mod p) with mP = c^dP mod p, mQ = c^dQ mod q. c has the modulus' words and is
// below it. The time depends on the lengths only. A call of its own, so that all that it uses lies below its caller's
// stack.
[[gnu::noinline]] bool by_remainders(Word* result, std::span<const Word> c, const Parts& key, bool tested) noexcept {
    Residues modulo_p(key.p, true);
    Residues modulo_q(key.q, true);
    if (!modulo_p || !modulo_q) return false;
    const std::size_t size = modulo_p.size();
    PrimeLimbs q_inverse;
    PrimeLimbs a;
    PrimeLimbs b;
    ProductLimbs product;
    const auto limbs = [](auto& array) { return array.items.data(); };
    extend(limbs(q_inverse), size, key.qInv);
    // Of a key as it was made, these tests always give the same answer; so does the last one below.
    if (!known(modulo_p.is_residue(limbs(q_inverse)))) return false;
    if (tested) {
        extend(limbs(a), size, key.q);
        modulo_p.multiply(limbs(a), limbs(a), limbs(q_inverse));
        Limb difference = limbs(a)[0] ^ 1;
        for (std::size_t i = 1; i < size; ++i) difference |= limbs(a)[i];
        if (known(difference != 0)) return false;
    }

    // c mod p and c mod q, and the two powers side by side, with exponents of equal length.
    const std::size_t words = size * kWordsPerLimb;
    SecretArray<Word, kPrimeLimbs * kWordsPerLimb> base_p;
    SecretArray<Word, kPrimeLimbs * kWordsPerLimb> base_q;
    SecretArray<Word, kPrimeLimbs * kWordsPerLimb> exponent_p;
    SecretArray<Word, kPrimeLimbs * kWordsPerLimb> exponent_q;
    extend(limbs(product), 2 * size, c);
    modulo_p.reduce(limbs(a), limbs(product));
    store_limbs(base_p.items.data(), limbs(a), words);
    extend(limbs(product), 2 * size, c);
    modulo_q.reduce(limbs(a), limbs(product));
    store_limbs(base_q.items.data(), limbs(a), words);
    std::copy(key.dP.begin(), key.dP.end(), exponent_p.items.begin());
    std::copy(key.dQ.begin(), key.dQ.end(), exponent_q.items.begin());
    const std::size_t exponent_words = std::max({key.p.size(), key.q.size(), key.dP.size(), key.dQ.size()});
    if (!power_mod_pair({Power{{base_p.items.data(), key.p.size()},
                               {exponent_p.items.data(), exponent_words},
                               key.p,
                               base_p.items.data(),
                               true},
                         Power{{base_q.items.data(), key.q.size()},
                               {exponent_q.items.data(), exponent_words},
                               key.q,
                               base_q.items.data(),
                               true}})) {
        return false;
    }

    extend(limbs(a), size, {base_p.items.data(), key.p.size()});
    extend(limbs(product), 2 * size, {base_q.items.data(), key.q.size()});
    modulo_p.reduce(limbs(b), limbs(product));
    modulo_p.subtract(limbs(a), limbs(a), limbs(b));
    modulo_p.multiply(limbs(a), limbs(a), limbs(q_inverse));
    multiply(limbs(product), limbs(a), size, modulo_q.modulus(), size);
    extend(limbs(b), size, {base_q.items.data(), key.q.size()});
    Limb carry = add(limbs(product), limbs(product), limbs(b), size);
    for (std::size_t i = size; i < 2 * size; ++i) {
        limbs(product)[i] += carry;
        carry = static_cast<Limb>(limbs(product)[i] < carry);
    }
    // A product of the primes above the modulus would leave something here; then these are not its primes.
    SecretArray<Word, 2 * kPrimeLimbs * kWordsPerLimb> sum;
    store_limbs(sum.items.data(), limbs(product), 2 * words);
    Word beyond = 0;
    for (std::size_t i = c.size(); i < 2 * words; ++i) beyond |= sum.items[i];
    std::copy_n(sum.items.begin(), c.size(), result);
    return known(beyond == 0);
}

// The same for members of any shape, by the functions on records: whatever they hold, what comes out is what the formula
// says.
bool by_remainders_vt(Word* result, std::span<const Word> c, const E_RSA_KEY& key, bool tested) noexcept {
    SecretArray<Word, kModulusWords> base_words;
    SecretArray<Word, kPrimeWords + 1> p_words;
    SecretArray<Word, kPrimeWords + 1> q_words;
    SecretArray<Word, 2 * kPrimeWords + 2> work_words;
    SecretArray<Word, 2 * kPrimeWords + 2> sum_words;
    std::copy(c.begin(), c.end(), base_words.items.begin());
    ENUM base{0, static_cast<std::int32_t>(c.size()), base_words.items.data()};
    ENUM power_p{0, 0, p_words.items.data()};
    ENUM power_q{0, 0, q_words.items.data()};
    ENUM work{0, 0, work_words.items.data()};
    ENUM sum{0, 0, sum_words.items.data()};
    if (tested) {
        if (EN_Mod_Mul(&work, &key.q, &key.qInv, &key.p) == 0 || significant_words(work) != 1 || work.words[0] != 1)
            return false;
    }
    set_normalised_length(base, c.size());
    EN_Mod_ExpA(&power_p, &base, &key.dP, &key.p);
    EN_Mod_ExpA(&power_q, &base, &key.dQ, &key.q);
    EN_Mod(&work, &power_q, &key.p);
    EN_Mod_Sub(&power_p, &power_p, &work, &key.p);
    EN_Mod_Mul(&power_p, &power_p, &key.qInv, &key.p);
    EN_Mul(&work, &power_p, &key.q);
    EN_Add(&sum, &work, &power_q);
    const std::size_t words = significant_words(sum);
    if (words > c.size()) return false;
    std::fill_n(result, c.size(), 0);
    std::copy_n(sum.words, words, result);
    return true;
}

// The public exponent, 0 if the record has none that is one.
Word public_exponent(const E_RSA_KEY& key) noexcept { return key.e.length == 1 ? key.e.words[0] : 0; }

bool raise_to_public(Word* result, std::span<const Word> base, Word e, std::span<const Word> modulus) noexcept {
    return power_mod({base, {&e, 1}, modulus, result});
}

// Whether m^e is c. Where there is no exponent to check with, it is taken to be; an even one gives n - c as well.
bool stands_up(const Word* m, std::span<const Word> c, const E_RSA_KEY& key) noexcept {
    const Word e = public_exponent(key);
    if (e < 3 || e % 2 == 0) return true;
    ModulusWords again;
    if (!raise_to_public(again.items.data(), {m, c.size()}, e, modulus_of(key))) return false;
    declare_known(again.items.data(), c.size());  // c, which everybody may know, or what a fault has made of it
    return std::equal(c.begin(), c.end(), again.items.begin());
}

}  // namespace

std::size_t modulus_bytes(const E_RSA_KEY& key) noexcept {
    const std::span<const Word> n = modulus_of(key);
    return n.empty() ? 0 : 4 * n.size() - static_cast<std::size_t>(std::countl_zero(n.back())) / 8;
}

bool public_operation(std::uint8_t* out, const std::uint8_t* in, const E_RSA_KEY& key) noexcept {
    const std::span<const Word> n = modulus_of(key);
    const Word e = public_exponent(key);
    if (n.empty() || e == 0) return false;
    ModulusWords words;
    octets_to_words(words.items.data(), n.size(), in, modulus_bytes(key));
    if (!raise_to_public(words.items.data(), {words.items.data(), n.size()}, e, n)) return false;
    words_to_octets(out, modulus_bytes(key), words.items.data(), n.size());
    return true;
}

bool private_operation(std::uint8_t* out, const std::uint8_t* in, const E_RSA_KEY& key, Remainders rule) noexcept {
    const std::span<const Word> n = modulus_of(key);
    if (n.empty()) return false;
    ModulusWords c;
    ModulusWords m;
    octets_to_words(c.items.data(), n.size(), in, modulus_bytes(key));
    const std::span<const Word> base{c.items.data(), n.size()};
    // A value above the modulus is never one that was enciphered.
    const std::size_t base_words = significant(c.items.data(), n.size());
    if (!is_below(base.first(base_words), n) && !divide_words(nullptr, c.items.data(), base, n)) return false;

    constexpr std::int32_t kLongInverse = 16;
    const bool tested = rule == Remainders::kLongAndTested;
    if (tested ? key.qInv.length >= kLongInverse : !value_of(key.qInv, key.qInv_words).empty()) {
        const Parts parts(key);
        if (!parts.are_there()) return false;
        const bool regular = parts.are_regular(n.size());
        const bool done = regular ? by_remainders(m.items.data(), base, parts, tested)
                                  : by_remainders_vt(m.items.data(), base, key, tested);
        wipe_stack_below<kUsedStack>();
        if (!done) return false;
        if (!stands_up(m.items.data(), base, key)) return false;
    } else {
        const std::span<const Word> d = value_of(key.d, key.d_words);
        const bool done = !d.empty() && power_mod({base, d, n, m.items.data()});
        wipe_stack_below<kUsedStack>();
        if (!done) return false;
    }
    words_to_octets(out, modulus_bytes(key), m.items.data(), n.size());
    return true;
}

}  // namespace morvane::pk

void E_RSA_Init(E_RSA_KEY* key) {
    const auto attach = [](ENUM& member, std::uint32_t* words) {
        member.sign = 0;
        member.words = words;
    };
    attach(key->n, key->n_words);
    attach(key->e, key->e_words);
    attach(key->d, key->d_words);
    attach(key->p, key->p_words);
    attach(key->q, key->q_words);
    attach(key->dP, key->dP_words);
    attach(key->dQ, key->dQ_words);
    attach(key->qInv, key->qInv_words);
}
