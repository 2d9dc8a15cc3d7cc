#include "numbers.h"

#include <cryptopp/integer.h>
#include <cryptopp/modarith.h>
#include <cryptopp/nbtheory.h>
#include <cryptopp/osrng.h>

namespace morvane::bench {
namespace {

using CryptoPP::Integer;

Integer number_of(const Octets& octets) { return Integer(octets.data(), octets.size()); }

struct Numbers {
    explicit Numbers(const Operands& from)
        : a(number_of(from.a)), b(number_of(from.b)), m(number_of(from.m)), montgomery(m) {}

    std::vector<Octets> results() const {
        std::vector<Octets> both;
        for (const Integer* number : {&r, &s}) {
            both.emplace_back(number->MinEncodedSize());
            number->Encode(both.back().data(), both.back().size());
        }
        return both;
    }

    Integer a, b, m, r, s;
    CryptoPP::MontgomeryRepresentation montgomery;
};

template <typename Work>
void add(Rows& all, const Operation& operation, Work work) {
    add_operation<Numbers>(all, operation, "cryptopp", work);
}

}  // namespace

void add_cryptopp_numbers(Rows& all) {
    add(all, kMultiply, [](Numbers& n) { n.r = n.a * n.b; });
    add(all, kSquare, [](Numbers& n) { n.r = n.a.Squared(); });
    add(all, kDivide, [](Numbers& n) { Integer::Divide(n.s, n.r, n.a, n.b); });
    add(all, kInverse, [](Numbers& n) { n.r = n.a.InverseMod(n.m); });
    add(all, kGcd, [](Numbers& n) { n.r = Integer::Gcd(n.a, n.b); });
    add(all, kModExp,
        [](Numbers& n) { n.r = n.montgomery.ConvertOut(n.montgomery.Exponentiate(n.montgomery.ConvertIn(n.a), n.b)); });
    static CryptoPP::AutoSeededRandomPool pool;
    add_primes(all, "cryptopp", [](std::size_t bits) {
        Integer().GenerateRandom(
            pool, CryptoPP::MakeParameters("BitLength", static_cast<int>(bits))("RandomNumberType", Integer::PRIME));
    });
    const auto generate_safe = [](std::size_t bits) { CryptoPP::PrimeAndGenerator(1, pool, static_cast<unsigned>(bits)); };
    add_primes(all, "cryptopp", generate_safe, true);
}

}  // namespace morvane::bench
