#include "dsa.h"

#include <morvane/asn1.h>
#include <morvane/bignum.h>
#include <morvane/dh.h>
#include <morvane/dsa.h>
#include <morvane/hash.h>
#include <morvane/kcdsa.h>
#include <morvane/prime.h>

#include <map>

namespace morvane::bench {
namespace {

constexpr std::size_t kNumberBytes = 20;
constexpr std::size_t kMostSignatureBytes = 64;

Octets octets_of(const ENUM& number) {
    Octets octets((EN_GetFilledBitNum(&number) + 7) / 8);
    EN_ENUMToU8(octets.data(), &number);
    return octets;
}

void set(ENUM& member, const Octets& octets) {
    EN_U8ToENUM(&member, octets.data(), static_cast<std::uint32_t>(octets.size()));
}

std::int32_t size_of(const Octets& octets) { return static_cast<std::int32_t>(octets.size()); }

Octets signature_of(std::span<const std::uint8_t> r, std::span<const std::uint8_t> s) {
    std::uint32_t words[2][kNumberBytes / 4];
    ENUM numbers[2] = {{0, 0, words[0]}, {0, 0, words[1]}};
    EN_U8ToENUM(&numbers[0], r.data(), static_cast<std::uint32_t>(r.size()));
    EN_U8ToENUM(&numbers[1], s.data(), static_cast<std::uint32_t>(s.size()));
    Octets signature(static_cast<std::size_t>(E_ASN1_GetENUMBytes(numbers, 2)));
    E_ASN1_PutENUM(numbers, 2, signature.data());
    return signature;
}

// The two INTEGERs of a signature.
DsaPair pair_of(const Octets& signature) {
    DsaPair pair{};
    std::size_t at = 2;
    for (std::size_t end = kNumberBytes; end <= pair.size(); end += kNumberBytes) {
        const std::size_t length = signature.at(at + 1);
        for (std::size_t i = 0; i < std::min(length, kNumberBytes); ++i)
            pair[end - 1 - i] = signature.at(at + 1 + length - i);
        at += 2 + length;
    }
    return pair;
}

using Record = std::unique_ptr<E_DSA_KEY>;

Record record_of(const DsaKey& from) {
    auto record = std::make_unique<E_DSA_KEY>();
    E_DSA_Init(record.get());
    set(record->p, from.p);
    set(record->q, from.q);
    set(record->g, from.g);
    set(record->x, from.x);
    set(record->y, from.y);
    return record;
}

Octets sign_digest(const Octets& digest, const E_DSA_KEY& key) {
    Octets signature(kMostSignatureBytes);
    std::int32_t size = 0;
    E_DSA_Sign(digest.data(), size_of(digest), signature.data(), &size, &key);
    signature.resize(static_cast<std::size_t>(size));
    return signature;
}

DsaKey make_key() {
    const auto record = std::make_unique<E_DSA_KEY>();
    E_DSA_Init(record.get());
    E_DSA_GenerateKey(record.get(), kDsaBits, 8 * kNumberBytes);
    DsaKey made{octets_of(record->p),
                octets_of(record->q),
                octets_of(record->g),
                octets_of(record->x),
                octets_of(record->y),
                Octets(kNumberBytes, 0x5a),
                Octets(kNumberBytes),
                {},
                {}};
    E_SHA1(made.digest.data(), made.message.data(), static_cast<std::uint32_t>(made.message.size()));
    const DsaPair pair = pair_of(sign_digest(made.digest, *record));
    made.r.assign(pair.begin(), pair.begin() + kNumberBytes);
    made.s.assign(pair.begin() + kNumberBytes, pair.end());
    return made;
}

class Dsa {
public:
    explicit Dsa(const DsaKey& from) : from_(from), key_(record_of(from)), signature_(signature_of(from.r, from.s)) {}

