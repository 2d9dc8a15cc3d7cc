#include "eckcdsa_key.h"

#include "curve_key.h"

#include <array>

namespace morvane::tool {
namespace {

constexpr std::array<std::uint8_t, 8> kOid = {0x2a, 0x83, 0x1a, 0x8c, 0x9a, 0x44, 0x01, 0x64};  // 1.2.410.200004.1.100

class EckcdsaKey final : public CurveKey {
public:
    EckcdsaKey() : CurveKey(kKind) {}

    std::vector<std::uint8_t> sign(const SignatureOptions& options, const std::string& input) const override {
        const std::vector<std::uint8_t> data = data_to_sign(options, input);
        const TORVA_V1_OPAQUE8 message = opaque(data), d = private_key(), point = public_key();
        std::vector<std::uint8_t> signature(E_ECKCDSA_SIGNATURE_OCTETS);
        TORVA_V1_OPAQUE8 out = opaque(signature);
        if (E_ECKCDSA_Sign(curve().id, params(), &message, &out, &d, &point) != 0) {
            throw KeyError("the library makes no signature with it");
        }
        signature.resize(static_cast<std::size_t>(out.count));
        return signature;
    }

    bool verify(const SignatureOptions& options, const std::string& input, Bytes signature) const override {
        const std::vector<std::uint8_t> data = data_to_sign(options, input);
        const TORVA_V1_OPAQUE8 message = opaque(data), block = opaque(signature), point = public_key();
        return E_ECKCDSA_Verify(curve().id, params(), &message, &block, &point) == 1;
    }

private:
    static constexpr Kind kKind{.name = "EC-KCDSA",
                                .hash = "has160",
                                .oid = kOid,
                                .bare_private_keys = false,
                                .inverse = true,
                                .generate = TORVA_V1_ECC_KeyPairGeneration_ECKCDSA};
};

}  // namespace

std::unique_ptr<Key> read_eckcdsa_key(const KeyFile& file) { return read_curve_key<EckcdsaKey>(file); }

std::function<std::unique_ptr<Key>()> prepare_eckcdsa_key(const KeyOptions& options, const Key* domain) {
    return prepare_curve_key<EckcdsaKey>(options, domain);
}

}  // namespace morvane::tool
