#include "numbers.h"

#include <gcrypt.h>

namespace morvane::bench {
namespace {

using Number = std::unique_ptr<gcry_mpi, decltype(&gcry_mpi_release)>;

Number number_of(const Octets& octets) {
    gcry_mpi_t number = nullptr;
    gcry_mpi_scan(&number, GCRYMPI_FMT_USG, octets.data(), octets.size(), nullptr);
    return {number, gcry_mpi_release};
}

struct Numbers {
    explicit Numbers(const Operands& from) : a(number_of(from.a)), b(number_of(from.b)), m(number_of(from.m)) {}

    std::vector<Octets> results() const {
        std::vector<Octets> both;
        for (const Number* number : {&r, &s}) {
            both.emplace_back((gcry_mpi_get_nbits(number->get()) + 7) / 8);
            gcry_mpi_print(GCRYMPI_FMT_USG, both.back().data(), both.back().size(), nullptr, number->get());
        }
        return both;
    }

    Number a, b, m, r{gcry_mpi_new(0), gcry_mpi_release}, s{gcry_mpi_new(0), gcry_mpi_release};
};

template <typename Work>
void add(Rows& all, const Operation& operation, Work work) {
    add_operation<Numbers>(all, operation, "gcrypt", work);
}

}  // namespace

void add_gcrypt_numbers(Rows& all) {
    add(all, kMultiply, [](Numbers& n) { gcry_mpi_mul(n.r.get(), n.a.get(), n.b.get()); });
    add(all, kSquare, [](Numbers& n) { gcry_mpi_mul(n.r.get(), n.a.get(), n.a.get()); });
    add(all, kDivide, [](Numbers& n) { gcry_mpi_div(n.r.get(), n.s.get(), n.a.get(), n.b.get(), 0); });
    add(all, kInverse, [](Numbers& n) { gcry_mpi_invm(n.r.get(), n.a.get(), n.m.get()); });
    add(all, kGcd, [](Numbers& n) { gcry_mpi_gcd(n.r.get(), n.a.get(), n.b.get()); });
    add(all, kModExp, [](Numbers& n) { gcry_mpi_powm(n.r.get(), n.a.get(), n.b.get(), n.m.get()); });
}

}  // namespace morvane::bench
