// Self-tests of DER: what a reader takes, the writer gives again, and damaged encodings are refused.
#include "selftest.h"

#include "known_keys.h"

#include <morvane/asn1.h>

#include <memory>

namespace morvane::tool {
namespace {

// Of an encoding with something behind it. An empty one is the answer to what is refused.
template <typename Record, typename Init>
Octets read_and_write(Init* init, void (*read)(Record*, const std::uint8_t**, std::uint32_t),
                      std::int32_t (*write)(const Record*, std::uint8_t*), Octets der) {
    const auto record = std::make_unique<Record>();
    init(record.get());
    const auto size = static_cast<std::ptrdiff_t>(der.size());
    der.push_back(0);
    const std::uint8_t* position = der.data();
    read(record.get(), &position, size32(der));
    if (position != der.data() + size) return {};
    Octets again(static_cast<std::size_t>(write(record.get(), nullptr)));
    write(record.get(), again.data());
    return again;
}

// As a length that is one more, and as a first INTEGER that is none.
bool refuses_damage(const std::function<Octets(Octets)>& through, const Octets& der) {
    const std::size_t first = der[1] < 0x80 ? 2 : 2 + (der[1] & 0x7fU);
    Octets longer = der, other = with_changed_bit(der, first);
    ++longer[first - 1];
    return through(longer).empty() && through(other).empty();
}

template <auto Init, auto Read, auto Write>
SelfTest test_of(std::string name, std::string_view known) {
    const Octets der = octets(known);
    const auto through = [](const Octets& bytes) { return read_and_write(Init, Read, Write, bytes); };
    return {std::move(name), [=] { return through(der) == der; }, [=] { return refuses_damage(through, der); }};
}

Octets signature_through(const Octets& der) {
    E_KCDSA_SIGNATURE signature{};
    const std::uint8_t* position = der.data();
    E_ASN1_GetSignRS_KCDSA(&signature, &position, size32(der));
    return position == der.data() + der.size() ? Octets(signature.r, signature.r + sizeof signature.r) : Octets();
}

Octets word_through(const Octets& der) {
    std::uint32_t value = 0;
    const std::uint8_t* position = der.data();
    E_ASN1_GetU32(&value, &position, size32(der));
    if (position != der.data() + der.size()) return {};
    Octets again(static_cast<std::size_t>(E_ASN1_GetU32Bytes(value)));
    E_ASN1_PutU32(value, again.data());
    return again;
}

}  // namespace

void add_encoding_tests(SelfTests& all) {
    all.push_back(test_of<E_RSA_Init, E_ASN1_GetRSAPrivateKey, E_ASN1_PutRSAPrivateKey>("der-rsa-private-key", kRsaKey));
    all.push_back(test_of<E_RSA_Init, E_ASN1_GetRSAPublicKey, E_ASN1_PutRSAPublicKey>("der-rsa-public-key", kRsaPublicKey));
    all.push_back(test_of<E_DSA_Init, E_ASN1_GetDSAPrivateKey, E_ASN1_PutDSAPrivateKey>("der-dsa-private-key", kDsaKey));
    all.push_back(
        test_of<E_KCDSA_Init, E_ASN1_GetKCDSAPrivateKey, E_ASN1_PutKCDSAPrivateKey>("der-kcdsa-private-key", kKcdsaKey));
    all.push_back(test_of<E_DH_Init, E_ASN1_GetDHParams, E_ASN1_PutDHParams>("der-dh-parameters", kDhParameters));
    // An r of 20 octets, and an s of 1.
    const Octets signature = octets("301a0315008f996a98eda57cc8d88aa6ffdfaea22f39d7fa8a020105");
    const Octets r(signature.begin() + 5, signature.begin() + 25);
    all.push_back({"der-kcdsa-signature", [=] { return signature_through(signature) == r; },
                   [=] { return refuses_damage(signature_through, signature); }});
    const Octets word = octets("300702050080000000");
    all.push_back(
        {"der-word", [=] { return word_through(word) == word; }, [=] { return refuses_damage(word_through, word); }});
}

}  // namespace morvane::tool
