#include "rsa.h"

#include <botan/pubkey.h>
#include <botan/rsa.h>
#include <botan/system_rng.h>

namespace morvane::bench {
namespace {

constexpr const char* kPadding = "EMSA_PKCS1(Raw)";

class Rsa {
public:
    explicit Rsa(const RsaKey& from)
        : from_(from),
          key_(Botan::BigInt(from.p), Botan::BigInt(from.q), kPublicExponent, Botan::BigInt(from.d), Botan::BigInt(from.n)),
          signer_(key_, Botan::system_rng(), kPadding),
          verifier_(key_, kPadding) {}

    Octets sign() {
        const auto signature = signer_.sign_message(from_.message, Botan::system_rng());
        return {signature.begin(), signature.end()};
    }
    Octets recover() { return verifier_.verify_message(from_.message, from_.signature) ? from_.message : Octets(); }
    static void generate(std::size_t bits) { Botan::RSA_PrivateKey(Botan::system_rng(), bits, kPublicExponent); }

private:
    const RsaKey& from_;
    Botan::RSA_PrivateKey key_;
    Botan::PK_Signer signer_;
    Botan::PK_Verifier verifier_;
};

}  // namespace

void add_botan_rsa(Rows& all) { add_rsa<Rsa>(all, "botan"); }

}  // namespace morvane::bench
