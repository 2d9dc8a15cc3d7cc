// Signatures with numbers k that are given: published examples.
#include "bignum/octets.h"
#include "bignum/record.h"
#include "ecc/ecdsa.h"
#include "pk/domain.h"
#include "pk/dsa.h"
#include "pk/kcdsa.h"
#include "pk/kcdsa_x9.h"
#include "pk/signature.h"
#include "support/integer.h"
#include "support/vectors.h"

#include <gtest/gtest.h>
#include <morvane/hash.h>

namespace {

using namespace morvane;
using namespace morvane::pk;
using namespace morvane::test;
using bignum::magnitude;

Integer integer_in(const Vector& vector, const char* name) { return {vector.text(name).c_str()}; }

Bytes sha1(const Bytes& message) {
    Bytes digest(20);
    E_SHA1(digest.data(), message.data(), size32(message));
    return digest;
}

std::string hex_of(const Scalars& scalars, const Scalar& a) { return Integer(*ScalarNumber(scalars, a)).hex(); }

void expect_ecdsa(const Vector& vector) {
    struct Words {
        explicit Words(const Bytes& octets) { bignum::octets_to_words(words, ecc::kWords, octets.data(), octets.size()); }
        explicit Words(const Integer& integer) : Words(integer.octets()) {}
        std::string hex() { return Integer(ENUM{0, ecc::kWords, words}).hex(); }
        ecc::Word words[ecc::kWords];
    };
    const std::int32_t curve = std::stoi(vector.text("curve"));
    Words e(sha1(from_text(vector.text("text")))), d(integer_in(vector, "x")), k(integer_in(vector, "k")), r(Bytes{}),
        s(Bytes{});
    EXPECT_EQ(ecc::ecdsa_sign(r.words, s.words, curve, e.words, d.words, k.words), ecc::Signed::kYes);
    EXPECT_EQ(r.hex(), vector.text("r"));
    EXPECT_EQ(s.hex(), vector.text("s"));
    TORVA_V1_POINT q;
    ASSERT_TRUE(ecc::multiply_base(q, curve, d.words));
    EXPECT_TRUE(ecc::ecdsa_verify_vt(curve, e.words, r.words, s.words, q));
}

void expect_dsa(const Vector& vector) {
    WorkKey work;
    EN_Copy(&work.key.p, integer_in(vector, "p"));
    EN_Copy(&work.key.q, integer_in(vector, "q"));
    EN_Copy(&work.key.g, integer_in(vector, "g"));
    const Group group(work.key);
    Scalars scalars(group);
    Scalar x, m, k, r, s;
    scalars.load(x, magnitude(*integer_in(vector, "x")));
    scalars.load(k, magnitude(*integer_in(vector, "k")));
    scalars.load_octets(m, sha1(from_text(vector.text("text"))));
    ASSERT_TRUE(dsa_signature(r, s, group, scalars, x, m, k));
    EXPECT_EQ(hex_of(scalars, r), vector.text("r"));
    EXPECT_EQ(hex_of(scalars, s), vector.text("s"));
}

void expect_kcdsa(const Vector& vector) {
    // The domain, from its seed, is the built-in one.
    WorkKey fixed, made;
    E_KCDSA_GenerateKey_fixParam(&fixed.key, 0, 160);
    E_KCDSA_KEY& key = made.key;
    Integer twice_j;
    std::uint32_t count = 0;
    SeedOctets seed;
    const Bytes octets = vector.bytes("seed");
    std::copy(octets.begin(), octets.end(), seed);
    ASSERT_EQ(domain_of_seed(key, *twice_j, count, seed, 1024, 160), Seeded::kDone);
    EXPECT_EQ(std::to_string(count), vector.text("count"));
    EN_Mod_Exp(&key.g, integer_in(vector, "h"), twice_j, &key.p);
    for (ENUM E_KCDSA_KEY::*const member : {&E_KCDSA_KEY::p, &E_KCDSA_KEY::q, &E_KCDSA_KEY::g}) {
        EXPECT_EQ(Integer(key.*member), Integer(fixed.key.*member));
    }
    seed[19] ^= 1;
    EXPECT_EQ(domain_of_seed(fixed.key, *twice_j, count, seed, 1024, 160), Seeded::kUnfit);
    ASSERT_TRUE(set_pair(key, *integer_in(vector, "x"), PublicKey::kOfInverse));
    EXPECT_EQ(Integer(key.y), integer_in(vector, "y"));

    // z has 64 octets here and W 128, so that their leading zeros make no difference.
    RBytes hash, r;
    ASSERT_TRUE(kcdsa_hash_message(hash, E_KCDSA_HAS160, magnitude(key.y), from_text(vector.text("text"))));
    EXPECT_EQ(to_hex(hash, sizeof hash), vector.text("hash"));
    KcdsaSigner signer(key);
    signer.set_k(magnitude(*integer_in(vector, "k")));
    Scalar s;
    ASSERT_EQ(kcdsa_sign_hash(r, s, E_KCDSA_HAS160, signer, hash), Signing::kDone);
    EXPECT_EQ(to_hex(r, sizeof r), vector.text("r"));
    EXPECT_EQ(hex_of(signer.scalars(), s), vector.text("s"));
}

TEST(Signatures, EqualPublishedExamples) {
    for (const Vector& vector : load_vectors("signatures.txt")) {
        SCOPED_TRACE(vector.text("r"));
        (vector.has("curve") ? expect_ecdsa : vector.has("p") ? expect_dsa : expect_kcdsa)(vector);
    }
}

}  // namespace
