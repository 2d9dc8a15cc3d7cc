// Generated keys, checked by OpenSSL.
#define OPENSSL_SUPPRESS_DEPRECATED  // its checks of a key in parts
#include <morvane/bignum.h>
#include <morvane/pk.h>

#include "support/bytes.h"

#include <gtest/gtest.h>
#include <openssl/rsa.h>
#include <memory>

namespace {

using namespace morvane::test;

BIGNUM* value(const ENUM& x) {
    Bytes octets(4 * E_RSA_MODULUS_WORDS);
    return BN_bin2bn(octets.data(), EN_ENUMToU8(octets.data(), &x), nullptr);
}

void expect_accepted(const E_RSA_KEY& key, const char* kind) {
    const std::unique_ptr<RSA, void (*)(RSA*)> rsa(RSA_new(), RSA_free);
    RSA_set0_key(rsa.get(), value(key.n), value(key.e), value(key.d));
    RSA_set0_factors(rsa.get(), value(key.p), value(key.q));
    RSA_set0_crt_params(rsa.get(), value(key.dP), value(key.dQ), value(key.qInv));
    EXPECT_EQ(RSA_check_key(rsa.get()), 1) << kind;
}

TEST(RsaKeys, AreAcceptedByOpenSsl) {
    E_RSA_KEY key{};
    E_RSA_Init(&key);
    std::uint8_t p1[13], p2[13], q1[13], q2[13];
    for (const std::int32_t bits : {512, 769, 1024}) {
        for (const std::uint32_t e : {3U, 65537U}) {
            E_RSA_GenerateKey(&key, bits, e);
            expect_accepted(key, "plain");
            if (bits == 512) {
                E_RSA_GenerateStrongKey(&key, bits, e);
                expect_accepted(key, "strong");
                E_RSA_GenerateStrongX9Key(&key, bits, e, p1, p2, q1, q2);
                expect_accepted(key, "strong X9");
            }
            testing::internal::CaptureStdout();
            E_RSA_GenerateX9Key(&key, bits, e, p1, p2, q1, q2);
            testing::internal::GetCapturedStdout();
            expect_accepted(key, "X9");
        }
    }
}

}  // namespace
