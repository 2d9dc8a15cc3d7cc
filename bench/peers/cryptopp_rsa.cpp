#include "rsa.h"

#include <cryptopp/osrng.h>
#include <cryptopp/rsa.h>

namespace morvane::bench {
namespace {

using CryptoPP::Integer;

Integer number_of(const Octets& octets) { return Integer(octets.data(), octets.size()); }

CryptoPP::RandomNumberGenerator& generator() {
    static CryptoPP::AutoSeededRandomPool pool;
    return pool;
}

class Rsa {
public:
    explicit Rsa(const RsaKey& from) : from_(from), block_(number_of(from.block)), signature_(number_of(from.signature)) {
        key_.Initialize(number_of(from.n), kPublicExponent, number_of(from.d), number_of(from.p), number_of(from.q),
                        number_of(from.dP), number_of(from.dQ), number_of(from.qInv));
    }

    Octets sign() const {
        const Integer signature = key_.CalculateInverse(generator(), block_);
        Octets octets(from_.n.size());
        signature.Encode(octets.data(), octets.size());
        return octets;
    }
    Octets recover() const { return key_.ApplyFunction(signature_) == block_ ? from_.message : Octets(); }
    static void generate(std::size_t bits) {
        CryptoPP::InvertibleRSAFunction key;
        key.Initialize(generator(), static_cast<unsigned>(bits), kPublicExponent);
    }

private:
    const RsaKey& from_;
    Integer block_, signature_;
    CryptoPP::InvertibleRSAFunction key_;
};

}  // namespace

void add_cryptopp_rsa(Rows& all) { add_rsa<Rsa>(all, "cryptopp"); }

}  // namespace morvane::bench
