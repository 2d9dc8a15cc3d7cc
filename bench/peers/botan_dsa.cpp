#include "dsa.h"

#include <botan/dh.h>
#include <botan/dl_group.h>
#include <botan/dsa.h>
#include <botan/pubkey.h>
#include <botan/system_rng.h>

namespace morvane::bench {
namespace {

using Botan::BigInt;

class Dsa {
public:
    explicit Dsa(const DsaKey& from)
        : from_(from),
          key_(Botan::system_rng(), Botan::DL_Group(BigInt(from.p), BigInt(from.q), BigInt(from.g)), BigInt(from.x)),
          signer_(key_, Botan::system_rng(), "Raw"),
          verifier_(key_, "Raw"),
          signature_(from.r) {
        signature_.insert(signature_.end(), from.s.begin(), from.s.end());
    }

    DsaPair sign() {
        const auto signature = signer_.sign_message(from_.digest, Botan::system_rng());
        DsaPair pair{};
        std::copy_n(signature.begin(), std::min(signature.size(), pair.size()), pair.begin());
        return pair;
    }
    bool verify() { return verifier_.verify_message(from_.digest, signature_); }

private:
    const DsaKey& from_;
    Botan::DSA_PrivateKey key_;
    Botan::PK_Signer signer_;
    Botan::PK_Verifier verifier_;
    Octets signature_;
};

class Dh {
public:
    explicit Dh(const Operands& from)
        : key_(Botan::system_rng(), Botan::DL_Group(BigInt(from.m), BigInt(kDhGenerator)), BigInt(from.b)),
          agreement_(key_, Botan::system_rng(), "Raw"),
          peer_(from.a) {}

    Octets agree() const {
        const Botan::SymmetricKey secret = agreement_.derive_key(0, peer_);
        return {secret.begin(), secret.end()};
    }

private:
    Botan::DH_PrivateKey key_;
    Botan::PK_Key_Agreement agreement_;
    Octets peer_;
};

}  // namespace

void add_botan_dsa(Rows& all) {
    add_dsa<Dsa>(all, "botan");
    add_dh<Dh>(all, "botan");
}

}  // namespace morvane::bench
