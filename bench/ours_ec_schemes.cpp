#include "ec_schemes.h"

#include <morvane/ecc_schemes.h>

#include <map>

namespace morvane::bench {
namespace {

constexpr std::size_t kMessageBytes = 100;

TORVA_V1_OPAQUE8 record_of(const Octets& octets) {
    return {static_cast<std::int32_t>(octets.size()), const_cast<std::uint8_t*>(octets.data())};
}

// An output's octets, after a call that returned 0; nothing otherwise.
template <typename Call>
Octets written_by(Call call) {
    Octets octets(E_ECDSA_SIGNATURE_OCTETS);
    TORVA_V1_OPAQUE8 out = {0, octets.data()};
    if (call(&out) != 0) return {};
    octets.resize(static_cast<std::size_t>(out.count));
    return octets;
}

class Schemes {
public:
    explicit Schemes(const EcKey& from) : id_(from.curve.id), from_(from) { E_ECParams_Init(id_, &params_); }

    Octets sign(bool is_kcdsa) const {
        return written_by([&](TORVA_V1_OPAQUE8* out) {
            return is_kcdsa ? E_ECKCDSA_Sign(id_, &params_, &message_, out, &kcdsa_d_, &kcdsa_q_)
                            : E_ECDSA_Sign(id_, &params_, &message_, out, &d_);
        });
    }
    bool verify(bool is_kcdsa, const Octets& signature) const {
        const TORVA_V1_OPAQUE8 block = record_of(signature);
        return (is_kcdsa ? E_ECKCDSA_Verify(id_, &params_, &message_, &block, &kcdsa_q_)
                         : E_ECDSA_Verify(id_, &params_, &message_, &block, &q_)) == 1;
    }
    Octets agree() const {
        return written_by([&](TORVA_V1_OPAQUE8* out) { return TORVA_V1_ECDHPrimitive(id_, &params_, &d_, &other_, out); });
    }
    Octets generate() const {
        std::uint8_t private_octets[E_EC_PRIVATE_KEY_OCTETS];
        TORVA_V1_OPAQUE8 private_key = {0, private_octets};
        return written_by([&](TORVA_V1_OPAQUE8* out) { return E_ECC_GenerateKeyPair(id_, &params_, &private_key, out); });
    }

private:
    std::int32_t id_;
    E_EC_PARAMS params_{};
    EcKey from_;
    TORVA_V1_OPAQUE8 d_ = record_of(from_.pair.d), q_ = record_of(from_.pair.q);
    TORVA_V1_OPAQUE8 kcdsa_d_ = record_of(from_.kcdsa_pair.d), kcdsa_q_ = record_of(from_.kcdsa_pair.q);
    TORVA_V1_OPAQUE8 other_ = record_of(from_.other_q), message_ = record_of(from_.message);
};

EcKeyPair new_pair(std::int32_t id, decltype(TORVA_V1_ECC_KeyPairGeneration_X962)* generate) {
    E_EC_PARAMS params;
    E_ECParams_Init(id, &params);
    EcKeyPair pair{Octets(E_EC_SCALAR_OCTETS), {}};
    TORVA_V1_OPAQUE8 d = record_of(pair.d);
    pair.q = written_by([&](TORVA_V1_OPAQUE8* out) { return generate(id, &params, &d, out); });
    pair.d.resize(static_cast<std::size_t>(d.count));
    return pair;
}

EcKey make_key(const NamedCurve& curve) {
    return {curve, new_pair(curve.id, TORVA_V1_ECC_KeyPairGeneration_X962),
            new_pair(curve.id, TORVA_V1_ECC_KeyPairGeneration_ECKCDSA),
            new_pair(curve.id, TORVA_V1_ECC_KeyPairGeneration_X962).q, Octets(kMessageBytes, 0x5a)};
}

}  // namespace

const EcKey& ec_key(const NamedCurve& curve) {
    static std::map<std::int32_t, EcKey> keys;
    const auto found = keys.find(curve.id);
    return found != keys.end() ? found->second : keys.emplace(curve.id, make_key(curve)).first->second;
}

void add_our_ec_schemes(Rows& all) { add_ec_schemes<Schemes>(all, kOurs); }

}  // namespace morvane::bench
