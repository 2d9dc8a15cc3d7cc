#define OPENSSL_SUPPRESS_DEPRECATED  // the operations without an EVP context around them, which costs more
#include "dsa.h"

#include <openssl/dh.h>
#include <openssl/dsa.h>

namespace morvane::bench {
namespace {

BIGNUM* number_of(const Octets& octets) { return BN_bin2bn(octets.data(), static_cast<int>(octets.size()), nullptr); }

class Dsa {
public:
    explicit Dsa(const DsaKey& from) : from_(from) {
        DSA_set0_pqg(key_.get(), number_of(from.p), number_of(from.q), number_of(from.g));
        DSA_set0_key(key_.get(), number_of(from.y), number_of(from.x));
        DSA_SIG_set0(signature_.get(), number_of(from.r), number_of(from.s));
    }

    DsaPair sign() const {
        const Signature made(DSA_do_sign(from_.digest.data(), static_cast<int>(from_.digest.size()), key_.get()),
                             DSA_SIG_free);
        DsaPair pair{};
        const BIGNUM *r = nullptr, *s = nullptr;
        DSA_SIG_get0(made.get(), &r, &s);
        BN_bn2binpad(r, pair.data(), 20);
        BN_bn2binpad(s, pair.data() + 20, 20);
        return pair;
    }
    bool verify() const {
        const int size = static_cast<int>(from_.digest.size());
        return DSA_do_verify(from_.digest.data(), size, signature_.get(), key_.get()) == 1;
    }

private:
    using Signature = std::unique_ptr<DSA_SIG, decltype(&DSA_SIG_free)>;
    const DsaKey& from_;
    std::unique_ptr<DSA, decltype(&DSA_free)> key_{DSA_new(), DSA_free};
    Signature signature_{DSA_SIG_new(), DSA_SIG_free};
};

class Dh {
public:
    explicit Dh(const Operands& from) : peer_(number_of(from.a), BN_free) {
        DH_set0_pqg(key_.get(), number_of(from.m), nullptr, number_of({kDhGenerator}));
        DH_set0_key(key_.get(), nullptr, number_of(from.b));
    }

    Octets agree() const {
        Octets secret(static_cast<std::size_t>(DH_size(key_.get())));
        secret.resize(static_cast<std::size_t>(std::max(DH_compute_key(secret.data(), peer_.get(), key_.get()), 0)));
        return secret;
    }

private:
    std::unique_ptr<DH, decltype(&DH_free)> key_{DH_new(), DH_free};
    std::unique_ptr<BIGNUM, decltype(&BN_free)> peer_;
};

}  // namespace

void add_openssl_dsa(Rows& all) {
    add_dsa<Dsa>(all, "openssl");
    add_dh<Dh>(all, "openssl");
}

}  // namespace morvane::bench
