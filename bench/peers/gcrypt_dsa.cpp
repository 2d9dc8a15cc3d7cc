#include "dsa.h"

#include "gcrypt_expression.h"

namespace morvane::bench {
namespace {

class Dsa {
public:
    explicit Dsa(const DsaKey& from)
        : private_(build("(private-key (dsa (p %b) (q %b) (g %b) (y %b) (x %b)))", from.p, from.q, from.g, from.y, from.x)),
          public_(build("(public-key (dsa (p %b) (q %b) (g %b) (y %b)))", from.p, from.q, from.g, from.y)),
          digest_(build("(data (flags raw) (value %b))", from.digest)),
          signature_(build("(sig-val (dsa (r %b) (s %b)))", from.r, from.s)) {}

    DsaPair sign() const {
        DsaPair pair{};
        gcry_sexp_t made = nullptr;
        if (gcry_pk_sign(&made, digest_.get(), private_.get()) != 0) return pair;
        const Expression result(made, gcry_sexp_release);
        get(made, "r", pair.data(), 20);
        get(made, "s", pair.data() + 20, 20);
        return pair;
    }
    bool verify() const { return gcry_pk_verify(signature_.get(), digest_.get(), public_.get()) == 0; }

private:
    Expression private_, public_, digest_, signature_;
};

}  // namespace

void add_gcrypt_dsa(Rows& all) { add_dsa<Dsa>(all, "gcrypt"); }

}  // namespace morvane::bench
