// The curve schemes with random keys and messages, both ways against OpenSSL. EC-KCDSA is computed here from its equations
// on OpenSSL's points.
#define OPENSSL_SUPPRESS_DEPRECATED  // the operations as they are, without EVP around them
#include <openssl/core_names.h>
#include <openssl/ecdh.h>
#include <openssl/ecdsa.h>
#include <openssl/evp.h>
#include <openssl/hmac.h>
#include <openssl/kdf.h>
#include <openssl/obj_mac.h>
#include <openssl/sha.h>

#include <morvane/hash.h>

#include "ecc/octet_records.h"

namespace {

using namespace morvane::test;

constexpr std::uint32_t kSeed = 16063;
constexpr int kCases = 100;

struct Release {
    void operator()(BIGNUM* number) const { BN_free(number); }
    void operator()(EC_POINT* point) const { EC_POINT_free(point); }
    void operator()(EC_KEY* key) const { EC_KEY_free(key); }
    void operator()(EC_GROUP* group) const { EC_GROUP_free(group); }
};
template <typename T>
using Owned = std::unique_ptr<T, Release>;
using Integer = Owned<BIGNUM>;
using Point = Owned<EC_POINT>;

Integer integer_of(const Bytes& octets) {
    return Integer(BN_bin2bn(octets.data(), static_cast<int>(octets.size()), nullptr));
}

Bytes sha1(const Bytes& message) {
    Bytes digest(20);
    SHA1(message.data(), message.size(), digest.data());
    return digest;
}

Bytes has160(const Bytes& message) {
    Bytes digest(20);
    E_HAS160_CTX ctx;
    E_HAS160_Init(&ctx);
    E_HAS160_Update(&ctx, message.data(), static_cast<std::int32_t>(message.size()));
    E_HAS160_Final(&ctx, digest.data());
    return digest;
}

Bytes x963(const Bytes& secret, const Bytes& info, std::size_t size) {
    EVP_KDF* const kdf = EVP_KDF_fetch(nullptr, "X963KDF", nullptr);
    EVP_KDF_CTX* const ctx = EVP_KDF_CTX_new(kdf);
    char digest[] = "SHA1";
    Bytes z = secret, shared = info, key(size);
    const OSSL_PARAM params[] = {OSSL_PARAM_construct_utf8_string(OSSL_KDF_PARAM_DIGEST, digest, 0),
                                 OSSL_PARAM_construct_octet_string(OSSL_KDF_PARAM_SECRET, z.data(), z.size()),
                                 OSSL_PARAM_construct_octet_string(OSSL_KDF_PARAM_INFO, shared.data(), shared.size()),
                                 OSSL_PARAM_construct_end()};
    EXPECT_EQ(EVP_KDF_derive(ctx, key.data(), key.size(), params), 1);
    EVP_KDF_CTX_free(ctx);
    EVP_KDF_free(kdf);
    return key;
}

class EcDifferential : public testing::TestWithParam<std::int32_t> {
protected:
    Curve ours{GetParam()};
    Owned<EC_GROUP> group{EC_GROUP_new_by_curve_name(ours.id == 3   ? NID_sect163k1
                                                     : ours.id == 5 ? NID_X9_62_c2pnb163v1
                                                                    : NID_secp160r1)};
    const BIGNUM* n = EC_GROUP_get0_order(group.get());
    std::size_t size = ours.size();
    Random random{kSeed};

