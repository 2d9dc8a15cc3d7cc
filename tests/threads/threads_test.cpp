// Distinct records on eight threads at once, all families of calls: every thread gets what one alone gets. Under the thread
// sanitizer (check --threads) nothing may be shared on the way. The random sources and the Diffie-Hellman parameters of the
// provider belong to the process and take turns, as their headers ask for; the other calls go on meanwhile.
#include <morvane/asn1.h>
#include <morvane/dh.h>
#include <morvane/hash.h>
#include <morvane/prime.h>
#include <morvane/random.h>

#include "cipher/cipher_table.h"
#include "ecc/octet_records.h"
#include "pk/rsa_key.h"
#include "toolkit/every_call.h"

#include <mutex>
#include <thread>

namespace {

using namespace morvane::test;

std::recursive_mutex turns;
using Turn = std::lock_guard<std::recursive_mutex>;

const Bytes kText = Random(20310).bytes(500);
const std::uint8_t* const text = kText.data();

// A key, and signatures that nothing of provider and toolkit verifies; the threads only read them.
struct Given {
    E_KCDSA_KEY group{};
    Bytes dsa = Bytes(100);
    std::int32_t dsa_size = 0;

    Given() {
        E_KCDSA_Init(&group);
        E_KCDSA_GenerateKey_fixParam(&group, 0, 160);
        EN_Mod_Exp(&group.y, &group.g, &group.x, &group.p);
        E_DSA_Sign(text, 20, dsa.data(), &dsa_size, &group);
    }
};

const Given& given() {
    const Turn turn(turns);
    static const Given all;
    return all;
}

// What a family's calls gave.
class Results {
public:
    void add(const void* octets, std::size_t size) {
        const auto* const from = static_cast<const std::uint8_t*>(octets);
        bytes_.insert(bytes_.end(), from, from + size);
    }
    void add(const Bytes& octets) { add(octets.data(), octets.size()); }
    void add(const CSSM_DATA& data) { add(data.Data, data.Length); }
    void add(const ENUM& number) { add(number.words, 4 * static_cast<std::size_t>(number.length)); }
    void add(std::int32_t status) { add(&status, sizeof status); }
    bool operator==(const Results&) const = default;

private:
    Bytes bytes_;
};

void digests(Results& all) {
    std::uint8_t out[64] = {};
    std::uint32_t size = 0;
    for (auto* const digest : {E_SHA, E_SHA1, E_MD2, E_MD4, E_RIPEMD160}) digest(out, text, 500), all.add(out, 64);
    for (auto* const digest : {E_SHA256, E_SHA384, E_SHA512}) digest(out, &size, text, 500), all.add(out, size);
    E_HAS160(out, text, 500), all.add(out, 20);
    E_HMAC_SHA1(text, 500, text, 30, out), all.add(out, 20);
}

void ciphers(Results& all) {
    Bytes out(512);
    for (const Cipher& cipher : kCiphers) {
        const Bytes schedule = cipher.scheduled(Bytes(cipher.key != 0 ? cipher.key : 16, 0x5a), 12);
        for (const Mode mode : {kEcb, kCbc, kNoPad, kCfb, kOfb}) {
            for (const bool decrypting : {false, true}) {
                const Job job = {cipher, schedule, mode, decrypting, static_cast<std::int32_t>(8 * cipher.block)};
                Bytes iv(16);
                if (job.exists()) job.call(text, out.data(), 480, iv.data()), all.add(out), all.add(iv);
            }
        }
    }
    E_RC4_STATE rc4;
    E_RC4_KeySchedule(&rc4, text, 16), E_RC4_Encrypt(text, out.data(), &rc4, 500), all.add(out);
}

void curves(Results& all) {
    for (const std::int32_t id : {3, 5, 7}) {
        const Curve curve(id);
        TORVA_V1_POINT point = base_of(curve.params);
        const std::uint32_t k[] = {12345, 678, 90};
        TORVA_V1_ScalarMultiplicationOnEllipticCurves(id, &curve.params, k, 3, &point, &point);
        Out open(E_EC_POINT_OCTETS), block(E_ECKCDSA_SIGNATURE_OCTETS);
        TORVA_V1_ECPointsToopaque8(id, 1, &point, open);
        const In d(Bytes{0, 5, 4, 3, 2, 1}), q(open.bytes());
        all.add(E_ECKCDSA_Sign_givenK(id, &curve.params, In(kText), block, d, q, d));
        all.add(open.bytes()), all.add(block.bytes());
    }
}

// What no call of provider and toolkit comes to.
void groups_and_encodings(Results& all) {
    const Given& g = given();
    all.add(E_DSA_Verify(text, 20, g.dsa.data(), g.dsa_size, &g.group));
    E_KCDSA_KEY key = g.group;  // whose numbers are its own with this
    E_KCDSA_Init(&key);
    Bytes der(2000);
    const std::uint8_t* position = der.data();
    E_ASN1_PutKCDSAPrivateKey(&key, der.data()), all.add(der);
    E_ASN1_GetKCDSAPrivateKey(&key, &position, 2000), all.add(key.x);
    E_DH_KEY dh{};
    E_DH_Init(&dh);
    EN_Copy(&dh.p, &key.p), EN_Copy(&dh.x, &key.x), EN_U32ToENUM(&dh.g, 2);
    E_DH_GenerateKey(&dh, 0), all.add(dh.y);
    all.add(E_DH_ComputeKey(der.data(), &dh.y, &dh)), all.add(der);
    EN_GCD(&dh.y, &dh.p, &dh.x), all.add(dh.y);
    EN_Mod_Inv(&dh.y, &dh.x, &dh.p), all.add(dh.y);
}

void provider_and_toolkit(Results& all) {
    Calls calls;
    for (const CallRow& row : kCallRows) {
        std::unique_lock turn(turns, std::defer_lock);
        if (row.takes_turns) turn.lock();
        ASSERT_EQ(row.call(calls), 0U) << row.name;
    }
    const OfToolkit& k = calls.k;
    for (const CSSM_DATA& made : {k.digest, k.mac, k.opened, k.fixed, k.fixed_back, k.unwrapped, k.joined, k.block_back[0],
                                  k.block_back[1], k.block_back[2], k.ec_opened, calls.p.wrapped.KeyData}) {
        all.add(made);
    }
    for (const int i : {0, 1, 2, 3, 4, 5, 6}) all.add(calls.p.data[i]);
}

void failures(Results& all) {
    for (int i = 0; i < 1000; ++i) all.add(CSP_DigestDataInit(0, 0, nullptr));
    EXPECT_NE(GetError(), 0U);  // everybody's
}

void random_numbers(Results& all) {
    const Turn turn(turns);
    Bytes octets(40);
    for (auto* const draw : {RAND_Bytes, E_GenerateRandom_RSA, E_X9_31RandomBytes}) draw(octets.data(), 40);
    for (auto* const draw : {E_GenerateRandom_MD5, E_GenerateRandom_DES}) draw(octets.data(), 40);
    std::uint32_t words[20];
    ENUM prime = {0, 0, words};
    all.add(EN_GeneratePrimeRSA(&prime, 128)), all.add(EN_IsPrime(&prime)), all.add(EN_PrimeUpdate(&prime, 64, nullptr));
    RsaKey key;
    E_RSA_GenerateKey(key, 512, 65537), all.add(key.size());
    E_KCDSA_KEY group = given().group;
    E_KCDSA_Init(&group);
    E_KCDSA_GenerateXY(&group, 0, 160);
}

struct Family {
    const char* name;
    void (*run)(Results&);
};
constexpr Family kFamilies[] = {{"digests", digests},
                                {"ciphers", ciphers},
                                {"curves", curves},
                                {"failures", failures},
                                {"groups and encodings", groups_and_encodings},
                                {"provider and toolkit", provider_and_toolkit},
                                {"random numbers", random_numbers}};

// At first all threads at about the same, so that they meet whatever is found out at the first call; then each at another.
TEST(Threads, DoNotDisturbOneAnother) {
    constexpr std::size_t kThreads = 8, kCount = std::size(kFamilies);
    Results results[2][kThreads][kCount];
    std::vector<std::thread> threads;
    for (std::size_t t = 0; t < kThreads; ++t) {
        threads.emplace_back([&results, t] {
            for (std::size_t i = 0; i < kCount; ++i) kFamilies[i].run(results[0][t][i]);
            for (std::size_t i = t; i < t + kCount; ++i) kFamilies[i % kCount].run(results[1][t][i % kCount]);
        });
    }
    for (std::thread& thread : threads) thread.join();
    for (std::size_t i = 0; i < kCount; ++i) {
        Results expected;
        kFamilies[i].run(expected);
        for (const auto& pass : results) {
            for (const auto& result : pass) EXPECT_EQ(result[i], expected) << kFamilies[i].name;
        }
    }
}

}  // namespace
