// Signature blocks as strangers send them. The first octet chooses a scheme; the rest is the block. Of every scheme but DSA
// one block is known that is valid for the message: no other one may be, neither in another encoding nor with anything
// behind. Blocks of DSA are valid where its equation holds, which leaves room for several.
#include <morvane/asn1.h>
#include <morvane/bignum.h>
#include <morvane/ecc_schemes.h>

#include "fuzz.h"
#include "support/integer.h"
#include "support/vectors.h"

using namespace morvane::test;

namespace {

struct Scheme {
    enum { kDsa, kKcdsa, kOlderKcdsa, kCurve } kind;
    std::int32_t choice;  // of a hash or a curve
    Bytes valid, key;
    decltype(E_ECDSA_Verify)* verify = nullptr;
    E_DSA_KEY group = {};
    E_EC_PARAMS params = {};

    explicit Scheme(const Vector& domain, const Vector& row)
        : choice(std::stoi(row.text("choice"))), valid(row.bytes("block")), key(row.bytes("key")) {
        const std::string& name = row.text("scheme");
        kind = name == "dsa" ? kDsa : name == "kcdsa" ? kKcdsa : name == "older kcdsa" ? kOlderKcdsa : kCurve;
        verify = name == "ecdsa" ? E_ECDSA_Verify : E_ECKCDSA_Verify;
        if (kind == kCurve) {
            E_ECParams_Init(choice, &params);
            return;
        }
        E_DSA_Init(&group);
        for (const auto& [member, name_of] : {std::pair{&group.p, "p"}, {&group.q, "q"}, {&group.g, "g"}}) {
            EN_Copy(member, Integer(domain.bytes(name_of)));
        }
        EN_Copy(&group.y, Integer(key));
    }
    Scheme(const Scheme&) = delete;
    Scheme& operator=(const Scheme&) = delete;
};

const Bytes kMessage(20, 'a');

const std::vector<std::unique_ptr<const Scheme>>& schemes() {
    static const std::vector<std::unique_ptr<const Scheme>> all = [] {
        const std::vector<Vector> rows = load_vectors("known_signatures.txt");
        std::vector<std::unique_ptr<const Scheme>> read;
        for (std::size_t i = 1; i < rows.size(); ++i) read.push_back(std::make_unique<Scheme>(rows[0], rows[i]));
        return read;
    }();
    return all;
}

// Whether exactly SEQUENCE { INTEGER r, INTEGER s } in DER with v = r, without regard to their ranges.
bool is_dsa_signature(const E_DSA_KEY& key, const Bytes& block) {
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
    const Integer hash(kMessage), p(key.p), q(key.q), w = inverse(numbers[1], q);
    const Integer v = power(Integer(key.g), hash * w % q, p) * power(Integer(key.y), numbers[0] * w % q, p) % p % q;
    return v == numbers[0];
}

std::int32_t verify(const Scheme& scheme, const Bytes& block) {
    const std::uint8_t* const message = kMessage.data();
    const auto length = static_cast<std::int32_t>(kMessage.size()), size = static_cast<std::int32_t>(block.size());
    const auto octets = [](const Bytes& bytes) {
        return TORVA_V1_OPAQUE8{static_cast<std::int32_t>(bytes.size()), const_cast<std::uint8_t*>(bytes.data())};
    };
    const TORVA_V1_OPAQUE8 text = octets(kMessage), signature = octets(block), point = octets(scheme.key);
    switch (scheme.kind) {
        case Scheme::kDsa:
            return E_DSA_Verify(message, length, block.data(), size, &scheme.group);
        case Scheme::kOlderKcdsa:
            return E_KCDSA_Verify(message, length, block.data(), size, &scheme.group);
        case Scheme::kKcdsa:
            return E_KCDSA_Verify_New(scheme.choice, message, length, block.data(), size, &scheme.group);
        default:
            return scheme.verify(scheme.choice, &scheme.params, &text, &signature, &point);
    }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) return 0;
    choices_of(data, size);
    const Scheme& scheme = *schemes()[data[0] % schemes().size()];
    const Bytes block(data + 1, data + size);
    const bool valid = scheme.kind == Scheme::kDsa ? is_dsa_signature(scheme.group, block) : block == scheme.valid;
    EXPECT_EQ(verify(scheme, block), valid ? 1 : 0) << to_hex(block);
    return 0;
}
