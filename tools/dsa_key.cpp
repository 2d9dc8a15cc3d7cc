#include "dsa_key.h"

#include "subgroup_key.h"
#include "usage.h"

#include <morvane/bignum.h>
#include <morvane/kcdsa.h>

#include <array>

namespace morvane::tool {
namespace {

constexpr std::int64_t kLeastBits = 64, kLeastDifference = 8;
constexpr std::size_t kSignatureOverhead = 36;  // of DER

constexpr std::array<std::uint8_t, 7> kOid = {0x2a, 0x86, 0x48, 0xce, 0x38, 0x04, 0x01};  // 1.2.840.10040.4.1

// Both numbers of the signature are from 1 to q - 1. The library does not ask for that.
bool is_in_range(Bytes signature, const ENUM& q) {
    std::optional<Bytes> numbers = der::take(signature, der::kSequence);
    if (!numbers) return false;
    for (int i = 0; i < 2; ++i) {
        const std::optional<Number> number = der::take_number(*numbers);
        if (!number || number->bits() == 0 || EN_UComp(number->get(), &q) >= 0) return false;
    }
    return true;
}

class DsaKey final : public SubgroupKey {
public:
    DsaKey() : SubgroupKey(kKind) {}

    std::vector<std::uint8_t> sign(const SignatureOptions& options, const std::string& input) const override {
        const Digest digest = digest_to_sign(options, input);
        std::vector<std::uint8_t> signature(2 * ((std::size_t{EN_GetFilledBitNum(&get()->q)} + 7) / 8) +
                                            kSignatureOverhead);
        std::int32_t size = 0;
        if (E_DSA_Sign(digest.data(), length(digest), signature.data(), &size, get()) != 1) {
            throw KeyError("the library makes no signature with it");
        }
        signature.resize(static_cast<std::size_t>(size));
        if (!is_good(digest, signature)) throw KeyError("the numbers of the key do not belong together");
        return signature;
    }

    bool verify(const SignatureOptions& options, const std::string& input, Bytes signature) const override {
        return is_good(digest_to_sign(options, input), signature);
    }

    // x as the library draws it for KCDSA, whose y is another one.
    void draw() {
        E_KCDSA_GenerateXY(get(), 0, static_cast<std::int32_t>(EN_GetFilledBitNum(&get()->q)));
        compute_y();
        generated(KeyPart::kPrivate);
    }

private:
    static constexpr Kind kKind{"DSA", kOid, "DSA PRIVATE KEY", "DSA PARAMETERS", true};

    void compute_y() override { set_y(get()->x); }

    Digest digest_to_sign(const SignatureOptions& options, const std::string& input) const {
        options.refuse_those_of_rsa();
        options.refuse_those_of_kcdsa();
        return digest_of(options.hash.value_or("sha1"), input);
    }

    bool is_good(const Digest& digest, Bytes signature) const {
        return is_in_range(signature, get()->q) &&
               E_DSA_Verify(digest.data(), length(digest), signature.data(), length(signature), get()) == 1;
    }
};

}  // namespace

std::unique_ptr<Key> read_dsa_key(const KeyFile& file) { return read_subgroup_key<DsaKey>(file); }

std::function<std::unique_ptr<Key>()> prepare_dsa_key(const KeyOptions& options, const Key* domain) {
    refuse_foreign_options(options, domain);
    if (options.kind) throw UsageError("--kind is for rsa and kcdsa");
    const DomainSize size = domain_size(options, kLeastBits, kLeastDifference);
    return [size, domain, no_key = options.parameters_only]() -> std::unique_ptr<Key> {
        auto key = std::make_unique<DsaKey>();
        if (domain == nullptr) {
            key->generate(K_PAIR_DSA, E_DSA_GenerateKey, size);
            key->generated(KeyPart::kPrivate);
            return key;
        }
        key->take_domain(*domain);
        key->require_domain();
        if (!no_key) key->draw();
        return key;
    };
}

}  // namespace morvane::tool
