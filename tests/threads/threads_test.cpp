// Distinct records on eight threads at once, all families that draw no random numbers: every thread gets what one alone
// gets. Under the thread sanitizer (check --threads) nothing may be shared on the way.
#include <morvane/csp.h>
#include <morvane/ecc_schemes.h>
#include <morvane/hash.h>
#include <morvane/kcdsa.h>
#include <morvane/toolkit.h>

#include "cipher/cipher_table.h"
#include "pk/rsa_key.h"

#include <thread>

namespace {

using namespace morvane::test;

// What the threads only read.
struct Given {
    RsaKey rsa = RsaKey(load_vectors("rsa_pss.txt").front());
    Bytes text = Random(20310).bytes(500);
    E_KCDSA_KEY group{};
    Bytes dsa = Bytes(100), kcdsa = Bytes(100);
    std::int32_t dsa_size = 0, kcdsa_size = 0;

    Given() {
        E_KCDSA_Init(&group);
        E_KCDSA_GenerateKey_fixParam(&group, 0, 160);
        E_KCDSA_Sign_New(E_KCDSA_SHA1, text.data(), 500, kcdsa.data(), &kcdsa_size, &group);
        EN_Mod_Exp(&group.y, &group.g, &group.x, &group.p);
        E_DSA_Sign(text.data(), 20, dsa.data(), &dsa_size, &group);
    }
};

void append(Bytes& all, const void* octets, std::size_t size) {
    const auto* const from = static_cast<const std::uint8_t*>(octets);
    all.insert(all.end(), from, from + size);
}

void digests(Bytes& all, const Given& given) {
    std::uint8_t out[64];
    std::uint32_t size = 0;
    const std::uint8_t* const text = given.text.data();
    E_SHA1(out, text, 500), append(all, out, 20);
    E_SHA256(out, &size, text, 500), append(all, out, 32);
    E_SHA512(out, &size, text, 500), append(all, out, 64);
    E_HAS160(out, text, 500), append(all, out, 20);
    for (const std::uint32_t algorithm : {CSP_ALG_MD2, CSP_ALG_MD5, CSP_ALG_RIPEMD160}) {
        CspSession session{};
        session.context_type = CSP_CONTEXT_DIGEST, session.algorithm = algorithm;
        const auto handle = reinterpret_cast<CspHandle>(&session);
        const CSSM_DATA piece = {500, const_cast<std::uint8_t*>(text)};
        CSSM_DATA to = {64, out};
        CSP_DigestDataInit(0, handle, nullptr), CSP_DigestDataUpdate(0, handle, &piece, 1);
        CSP_DigestDataUpdate(0, handle, nullptr, 1);  // fails: the error cell is everybody's
        CSP_DigestDataFinal(0, handle, &to), append(all, out, to.Length);
    }
}

void ciphers(Bytes& all, const Given& given) {
    for (const Cipher& cipher : kCiphers) {
        for (const Mode mode : {kEcb, kCbc, kCfb}) {
            const Bytes key(cipher.key != 0 ? cipher.key : 16, 0x5a);
            const Job job = {cipher, cipher.scheduled(key, 12), mode, true, static_cast<std::int32_t>(8 * cipher.block)};
            Bytes out(480), iv(16);
            if (job.exists()) job.call(given.text.data(), out.data(), 480, iv.data());
            append(all, out.data(), out.size());
        }
    }
}

void public_keys(Bytes& all, const Given& given) {
    std::uint8_t out[200];
    const std::int32_t length = E_RSA_Private_Encrypt(out, given.text.data(), 50, given.rsa);
    append(all, out, static_cast<std::size_t>(length));
    all.push_back(static_cast<std::uint8_t>(E_RSA_Verify(given.text.data(), 50, out, length, given.rsa)));
    all.push_back(
        static_cast<std::uint8_t>(E_DSA_Verify(given.text.data(), 20, given.dsa.data(), given.dsa_size, &given.group)));
    for (const std::int32_t curve : {3, 5, 7}) {
        E_EC_PARAMS params;
        E_ECParams_Init(curve, &params);
        TORVA_V1_POINT point{};
        std::copy_n(params.x_words, params.x.length, point.x), std::copy_n(params.y_words, params.y.length, point.y);
        const std::uint32_t k[] = {12345, 678, 90};
        TORVA_V1_ScalarMultiplicationOnEllipticCurves(curve, &params, k, 3, &point, &point);
        std::uint8_t q[E_EC_POINT_OCTETS], sig[60], scalar[20] = {5, 4, 3, 2, 1};
        TORVA_V1_OPAQUE8 open{0, q}, signature{0, sig}, message{100, const_cast<std::uint8_t*>(given.text.data())};
        const TORVA_V1_OPAQUE8 d{20, scalar};
        TORVA_V1_ECPointsToopaque8(curve, 1, &point, &open);
        E_ECKCDSA_Sign_givenK(curve, &params, &message, &signature, &d, &open, &d);
        append(all, sig, static_cast<std::size_t>(signature.count));
        TORVA_V1_ECDHPrimitive(curve, &params, &d, &open, &signature);
        append(all, sig, static_cast<std::size_t>(signature.count));
    }
}

void toolkit(Bytes& all, const Given& given) {
    K_CONTEXT* const context = K_NewContext(nullptr);
    ASSERT_EQ(K_KCCInit(context), 0);
    const CSSM_DATA text = {500, const_cast<std::uint8_t*>(given.text.data())};
    CSSM_DATA out = {};
    EXPECT_EQ(K_GenMac(context, K_MAC_DES3, &text, &text, &out), 0);
    append(all, out.Data, out.Length);
    EXPECT_EQ(K_VerifyMac(context, K_MAC_MD5, &text, &text, &text), KERR_MAC_VERIFY);
    K_free(context, out.Data);
    EXPECT_EQ(K_Encryption_IV_Fix(context, K_CIPHER_SEED, 1, &text, &text, &text, &out), 0);
    append(all, out.Data, out.Length);
    K_free(context, out.Data);
    K_KCCTerm(context);
    EXPECT_EQ(K_EndContext(context), 0U);
}

Bytes everything(const Given& given) {
    Bytes all;
    digests(all, given), ciphers(all, given), public_keys(all, given), toolkit(all, given);
    return all;
}

// The threads come first: they meet whatever is found out at the first call.
TEST(Threads, DoNotDisturbOneAnother) {
    const Given given;
    Bytes results[8];
    std::vector<std::thread> threads;
    for (Bytes& result : results) threads.emplace_back([&] { result = everything(given); });
    for (std::thread& thread : threads) thread.join();
    const Bytes expected = everything(given);
    for (const Bytes& result : results) EXPECT_EQ(result, expected);
}

}  // namespace
