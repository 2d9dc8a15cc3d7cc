#include "dsa.h"

#include <cryptopp/dh.h>
#include <cryptopp/dsa.h>
#include <cryptopp/osrng.h>

namespace morvane::bench {
namespace {

using CryptoPP::Integer;

Integer number_of(const Octets& octets) { return Integer(octets.data(), octets.size()); }

CryptoPP::RandomNumberGenerator& generator() {
    static CryptoPP::AutoSeededRandomPool pool;
    return pool;
}

class Dsa {
public:
    explicit Dsa(const DsaKey& from) : from_(from), signature_(from.r) {
        signer_.AccessKey().Initialize(number_of(from.p), number_of(from.q), number_of(from.g), number_of(from.x));
        signer_.AccessKey().AccessGroupParameters().Precompute();
        verifier_.AccessKey().Initialize(number_of(from.p), number_of(from.q), number_of(from.g), number_of(from.y));
        signature_.insert(signature_.end(), from.s.begin(), from.s.end());
    }

    // It hashes the message itself.
    DsaPair sign() const {
        DsaPair pair{};
        signer_.SignMessage(generator(), from_.message.data(), from_.message.size(), pair.data());
        return pair;
    }
    bool verify() const {
        return verifier_.VerifyMessage(from_.message.data(), from_.message.size(), signature_.data(), signature_.size());
    }

private:
    const DsaKey& from_;
    CryptoPP::DSA::Signer signer_;
    CryptoPP::DSA::Verifier verifier_;
    Octets signature_;
};

class Dh {
public:
    explicit Dh(const Operands& from) : own_(from.b), peer_(from.a) {
        dh_.AccessGroupParameters().Initialize(number_of(from.m), Integer(kDhGenerator));
        const std::size_t size = dh_.PrivateKeyLength();
        own_.insert(own_.begin(), size - std::min(size, own_.size()), 0);
    }

    Octets agree() const {
        Octets secret(dh_.AgreedValueLength());
        dh_.Agree(secret.data(), own_.data(), peer_.data(), false);
        return secret;
    }

private:
    CryptoPP::DH dh_;
    Octets own_, peer_;
};

}  // namespace

void add_cryptopp_dsa(Rows& all) {
    add_dsa<Dsa>(all, "cryptopp");
    add_dh<Dh>(all, "cryptopp");
}

}  // namespace morvane::bench
