// What is measured of public keys: RSA, DSA, KCDSA, the curves, Diffie-Hellman and primes.
#include "speed.h"

#include "curve_records.h"
#include "known_keys.h"
#include "number.h"

#include <morvane/asn1.h>
#include <morvane/bignum.h>
#include <morvane/kcdsa.h>
#include <morvane/prime.h>

#include <memory>

namespace morvane::tool {
namespace {

constexpr std::uint32_t kExponent = 65537;
constexpr std::int32_t kMostRoom = 512;  // of a signature or a block

// A key, a digest to be signed, and what was made of it.
template <typename Record>
struct Bench {
    std::unique_ptr<Record> key;
    Octets digest = Octets(20, 0x5a), made = Octets(kMostRoom), out = Octets(kMostRoom);
    std::int32_t size = 0;
};

// `make` is done once; what is measured is `run`.
template <typename Record>
SpeedRow row_of(std::string name, std::unique_ptr<Record> (*key)(), void (*make)(Bench<Record>& bench),
                void (*run)(Bench<Record>& bench)) {
    return {std::move(name), 0, [=]() -> Operation {
                const auto bench = std::make_shared<Bench<Record>>();
                bench->key = key();
                make(*bench);
                return [=] { run(*bench); };
            }};
}

using Rsa = Bench<E_RSA_KEY>;
using Group = Bench<E_DSA_KEY>;

template <std::int32_t Bits>
std::unique_ptr<E_RSA_KEY> new_rsa_key() {
    auto key = std::make_unique<E_RSA_KEY>();
    E_RSA_Init(key.get());
    E_RSA_GenerateKey(key.get(), Bits, kExponent);
    return key;
}

void rsa_sign(Rsa& bench) { E_RSA_Sign(bench.digest.data(), 20, bench.made.data(), &bench.size, bench.key.get()); }
void rsa_verify(Rsa& bench) { E_RSA_Verify(bench.digest.data(), 20, bench.made.data(), bench.size, bench.key.get()); }
void rsa_encrypt(Rsa& bench) {
    bench.size = E_RSA_Public_Encrypt(bench.made.data(), bench.digest.data(), 20, bench.key.get());
}
void rsa_decrypt(Rsa& bench) { E_RSA_Private_Decrypt(bench.out.data(), bench.made.data(), bench.size, bench.key.get()); }

template <typename Record>
void nothing(Bench<Record>&) {}

template <std::int32_t Bits>
void add_rsa(SpeedRows& all) {
    const std::string name = "rsa-" + std::to_string(Bits);
    all.push_back(row_of<E_RSA_KEY>(name + "-sign", new_rsa_key<Bits>, nothing, rsa_sign));
    all.push_back(row_of<E_RSA_KEY>(name + "-verify", new_rsa_key<Bits>, rsa_sign, rsa_verify));
    all.push_back(row_of<E_RSA_KEY>(name + "-encrypt", new_rsa_key<Bits>, nothing, rsa_encrypt));
    all.push_back(row_of<E_RSA_KEY>(name + "-decrypt", new_rsa_key<Bits>, rsa_encrypt, rsa_decrypt));
    all.push_back({name + "-generate", 0, []() -> Operation { return [] { new_rsa_key<Bits>(); }; }});
}

template <auto Sign>
void group_sign(Group& bench) {
    Sign(bench.digest.data(), 20, bench.made.data(), &bench.size, bench.key.get());
}
template <auto Verify>
void group_verify(Group& bench) {
    Verify(bench.digest.data(), 20, bench.made.data(), bench.size, bench.key.get());
}
void kcdsa_sign(Group& bench) {
    E_KCDSA_Sign_New(E_KCDSA_HAS160, bench.digest.data(), 20, bench.made.data(), &bench.size, bench.key.get());
}
void kcdsa_verify(Group& bench) {
    E_KCDSA_Verify_New(E_KCDSA_HAS160, bench.digest.data(), 20, bench.made.data(), bench.size, bench.key.get());
}

struct GroupRows {
    const char* name;
    std::unique_ptr<E_DSA_KEY> (*key)();
    void (*sign)(Group& bench);
    void (*verify)(Group& bench);
};

constexpr GroupRows kGroups[] = {
    {"dsa-1024", known_dsa_key, group_sign<E_DSA_Sign>, group_verify<E_DSA_Verify>},
    {"kcdsa-1024", known_kcdsa_key, kcdsa_sign, kcdsa_verify},
    {"kcdsa-old-1024", known_kcdsa_key, group_sign<E_KCDSA_Sign>, group_verify<E_KCDSA_Verify>},
};

std::unique_ptr<E_DH_KEY> dh_key() {
    auto key = std::make_unique<E_DH_KEY>();
    E_DH_Init(key.get());
    const Octets der = octets(kDhParameters);
    const std::uint8_t* position = der.data();
    E_ASN1_GetDHParams(key.get(), &position, size32(der));
    key->x.words = nullptr;  // then it is drawn
    E_DH_GenerateKey(key.get(), 0);
    return key;
}
void dh_agree(Bench<E_DH_KEY>& bench) { E_DH_ComputeKey(bench.out.data(), &bench.key->y, bench.key.get()); }

// Two pairs on a curve, a message and its signature.
struct CurveBench {
    explicit CurveBench(std::int32_t id) : curve(id) {
        E_ECC_GenerateKeyPair(curve.id, &curve.params, own, point);
        E_ECC_GenerateKeyPair_ECKCDSA(curve.id, &curve.params, own_of_kcdsa, point_of_kcdsa);
        ecdsa_sign();
        eckcdsa_sign();
    }
    void ecdsa_sign() { E_ECDSA_Sign(curve.id, &curve.params, message, signature, own); }
    void ecdsa_verify() { E_ECDSA_Verify(curve.id, &curve.params, message, signature, point); }
    void eckcdsa_sign() {
        E_ECKCDSA_Sign(curve.id, &curve.params, message, signature_of_kcdsa, own_of_kcdsa, point_of_kcdsa);
    }
    void eckcdsa_verify() { E_ECKCDSA_Verify(curve.id, &curve.params, message, signature_of_kcdsa, point_of_kcdsa); }
    void ecdh() { E_ECC_ECDH_Primitive(curve.id, &curve.params, own, point_of_kcdsa, secret); }

