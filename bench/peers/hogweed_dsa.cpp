#include "dsa.h"

#include <nettle/dsa.h>

#include <random>

namespace morvane::bench {
namespace {

void set(mpz_t number, const Octets& octets) { nettle_mpz_set_str_256_u(number, octets.size(), octets.data()); }

// A generator that costs nothing to speak of.
void draw(void* generator, std::size_t size, std::uint8_t* out) {
    std::generate_n(out, size, [&] { return static_cast<std::uint8_t>((*static_cast<std::mt19937*>(generator))()); });
}

class Dsa {
public:
    explicit Dsa(const DsaKey& from) : from_(from) {
        dsa_params_init(&domain_);
        dsa_signature_init(&expected_);
        dsa_signature_init(&made_);
        mpz_init(x_);
        mpz_init(y_);
        set(domain_.p, from.p);
        set(domain_.q, from.q);
        set(domain_.g, from.g);
        set(x_, from.x);
        set(y_, from.y);
        set(expected_.r, from.r);
        set(expected_.s, from.s);
    }
    Dsa(const Dsa&) = delete;
    Dsa& operator=(const Dsa&) = delete;
    ~Dsa() {
        dsa_params_clear(&domain_);
        dsa_signature_clear(&expected_);
        dsa_signature_clear(&made_);
        mpz_clear(x_);
        mpz_clear(y_);
    }

    DsaPair sign() {
        dsa_sign(&domain_, x_, &generator_, draw, from_.digest.size(), from_.digest.data(), &made_);
        DsaPair pair{};
        nettle_mpz_get_str_256(20, pair.data(), made_.r);
        nettle_mpz_get_str_256(20, pair.data() + 20, made_.s);
        return pair;
    }
    bool verify() { return dsa_verify(&domain_, y_, from_.digest.size(), from_.digest.data(), &expected_) == 1; }

private:
    const DsaKey& from_;
    dsa_params domain_;
    dsa_signature expected_, made_;
    mpz_t x_, y_;
    std::mt19937 generator_{20};
};

}  // namespace

void add_hogweed_dsa(Rows& all) { add_dsa<Dsa>(all, "nettle"); }

}  // namespace morvane::bench