    Bytes octets(const BIGNUM* number, std::size_t width) const {
        Bytes bytes(width);
        EXPECT_GE(BN_bn2binpad(number, bytes.data(), static_cast<int>(width)), 0);
        return bytes;
    }
    Bytes octets(const EC_POINT* point) const {
        Bytes bytes(2 * size + 1);
        EXPECT_EQ(
            EC_POINT_point2oct(group.get(), point, POINT_CONVERSION_UNCOMPRESSED, bytes.data(), bytes.size(), nullptr),
            bytes.size());
        return bytes;
    }
    Bytes x_of(const EC_POINT* point) const {
        const Bytes bytes = octets(point);
        return {bytes.begin() + 1, bytes.begin() + 1 + static_cast<std::ptrdiff_t>(size)};
    }
    Point point_of(const Bytes& bytes) const {
        Point point(EC_POINT_new(group.get()));
        EXPECT_EQ(EC_POINT_oct2point(group.get(), point.get(), bytes.data(), bytes.size(), nullptr), 1);
        return point;
    }
    // base G + factor p; null for none.
    Point sum(const BIGNUM* base, const EC_POINT* p, const BIGNUM* factor) const {
        Point point(EC_POINT_new(group.get()));
        EXPECT_EQ(EC_POINT_mul(group.get(), point.get(), base, p, factor, nullptr), 1);
        return point;
    }
    // From a key block.
    Integer private_integer(const Bytes& key) const {
        EXPECT_EQ(key.size(), size + 2);
        return integer_of({key.begin() + 2, key.end()});
    }
    Owned<EC_KEY> their_key(const KeyPair& keys) const {
        Owned<EC_KEY> key(EC_KEY_new());
        EC_KEY_set_group(key.get(), group.get());
        EXPECT_EQ(EC_KEY_set_private_key(key.get(), private_integer(keys.private_key).get()), 1);
        EXPECT_EQ(EC_KEY_set_public_key(key.get(), point_of(keys.public_key).get()), 1);
        EXPECT_EQ(EC_KEY_check_key(key.get()), 1);  // on the curve, of order n, and of the private key
        return key;
    }
    // By the library or by OpenSSL, whose private keys are bare octets here, as short as they are.
    KeyPair any_key() {
        if (random.below(2) == 0) return ours.generate();
        Owned<EC_KEY> key(EC_KEY_new());
        EC_KEY_set_group(key.get(), group.get());
        EXPECT_EQ(EC_KEY_generate_key(key.get()), 1);
        const BIGNUM* const d = EC_KEY_get0_private_key(key.get());
        return {Bytes{2, static_cast<std::uint8_t>(size)} + octets(d, size), octets(EC_KEY_get0_public_key(key.get()))};
    }
    Bytes message() { return random.bytes(random.below(300)); }
    Bytes shared_secret(const KeyPair& mine, const Bytes& other) {
        Bytes secret(size);
        EXPECT_EQ(ECDH_compute_key(secret.data(), size, point_of(other).get(), their_key(mine).get(), nullptr),
                  static_cast<int>(size));
        return secret;
    }
};

TEST_P(EcDifferential, Ecdsa) {
    for (int i = 0; i < kCases; ++i) {
        SCOPED_TRACE("case " + std::to_string(i) + ", seed " + std::to_string(kSeed));
        const KeyPair keys = any_key();
        const Owned<EC_KEY> theirs = their_key(keys);
        const Bytes text = message();
        const Bytes digest = sha1(text);
        const Bytes block = ours.ecdsa(text, keys.private_key);
        EXPECT_EQ(ECDSA_verify(0, digest.data(), 20, block.data(), static_cast<int>(block.size()), theirs.get()), 1);
        Bytes their_block(80);
        unsigned their_size = 0;
        ASSERT_EQ(ECDSA_sign(0, digest.data(), 20, their_block.data(), &their_size, theirs.get()), 1);
        their_block.resize(their_size);
        EXPECT_EQ(ours.verify_ecdsa(text, their_block, keys.public_key), 1);
        EXPECT_EQ(ours.verify_ecdsa(text + Bytes{0}, their_block, keys.public_key), 0);
        EXPECT_EQ(ours.verify_ecdsa(text, flipped(their_block, their_size - 1), keys.public_key), 0);
        EXPECT_EQ(ours.verify_ecdsa(text, their_block, ours.generate().public_key), 0);
    }
}

TEST_P(EcDifferential, AgreementAndEncryption) {
    for (int i = 0; i < kCases; ++i) {
        SCOPED_TRACE("case " + std::to_string(i) + ", seed " + std::to_string(kSeed));
        const KeyPair a = any_key(), b = any_key();
        const Bytes z = shared_secret(a, b.public_key);
        EXPECT_EQ(ours.ecdh(a.private_key, b.public_key), (Written{0, z}));
        EXPECT_EQ(ours.ecdh(b.private_key, a.public_key), (Written{0, z}));

        const KeyPair a2 = any_key(), b2 = any_key();  // ephemeral
        const Bytes z2 = shared_secret(a2, b2.public_key);
        const Bytes info = random.bytes(random.below(70));
        const std::size_t length = 1 + random.below(100);
        const auto key_octets = static_cast<std::int32_t>(length);
        EXPECT_EQ(written_by(length,
                             [&](auto& out) {
                                 return E_ECC_X9_63_KAS_OPDHS(ours.id, &ours.params, In(a.private_key), In(b.public_key),
                                                              In(info), key_octets, out);
                             }),
                  (Written{0, x963(z, info, length)}));
        EXPECT_EQ(written_by(length,
                             [&](auto& out) {
                                 return E_ECC_X9_63_FUMS(ours.id, &ours.params, In(a.private_key), In(a2.private_key),
                                                         In(b.public_key), In(b2.public_key), In(info), key_octets, out);
                             }),
                  (Written{0, x963(z2 + z, info, length)}));
        for (const auto& [fixed, of_this] :
             {std::pair{b, Bytes(2 * size + 1, 4)}, {KeyPair{{}, Bytes(9)}, b2.public_key}}) {
            EXPECT_EQ(E_ECC_X9_63_FUMS(ours.id, &ours.params, In(a.private_key), In(a2.private_key), In(fixed.public_key),
                                       In(of_this), In(info), key_octets, Out(length)),
                      -4)
                << "no point";
        }

        const Bytes text = random.bytes(1 + random.below(2500));
        const Bytes sent = ours.encrypt(text, a.public_key).bytes;
        ASSERT_EQ(sent.size(), 2 * size + 1 + text.size() + 20);
        const auto middle = sent.begin() + static_cast<std::ptrdiff_t>(2 * size + 1);
        const Bytes shared = shared_secret(a, {sent.begin(), middle});
        const Bytes key = x963(shared, {}, text.size() + 20);
        Bytes masked = text, tag(20);
        for (std::size_t k = 0; k < text.size(); ++k) masked[k] ^= key[k];
        HMAC(EVP_sha1(), key.data() + text.size(), 20, masked.data(), masked.size(), tag.data(), nullptr);
        EXPECT_EQ(Bytes(middle, sent.end()), masked + tag);
        EXPECT_EQ(ours.decrypt(sent, a.private_key), (Written{0, text}));
    }
}

TEST_P(EcDifferential, Eckcdsa) {
    std::unique_ptr<BN_CTX, decltype(&BN_CTX_free)> ctx(BN_CTX_new(), BN_CTX_free);
    for (int i = 0; i < kCases; ++i) {
        SCOPED_TRACE("case " + std::to_string(i) + ", seed " + std::to_string(kSeed));
        const KeyPair keys = ours.generate(E_ECC_GenerateKeyPair_ECKCDSA);
        const Integer d = private_integer(keys.private_key), inverse(BN_new()), k(BN_new()), s(BN_new());
        BN_mod_inverse(inverse.get(), d.get(), n, ctx.get());
        EXPECT_EQ(keys.public_key, octets(sum(inverse.get(), nullptr, nullptr).get()));

        // With a given k.
        BN_mod(k.get(), integer_of(random.bytes(40)).get(), n, ctx.get());
        const Bytes text = message();
        Bytes z(keys.public_key.begin() + 1, keys.public_key.end());
        z.resize(64);
        const Bytes h = has160(z + text);
        const auto challenge = [&](Bytes r) {
            for (std::size_t at = 0; at < 20; ++at) r[at] ^= h[at];
            return integer_of(r);
        };
        const Bytes r = has160(x_of(sum(k.get(), nullptr, nullptr).get()));
        BN_mod_sub(s.get(), k.get(), challenge(r).get(), n, ctx.get());
        BN_mod_mul(s.get(), s.get(), d.get(), n, ctx.get());
        const auto length = static_cast<std::uint8_t>(size);
        const Bytes block =
            Bytes{0x30, static_cast<std::uint8_t>(length + 24), 4, 20} + r + Bytes{4, length} + octets(s.get(), size);
        EXPECT_EQ(written_by(E_ECKCDSA_SIGNATURE_OCTETS,
                             [&](auto& out) {
                                 return E_ECKCDSA_Sign_givenK(ours.id, &ours.params, In(text), out, In(keys.private_key),
                                                              In(keys.public_key), In(octets(k.get(), 21)));
                             }),
                  (Written{0, block}));
        EXPECT_EQ(ours.verify_eckcdsa(text, block, keys.public_key), 1);
        EXPECT_EQ(ours.verify_eckcdsa(text + Bytes{0}, block, keys.public_key), 0);
        EXPECT_EQ(ours.verify_eckcdsa(text, flipped(block, 4), keys.public_key), 0);
        EXPECT_EQ(ours.verify_eckcdsa(text, flipped(block, block.size() - 1), keys.public_key), 0);

        // With a random one: r is the digest of x of s Q + e G.
        const Bytes drawn = ours.eckcdsa(text, keys);
        ASSERT_EQ(drawn.size(), block.size());
        const Bytes drawn_r(drawn.begin() + 4, drawn.begin() + 24);
        const Integer drawn_s = integer_of({drawn.begin() + 26, drawn.end()});
        const Point q = point_of(keys.public_key);
        EXPECT_EQ(has160(x_of(sum(challenge(drawn_r).get(), q.get(), drawn_s.get()).get())), drawn_r);
    }
}

INSTANTIATE_TEST_SUITE_P(Curves, EcDifferential, testing::ValuesIn(kCurves), testing::PrintToStringParamName());

}  // namespace
