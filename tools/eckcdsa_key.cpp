#include "eckcdsa_key.h"

#include "curve_key.h"

#include <array>

namespace morvane::tool {
namespace {

using toolkit::In;

constexpr std::array<std::uint8_t, 8> kOid = {0x2a, 0x83, 0x1a, 0x8c, 0x9a, 0x44, 0x01, 0x64};  // 1.2.410.200004.1.100

class EckcdsaKey final : public CurveKey {
public:
    EckcdsaKey() : CurveKey(kKind) {}

    std::vector<std::uint8_t> sign(const SignatureOptions& options, const std::string& input) const override {
        const std::vector<std::uint8_t> message = data_to_sign(options, input);
        std::optional<Secret> signature =
            toolkit::make(KERR_SIGN, K_ECKCDSASign, curve().id, private_key(), public_key(), In(message));
        if (!signature) throw KeyError("the library makes no signature with it");
        return std::move(**signature);
    }

    bool verify(const SignatureOptions& options, const std::string& input, Bytes signature) const override {
        const std::vector<std::uint8_t> message = data_to_sign(options, input);
        return toolkit::check(KERR_VERIFY, K_ECKCDSAVerify, curve().id, public_key(), In(message), In(signature));
    }

private:
    static constexpr Kind kKind{.name = "EC-KCDSA",
                                .hash = "has160",
                                .oid = kOid,
                                .bare_private_keys = false,
                                .inverse = true,
                                .generate = K_GenerateECKCDSAKeyPair};
};

}  // namespace

std::unique_ptr<Key> read_eckcdsa_key(const KeyFile& file) { return read_curve_key<EckcdsaKey>(file); }

std::function<std::unique_ptr<Key>()> prepare_eckcdsa_key(const KeyOptions& options, const Key* domain) {
    return prepare_curve_key<EckcdsaKey>(options, domain);
}

}  // namespace morvane::tool
