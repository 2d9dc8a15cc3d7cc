#include "rsa.h"

#include "gcrypt_expression.h"

namespace morvane::bench {
namespace {

const Octets kExponent = {1, 0, 1};  // 65537

class Rsa {
public:
    // Its u is 1 / p modulo q, where p is the smaller one.
    explicit Rsa(const RsaKey& from)
        : from_(from),
          private_(build("(private-key (rsa (n %b) (e %b) (d %b) (p %b) (q %b) (u %b)))", from.n, kExponent, from.d, from.q,
                         from.p, from.qInv)),
          public_(build("(public-key (rsa (n %b) (e %b)))", from.n, kExponent)),
          message_(build("(data (flags raw no-blinding) (value %b))", from.block)),
          signature_(build("(sig-val (rsa (s %b)))", from.signature)) {}

    Octets sign() const {
        gcry_sexp_t made = nullptr;
        if (gcry_pk_sign(&made, message_.get(), private_.get()) != 0) return {};
        const Expression result(made, gcry_sexp_release);
        Octets signature(from_.n.size());
        get(made, "s", signature.data(), signature.size());
        return signature;
    }
    Octets recover() const {
        return gcry_pk_verify(signature_.get(), message_.get(), public_.get()) == 0 ? from_.message : Octets();
    }
    static void generate(std::size_t bits) {
        gcry_sexp_t key = nullptr;
        // From the generator for keys of a day: the other one asks the system for more octets than anybody else does.
        const Expression request = build(bits == 1024 ? "(genkey (rsa (nbits 4:1024) (flags transient-key)))"
                                                      : "(genkey (rsa (nbits 4:2048) (flags transient-key)))");
        gcry_pk_genkey(&key, request.get());
        gcry_sexp_release(key);
    }

private:
    const RsaKey& from_;
    Expression private_, public_, message_, signature_;
};

}  // namespace

void add_gcrypt_rsa(Rows& all) { add_rsa<Rsa>(all, "gcrypt"); }

}  // namespace morvane::bench
