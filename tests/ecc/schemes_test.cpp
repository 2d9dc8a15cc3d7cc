// The curve schemes: layouts, known answers, and everything that is refused.
#include "ecc/octet_records.h"
#include "support/vectors.h"

#include <algorithm>

#if defined(__linux__)
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace {

using namespace morvane::test;

class EcSchemes : public testing::TestWithParam<std::int32_t> {
protected:
    Curve curve{GetParam()};
    std::size_t size = curve.size();
    KeyPair keys = curve.generate();
    KeyPair keys_of_kcdsa = curve.generate(E_ECC_GenerateKeyPair_ECKCDSA);
    Bytes text = from_text("message");

    Bytes bare(const KeyPair& pair) const { return {pair.private_key.begin() + 2, pair.private_key.end()}; }
};

TEST_P(EcSchemes, KeysHaveTheirLayoutAndServe) {
    const auto length = static_cast<std::uint8_t>(size);
    for (const KeyPair& pair : {keys, keys_of_kcdsa}) {
        ASSERT_EQ(pair.private_key.size(), size + 2);
        EXPECT_EQ(pair.private_key[0], 2);
        EXPECT_EQ(pair.private_key[1], length);
        ASSERT_EQ(pair.public_key.size(), 2 * size + 1);
        EXPECT_EQ(TORVA_V1_IsValidPoint(curve.id, &curve.params, In(pair.public_key)), 1);
    }
    EXPECT_EQ(curve.verify_ecdsa(text, curve.ecdsa(text, bare(keys)), keys.public_key), 1);
    EXPECT_EQ(curve.verify_eckcdsa(text, curve.eckcdsa(text, {bare(keys_of_kcdsa), keys_of_kcdsa.public_key}),
                                   keys_of_kcdsa.public_key),
              1);
    EXPECT_EQ(curve.verify_ecdsa({}, curve.ecdsa({}, keys.private_key), keys.public_key), 1);

    Out r(E_EC_SCALAR_OCTETS), s(E_EC_SCALAR_OCTETS), h(E_ECKCDSA_HASH_OCTETS), t(E_EC_SCALAR_OCTETS);
    EXPECT_EQ(TORVA_V1_ECC_SignatureGeneration_X917(curve.id, &curve.params, In(text), r, s, In(keys.private_key)), 0);
    EXPECT_EQ(TORVA_V1_ECC_SignatureVerification(curve.id, &curve.params, In(text), r, s, In(keys.public_key)), 1);
    EXPECT_EQ(TORVA_V1_ECC_SignatureVerification(curve.id, &curve.params, In(text), s, r, In(keys.public_key)), 0);
    EXPECT_NE(r.bytes().front(), 0);
    EXPECT_EQ(TORVA_V1_ECC_SignatureGeneration_ECKCDSA(curve.id, &curve.params, In(text), h, t,
                                                       In(keys_of_kcdsa.private_key), In(keys_of_kcdsa.public_key)),
              0);
    EXPECT_EQ(
        TORVA_V1_ECC_SignatureVerification_ECKCDSA(curve.id, &curve.params, In(text), h, t, In(keys_of_kcdsa.public_key)),
        1);
    const Bytes hash = h.bytes();
    for (const Bytes& other : {hash + Bytes{0}, Bytes(hash.begin(), hash.end() - 1), Bytes()}) {
        EXPECT_EQ(TORVA_V1_ECC_SignatureVerification_ECKCDSA(curve.id, &curve.params, In(text), In(other), t,
                                                             In(keys_of_kcdsa.public_key)),
                  0);
    }
    EXPECT_EQ(hash.size(), 20U);
    EXPECT_EQ(t.bytes().size(), size);
}

TEST_P(EcSchemes, ScalarsThatAreNone) {
    Bytes above = order_of(curve.id);
    above.back() += 1;
    const Bytes none[] = {
        {}, Bytes(21), Bytes{0}, order_of(curve.id), above, Bytes(21, 0xff), Bytes(21) + Bytes{1}, Bytes(29) + Bytes{1}};
    const Written cannot{-4, {}};
    for (const Bytes& key : none) {
        SCOPED_TRACE(to_hex(key));
        EXPECT_EQ(E_ECDSA_Sign(curve.id, &curve.params, In(text), Out(48), In(key)), -4);
        EXPECT_EQ(curve.ecdh(key, keys.public_key), cannot);
        EXPECT_EQ(E_ECKCDSA_Sign(curve.id, &curve.params, In(text), Out(47), In(key), In(keys.public_key)), -4);
        EXPECT_EQ(E_ECKCDSA_Sign_givenK(curve.id, &curve.params, In(text), Out(47), In(keys.private_key),
                                        In(keys.public_key), In(key)),
                  -4);
        EXPECT_EQ(curve.decrypt(curve.encrypt(text, keys.public_key).bytes, key), (Written{-1, {}}));
        EXPECT_EQ(
            TORVA_V1_ECC_SignatureVerification(curve.id, &curve.params, In(text), In(key), In({1}), In(keys.public_key)),
            0);
        EXPECT_EQ(
            TORVA_V1_ECC_SignatureVerification(curve.id, &curve.params, In(text), In({1}), In(key), In(keys.public_key)),
            0);
        if (key.size() > 21) continue;
        const Bytes s = Bytes(21 - key.size()) + key;
        const Bytes block = Bytes{0x30, 45, 4, 20} + Bytes(20, 7) + Bytes{4, 21} + s;
        EXPECT_EQ(curve.verify_eckcdsa(text, block, keys.public_key), 0);
    }
    Bytes last = order_of(curve.id);  // n - 1 gives the point -G, and its x is that of G
    last.back() -= 1;
    EXPECT_EQ(curve.ecdh(last, keys.public_key), curve.ecdh({1}, keys.public_key));
    for (const std::size_t at : {0U, 1U}) EXPECT_EQ(curve.ecdh(flipped(keys.private_key, at), keys.public_key), cannot);
}

TEST_P(EcSchemes, PublicKeysThatAreNone) {
    const Bytes& good = keys.public_key;
    std::vector<Bytes> none = {{},
                               {4},
                               good + Bytes{0},
                               Bytes(good.begin(), good.end() - 1),
                               flipped(good, good.size() - 1),
                               Bytes{4} + Bytes(2 * size),
                               Bytes{4} + Bytes(2 * size, 0xff)};
    for (const std::uint8_t first : Bytes{0, 2, 3, 5, 6})
        none.push_back(Bytes{first} + Bytes(good.begin() + 1, good.end()));
    // On the curve, of order 2.
    if (curve.id == 3) none.push_back(Bytes{4} + Bytes(41) + Bytes{1});
    const Bytes block = curve.ecdsa(text, keys.private_key);
    const Bytes other_block = curve.eckcdsa(text, keys_of_kcdsa);
    const Bytes sent = curve.encrypt(text, good).bytes;
    for (const Bytes& key : none) {
        SCOPED_TRACE(to_hex(key));
        EXPECT_EQ(curve.verify_ecdsa(text, block, key), -1);
        EXPECT_EQ(curve.verify_eckcdsa(text, other_block, key), -1);
        EXPECT_EQ(curve.ecdh(keys.private_key, key), (Written{-4, {}}));
        EXPECT_EQ(curve.encrypt(text, key), (Written{-1, {}}));
        if (key.size() != good.size()) continue;
        const Bytes changed = key + Bytes(sent.begin() + static_cast<std::ptrdiff_t>(key.size()), sent.end());
        EXPECT_EQ(curve.decrypt(changed, keys.private_key), (Written{-1, {}}));
    }
}

TEST_P(EcSchemes, EncryptionOpensWhatItClosedAndNothingElse) {
    const std::size_t point = 2 * size + 1;
    for (const std::size_t length : {1U, 19U, 20U, 21U, 999U, 1000U, 1001U, 2020U}) {
        SCOPED_TRACE(length);
        const Bytes message(length, 0x6d);
        const Bytes sent = curve.encrypt(message, keys.public_key).bytes;
        ASSERT_EQ(sent.size(), point + length + 20);
        EXPECT_EQ(curve.decrypt(sent, keys.private_key), (Written{0, message}));
        for (const std::size_t at : {point - 1, point, point + length - 1, point + length, sent.size() - 1}) {
            EXPECT_EQ(curve.decrypt(flipped(sent, at), keys.private_key), (Written{-1, {}})) << at;
        }
        EXPECT_EQ(curve.decrypt(sent, keys_of_kcdsa.private_key), (Written{-1, {}}));
        EXPECT_EQ(curve.decrypt({sent.begin(), sent.end() - 1}, keys.private_key), (Written{-1, {}}));
    }
    EXPECT_EQ(curve.encrypt({}, keys.public_key), (Written{-1, {}}));
    const auto overhead = static_cast<std::int32_t>(point) + 20;
    TORVA_V1_OPAQUE8 ciphertext = {overhead, nullptr};
    EXPECT_EQ(TORVA_V1_ECC_getLengthOfOriginalMessage(&curve.params, &ciphertext), -1);
    ++ciphertext.count;
    EXPECT_EQ(TORVA_V1_ECC_getLengthOfOriginalMessage(&curve.params, &ciphertext), 1);
    EXPECT_EQ(TORVA_V1_ECC_getLengthOfMessageToBeEncrypted(&curve.params, 5), 5 + overhead);
    EXPECT_EQ(TORVA_V1_ECC_getLengthOfMessageToBeEncrypted(&curve.params, INT32_MAX - overhead + 1), -1);
    EXPECT_EQ(curve.decrypt(Bytes(static_cast<std::size_t>(overhead), 4), keys.private_key), (Written{-1, {}}));
}

// Outputs that are missing, inputs that are none, and curves without arithmetic.
TEST_P(EcSchemes, MissingRecordsAndUnknownCurves) {
    TORVA_V1_OPAQUE8 nowhere = {0, nullptr};
    std::uint8_t octet = 0;
    TORVA_V1_OPAQUE8 negative = {-1, &octet};
    const E_EC_PARAMS* const params = &curve.params;
    const In message(text), d(keys.private_key), q(keys.public_key), block(curve.ecdsa(text, keys.private_key));
    Out out(100), other(100);
    for (TORVA_V1_OPAQUE8* const none : {static_cast<TORVA_V1_OPAQUE8*>(nullptr), &nowhere}) {
        for (const auto generate :
             {E_ECC_GenerateKeyPair, E_ECC_GenerateKeyPair_ECKCDSA, E_ECC_GenerateKeyPair_ECKCDSA_TEST}) {
            EXPECT_EQ(generate(curve.id, params, none, out), -1);
            EXPECT_EQ(generate(curve.id, params, out, none), -1);
        }
        EXPECT_EQ(E_ECDSA_Sign(curve.id, params, message, none, d), -4);
        EXPECT_EQ(TORVA_V1_ECC_SignatureGeneration_X917(curve.id, params, message, out, none, d), -4);
        EXPECT_EQ(E_ECKCDSA_Sign(curve.id, params, message, none, d, q), -4);
        EXPECT_EQ(TORVA_V1_ECDHPrimitive(curve.id, params, d, q, none), -4);
        EXPECT_EQ(E_ECC_X9_63_KAS_OPDHS(curve.id, params, d, q, nullptr, 9, none), -1);
        EXPECT_EQ(E_ECC_Encryption(curve.id, params, message, none, q), -1);
    }
    for (const TORVA_V1_OPAQUE8* const none : {static_cast<TORVA_V1_OPAQUE8*>(nullptr), &nowhere, &negative}) {
        EXPECT_EQ(E_ECDSA_Sign(curve.id, params, none, out, d), -4);
        EXPECT_EQ(E_ECKCDSA_Sign(curve.id, params, message, out, d, none), -4);
        EXPECT_EQ(E_ECDSA_Verify(curve.id, params, message, none, q), 0);
        EXPECT_EQ(E_ECDSA_Verify(curve.id, params, message, block, none), -1);
        EXPECT_EQ(E_ECC_Decryption(curve.id, params, none, out, d), -1);
    }
    for (const std::int32_t unknown : {4, 11, -3}) {
        EXPECT_EQ(E_ECC_GenerateKeyPair(unknown, params, out, other), -1);
        EXPECT_EQ(E_ECDSA_Sign(unknown, params, message, out, d), -4);
        EXPECT_EQ(E_ECDSA_Verify(unknown, params, message, block, q), -1);
        EXPECT_EQ(TORVA_V1_ECDHPrimitive(unknown, params, d, q, out), -4);
    }
}

#if defined(__linux__)
// Processes that forked have one random state. One k for two messages would show as one r.
TEST_P(EcSchemes, ForkedProcessesSignWithDifferentScalars) {
    // What a child puts first into its block: the head and most of r.
    const auto by_child = [](const auto& sign) {
        constexpr std::size_t kBeginning = 20;
        int ends[2];
        EXPECT_EQ(pipe(ends), 0);
        const pid_t child = fork();
        if (child == 0) _exit(write(ends[1], sign().data(), kBeginning) == kBeginning ? 0 : 1);
        int status = -1;
        EXPECT_TRUE(waitpid(child, &status, 0) == child && status == 0);
        Bytes block(kBeginning);
        EXPECT_EQ(read(ends[0], block.data(), kBeginning), static_cast<ssize_t>(kBeginning));
        for (const int end : ends) close(end);
        return Bytes(block.begin() + 4, block.end());
    };
    const auto ecdsa = [&](const Bytes& message) { return curve.ecdsa(message, keys.private_key); };
    const auto eckcdsa = [&](const Bytes& message) { return curve.eckcdsa(message, keys_of_kcdsa); };
    EXPECT_NE(by_child([&] { return ecdsa({1}); }), by_child([&] { return ecdsa({2}); }));
    EXPECT_NE(by_child([&] { return eckcdsa({1}); }), by_child([&] { return eckcdsa({2}); }));
}
#endif

INSTANTIATE_TEST_SUITE_P(Curves, EcSchemes, testing::ValuesIn(kCurves), testing::PrintToStringParamName());

// The diagnostic calls: one key pair, and what they print. The other fields are those of a signature.
void expect_diagnostics(const Curve& curve, const Vector& vector) {
    testing::internal::CaptureStdout();
    const KeyPair pair = curve.generate(E_ECC_GenerateKeyPair_ECKCDSA_TEST);
    const std::string printed = testing::internal::GetCapturedStdout();
    EXPECT_EQ(pair.private_key, (Bytes{2, static_cast<std::uint8_t>(curve.size())} + vector.bytes("d")));
    EXPECT_EQ(to_hex(pair.public_key), vector.text("qk"));
    EXPECT_EQ(printed.rfind(vector.text("printed"), 1), 1U) << printed;
    EXPECT_TRUE(printed.find("\ndInv = ") < printed.find("\nQx = ")) << printed;

    const auto verify = [&](const Bytes& block) {
        testing::internal::CaptureStdout();
        const std::int32_t result =
            E_ECKCDSA_Verify_TEST(curve.id, &curve.params, In(vector.bytes("message")), In(block), In(vector.bytes("qk")));
        return std::pair(result, testing::internal::GetCapturedStdout());
    };
    const Bytes block = vector.bytes("eckcdsa");
    const auto [valid, lines] = verify(block);
    EXPECT_EQ(valid, 1);
    EXPECT_EQ(lines.rfind("\nH = ", 0), 0U) << lines;
    EXPECT_LT(lines.find("\ne = "), lines.find("\n" + vector.text("found") + "\n")) << lines;
    EXPECT_EQ(verify(flipped(block, 30)).first, 0);
    EXPECT_EQ(verify(flipped(block, 0)), (std::pair<std::int32_t, std::string>(0, "")));
}

TEST(EcVectors, AreMet) {
    for (const Vector& vector : load_vectors("ec_schemes.txt")) {
        const Curve curve(std::stoi(vector.text("curve")));
        SCOPED_TRACE(vector.text("curve") + ", d = " + vector.text("d"));
        const auto in = [&](const char* name) { return In(vector.bytes(name)); };
        const auto expect = [&](const char* name, const auto& call) {
            EXPECT_EQ(written_by(vector.bytes(name).size(), call), (Written{0, vector.bytes(name)})) << name;
        };
        const Bytes text = vector.bytes("message"), d = vector.bytes("d"), block = vector.bytes("eckcdsa");
        expect("eckcdsa", [&](auto& out) {
            return E_ECKCDSA_Sign_givenK(curve.id, &curve.params, In(text), out, In(d), in("qk"), in("k"));
        });
        EXPECT_EQ(curve.verify_eckcdsa(text, block, vector.bytes("qk")), 1);
        EXPECT_EQ(curve.verify_eckcdsa(text + Bytes{0}, block, vector.bytes("qk")), 0);
        Bytes longer = block;  // s with a zero in front
        longer.insert(longer.begin() + 26, 0);
        ++longer[1], ++longer[25];
        EXPECT_EQ(curve.verify_eckcdsa(text, longer, vector.bytes("qk")), curve.id == 7 ? 1 : 0);
        if (vector.has("printed")) {
            expect_diagnostics(curve, vector);
            continue;
        }
        EXPECT_EQ(curve.verify_ecdsa(text, vector.bytes("ecdsa"), vector.bytes("q")), 1);
        EXPECT_EQ(curve.verify_ecdsa(text + Bytes{0}, vector.bytes("ecdsa"), vector.bytes("q")), 0);
        EXPECT_EQ(curve.ecdh(d, vector.bytes("q2")), (Written{0, vector.bytes("z")}));
        const auto length = [&](const char* name) { return static_cast<std::int32_t>(vector.bytes(name).size()); };
        expect("kas", [&](auto& out) {
            return E_ECC_X9_63_KAS_OPDHS(curve.id, &curve.params, In(d), in("q2"), in("info"), length("kas"), out);
        });
        const auto fums = [&](const Bytes& fixed, const Bytes& of_this, Out& out) {
            return E_ECC_X9_63_FUMS(curve.id, &curve.params, In(d), in("e"), In(fixed), In(of_this), in("info"),
                                    length("fums"), out);
        };
        const Bytes q2 = vector.bytes("q2"), f = vector.bytes("f");
        expect("fums", [&](auto& out) { return fums(q2, f, out); });
        EXPECT_EQ(fums(q2, Bytes(f.size(), 4), *std::make_unique<Out>(200)), -4) << "no point";
        EXPECT_EQ(fums(Bytes(9), f, *std::make_unique<Out>(200)), -4) << "no point";
        EXPECT_EQ(curve.decrypt(vector.bytes("sealed"), d), (Written{0, text}));
    }
}

TEST(EcDerivation, KnownKeysAndRefusals) {
    const Bytes z = from_hex("1c7d7b5f0597b03d06a018466ed1a93e30ed4b04dc64ccdd");
    const auto derive = [&](const Bytes& secret, const TORVA_V1_OPAQUE8* info, std::int32_t length) {
        return written_by(static_cast<std::size_t>(std::max(length, 0)),
                          [&](auto& out) { return TORVA_V1_DeriveKeyData(In(secret), info, length, out); });
    };
    const Bytes key = from_hex("bf71dffd8f4d99223936beb46fee8ccc");
    EXPECT_EQ(derive(z, nullptr, 16), (Written{0, key}));
    EXPECT_EQ(derive(z, In({}), 16), (Written{0, key}));
    EXPECT_EQ(
        derive(z, In(from_text("info")), 50),
        (Written{0, from_hex("925ff6f27c07ca1c6b5d643199beffcd8f4f43e9229630f4daf94760837ce01f0fb65ead6b5c86ea07015e01"
                             "8b5e69bdea57")}));
    for (const std::int32_t length : {0, -1}) EXPECT_EQ(derive(z, nullptr, length).status, -1);
    EXPECT_EQ(derive({}, nullptr, 16).status, -1);
    EXPECT_EQ(TORVA_V1_DeriveKeyData(In(z), nullptr, 16, nullptr), -1);
    EXPECT_EQ(TORVA_V1_DeriveKeyData(nullptr, nullptr, 16, Out(16)), -1);
}

}  // namespace
