#include "kcdsa_key.h"

#include "hex.h"
#include "input.h"
#include "json.h"
#include "subgroup_key.h"
#include "toolkit.h"
#include "usage.h"

#include <morvane/bignum.h>
#include <morvane/kcdsa.h>

#include <array>

namespace morvane::tool {
namespace {

using toolkit::In;

constexpr std::array<std::uint8_t, 8> kOid = {0x2a, 0x83, 0x1a, 0x8c, 0x9a, 0x44, 0x01, 0x01};  // 1.2.410.200004.1.1

struct Hash {
    std::string_view name;
    std::int32_t id;
};

constexpr Hash kHashes[] = {{"has160", E_KCDSA_HAS160}, {"sha1", E_KCDSA_SHA1}};
constexpr char kDefaultHash[] = "has160";

class KcdsaKey final : public SubgroupKey {
public:
    KcdsaKey() : SubgroupKey(kKind) {}

    std::vector<std::uint8_t> sign(const SignatureOptions& options, const std::string& input) const override {
        const Signed data = data_to_sign(options, input);
        const Secret key = der(KeyPart::kPrivate);
        std::optional<Secret> signature =
            data.hash == nullptr ? toolkit::make(KERR_SIGN, K_KCDSASignHash, In(*key), In(data.bytes))
                                 : toolkit::make(KERR_SIGN, K_KCDSASign, data.hash->id, In(*key), In(data.bytes));
        if (!signature) throw KeyError("the library makes no signature with it");
        if (!is_good(data, **signature)) throw KeyError("the numbers of the key do not belong together");
        return std::move(**signature);
    }

    bool verify(const SignatureOptions& options, const std::string& input, Bytes signature) const override {
        return is_good(data_to_sign(options, input), signature);
    }

    std::string remark() const override {
        return seed_.empty() ? "" : "seed: " + seed_ + "\ncount: " + std::to_string(count_) + "\n";
    }
    void tell(Json& json) const override {
        SubgroupKey::tell(json);
        if (!seed_.empty()) json.member("seed", seed_).member("count", count_);
    }
    void set_seed(std::string seed, std::uint32_t count) {
        seed_ = std::move(seed);
        count_ = count;
    }

private:
    static constexpr Kind kKind{"KCDSA", kOid, "PRIVATE KEY", "KCDSA PARAMETERS", false};

    struct Signed {
        const Hash* hash;  // of the newer generation
        std::vector<std::uint8_t> bytes;
    };

    // y = g^(1/x): q is prime, so 1/x is x^(q - 2), in a time that does not tell x.
    void compute_y() override {
        const Number exponent(E_DSA_WORDS), inverse(E_DSA_WORDS);
        EN_SubU32(exponent.get(), &get()->q, 2);
        EN_Mod_Exp(inverse.get(), &get()->x, exponent.get(), &get()->q);
        set_y(*inverse.get());
    }

    Signed data_to_sign(const SignatureOptions& options, const std::string& input) const {
        options.refuse_those_of_rsa();
        const std::string hash = options.hash.value_or(kDefaultHash);
        if (options.old) return {nullptr, digest_of(hash, input)};
        const Hash& row = find_row(kHashes, "without --old, --hash", hash);
        return {&row, read_whole(input)};
    }

    bool is_good(const Signed& data, Bytes signature) const {
        const Secret key = der(KeyPart::kPublic);
        return data.hash == nullptr
                   ? toolkit::check(KERR_VERIFY, K_KCDSAVerifyHash, In(*key), In(data.bytes), In(signature))
                   : toolkit::check(KERR_VERIFY, K_KCDSAVerify, data.hash->id, In(*key), In(data.bytes), In(signature));
    }

    std::string seed_;  // in hexadecimal digits; empty where nobody drew the domain from one
    std::uint32_t count_ = 0;
};

// ---- Generation ----

void generate_seeded(KcdsaKey& key, DomainSize size) {
    std::array<std::uint8_t, 20> seed{};
    std::uint32_t count = 0;
    E_KCDSA_GenerateX9Key(key.get(), size.p_bits, size.q_bits, seed.data(), &count);
    key.set_seed(to_hex(seed), count);
}

struct DomainKind {
    std::string_view name;
    std::int64_t least_bits, least_difference;  // of p, and of the lengths of p and q
    void (*generate)(KcdsaKey& key, DomainSize size);
};

constexpr std::string_view kBuiltIn = "builtin";

constexpr DomainKind kDomainKinds[] = {
    {"plain", 64, 8, [](KcdsaKey& key, DomainSize size) { key.generate(K_PAIR_KCDSA, E_KCDSA_GenerateKey, size); }},
    {"seeded", 1024, 32, generate_seeded},
    {kBuiltIn, 64, 8, [](KcdsaKey& key, DomainSize size) { E_KCDSA_GenerateKey_fixParam(key.get(), 0, size.q_bits); }},
};

}  // namespace

std::unique_ptr<Key> read_kcdsa_key(const KeyFile& file) { return read_subgroup_key<KcdsaKey>(file); }

std::function<std::unique_ptr<Key>()> prepare_kcdsa_key(const KeyOptions& options, const Key* domain) {
    refuse_foreign_options(options, domain);
    const DomainKind& kind = find_row(kDomainKinds, "--kind", options.kind.value_or("plain"));
    if (kind.name == kBuiltIn && (options.bits || options.subgroup_bits)) {
        throw UsageError("the built-in parameters have 1024 and 160 bits");
    }
    const DomainSize size = domain_size(options, kind.least_bits, kind.least_difference);
    return [size, domain, &kind, no_key = options.parameters_only]() -> std::unique_ptr<Key> {
        auto key = std::make_unique<KcdsaKey>();
        if (domain == nullptr) {
            kind.generate(*key, size);
        } else {
            key->take_domain(*domain);
            key->require_domain();
            if (!no_key) key->take_pair(K_GenerateKCDSAKeyPair_Params, In(*key->der(KeyPart::kParameters)));
        }
        key->generated(no_key ? KeyPart::kParameters : KeyPart::kPrivate);
        return key;
    };
}

}  // namespace morvane::tool
