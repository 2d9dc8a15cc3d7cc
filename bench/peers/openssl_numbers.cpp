#include "numbers.h"

#include <openssl/bn.h>

namespace morvane::bench {
namespace {

using Number = std::unique_ptr<BIGNUM, decltype(&BN_free)>;

Number number_of(const Octets& octets) {
    return {BN_bin2bn(octets.data(), static_cast<int>(octets.size()), nullptr), BN_free};
}

struct Numbers {
    explicit Numbers(const Operands& from) : a(number_of(from.a)), b(number_of(from.b)), m(number_of(from.m)) {
        BN_MONT_CTX_set(montgomery.get(), m.get(), context.get());
    }

    std::vector<Octets> results() const {
        std::vector<Octets> both;
        for (const Number* number : {&r, &s}) {
            both.emplace_back(BN_num_bytes(number->get()));
            BN_bn2bin(number->get(), both.back().data());
        }
        return both;
    }

    Number a, b, m, r = number_of({}), s = number_of({});
    std::unique_ptr<BN_CTX, decltype(&BN_CTX_free)> context{BN_CTX_new(), BN_CTX_free};
    std::unique_ptr<BN_MONT_CTX, decltype(&BN_MONT_CTX_free)> montgomery{BN_MONT_CTX_new(), BN_MONT_CTX_free};
};

template <typename Work>
void add(Rows& all, const Operation& operation, Work work, const char* library = "openssl") {
    add_operation<Numbers>(all, operation, library, work);
}

// Both exponentiations take the modulus' own values ready made.
template <auto ModExp>
void mod_exp(Numbers& n) {
    ModExp(n.r.get(), n.a.get(), n.b.get(), n.m.get(), n.context.get(), n.montgomery.get());
}

}  // namespace

void add_openssl_numbers(Rows& all) {
    add(all, kMultiply, [](Numbers& n) { BN_mul(n.r.get(), n.a.get(), n.b.get(), n.context.get()); });
    add(all, kSquare, [](Numbers& n) { BN_sqr(n.r.get(), n.a.get(), n.context.get()); });
    add(all, kDivide, [](Numbers& n) { BN_div(n.r.get(), n.s.get(), n.a.get(), n.b.get(), n.context.get()); });
    add(all, kInverse, [](Numbers& n) { BN_mod_inverse(n.r.get(), n.a.get(), n.m.get(), n.context.get()); });
    add(all, kGcd, [](Numbers& n) { BN_gcd(n.r.get(), n.a.get(), n.b.get(), n.context.get()); });
    add(all, kModExp, mod_exp<BN_mod_exp_mont>);
    add(all, kModExp, mod_exp<BN_mod_exp_mont_consttime>, "openssl-consttime");
    for (const bool safe : {false, true}) {
        const auto generate = [safe](std::size_t bits) {
            BN_generate_prime_ex(number_of({}).get(), static_cast<int>(bits), safe ? 1 : 0, nullptr, nullptr, nullptr);
        };
        add_primes(all, "openssl", generate, safe);
    }
}

}  // namespace morvane::bench