    Octets sign() const { return sign_digest(from_.digest, *key_); }
    bool verify(const Octets& signature) const {
        return E_DSA_Verify(from_.digest.data(), size_of(from_.digest), signature.data(), size_of(signature), key_.get()) ==
               1;
    }
    bool verify() const { return verify(signature_); }

private:
    const DsaKey& from_;
    Record key_;
    Octets signature_;
};

// The newer generation with HAS-160, in the same domain and of the same message.
class Kcdsa {
public:
    explicit Kcdsa(const DsaKey& from) : from_(from), key_(record_of(from)) {
        E_KCDSA_GenerateXY(key_.get(), 0, 8 * kNumberBytes);
        signature_ = sign();
    }

    Octets sign() const {
        Octets signature(kMostSignatureBytes);
        std::int32_t size = 0;
        E_KCDSA_Sign_New(E_KCDSA_HAS160, from_.message.data(), size_of(from_.message), signature.data(), &size, key_.get());
        signature.resize(static_cast<std::size_t>(size));
        return signature;
    }
    bool verify(const Octets& signature) const {
        return E_KCDSA_Verify_New(E_KCDSA_HAS160, from_.message.data(), size_of(from_.message), signature.data(),
                                  size_of(signature), key_.get()) == 1;
    }
    bool verify() const { return verify(signature_); }

private:
    const DsaKey& from_;
    Record key_;
    Octets signature_;
};

template <typename Any>
void add_two(Rows& all, const char* sign, const char* verify) {
    struct Side {
        Any any{dsa_key()};
        Octets signature;
        bool good = false;
    };
    const auto side = std::make_shared<Side>();
    const auto add = [&](const char* operation, auto work, auto good) {
        Row row{operation, kOurs, [side, work](std::uint8_t*, const std::uint8_t*, std::size_t) { work(*side); },
                Kind::kNumber};
        row.bits = kDsaBits;
        row.result = [side, good] { return Octets{good(*side)}; };
        all.push_back(std::move(row));
    };
    add(
        sign, [](Side& it) { it.signature = it.any.sign(); }, [](Side& it) { return it.any.verify(it.signature); });
    add(
        verify, [](Side& it) { it.good = it.any.verify(); }, [](Side& it) { return it.good; });
}

class Dh {
public:
    explicit Dh(const Operands& from) : key_(std::make_unique<E_DH_KEY>()), peer_words_(E_DH_WORDS) {
        E_DH_Init(key_.get());
        set(key_->p, from.m);
        set(key_->x, from.b);
        EN_U32ToENUM(&key_->g, kDhGenerator);
        peer_.words = peer_words_.data();
        set(peer_, from.a);
    }

    Octets agree() const {
        Octets secret(4 * E_DH_WORDS);
        secret.resize(static_cast<std::size_t>(std::max(E_DH_ComputeKey(secret.data(), &peer_, key_.get()), 0)));
        return secret;
    }

private:
    std::unique_ptr<E_DH_KEY> key_;
    std::vector<std::uint32_t> peer_words_;
    ENUM peer_{};
};

}  // namespace

const DsaKey& dsa_key() {
    static const DsaKey key = make_key();
    return key;
}

bool is_signature(const DsaPair& pair) {
    const std::span<const std::uint8_t> octets(pair);
    return Dsa(dsa_key()).verify(signature_of(octets.first(kNumberBytes), octets.last(kNumberBytes)));
}

// Its two highest bits are set, as those of m were.
Operands with_prime_modulus(Operands operands) {
    static std::map<std::size_t, Octets> primes;
    Octets& prime = primes[operands.m.size()];
    if (prime.empty()) {
        std::vector<std::uint32_t> words(operands.m.size() / 4);
        ENUM p{0, 0, words.data()};
        EN_GeneratePrimeRSA(&p, static_cast<std::int32_t>(8 * operands.m.size()));
        prime = octets_of(p);
    }
    operands.m = prime;
    return operands;
}

void add_our_dsa(Rows& all) {
    add_two<Dsa>(all, "dsa-sign", "dsa-verify");
    add_two<Kcdsa>(all, "kcdsa-sign", "kcdsa-verify");
    add_dh<Dh>(all, kOurs);
}

}  // namespace morvane::bench
