// Self-tests of DSA, KCDSA in both its generations, and Diffie-Hellman.
#include "selftest.h"

#include "known_keys.h"

#include <morvane/asn1.h>
#include <morvane/bignum.h>
#include <morvane/hash.h>

#include <memory>

namespace morvane::tool {
namespace {

Octets sha1_of(std::string_view text) {
    const Octets message = text_octets(text);
    Octets hash(20);
    E_SHA1(hash.data(), message.data(), size32(message));
    return hash;
}

// What signs, and what verifies, a message or hash value of so many octets.
struct Scheme {
    std::unique_ptr<E_DSA_KEY> (*key)();
    std::int32_t (*sign)(const std::uint8_t* message, std::int32_t size, std::uint8_t* sig, std::int32_t* sig_len,
                         const E_DSA_KEY* key);
    std::int32_t (*verify)(const std::uint8_t* message, std::int32_t size, const std::uint8_t* sig, std::int32_t sig_len,
                           const E_DSA_KEY* key);
};

template <std::int32_t Hash>
std::int32_t sign_new(const std::uint8_t* message, std::int32_t size, std::uint8_t* sig, std::int32_t* sig_len,
                      const E_DSA_KEY* key) {
    return E_KCDSA_Sign_New(Hash, message, size, sig, sig_len, key);
}
template <std::int32_t Hash>
std::int32_t verify_new(const std::uint8_t* message, std::int32_t size, const std::uint8_t* sig, std::int32_t sig_len,
                        const E_DSA_KEY* key) {
    return E_KCDSA_Verify_New(Hash, message, size, sig, sig_len, key);
}

constexpr Scheme kDsa = {known_dsa_key, E_DSA_Sign, E_DSA_Verify};
constexpr Scheme kKcdsaOld = {known_kcdsa_key, E_KCDSA_Sign, E_KCDSA_Verify};
constexpr Scheme kKcdsa = {known_kcdsa_key, sign_new<E_KCDSA_HAS160>, verify_new<E_KCDSA_HAS160>};

bool verifies(const Scheme& scheme, const Octets& message, const Octets& signature) {
    return scheme.verify(message.data(), signed_size(message), signature.data(), signed_size(signature),
                         scheme.key().get()) == 1;
}

bool signs(const Scheme& scheme, const Octets& message) {
    Octets signature(64);
    std::int32_t size = 0;
    if (scheme.sign(message.data(), signed_size(message), signature.data(), &size, scheme.key().get()) != 1) return false;
    signature.resize(static_cast<std::size_t>(size));
    return verifies(scheme, message, signature);
}

SelfTest test_of(std::string name, const Scheme& scheme, const Octets& message, std::string_view known) {
    const Octets signature = octets(known);
    return {std::move(name), [=, &scheme] { return verifies(scheme, message, signature) && signs(scheme, message); },
            [=, &scheme] {
                return !verifies(scheme, with_changed_bit(message, 5), signature) &&
                       !verifies(scheme, message, with_changed_bit(signature, signature.size() - 1));
            }};
}

// Both sides' numbers were made with Python.
constexpr char kOwnPrivate[] = "2d711642b726b04401627ca9fbac32f5c8530fb1903cc4db02258717921a4881";
constexpr char kOwnPublic[] =
    "a30caecfb79b8d0c82b4ff161090101f36f3d81c2aeefc692a546a1546347679bf2367c742edf26748a48b0dfa9ea4061dea55cae63275"
    "0f27560d9e878533b26ecc9ce2e156497e00a78934779c2ab7270832b4facdcfb12cfb8c3cad939b8e";
constexpr char kPeerPublic[] =
    "e6035400cb1ce4239437f3c833a9f0f0a728bda5c202deee8e69dd6d47ec30e2ee5036412fe6f2f44b896e8d268c8d0dace22a596fc484"
    "66250def5408b481e0399288c28bf01ca2eb37e806d523dbc0a44648a1bf402c909c2c4821f97b8dcb";
constexpr char kSecret[] =
    "e38867e237040108d3db5ee979c111aa5ee164932faab752ba77e141c3d4434e1debc418a5590d5c453d5d022740f9575c507eb0fe6fed"
    "9cf879ba58d1eb9f810e402b259d9a99c3d15105fad00219b9502cc29fae98e3386712fd7e29a8c6b4";

bool agrees(const Octets& peer) {
    const auto key = std::make_unique<E_DH_KEY>();
    E_DH_Init(key.get());
    const Octets parameters = octets(kDhParameters), x = octets(kOwnPrivate);
    const std::uint8_t* position = parameters.data();
    E_ASN1_GetDHParams(key.get(), &position, size32(parameters));
    EN_U8ToENUM(&key->x, x.data(), size32(x));
    E_DH_GenerateKey(key.get(), 0);
    Octets own(96), secret(96);
    std::uint32_t words[24];
    ENUM value = {0, 0, words};
    EN_U8ToENUM(&value, peer.data(), size32(peer));
    return EN_ENUMToU8(own.data(), &key->y) == 96 && own == octets(kOwnPublic) &&
           E_DH_ComputeKey(secret.data(), &value, key.get()) == 96 && secret == octets(kSecret);
}

}  // namespace

void add_group_tests(SelfTests& all) {
    // RFC 6979, A.2.1, of "sample" and SHA-1.
    all.push_back(test_of("dsa", kDsa, sha1_of("sample"),
                          "302c02142e1a0c2562b2912caaf89186fb0f42001585da55021429efb6b0aff2d7a68eb70ca313022253b9a88df5"));
    // TTAS.KO-12.0001; the older generation has no published example, and is computed from its equation with the same k.
    all.push_back(
        test_of("kcdsa", kKcdsa, text_octets("This is a test message for KCDSA usage!"),
                "302d0315008f996a98eda57cc8d88aa6ffdfaea22f39d7fa8a0214541f7dc4f92c65eb7f63b6b4f22177f1ee2cf339"));
    all.push_back(
        test_of("kcdsa-old", kKcdsaOld, sha1_of("abc"),
                "302e0215008f996a98eda57cc8d88aa6ffdfaea22f39d7fa8a02150089117944568501e507a3b5859a3d6f7273549b9e"));
    const Octets peer = octets(kPeerPublic);
    all.push_back({"dh", [=] { return agrees(peer); }, [=] { return !agrees(with_changed_bit(peer, 90)); }});
}

}  // namespace morvane::tool
