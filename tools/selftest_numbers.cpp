// Self-tests of integers of any size and of primes.
#include "selftest.h"

#include "number.h"

#include <morvane/bignum.h>
#include <morvane/prime.h>

namespace morvane::tool {
namespace {

constexpr std::uint32_t kRoom = 40;  // words: more than any result here

Number number(std::string_view text) { return std::move(read_number(text).value()); }

bool is(const Number& x, std::string_view text) { return EN_Comp(x.get(), number(text).get()) == 0; }

// Operands and results made with Python: the odd modulus goes the way of Montgomery, the even one does not.
constexpr char kA[] = "0xca978112ca1bbdcafac231b39a23dc4da786eff8147c4e72b9807785afee48bb";
constexpr char kB[] = "0x3e23e8160039594a33894f6564e1b1348bbd7a0088d42c4acb73eeaed59c009d";
constexpr char kOdd[] = "0x62c66a7a5dd70c3146618063c344e531e6d4b59e379808443ce962b3abd63c5b";
constexpr char kEven[] = "0x62c66a7a5dd70c3146618063c344e531e6d4b59e379808443ce962b3abd63c5a";
constexpr char kProduct[] =
    "0x312d1ba3e8afdaedbf8043c6f79240b9287c4e665695c3c0a25e5e1960115609dbcf996dfb5e0c35a191a422ee65496393992eef6cb9b648e536"
    "0dcece169aaf";
constexpr char kQuotient[] = "0x7f73c9570ab56e525651452c2c8d0f1a1a81d2d1e264de6f2b40b2f6a6aead88";
constexpr char kRemainder[] = "0x1a00505ea3f84bb6c1d25177564fa5c5d933ce966b09aaf3c4653709b5a30b57";
constexpr char kOddPower[] = "0x7073a5a73dee60a86258928406a74364d8fbeddb9334c72b0e83bbf4772dcad";
constexpr char kEvenPower[] = "0x1af37f7f99662e0fea176510c3f6ca03a2804e6fd5ce29127a65d98b744f4105";
constexpr char kInverse[] = "0x349878048c70d69e028ae599f6ea82c5d4c9fd54dbfc1db9784c7a4422f605f";
// First Oakley group (RFC 2409): a safe prime of 768 bits.
constexpr char kSafePrime[] =
    "0xffffffffffffffffc90fdaa22168c234c4c6628b80dc1cd129024e088a67cc74020bbea63b139b22514a08798e3404dd"
    "ef9519b3cd3a431b302b0a6df25f14374fe1356d6d51c245e485b576625e7ec6f44c42e9a63a3620ffffffffffffffff";
constexpr char kPrime[] = "0x7fffffffffffffffffffffffffffffff";  // 2^127 - 1, not a safe one
// Passes Miller and Rabin's test with the first nine primes as bases.
constexpr char kPseudoprime[] = "3825123056546413051";

// kA with its lowest bit changed or as it is.
Number a(bool changed) {
    Number x = number(kA);
    x.get()->words[0] ^= changed ? 1 : 0;
    return x;
}

bool multiplies(bool changed) {
    const Number r(kRoom), x = a(changed), y = number(kB);
    EN_Mul(r.get(), x.get(), y.get());
    return is(r, kProduct);
}

bool divides(bool changed) {
    const Number q(kRoom), r(kRoom), x = number(kProduct), d = number(kOdd);
    x.get()->words[0] ^= changed ? 1 : 0;
    return EN_Div(q.get(), r.get(), x.get(), d.get()) == 1 && is(q, kQuotient) && is(r, kRemainder);
}

bool raises(bool changed, std::string_view modulus, std::string_view power) {
    const Number r(kRoom), x = a(changed), e = number(kB), m = number(modulus);
    EN_Mod_Exp(r.get(), x.get(), e.get(), m.get());
    return is(r, power);
}

bool inverts(bool changed) {
    const Number r(kRoom), x = a(changed), m = number(kOdd);
    EN_Mod_Inv(r.get(), x.get(), m.get());
    return is(r, kInverse);
}

bool test_tells_primes() {
    return EN_IsPrime(number(kPrime).get()) == 1 && EN_IsStrongPrime(number(kPrime).get()) == 0 &&
           EN_IsPrime(number(kSafePrime).get()) == 1 && EN_IsStrongPrime(number(kSafePrime).get()) == 1;
}

bool test_refuses_others() {
    const Number next = number(kSafePrime);
    next.get()->words[0] ^= 4;
    return EN_IsPrime(next.get()) == 0 && EN_IsPrime(number(kPseudoprime).get()) == 0;
}

bool search_finds_primes(std::int32_t (*search)(ENUM* p, std::int32_t bits), std::int32_t bits) {
    const Number p(kRoom);
    return search(p.get(), bits) == 1 && p.bits() == static_cast<std::uint32_t>(bits) &&
           EN_IsBitSet(p.get(), bits - 2) == 1 && EN_IsPrime(p.get()) == 1;
}

bool searches_differ() {
    const Number p(kRoom), q(kRoom);
    EN_GeneratePrimeRSA(p.get(), 128);
    EN_GeneratePrimeRSA(q.get(), 128);
    return EN_Comp(p.get(), q.get()) != 0;
}

}  // namespace

void add_number_tests(SelfTests& all) {
    all.push_back({"product", [] { return multiplies(false); }, [] { return !multiplies(true); }});
    all.push_back({"quotient", [] { return divides(false); }, [] { return !divides(true); }});
    all.push_back(
        {"power-odd", [] { return raises(false, kOdd, kOddPower); }, [] { return !raises(true, kOdd, kOddPower); }});
    all.push_back(
        {"power-even", [] { return raises(false, kEven, kEvenPower); }, [] { return !raises(true, kEven, kEvenPower); }});
    all.push_back({"inverse", [] { return inverts(false); }, [] { return !inverts(true); }});
    all.push_back({"prime-test", test_tells_primes, test_refuses_others});
    all.push_back({"prime-search",
                   [] {
                       return search_finds_primes(EN_GeneratePrimeRSA, 256) &&
                              search_finds_primes(EN_GenerateX9Prime, 160) &&
                              search_finds_primes(EN_GeneratePrimeStrongRSA, 64);
                   },
                   searches_differ});
}

}  // namespace morvane::tool
