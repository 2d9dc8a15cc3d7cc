#include "rsa.h"

#include <morvane/bignum.h>
#include <morvane/pk.h>

#include <map>

namespace morvane::bench {
namespace {

constexpr std::size_t kMessageBytes = 35;  // a DigestInfo of SHA-1

Octets octets_of(const ENUM& number) {
    Octets octets((EN_GetFilledBitNum(&number) + 7) / 8);
    EN_ENUMToU8(octets.data(), &number);
    return octets;
}

std::unique_ptr<E_RSA_KEY> new_key(std::size_t bits) {
    auto key = std::make_unique<E_RSA_KEY>();
    E_RSA_Init(key.get());
    E_RSA_GenerateKey(key.get(), static_cast<std::int32_t>(bits), kPublicExponent);
    return key;
}

Octets signature_of(const Octets& message, const E_RSA_KEY& key) {
    Octets signature(4 * E_RSA_MODULUS_WORDS);
    const std::int32_t length =
        E_RSA_Private_Encrypt(signature.data(), message.data(), static_cast<std::int32_t>(message.size()), &key);
    signature.resize(static_cast<std::size_t>(std::max(length, 0)));
    return signature;
}

RsaKey make_key(std::size_t bits) {
    const std::unique_ptr<E_RSA_KEY> key = new_key(bits);
    RsaKey made{
        octets_of(key->n),  octets_of(key->d),    octets_of(key->p),           octets_of(key->q), octets_of(key->dP),
        octets_of(key->dQ), octets_of(key->qInv), Octets(kMessageBytes, 0x5a), Octets(bits / 8),  {}};
    std::fill(made.block.begin() + 2, made.block.end(), 0xff);
    made.block[1] = 1;
    made.block[made.block.size() - kMessageBytes - 1] = 0;
    std::copy(made.message.begin(), made.message.end(), made.block.end() - kMessageBytes);
    made.signature = signature_of(made.message, *key);
    return made;
}

class Rsa {
public:
    explicit Rsa(const RsaKey& from) : from_(from) {
        E_RSA_Init(&key_);
        const auto set = [](ENUM& member, const Octets& octets) {
            EN_U8ToENUM(&member, octets.data(), static_cast<std::uint32_t>(octets.size()));
        };
        set(key_.n, from.n);
        set(key_.p, from.p);
        set(key_.q, from.q);
        EN_U32ToENUM(&key_.e, kPublicExponent);
        E_RSA_GenerateD(&key_);
    }

    Octets sign() const { return signature_of(from_.message, key_); }
    Octets recover() const {
        Octets message(from_.n.size());
        const std::int32_t length = E_RSA_Public_Decrypt(message.data(), from_.signature.data(),
                                                         static_cast<std::int32_t>(from_.signature.size()), &key_);
        message.resize(static_cast<std::size_t>(std::max(length, 0)));
        return message;
    }
    static void generate(std::size_t bits) { new_key(bits); }

private:
    const RsaKey& from_;
    E_RSA_KEY key_{};
};

}  // namespace

const RsaKey& rsa_key(std::size_t bits) {
    static std::map<std::size_t, RsaKey> keys;
    const auto found = keys.find(bits);
    return found != keys.end() ? found->second : keys.emplace(bits, make_key(bits)).first->second;
}

void add_our_rsa(Rows& all) { add_rsa<Rsa>(all, kOurs); }

}  // namespace morvane::bench
