#include "rsa.h"

#include <nettle/rsa.h>

#include <random>

namespace morvane::bench {
namespace {

void set(mpz_t number, const Octets& octets) { nettle_mpz_set_str_256_u(number, octets.size(), octets.data()); }

// A generator that costs nothing to speak of.
void draw(void* generator, std::size_t size, std::uint8_t* out) {
    std::generate_n(out, size, [&] { return static_cast<std::uint8_t>((*static_cast<std::mt19937*>(generator))()); });
}

struct Pair {
    Pair() {
        rsa_public_key_init(&open);
        rsa_private_key_init(&secret);
        mpz_set_ui(open.e, kPublicExponent);
    }
    Pair(const Pair&) = delete;
    Pair& operator=(const Pair&) = delete;
    ~Pair() {
        rsa_public_key_clear(&open);
        rsa_private_key_clear(&secret);
    }
    rsa_public_key open;
    rsa_private_key secret;
};

class Rsa {
public:
    explicit Rsa(const RsaKey& from) : from_(from) {
        mpz_init(expected_);
        mpz_init(signature_);
        set(pair_.open.n, from.n);
        set(pair_.secret.d, from.d);
        set(pair_.secret.p, from.p);
        set(pair_.secret.q, from.q);
        set(pair_.secret.a, from.dP);
        set(pair_.secret.b, from.dQ);
        set(pair_.secret.c, from.qInv);
        rsa_public_key_prepare(&pair_.open);
        rsa_private_key_prepare(&pair_.secret);
        set(expected_, from.signature);
    }
    ~Rsa() {
        mpz_clear(expected_);
        mpz_clear(signature_);
    }

    Octets sign() {
        rsa_pkcs1_sign(&pair_.secret, from_.message.size(), from_.message.data(), signature_);
        Octets octets(from_.n.size());
        nettle_mpz_get_str_256(octets.size(), octets.data(), signature_);
        return octets;
    }
    Octets recover() {
        const bool right = rsa_pkcs1_verify(&pair_.open, from_.message.size(), from_.message.data(), expected_) == 1;
        return right ? from_.message : Octets();
    }
    static void generate(std::size_t bits) {
        static std::mt19937 generator(65537);
        Pair pair;
        rsa_generate_keypair(&pair.open, &pair.secret, &generator, draw, nullptr, nullptr, static_cast<unsigned>(bits), 0);
    }

private:
    const RsaKey& from_;
    Pair pair_;
    mpz_t expected_, signature_;
};

}  // namespace

void add_hogweed_rsa(Rows& all) { add_rsa<Rsa>(all, "nettle"); }

}  // namespace morvane::bench
