// What keys on elliptic curves share: the curves, the files, and how both reach the library.
#pragma once

#include "key.h"
#include "toolkit.h"

#include <morvane/ecc_schemes.h>

namespace morvane::tool {

struct Curve {
    std::string_view name;
    std::int32_t id;
    Bytes oid;
};

class CurveKey : public Key {
public:
    CurveKey(const CurveKey&) = delete;
    CurveKey& operator=(const CurveKey&) = delete;

    KeyPart part() const override { return part_; }
    EncodedKey encode(KeyPart wanted) const override;
    void tell(Json& json) const override;

    const Curve& curve() const { return *curve_; }

    // False when the file has none of this kind. Throws KeyError for other curves and for numbers that are those of no key.
    bool read(const KeyFile& file);
    void generate(const Curve& curve);

protected:
    struct Kind {
        std::string_view name, hash;
        Bytes oid;
        bool bare_private_keys;  // those of SEC 1 without a wrapping are this kind's
        bool inverse;            // the point is (1/d) G, otherwise d G
        decltype(&K_GenerateECCKeyPair) generate;
    };
    explicit CurveKey(const Kind& kind) : kind_(kind) {}

    const E_EC_PARAMS* params() const { return &params_; }
    toolkit::In private_key() const { return toolkit::In(*d_); }
    toolkit::In public_key() const { return toolkit::In(point_); }

    // The whole input. Throws UsageError for options that no curve has.
    std::vector<std::uint8_t> data_to_sign(const SignatureOptions& options, const std::string& input) const;

private:
    void set_curve(const Curve& curve);
    void set_private(Bytes d);
    void set_point(Bytes point);
    bool read_private(Bytes der);

    const Kind& kind_;
    const Curve* curve_ = nullptr;
    E_EC_PARAMS params_{};             // points into itself
    Secret d_;                         // E_EC_SCALAR_OCTETS, or none
    std::vector<std::uint8_t> point_;  // uncompressed; always there
    KeyPart part_ = KeyPart::kPublic;
};

// The one that the options name. Throws UsageError for options that these keys do not have.
const Curve& chosen_curve(const KeyOptions& options, const Key* domain);

template <typename AnyKey>
std::unique_ptr<Key> read_curve_key(const KeyFile& file) {
    auto key = std::make_unique<AnyKey>();
    if (!key->read(file)) return nullptr;
    return key;
}

template <typename AnyKey>
std::function<std::unique_ptr<Key>()> prepare_curve_key(const KeyOptions& options, const Key* domain) {
    return [&curve = chosen_curve(options, domain)]() -> std::unique_ptr<Key> {
        auto key = std::make_unique<AnyKey>();
        key->generate(curve);
        return key;
    };
}

}  // namespace morvane::tool
