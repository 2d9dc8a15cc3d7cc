// Signature blocks as strangers send them. The first octet chooses a scheme; the rest is the block. Of every scheme but DSA
// one block is known that is valid for the message: no other one may be, neither in another encoding nor with anything
// behind. Blocks of DSA are valid where its equation holds, which leaves room for several.
#include <morvane/asn1.h>
#include <morvane/bignum.h>
#include <morvane/ecc_schemes.h>

#include "fuzz.h"
#include "support/integer.h"

#include <algorithm>
#include <cstring>

using namespace morvane::test;

namespace {

// One domain, and one private key for all schemes.
const char* const kP = "c3237fc654af6f416c25fc03ade2bf26f3bfb27d3c9c2379b35acbfb44f2c5febb068f952df47e71996aa7c387b8c48d";
const char* const kQ = "d4851d9c26dece3081108a77f5971b38a5b2ee07";
const char* const kG = "1d99b1b6646a293a16156b4f4f6d14ed9e55ea2f1628031d33bdbd71b0482e77747101b23ba171c93b444dc299655e70";
const char* const kX = "185e7618dbb9494798f3dc3767d397f952028654";

const Bytes kMessage = from_text("aaaaaaaaaaaaaaaaaaaa");

struct Scheme {
    enum { kDsa, kOlderKcdsa, kKcdsa, kEcdsa, kEckcdsa } kind;
    std::int32_t choice;  // of a hash or a curve
    const char* valid;
} constexpr kSchemes[] = {
    {Scheme::kDsa, 0, ""},
    {Scheme::kOlderKcdsa, 0,
     "302e021500b4ce0d5cfa6851d1b031fbc1017cbb87af077625021500bb89ba06be53fc368c4b19d0c60d921a1deae19f"},
    {Scheme::kKcdsa, E_KCDSA_SHA1,
     "302d0315004ffb6c847e893899a0ea44fbec03bd45dd53c06602140e7ec3ea17d2c945b675e04a4238808f2b5c862e"},
    {Scheme::kKcdsa, E_KCDSA_HAS160,
     "302d0315000de35f2c0f794c86c95fe78014b9da644ed2174002143171fc278fa2bff5e59d1d9b78e96722981852be"},
    {Scheme::kEcdsa, 3, "302e02150115fe5984c8b70a030f9de0475088708d6ee76c4f0215033316149e71cd3ea91e94b7809dff05c1832e9f52"},
    {Scheme::kEcdsa, 5, "302e02150107459ea64614e84e44d2e1054a32b88f8a05f77602150156f5c426762745ea6e425241a76d476211fcf412"},
    {Scheme::kEcdsa, 7, "302d0215008498d02cf2e773b0aa8e2ded845a61faf0fa5381021426b66c3452ade572765f591cb8058a1813d32ea5"},
    {Scheme::kEckcdsa, 3, "302d041401f17243b38cd7ea5949677a63b3556c1deb029404150315eaded7e9e608098b0303e6bd5861167061837e"},
    {Scheme::kEckcdsa, 5, "302d0414315aae8d3999f57128bdeda5789336058b4c0b120415025fc6e6f02d37ec3e60371626902e7c128483e71a"},
    {Scheme::kEckcdsa, 7, "302c04141b5db55884807b546e902c97c9ee2507e27d56080414d31eb19f79c04f3f439470599dbfefc2dbc9ca19"}};

struct GroupKey : E_DSA_KEY {
    explicit GroupKey(bool of_inverse) : E_DSA_KEY{} {
        E_DSA_Init(this);
        const Integer exponent = of_inverse ? inverse(kX, kQ) : Integer(kX);
        EN_Copy(&p, Integer(kP)), EN_Copy(&q, Integer(kQ)), EN_Copy(&g, Integer(kG)), EN_Copy(&x, Integer(kX));
        EN_Copy(&y, power(kG, exponent, kP));
    }
};

struct CurveKey {
    E_EC_PARAMS params;
    std::uint8_t octets[E_EC_POINT_OCTETS];
    TORVA_V1_OPAQUE8 point = {0, octets};

    CurveKey(std::int32_t curve, bool of_inverse) {
        E_ECParams_Init(curve, &params);
        const Integer exponent = of_inverse ? inverse(kX, Integer(params.n)) : Integer(kX);
        std::uint32_t scalar[E_EC_WORDS] = {};
        std::copy_n(Integer(exponent)->words, Integer(exponent)->length, scalar);
        TORVA_V1_POINT base = {}, product;
        std::copy_n(params.x_words, params.x.length, base.x);
        std::copy_n(params.y_words, params.y.length, base.y);
        TORVA_V1_ScalarMultiplicationOnEllipticCurves(curve, &params, scalar, E_EC_WORDS, &base, &product);
        TORVA_V1_ECPointsToopaque8(curve, 1, &product, &point);
    }
};

// Whether exactly SEQUENCE { INTEGER r, INTEGER s } in DER with v = r, without regard to their ranges.
bool is_dsa_signature(const Bytes& block) {
    std::vector<Integer> numbers;
    std::size_t at = 2;
    while (at + 2 <= block.size() && block[at] == 2 && at + 2 + block[at + 1] <= block.size()) {
        numbers.emplace_back(Bytes(block.data() + at + 2, block.data() + at + 2 + block[at + 1]));
        at += 2U + block[at + 1];
    }
    if (numbers.size() != 2) return false;
    const ENUM both[] = {*static_cast<ENUM*>(numbers[0]), *static_cast<ENUM*>(numbers[1])};
    Bytes again(static_cast<std::size_t>(E_ASN1_GetENUMBytes(both, 2)));
    E_ASN1_PutENUM(both, 2, again.data());
    if (again != block) return false;
    const Integer hash(kMessage), p = kP, q = kQ, w = inverse(numbers[1], q);
    const Integer v = power(kG, hash * w % q, p) * power(power(kG, kX, p), numbers[0] * w % q, p) % p % q;
    return v == numbers[0];
}

std::int32_t verify(const Scheme& scheme, const Bytes& block) {
    static const GroupKey dsa(false), kcdsa(true);
    const std::uint8_t* const message = kMessage.data();
    const auto length = static_cast<std::int32_t>(kMessage.size()), size = static_cast<std::int32_t>(block.size());
    switch (scheme.kind) {
        case Scheme::kDsa:
            return E_DSA_Verify(message, length, block.data(), size, &dsa);
        case Scheme::kOlderKcdsa:
            return E_KCDSA_Verify(message, length, block.data(), size, &kcdsa);
        case Scheme::kKcdsa:
            return E_KCDSA_Verify_New(scheme.choice, message, length, block.data(), size, &kcdsa);
        default:
            const bool of_inverse = scheme.kind == Scheme::kEckcdsa;
            const CurveKey key(scheme.choice, of_inverse);
            const TORVA_V1_OPAQUE8 text = {length, const_cast<std::uint8_t*>(message)};
            const TORVA_V1_OPAQUE8 signature = {size, const_cast<std::uint8_t*>(block.data())};
            return (of_inverse ? E_ECKCDSA_Verify : E_ECDSA_Verify)(scheme.choice, &key.params, &text, &signature,
                                                                    &key.point);
    }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) return 0;
    choices_of(data, size);
    const Scheme& scheme = kSchemes[data[0] % std::size(kSchemes)];
    const Bytes block(data + 1, data + size);
    const bool valid = scheme.kind == Scheme::kDsa ? is_dsa_signature(block) : block == from_hex(scheme.valid);
    EXPECT_EQ(verify(scheme, block), valid ? 1 : 0) << to_hex(block);
    return 0;
}
