// Self-tests of RSA: encryption and signatures in all their schemes, and a key pair of its own making.
#include "selftest.h"

#include "known_keys.h"

#include <morvane/pk.h>

#include <memory>

namespace morvane::tool {
namespace {

constexpr std::int32_t kSha1 = 2, kSha256 = 6;  // hash identifiers
constexpr std::int32_t kSaltBytes = 20;
constexpr char kPlain[] = "attack at dawn";
constexpr char kLabel[] = "Label";

// One block of each scheme that enciphers kPlain, made with OpenSSL; the last one under SHA-256 and kLabel.
constexpr char kPkcs1[] =
    "4bf477dbe51a1d0d4c49c670aeac4a27e88fca7cd99b2e43baba9e6f2581c3af29be60ae1700e7ab69513de05aa2ce93fa496b61cd83c3"
    "426a46f90995c24811576ae079f64b430e190feed11820c0b57593d604685aa1501871d4b396ce548444327e5a45b71688ede3f0689abf"
    "3f64f8fddbf29a119a315d3cd2325a93a19b";
constexpr char kOaepSha1[] =
    "61c41ff31de639375d4ca30c1e0e6064e935cd82b85e806f7754a68e91c19eed2f11573d348f695a86e00cf1e5704d4fe20a9e22cfd90a"
    "8d848e9551e2334abb502be12794d78daf934b7bde599c065207ebd7ce32b94b92205ac4dff7b6525bb3944ae5c926f292e8b5390773a3"
    "79c4616d994a65bb523c887cb4418317f9e4";
constexpr char kOaepSha256[] =
    "4518857d0adc836417ce823ad6ec5bda0885a5779e6c622fb2bea8b8e06b45eb3b6fbe5d1ef434864a3dd719739be318a71a7f40f66a3c"
    "3e2400051cac248ef169dba0244aa6f688adf5206821645477698e531659ecaf407fd3a38192abd7a5546e27ef20c23f1c3c20a41c9c6a"
    "1a2066870a3cbed3f7174b417f545c8c3a79";
// The first example of pkcs1v15sign-vectors.txt: what was signed, and the signature.
constexpr char kSigned[] = "3021300906052b0e03021a05000414cd8b6538cb8e8de566b68bd067569dbf1ee2718e";
constexpr char kSignature[] =
    "6bc3a06656842930a247e30d5864b4d819236ba7c68965862ad7dbc4e24af28e86bb531f03358be5fb74777c6086f850caef893f0d6fcc"
    "2d0c91ec013693b4ea00b80cd49aac4ecb5f8911afe539ada4a8f3823d1d13e472d1490547c659c7617f3d24087ddb6f2b72096167fc09"
    "7cab18e9a458fcb634cdce8ee35894c484d7";
// An example of pss-vect.txt of RSA Laboratories, SHA-1 and a salt of 20 octets.
constexpr char kPssMessage[] = "bc656747fa9eafb3f0";
constexpr char kPssSignature[] =
    "4609793b23e9d09362dc21bb47da0b4f3a7622649a47d464019b9aeafe53359c178c91cd58ba6bcb78be0346a7bc637f4b873d4bab38ee"
    "661f199634c547a1ad8442e03da015b136e543f7ab07c0c13e4225b8de8cce25d4f6eb8400f81f7e1833b7ee6e334d370964ca79fdb872"
    "b4d75223b5eeb08101591fb532d155a6de87";

// Whether a block is deciphered to kPlain.
using Opens = bool (*)(const Octets& block);

template <typename Decrypt>
bool opens(Decrypt decrypt) {
    Octets out(128);
    const std::int32_t size = decrypt(out.data(), known_rsa_key().get());
    if (size < 0) return false;
    out.resize(static_cast<std::size_t>(size));
    return out == text_octets(kPlain);
}

bool opens_pkcs1(const Octets& block) {
    return opens([&](std::uint8_t* out, const E_RSA_KEY* key) {
        return E_RSA_Private_Decrypt(out, block.data(), signed_size(block), key);
    });
}
bool opens_old_oaep(const Octets& block) {
    return opens([&](std::uint8_t* out, const E_RSA_KEY* key) {
        return E_RSA_Private_Decrypt_OAEP(out, block.data(), signed_size(block), nullptr, 0, key);
    });
}
bool opens_oaep_with(const Octets& block, const Octets& label) {
    return opens([&](std::uint8_t* out, const E_RSA_KEY* key) {
        return E_RSAES_OAEP_Decrypt(kSha256, kSha256, out, block.data(), signed_size(block), label.data(),
                                    signed_size(label), key);
    });
}
bool opens_oaep(const Octets& block) { return opens_oaep_with(block, text_octets(kLabel)); }

// What is enciphered here comes back.
template <typename Encrypt>
bool comes_back(Encrypt encrypt, Opens open) {
    Octets block(128), plain = text_octets(kPlain);
    const auto key = known_rsa_key();
    return encrypt(block.data(), plain.data(), signed_size(plain), key.get()) == 128 && open(block);
}

bool pkcs1_round() { return comes_back(E_RSA_Public_Encrypt, opens_pkcs1); }
bool oaep_round() {
    return comes_back(
        [](std::uint8_t* out, const std::uint8_t* plain, std::int32_t size, const E_RSA_KEY* key) {
            const Octets label = text_octets(kLabel);
            return E_RSAES_OAEP_Encrypt(kSha256, kSha256, out, plain, size, label.data(), signed_size(label), key);
        },
        opens_oaep);
}

bool signs_pkcs1() {
    const Octets info = octets(kSigned);
    Octets signature(128);
    std::int32_t size = 0;
    E_RSA_Sign(info.data(), signed_size(info), signature.data(), &size, known_rsa_key().get());
    return size == 128 && signature == octets(kSignature);
}
bool verifies_pkcs1(const Octets& info, const Octets& signature) {
    return E_RSA_Verify(info.data(), signed_size(info), signature.data(), signed_size(signature), known_rsa_key().get()) ==
           1;
}

bool verifies_pss(const Octets& message, const Octets& signature) {
    return E_RSASSA_PSS_Verify(kSha1, kSha1, message.data(), signed_size(message), signature.data(), signed_size(signature),
                               kSaltBytes, known_rsa_key().get()) == 1;
}
bool signs_pss() {
    const Octets message = octets(kPssMessage);
    Octets signature(128);
    std::int32_t size = 0;
    return E_RSASSA_PSS_Sign(kSha1, kSha1, signature.data(), &size, message.data(), signed_size(message), kSaltBytes,
                             known_rsa_key().get()) == 1 &&
           verifies_pss(message, signature);
}

// Signs and verifies under a new key.
bool pair_serves(bool changed) {
    const auto key = std::make_unique<E_RSA_KEY>();
    E_RSA_Init(key.get());
    E_RSA_GenerateKey(key.get(), 512, 65537);
    Octets signature(64);
    const Octets info = octets(kSigned);
    std::int32_t size = 0;
    E_RSA_Sign(info.data(), signed_size(info), signature.data(), &size, key.get());
    if (changed) signature = with_changed_bit(signature, 40);
    return size == 64 && E_RSA_Verify(info.data(), signed_size(info), signature.data(), 64, key.get()) == 1;
}

}  // namespace

void add_rsa_tests(SelfTests& all) {
    const Octets pkcs1 = octets(kPkcs1), old_oaep = octets(kOaepSha1), oaep = octets(kOaepSha256);
    all.push_back({"rsa-encryption-pkcs1", [=] { return opens_pkcs1(pkcs1) && pkcs1_round(); },
                   [=] { return !opens_pkcs1(with_changed_bit(pkcs1, 100)); }});
    all.push_back({"rsa-encryption-oaep-old", [=] { return opens_old_oaep(old_oaep); },
                   [=] { return !opens_old_oaep(with_changed_bit(old_oaep, 100)); }});
    all.push_back({"rsa-encryption-oaep", [=] { return opens_oaep(oaep) && oaep_round(); },
                   [=] { return !opens_oaep_with(oaep, with_changed_bit(text_octets(kLabel), 0)); }});
    const Octets info = octets(kSigned), signature = octets(kSignature);
    all.push_back({"rsa-signature-pkcs1", [=] { return signs_pkcs1() && verifies_pkcs1(info, signature); },
                   [=] { return !verifies_pkcs1(with_changed_bit(info, 34), signature); }});
    const Octets message = octets(kPssMessage), pss = octets(kPssSignature);
    all.push_back({"rsa-signature-pss", [=] { return verifies_pss(message, pss) && signs_pss(); },
                   [=] { return !verifies_pss(with_changed_bit(message, 0), pss); }});
    all.push_back({"rsa-key-pair", [] { return pair_serves(false); }, [] { return !pair_serves(true); }});
}

}  // namespace morvane::tool