    CurveRecord curve;
    OctetRecord own{Octets(E_EC_PRIVATE_KEY_OCTETS)}, point{Octets(E_EC_POINT_OCTETS)};
    OctetRecord own_of_kcdsa{Octets(E_EC_PRIVATE_KEY_OCTETS)}, point_of_kcdsa{Octets(E_EC_POINT_OCTETS)};
    OctetRecord message{Octets(20, 0x5a)}, secret{Octets(E_EC_SHARED_OCTETS)};
    OctetRecord signature{Octets(E_ECDSA_SIGNATURE_OCTETS)}, signature_of_kcdsa{Octets(E_ECKCDSA_SIGNATURE_OCTETS)};
};

struct CurveRow {
    const char* name;
    void (CurveBench::*run)();
};

constexpr CurveRow kCurveRows[] = {{"ecdsa-sign", &CurveBench::ecdsa_sign},
                                   {"ecdsa-verify", &CurveBench::ecdsa_verify},
                                   {"eckcdsa-sign", &CurveBench::eckcdsa_sign},
                                   {"eckcdsa-verify", &CurveBench::eckcdsa_verify},
                                   {"ecdh", &CurveBench::ecdh}};

void add_curve(SpeedRows& all, std::int32_t id, const std::string& curve) {
    for (const CurveRow& row : kCurveRows) {
        all.push_back({curve + "-" + row.name, 0, [&row, id]() -> Operation {
                           return [&row, bench = std::make_shared<CurveBench>(id)] { (*bench.*row.run)(); };
                       }});
    }
}

void add_prime(SpeedRows& all, std::int32_t bits) {
    all.push_back({"prime-" + std::to_string(bits), 0, [bits]() -> Operation {
                       const auto p = std::make_shared<Number>(static_cast<std::uint32_t>(bits) / 32);
                       return [=] { EN_GeneratePrimeRSA(p->get(), bits); };
                   }});
}

}  // namespace

void add_key_speeds(SpeedRows& all) {
    add_rsa<1024>(all);
    add_rsa<2048>(all);
    for (const GroupRows& group : kGroups) {
        all.push_back(row_of<E_DSA_KEY>(std::string(group.name) + "-sign", group.key, nothing, group.sign));
        all.push_back(row_of<E_DSA_KEY>(std::string(group.name) + "-verify", group.key, group.sign, group.verify));
    }
    all.push_back(row_of<E_DH_KEY>("dh-768", dh_key, nothing, dh_agree));
    add_curve(all, 3, "sect163k1");
    add_curve(all, 5, "c2pnb163v1");
    add_curve(all, 7, "secp160r1");
    for (const std::int32_t bits : {512, 1024}) add_prime(all, bits);
}

}  // namespace morvane::tool
