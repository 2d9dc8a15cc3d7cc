// Random keys, data and modes, against libgcrypt and, for what that does not have, Crypto++.
#include "cipher/cipher_table.h"

#include <cryptopp/modes.h>
#include <cryptopp/rc2.h>
#include <cryptopp/rc5.h>
#include <gcrypt.h>
#include <gtest/gtest.h>

namespace {

using namespace morvane::test;

constexpr int kCases = 2000;

Bytes by_gcrypt(int algorithm, int mode, bool decrypting, const Bytes& key, const Bytes& iv, Bytes data) {
    gcry_cipher_hd_t handle = nullptr;
    EXPECT_EQ(gcry_cipher_open(&handle, algorithm, mode, 0), 0U);
    EXPECT_EQ(gcry_cipher_setkey(handle, key.data(), key.size()), 0U) << key.size() << " bytes of key";
    EXPECT_EQ(iv.empty() ? 0 : gcry_cipher_setiv(handle, iv.data(), iv.size()), 0U);
    const auto run = decrypting ? gcry_cipher_decrypt : gcry_cipher_encrypt;
    EXPECT_EQ(run(handle, data.data(), data.size(), nullptr, 0), 0U);
    gcry_cipher_close(handle);
    return data;
}

Bytes by_this_library(const Job& job, Bytes data, Bytes iv) {
    job.call(data.data(), data.data(), data.size(), iv.data());
    return data;
}

std::uint32_t any_length(Random& random) { return random.below(random.below(50) == 0 ? 20000 : 400); }

TEST(Ciphers, EqualLibgcryptOnRandomData) {
    constexpr std::uint32_t kSeed = 20285;
    constexpr struct {
        const char* name;
        int algorithm;
        std::uint32_t shortest_key, longest_key;
    } kPeers[] = {{"des", GCRY_CIPHER_DES, 8, 8},
                  {"two-key triple des", GCRY_CIPHER_3DES, 16, 16},
                  {"three-key triple des", GCRY_CIPHER_3DES, 24, 24},
                  {"seed", GCRY_CIPHER_SEED, 16, 16},
                  {"idea", GCRY_CIPHER_IDEA, 16, 16},
                  {"blowfish", GCRY_CIPHER_BLOWFISH, 1, 72},
                  {"rc2", GCRY_CIPHER_RFC2268_128, 5, 127}};  // with 128 it departs from RFC 2268, Nettle and Crypto++
    constexpr struct {
        int theirs;
        Mode ours;
        std::int32_t width_bits;  // 0: the block's
    } kModes[] = {{GCRY_CIPHER_MODE_ECB, kEcb, 0},
                  {GCRY_CIPHER_MODE_CBC, kCbc, 0},
                  {GCRY_CIPHER_MODE_CFB, kCfb, 0},
                  {GCRY_CIPHER_MODE_CFB8, kCfb, 8},
                  {GCRY_CIPHER_MODE_OFB, kOfb, 0}};
    Random random(kSeed);
    for (const auto& peer : kPeers) {
        const Cipher& cipher = cipher_named(peer.name);
        for (int i = 0; i < kCases; ++i) {
            const auto& mode = kModes[random.below(std::size(kModes))];
            Bytes key = random.bytes(peer.shortest_key + random.below(peer.longest_key - peer.shortest_key + 1));
            // libgcrypt's RC2 has as many effective bits as the key has.
            const Bytes schedule = cipher.scheduled(key, static_cast<std::int32_t>(8 * key.size()));
            Job job = {cipher, schedule, mode.ours, random.below(2) != 0, mode.width_bits};
            if (!job.exists()) continue;
            if (job.width_bits == 0) job.width_bits = static_cast<std::int32_t>(8 * cipher.block);
            if (key.size() == 16 && peer.algorithm == GCRY_CIPHER_3DES) key.insert(key.end(), key.begin(), key.begin() + 8);
            const Bytes iv = random.bytes(cipher.block);
            const std::size_t len = any_length(random) / job.step() * job.step();
            const Bytes data = random.bytes(len);
            ASSERT_EQ(by_this_library(job, data, job.mode == kCbc ? cipher.cbc_iv(iv) : iv),
                      by_gcrypt(peer.algorithm, mode.theirs, job.decrypting, key, job.mode == kEcb ? Bytes() : iv, data))
                << job << ", case " << i << ", " << len << " bytes, seed " << kSeed;
        }
    }
}

TEST(Ciphers, EqualLibgcryptInRc4) {
    constexpr std::uint32_t kSeed = 20286;
    Random random(kSeed);
    for (int i = 0; i < kCases; ++i) {
        const Bytes key = random.bytes(5 + random.below(252));
        Bytes data = random.bytes(any_length(random));
        const Bytes expected = by_gcrypt(GCRY_CIPHER_ARCFOUR, GCRY_CIPHER_MODE_STREAM, false, key, {}, data);
        E_RC4_STATE state;
        E_RC4_KeySchedule(&state, key.data(), size32(key));
        E_RC4_Encrypt(data.data(), data.data(), &state, size32(data));
        ASSERT_EQ(data, expected) << "case " << i << ", seed " << kSeed;
    }
}

// number: the effective bits of RC2, the rounds of RC5
template <typename Theirs, typename Number>
void expect_equal_cbc(const Cipher& cipher, std::uint32_t longest_key, std::uint32_t most, std::uint32_t seed) {
    Random random(seed);
    for (int i = 0; i < kCases; ++i) {
        const Bytes key = random.bytes(1 + random.below(longest_key)), iv = random.bytes(cipher.block);
        const auto number = static_cast<std::int32_t>(1 + random.below(most));
        const Job job = {cipher, cipher.scheduled(key, number), kCbc, random.below(2) != 0};
        const Bytes data = random.bytes(cipher.block * (1 + any_length(random) / cipher.block));
        Bytes expected(data.size());
        if (job.decrypting) {
            typename Theirs::Decryption blocks(key.data(), key.size(), static_cast<Number>(number));
            CryptoPP::CBC_Mode_ExternalCipher::Decryption(blocks, iv.data())
                .ProcessData(expected.data(), data.data(), data.size());
        } else {
            typename Theirs::Encryption blocks(key.data(), key.size(), static_cast<Number>(number));
            CryptoPP::CBC_Mode_ExternalCipher::Encryption(blocks, iv.data())
                .ProcessData(expected.data(), data.data(), data.size());
        }
        ASSERT_EQ(by_this_library(job, data, iv), expected)
            << job << ", case " << i << ", key of " << key.size() << " bytes and " << number << ", seed " << seed;
    }
}

TEST(Ciphers, EqualCryptoPpWithAnyEffectiveBitsAndRounds) {
    expect_equal_cbc<CryptoPP::RC2, int>(cipher_named("rc2"), 128, 1024, 20287);
    expect_equal_cbc<CryptoPP::RC5, unsigned>(cipher_named("rc5"), 255, 16, 20288);
}

}  // namespace
