#include "kcdsa_key.h"

#include "command_line.h"
#include "hex.h"
#include "input.h"
#include "subgroup_key.h"

#include <morvane/bignum.h>
#include <morvane/kcdsa.h>

#include <array>

namespace morvane::tool {
namespace {

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
        std::vector<std::uint8_t> signature =
            data.hash == nullptr ? sign_digest(E_KCDSA_Sign, data.bytes) : sign_message(data);
        if (!is_good(data, signature)) throw KeyError("the numbers of the key do not belong together");
        return signature;
    }

    bool verify(const SignatureOptions& options, const std::string& input, Bytes signature) const override {
        return is_good(data_to_sign(options, input), signature);
    }

    std::string remark() const override { return remark_; }
    void set_remark(std::string remark) { remark_ = std::move(remark); }

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

    std::vector<std::uint8_t> sign_message(const Signed& data) const {
        std::vector<std::uint8_t> signature(signature_room());
        std::int32_t size = 0;
        if (E_KCDSA_Sign_New(data.hash->id, data.bytes.data(), length(data.bytes), signature.data(), &size, get()) != 1) {
            throw KeyError("the library makes no signature with it");
        }
        signature.resize(static_cast<std::size_t>(size));
        return signature;
    }

    bool is_good(const Signed& data, Bytes signature) const {
        const std::uint8_t* const bytes = data.bytes.data();
        const std::int32_t count = length(data.bytes), size = length(signature);
        return (data.hash == nullptr ? E_KCDSA_Verify(bytes, count, signature.data(), size, get())
                                     : E_KCDSA_Verify_New(data.hash->id, bytes, count, signature.data(), size, get())) == 1;
    }

    std::string remark_;
};

// ---- Generation ----

void generate_seeded(KcdsaKey& key, DomainSize size) {
    std::array<std::uint8_t, 20> seed{};
    std::uint32_t count = 0;
    E_KCDSA_GenerateX9Key(key.get(), size.p_bits, size.q_bits, seed.data(), &count);
    key.set_remark("seed: " + to_hex(seed) + "\ncount: " + std::to_string(count) + "\n");
}

struct DomainKind {
    std::string_view name;
    std::int64_t least_bits, least_difference;  // of p, and of the lengths of p and q
    void (*generate)(KcdsaKey& key, DomainSize size);
};

constexpr std::string_view kBuiltIn = "builtin";

constexpr DomainKind kDomainKinds[] = {
    {"plain", 64, 8, [](KcdsaKey& key, DomainSize size) { E_KCDSA_GenerateKey(key.get(), size.p_bits, size.q_bits); }},
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
            if (!no_key) E_KCDSA_GenerateXY(key->get(), 0, static_cast<std::int32_t>(EN_GetFilledBitNum(&key->get()->q)));
        }
        key->generated(no_key ? KeyPart::kParameters : KeyPart::kPrivate);
        return key;
    };
}

}  // namespace morvane::tool
