// Private operations with the bytes of keys marked as undefined, for valgrind: it reports whatever branches on them or
// looks up by them. The random numbers become as secret as the keys, from which they are stirred.
//
// usage: check_secrets [portable]      only the plain routines, without those that the processor offers
//        check_secrets leak            does what must be reported
#include <morvane/cipher.h>
#include <morvane/csp.h>
#include <morvane/dh.h>
#include <morvane/ecc_schemes.h>
#include <morvane/kcdsa.h>
#include <morvane/random.h>

#include "base/known.h"
#include "cpu/cpu.h"
#include "pk/rsa_key.h"
#include "random/pool.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

using namespace morvane;
using namespace morvane::test;

void require(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "failed: %s\n", what);
    std::exit(3);
}

void hide(const ENUM& number) { declare_secret(number.words, static_cast<std::size_t>(number.length)); }

// Octets for a call, and what it wrote made known.
struct Octets : TORVA_V1_OPAQUE8 {
    Bytes bytes = Bytes(300);
    explicit Octets(std::int32_t size = 0) : TORVA_V1_OPAQUE8{size, nullptr} { octets = bytes.data(); }
    Octets(const Octets&) = delete;
    Octets& operator=(const Octets&) = delete;
    void publish() { declare_known(bytes.data(), bytes.size()), declare_known(&count); }
};

void rsa(const RsaKey& key, const char* name) {
    Bytes message(20, 0x61), out(600), opened(600);
    std::int32_t size = 0;
    const auto k = key.size();
    require(E_RSA_Private_Encrypt(out.data(), message.data(), 20, key) == k, name);
    declare_known(out.data(), out.size());
    require(E_RSA_Verify(message.data(), 20, out.data(), k, key) == 1, name);
    require(E_RSA_Public_Encrypt(out.data(), message.data(), 20, key) == k, name);
    declare_known(out.data(), out.size());  // the padding was secret
    require(E_RSA_Private_Decrypt(opened.data(), out.data(), k, key) == 20, name);
    out.front() ^= 1;
    require(E_RSA_Private_Decrypt(opened.data(), out.data(), k, key) == -1, name);
    require(E_RSAES_OAEP_Encrypt(0, 0, out.data(), message.data(), 20, nullptr, 0, key) == k, name);
    declare_known(out.data(), out.size());
    require(E_RSAES_OAEP_Decrypt(0, 0, opened.data(), out.data(), k, nullptr, 0, key) == 20, name);
    require(E_RSASSA_PSS_Sign(0, 0, out.data(), &size, message.data(), 20, 20, key) == 1, name);
    declare_known(out.data(), out.size());
    require(E_RSASSA_PSS_Verify(0, 0, message.data(), 20, out.data(), size, 20, key) == 1, name);
}

void rsa() {
    RsaKey key(load_vectors("rsa_pss.txt").front());
    for (const ENUM* const member : {&key->d, &key->p, &key->q, &key->dP, &key->dQ, &key->qInv}) hide(*member);
    rsa(key, "rsa with remainders");
    key->qInv.length = 0;
    rsa(key, "rsa with d");
}

void groups() {
    E_KCDSA_KEY key{};
    E_DSA_Init(&key);
    E_KCDSA_GenerateKey_fixParam(&key, 0, 160);
    declare_known(&key.y, 1), declare_known(key.y_words, E_DSA_WORDS);
    hide(key.x);
    Bytes hash(20, 0x61), sig(200);
    std::int32_t size = 0;
    const auto publish = [&] { declare_known(sig.data(), sig.size()), declare_known(&size); };
    require(E_DSA_Sign(hash.data(), 20, sig.data(), &size, &key) == 1, "dsa");
    publish();
    require(E_KCDSA_Sign(hash.data(), 20, sig.data(), &size, &key) == 1, "kcdsa, older");
    publish();
    require(E_KCDSA_Verify(hash.data(), 20, sig.data(), size, &key) == 1, "kcdsa, older");
    for (const std::int32_t of : {E_KCDSA_SHA1, E_KCDSA_HAS160}) {
        require(E_KCDSA_Sign_New(of, hash.data(), 20, sig.data(), &size, &key) == 1, "kcdsa");
        publish();
        require(E_KCDSA_Verify_New(of, hash.data(), 20, sig.data(), size, &key) == 1, "kcdsa");
    }
    key.y.length = 0;  // z is of the y that belongs to x then
    require(E_KCDSA_Sign_New(E_KCDSA_SHA1, hash.data(), 20, sig.data(), &size, &key) == 1, "kcdsa without y");

    E_DH_KEY dh{};
    E_DH_Init(&dh);
    EN_Copy(&dh.p, &key.p), EN_Copy(&dh.x, &key.x), EN_U32ToENUM(&dh.g, 2);
    hide(dh.x);
    E_DH_GenerateKey(&dh, 0);
    declare_known(&dh.y, 1), declare_known(dh.y_words, E_DH_WORDS);
    require(dh.y.length > 30, "dh, public value");
    Bytes secret(200);
    require(E_DH_ComputeKey(secret.data(), &dh.y, &dh) > 120, "dh");

    std::uint32_t words[E_DSA_WORDS];
    ENUM power = {0, 0, words};
    EN_Mod_Exp(&power, &key.x, &key.x, &key.p);
}

