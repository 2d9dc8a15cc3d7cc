#define OPENSSL_SUPPRESS_DEPRECATED  // the operations without an EVP context around them, which costs more
#include "rsa.h"

#include <openssl/rsa.h>

namespace morvane::bench {
namespace {

using Handle = std::unique_ptr<RSA, decltype(&RSA_free)>;

BIGNUM* number_of(const Octets& octets) { return BN_bin2bn(octets.data(), static_cast<int>(octets.size()), nullptr); }

std::unique_ptr<BIGNUM, decltype(&BN_free)> exponent() {
    BIGNUM* const e = BN_new();
    BN_set_word(e, kPublicExponent);
    return {e, BN_free};
}

class Rsa {
public:
    explicit Rsa(const RsaKey& from) : from_(from) {
        RSA_set0_key(key_.get(), number_of(from.n), exponent().release(), number_of(from.d));
        RSA_set0_factors(key_.get(), number_of(from.p), number_of(from.q));
        RSA_set0_crt_params(key_.get(), number_of(from.dP), number_of(from.dQ), number_of(from.qInv));
        RSA_blinding_off(key_.get());  // nobody has to pay for what not all do
    }

    Octets sign() const { return run(RSA_private_encrypt, from_.message); }
    Octets recover() const { return run(RSA_public_decrypt, from_.signature); }
    static void generate(std::size_t bits) {
        const Handle key(RSA_new(), RSA_free);
        RSA_generate_key_ex(key.get(), static_cast<int>(bits), exponent().get(), nullptr);
    }

private:
    template <typename Operation>
    Octets run(Operation operation, const Octets& in) const {
        Octets out(from_.n.size());
        const int length = operation(static_cast<int>(in.size()), in.data(), out.data(), key_.get(), RSA_PKCS1_PADDING);
        out.resize(static_cast<std::size_t>(std::max(length, 0)));
        return out;
    }

    const RsaKey& from_;
    Handle key_{RSA_new(), RSA_free};
};

}  // namespace

void add_openssl_rsa(Rows& all) { add_rsa<Rsa>(all, "openssl"); }

}  // namespace morvane::bench
