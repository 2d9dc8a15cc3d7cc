#include "numbers.h"

#include <gmp.h>

#include <cstring>
#include <random>

namespace morvane::bench {
namespace {

struct Numbers {
    explicit Numbers(const Operands& from) {
        for (const mpz_ptr number : {a, b, m, r, s}) mpz_init(number);
        set(a, from.a);
        set(b, from.b);
        set(m, from.m);
    }
    ~Numbers() {
        for (const mpz_ptr number : {a, b, m, r, s}) mpz_clear(number);
    }
    Numbers(const Numbers&) = delete;
    Numbers& operator=(const Numbers&) = delete;

    static void set(mpz_ptr number, const Octets& from) { mpz_import(number, from.size(), 1, 1, 0, 0, from.data()); }

    std::vector<Octets> results() const {
        std::vector<Octets> both;
        for (const mpz_srcptr number : {r, s}) {
            both.emplace_back((mpz_sizeinbase(number, 2) + 7) / 8);
            mpz_export(both.back().data(), nullptr, 1, 1, 0, 0, number);
        }
        return both;
    }

    mpz_t a, b, m, r, s;
};

template <typename Work>
void add(Rows& all, const Operation& operation, Work work, const char* library = "gmp") {
    add_operation<Numbers>(all, operation, library, work);
}

// The next prime from a random number on; it has no generator of its own.
void next_prime(std::size_t bits) {
    static std::random_device system;
    Octets start(bits / 8);
    for (std::size_t i = 0; i < start.size(); i += 4) {
        const std::uint32_t word = system();
        std::memcpy(&start[i], &word, 4);
    }
    start[0] |= 0xc0;
    mpz_t prime;
    mpz_init(prime);
    Numbers::set(prime, start);
    mpz_nextprime(prime, prime);
    mpz_clear(prime);
}

}  // namespace

void add_gmp_numbers(Rows& all) {
    add(all, kMultiply, [](Numbers& n) { mpz_mul(n.r, n.a, n.b); });
    add(all, kSquare, [](Numbers& n) { mpz_mul(n.r, n.a, n.a); });
    add(all, kDivide, [](Numbers& n) { mpz_tdiv_qr(n.r, n.s, n.a, n.b); });
    add(all, kInverse, [](Numbers& n) { mpz_invert(n.r, n.a, n.m); });
    add(all, kGcd, [](Numbers& n) { mpz_gcd(n.r, n.a, n.b); });
    add(all, kModExp, [](Numbers& n) { mpz_powm(n.r, n.a, n.b, n.m); });
    add(
        all, kModExp, [](Numbers& n) { mpz_powm_sec(n.r, n.a, n.b, n.m); }, "gmp-consttime");
    add_primes(all, "gmp", next_prime);
}

}  // namespace morvane::bench