void curves(std::int32_t curve) {
    E_EC_PARAMS params;
    require(E_ECParams_Init(curve, &params) == 0, "curve");
    Octets message(20), signature, d, q, other_d, other_q, shared, cipher, opened, key;
    const auto pair = [&](Octets& secret, Octets& open, auto* generate) {
        require(generate(curve, &params, &secret, &open) == 0, "key pair");
        declare_known(&secret.count), secret.publish(), open.publish();
        declare_secret(secret.octets + 2, static_cast<std::size_t>(secret.count - 2));
    };
    pair(other_d, other_q, E_ECC_GenerateKeyPair_ECKCDSA);
    require(E_ECKCDSA_Sign(curve, &params, &message, &signature, &other_d, &other_q) == 0, "ec-kcdsa");
    signature.publish();
    require(E_ECKCDSA_Verify(curve, &params, &message, &signature, &other_q) == 1, "ec-kcdsa");
    pair(d, q, E_ECC_GenerateKeyPair), pair(other_d, other_q, E_ECC_GenerateKeyPair);
    require(E_ECDSA_Sign(curve, &params, &message, &signature, &d) == 0, "ecdsa");
    signature.publish();
    require(E_ECDSA_Verify(curve, &params, &message, &signature, &q) == 1, "ecdsa");
    require(TORVA_V1_ECDHPrimitive(curve, &params, &d, &other_q, &shared) == 0, "ecdh");
    require(E_ECC_X9_63_FUMS(curve, &params, &d, &d, &other_q, &other_q, &message, 40, &key) == 0, "agreement");
    require(E_ECC_Encryption(curve, &params, &message, &cipher, &q) == 0, "ec encryption");
    cipher.publish();
    require(E_ECC_Decryption(curve, &params, &cipher, &opened, &d) == 0, "ec decryption");
    cipher.octets[cipher.count - 1] ^= 1;
    require(E_ECC_Decryption(curve, &params, &cipher, &opened, &d) == -1, "ec decryption of a changed ciphertext");
}

// The key of HMAC and what comes of it are secret. DES looks up by its key, so for CBC-MAC it is what is compared with.
void macs() {
    for (const std::uint32_t algorithm : {CSP_ALG_MD5, CSP_ALG_DES}) {
        CspSession session{};
        CSSM_KEY key{};
        E_DES_KEY_SCHEDULE schedule{};
        key.KeyHeader.BlobType = 2, key.KeyHeader.KeyClass = 2, key.KeyHeader.AlgorithmId = algorithm;
        key.KeyData = {sizeof schedule, reinterpret_cast<std::uint8_t*>(&schedule)};
        CSSM_CONTEXT_ATTRIBUTE attribute = {CSP_ATTR_KEY, 0, {}};
        attribute.Attribute.Key = &key;
        session.context_type = CSP_CONTEXT_MAC, session.algorithm = algorithm;
        session.number_of_attributes = 1, session.attributes = &attribute;
        const auto handle = reinterpret_cast<CspHandle>(&session);
        Bytes text(50, 0x61), mac(128);
        const CSSM_DATA message = {50, text.data()};
        CSSM_DATA output = {128, mac.data()};
        if (algorithm == CSP_ALG_MD5) declare_secret(key.KeyData.Data, key.KeyData.Length);
        require(CSP_GenerateMac(0, handle, nullptr, &message, 1, &output) == 0, "mac");
        declare_secret(mac.data(), mac.size());
        require(CSP_VerifyMac(0, handle, nullptr, &message, 1, &output) == 0, "mac comparison");
        mac[3] ^= 1;
        require(CSP_VerifyMac(0, handle, nullptr, &message, 1, &output) == -1, "mac comparison of a changed one");
    }
}

}  // namespace

int main(int argc, char** argv) {
    const std::string_view argument = argc > 1 ? argv[1] : "";
    if (argument == "leak") {
        volatile std::uint8_t key = 1;
        declare_secret(&key, 1);
        if ((key & 1) != 0) std::puts("a branch on a secret");
        return 0;
    }
    if (argument == "portable") cpu::limit_features(cpu::kNone);
    std::uint8_t stirred[1023] = {};
    declare_secret(stirred, sizeof stirred);
    RAND_Bytes(stirred, 1);  // the system's octets come first
    RAND_Seed(stirred, sizeof stirred);
    rsa();
    groups();
    for (const std::int32_t curve : {3, 5, 7}) curves(curve);
    macs();
    std::puts("done");
    return 0;
}
