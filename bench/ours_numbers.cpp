#include "numbers.h"

#include <morvane/bignum.h>
#include <morvane/prime.h>

namespace morvane::bench {
namespace {

using Record = std::unique_ptr<ENUM, decltype(&EN_Destroy)>;

Record zero(std::size_t octets) { return {EN_Create(static_cast<std::uint32_t>(octets / 4)), EN_Destroy}; }

Record number_of(const Octets& octets) {
    Record record = zero(octets.size());
    EN_U8ToENUM(record.get(), octets.data(), static_cast<std::uint32_t>(octets.size()));
    return record;
}

struct Numbers {
    explicit Numbers(const Operands& from)
        : a(number_of(from.a)),
          b(number_of(from.b)),
          m(number_of(from.m)),
          r(zero(2 * from.m.size())),
          s(zero(2 * from.m.size())) {}

    std::vector<Octets> results() const {
        std::vector<Octets> both;
        for (const Record* record : {&r, &s}) {
            both.emplace_back((EN_GetFilledBitNum(record->get()) + 7) / 8);
            EN_ENUMToU8(both.back().data(), record->get());
        }
        return both;
    }

    Record a, b, m, r, s;
};

template <typename Work>
void add(Rows& all, const Operation& operation, Work work) {
    add_operation<Numbers>(all, operation, kOurs, work);
}

}  // namespace

void add_our_numbers(Rows& all) {
    add(all, kMultiply, [](Numbers& n) { EN_Mul(n.r.get(), n.a.get(), n.b.get()); });
    add(all, kSquare, [](Numbers& n) { EN_Sqr(n.r.get(), n.a.get()); });
    add(all, kDivide, [](Numbers& n) { EN_Div(n.r.get(), n.s.get(), n.a.get(), n.b.get()); });
    add(all, kInverse, [](Numbers& n) { EN_Mod_Inv(n.r.get(), n.a.get(), n.m.get()); });
    add(all, kGcd, [](Numbers& n) { EN_GCD(n.r.get(), n.a.get(), n.b.get()); });
    add(all, kModExp, [](Numbers& n) { EN_Mod_Exp(n.r.get(), n.a.get(), n.b.get(), n.m.get()); });
    const auto generate = [](auto make) {
        return [make](std::size_t bits) { make(zero(bits / 8).get(), static_cast<std::int32_t>(bits)); };
    };
    add_primes(all, kOurs, generate(EN_GeneratePrimeRSA));
    add_primes(all, kOurs, generate(EN_GeneratePrimeStrongRSA), true);
}

}  // namespace morvane::bench
