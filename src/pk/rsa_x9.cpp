// Keys in the manner of ANSI X9.31: each prime is searched for among the numbers that are 1 modulo one auxiliary prime and
// -1 modulo another, from a random number on.
#include "bignum/record.h"
#include "bignum/work_record.h"
#include "pk/rsa_key.h"
#include "prime/rounds.h"
#include "prime/sieve.h"

#include <morvane/prime.h>
#include <morvane/random.h>

#include <cstdio>
#include <utility>

using namespace morvane;
using namespace morvane::bignum;
using namespace morvane::pk;

namespace {

constexpr std::int32_t kAuxiliaryBits = 101;
constexpr std::size_t kAuxiliaryWords = 4;
constexpr std::size_t kStepWords = 2 * kAuxiliaryWords + 1;  // eight times a product of two

// The two random numbers differ in the word that holds this bit of the shorter one's length less 100.
constexpr std::int32_t kDistanceBits = 100;
constexpr std::int32_t kMinModulusBits = 2 * kDistanceBits;

using GeneratePrime = std::int32_t (*)(ENUM*, std::int32_t);

// One of the two primes and what it comes from.
struct X9Prime {
    WorkRecord start{kPrimeWords};
    WorkRecord p1{kAuxiliaryWords};
    WorkRecord p2{kAuxiliaryWords};
    WorkRecord prime{kPrimeWords + 1};
};

bool draw_auxiliary(X9Prime& of, GeneratePrime generate_prime) noexcept {
    return generate_prime(of.p1.get(), kAuxiliaryBits) != 0 && generate_prime(of.p2.get(), kAuxiliaryBits) != 0;
}

// Whole-word distance: one word stands for the 100 highest bits.
bool are_far_apart(const ENUM& a, const ENUM& b, std::int32_t bits) noexcept {
    WorkRecord difference(kPrimeWords);
    EN_Sub(difference.get(), &a, &b);
    const auto word = static_cast<std::size_t>((bits - kDistanceBits) / 32);
    return word < words_in(*difference) && difference->words[word] != 0;
}

void draw_starts(X9Prime& p, X9Prime& q, std::int32_t bits) noexcept {
    EN_X9_31Random(p.start.get(), bits / 2, 1, 1);
    do {
        EN_X9_31Random(q.start.get(), bits - bits / 2, 1, 1);
    } while (!are_far_apart(*p.start, *q.start, bits / 2));
}

// What the prime leaves modulo a power of 2: all primes are odd, those for an even e have a residue modulo 8.
struct Parity {
    Word modulus;
    Word residue;
};

// of.prime = the least number from of.start on that is 1 modulo p1, -1 modulo p2, of the given parity. step = the distance
// to the next one.
bool set_first_candidate(X9Prime& of, ENUM& step, Parity parity) noexcept {
    WorkRecord product(kStepWords);
    WorkRecord inverse(kAuxiliaryWords);
    WorkRecord residue(kStepWords);
    WorkRecord other(kStepWords);
    WorkRecord up(kPrimeWords + 1);
    EN_Mul(product.get(), of.p1.get(), of.p2.get());
    EN_Mod_Inv(inverse.get(), of.p2.get(), of.p1.get());
    EN_Mul(residue.get(), inverse.get(), of.p2.get());
    EN_Mod_Inv(inverse.get(), of.p1.get(), of.p2.get());
    EN_Mul(other.get(), inverse.get(), of.p1.get());
    EN_Sub(residue.get(), residue.get(), other.get());

    EN_Sub(up.get(), residue.get(), of.start.get());
    if (EN_Mod(up.get(), up.get(), product.get()) == 0) return false;
    if (up->sign != 0) EN_Add(up.get(), up.get(), product.get());
    EN_Add(of.prime.get(), of.start.get(), up.get());
    while (of.prime->words[0] % parity.modulus != parity.residue) {
        EN_Add(of.prime.get(), of.prime.get(), product.get());
    }
    EN_LShift(&step, product.get(), std::countr_zero(parity.modulus));
    return true;
}

// Up by steps to the first prime that suits e.
bool find_prime(X9Prime& of, Word e, Parity parity) noexcept {
    WorkRecord first(kPrimeWords + 1);
    WorkRecord step(kStepWords);
    WorkRecord count(1);
    WorkRecord distance(kStepWords + 1);
    if (!set_first_candidate(of, *step, parity)) return false;
    EN_Copy(first.get(), of.prime.get());
    const prime::Sieve sieve(magnitude(*step), prime::RuledOut::kZero);
    prime::SieveWalk walk(sieve, magnitude(*first));
    prime::Verdict verdict = prime::Verdict::kComposite;
    while (verdict == prime::Verdict::kComposite) {
        EN_U32ToENUM(count.get(), walk.next());
        EN_Mul(distance.get(), step.get(), count.get());
        EN_Add(of.prime.get(), first.get(), distance.get());
        set_normalised_length(*of.prime, words_in(*of.prime));
        if (words_in(*of.prime) > kPrimeWords) return false;  // by less than one chance in 2^2000, for 4800 bits
        if (suits(*of.prime, e)) verdict = prime::run_rounds(*of.prime, false, EN_Random);
    }
    return verdict == prime::Verdict::kPrime;
}

// p is the larger one in the end.
struct X9Pair {
    X9Prime drawn[2];
    X9Prime* p = &drawn[0];
    X9Prime* q = &drawn[1];
};

bool generate(E_RSA_KEY& key, std::int32_t bits, Word e, GeneratePrime generate_prime, X9Pair& pair) noexcept {
    if (bits < kMinModulusBits || bits > kMaxModulusBits || e < 2) return false;
    X9Prime& p = *pair.p;
    X9Prime& q = *pair.q;
    draw_starts(p, q, bits);
    if (!draw_auxiliary(p, generate_prime) || !draw_auxiliary(q, generate_prime)) return false;
    const bool even = e % 2 == 0;
    if (!find_prime(p, e, even ? Parity{.modulus = 8, .residue = 3} : Parity{.modulus = 2, .residue = 1})) return false;
    if (!find_prime(q, e, even ? Parity{.modulus = 8, .residue = 7} : Parity{.modulus = 2, .residue = 1})) return false;
    if (!set_key(key, *p.prime, *q.prime, e)) return false;
    if (EN_UComp(p.prime.get(), q.prime.get()) < 0) std::swap(pair.p, pair.q);
    return true;
}

// Returns the octets of the last one.
std::int32_t write_auxiliary(std::uint8_t* p1, std::uint8_t* p2, std::uint8_t* q1, std::uint8_t* q2,
                             const X9Pair& pair) noexcept {
    EN_ENUMToU8(p1, pair.p->p1.get());
    EN_ENUMToU8(p2, pair.p->p2.get());
    EN_ENUMToU8(q1, pair.q->p1.get());
    return EN_ENUMToU8(q2, pair.q->p2.get());
}

void print_check(const char* name, const ENUM& value, const ENUM& divisor) noexcept {
    WorkRecord rest(kAuxiliaryWords);
    const bool divides = EN_Mod(rest.get(), &value, &divisor) != 0 && rest->length == 0;
    static_cast<void>(std::printf("%s %s\n", name, divides ? "OK" : "Fail"));
}

// Returns the characters of the last line.
std::int32_t print_checks(X9Prime& p, X9Prime& q) noexcept {
    WorkRecord below_p(kPrimeWords);
    WorkRecord below_q(kPrimeWords);
    WorkRecord above(kPrimeWords + 1);
    WorkRecord one(1);
    WorkRecord divisor(kPrimeWords);
    EN_U32ToENUM(one.get(), 1);
    EN_Sub(below_p.get(), p.prime.get(), one.get());
    EN_Sub(below_q.get(), q.prime.get(), one.get());
    print_check("p1", *below_p, *p.p1);
    EN_Add(above.get(), p.prime.get(), one.get());
    print_check("p2", *above, *p.p2);
    print_check("q1", *below_q, *q.p1);
    EN_Add(above.get(), q.prime.get(), one.get());
    print_check("q2", *above, *q.p2);
    EN_GCD(divisor.get(), below_p.get(), below_q.get());
    return std::printf("len = %d\n", static_cast<int>(divisor->length));
}

}  // namespace

std::int32_t E_RSA_GenerateX9Key(E_RSA_KEY* key, std::int32_t bits, std::uint32_t e, std::uint8_t* p1, std::uint8_t* p2,
                                 std::uint8_t* q1, std::uint8_t* q2) {
    X9Pair pair;
    if (!generate(*key, bits, e, EN_GenerateX9Prime, pair)) return 0;
    write_auxiliary(p1, p2, q1, q2, pair);
    return print_checks(*pair.p, *pair.q);
}

// The primes themselves are not safe ones: p1 divides p - 1, so that (p - 1) / 2 is not prime.
std::int32_t E_RSA_GenerateStrongX9Key(E_RSA_KEY* key, std::int32_t bits, std::uint32_t e, std::uint8_t* p1,
                                       std::uint8_t* p2, std::uint8_t* q1, std::uint8_t* q2) {
    X9Pair pair;
    return generate(*key, bits, e, EN_GenerateStrongX9Prime, pair) ? write_auxiliary(p1, p2, q1, q2, pair) : 0;
}
