// RSA keys and integers in DER, against OpenSSL.
#define OPENSSL_SUPPRESS_DEPRECATED
#include <morvane/asn1.h>
#include <morvane/bignum.h>

#include "support/bytes.h"

#include <gtest/gtest.h>
#include <openssl/asn1.h>
#include <openssl/bn.h>
#include <openssl/rsa.h>
#include <memory>

namespace {

using namespace morvane::test;

template <typename Record>
Bytes by_openssl(int (*write)(const Record*, std::uint8_t**), const Record* record) {
    Bytes der(static_cast<std::size_t>(write(record, nullptr)));
    std::uint8_t* out = der.data();
    write(record, &out);
    return der;
}

// Up to so many bytes; short ones, zeros in front and full top bytes among them.
Bytes number(Random& random, std::uint32_t most) {
    Bytes octets = random.bytes(random.below(4) == 0 ? random.below(3) : random.below(most + 1));
    if (octets.size() > most) octets.resize(most);
    if (!octets.empty()) octets[0] = static_cast<std::uint8_t>(octets[0] >> random.below(9));
    return octets;
}

TEST(Der, RsaKeysEqualOpenSsl) {
    constexpr std::uint32_t kSeed = 20280;
    constexpr std::uint32_t kMost[] = {600, 4, 600, 300, 300, 300, 300, 300};
    Random random(kSeed);
    for (int i = 0; i < 1000; ++i) {
        SCOPED_TRACE(testing::Message() << "seed " << kSeed << ", key " << i);
        const std::unique_ptr<RSA, void (*)(RSA*)> peer(RSA_new(), RSA_free);
        BIGNUM* members[8];
        for (std::size_t k = 0; k < 8; ++k) {
            const Bytes octets = number(random, kMost[k]);
            members[k] = BN_bin2bn(octets.data(), static_cast<int>(octets.size()), nullptr);
        }
        RSA_set0_key(peer.get(), members[0], members[1], members[2]);
        RSA_set0_factors(peer.get(), members[3], members[4]);
        RSA_set0_crt_params(peer.get(), members[5], members[6], members[7]);
        const auto expect_equal = [](const Bytes& der, auto get, auto put) {
            E_RSA_KEY key = {};
            E_RSA_Init(&key);
            const std::uint8_t* position = der.data();
            get(&key, &position, size32(der));
            ASSERT_EQ(position, der.data() + der.size());
            Bytes ours(static_cast<std::size_t>(put(&key, nullptr)));
            put(&key, ours.data());
            ASSERT_EQ(to_hex(ours), to_hex(der));
        };
        expect_equal(by_openssl(i2d_RSAPublicKey, peer.get()), E_ASN1_GetRSAPublicKey, E_ASN1_PutRSAPublicKey);
        expect_equal(by_openssl(i2d_RSAPrivateKey, peer.get()), E_ASN1_GetRSAPrivateKey, E_ASN1_PutRSAPrivateKey);
    }
}

TEST(Der, IntegersEqualOpenSsl) {
    constexpr std::uint32_t kSeed = 20281;
    Random random(kSeed);
    for (int i = 0; i < 5000; ++i) {
        Bytes octets = number(random, 40);
        if (octets.size() > 1 && random.below(4) == 0) std::fill(octets.begin() + 1, octets.end(), 0);
        const std::unique_ptr<BIGNUM, void (*)(BIGNUM*)> peer(
            BN_bin2bn(octets.data(), static_cast<int>(octets.size()), nullptr), BN_free);
        std::uint32_t words[10];
        ENUM ours = {0, 0, words};
        EN_U8ToENUM(&ours, octets.data(), size32(octets));
        ours.sign = random.below(2);
        BN_set_negative(peer.get(), static_cast<int>(ours.sign));
        const std::unique_ptr<ASN1_INTEGER, void (*)(ASN1_INTEGER*)> integer(BN_to_ASN1_INTEGER(peer.get(), nullptr),
                                                                             ASN1_INTEGER_free);
        Bytes der(static_cast<std::size_t>(E_ASN1_GetENUMBytes(&ours, 1)));
        E_ASN1_PutENUM(&ours, 1, der.data());
        der.erase(der.begin(), der.begin() + 2);
        ASSERT_EQ(to_hex(der), to_hex(by_openssl(i2d_ASN1_INTEGER, integer.get()))) << "seed " << kSeed << ", " << i;
    }
}

}  // namespace
