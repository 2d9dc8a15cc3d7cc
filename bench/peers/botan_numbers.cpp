#include "numbers.h"

#include <botan/bigint.h>
#include <botan/divide.h>
#include <botan/numthry.h>
#include <botan/pow_mod.h>
#include <botan/system_rng.h>

namespace morvane::bench {
namespace {

using Botan::BigInt;

struct Numbers {
    explicit Numbers(const Operands& from) : a(from.a), b(from.b), m(from.m), power(m) {}

    std::vector<Octets> results() const { return {BigInt::encode(r), BigInt::encode(s)}; }

    BigInt a, b, m, r, s;
    Botan::Power_Mod power;  // with the modulus' own values ready made
};

template <typename Work>
void add(Rows& all, const Operation& operation, Work work) {
    add_operation<Numbers>(all, operation, "botan", work);
}

}  // namespace

void add_botan_numbers(Rows& all) {
    add(all, kMultiply, [](Numbers& n) { n.r = n.a * n.b; });
    add(all, kSquare, [](Numbers& n) { n.r = Botan::square(n.a); });
    add(all, kDivide, [](Numbers& n) { Botan::vartime_divide(n.a, n.b, n.r, n.s); });
    add(all, kInverse, [](Numbers& n) { n.r = Botan::inverse_mod(n.a, n.m); });
    add(all, kGcd, [](Numbers& n) { n.r = Botan::gcd(n.a, n.b); });
    add(all, kModExp, [](Numbers& n) {
        n.power.set_base(n.a);
        n.power.set_exponent(n.b);
        n.r = n.power.execute();
    });
    add_primes(all, "botan", [](std::size_t bits) { Botan::random_prime(Botan::system_rng(), bits); });
    add_primes(
        all, "botan", [](std::size_t bits) { Botan::random_safe_prime(Botan::system_rng(), bits); }, true);
}

}  // namespace morvane::bench
