// Self-tests of the ciphers: every mode, residual blocks, and the corners of the key schedules.
#include "selftest.h"

#include "ciphers.h"

#include <morvane/cipher.h>

#include <algorithm>
#include <numeric>

namespace morvane::tool {
namespace {

constexpr std::size_t kTextBytes = 21;
constexpr std::size_t kLongBytes = 4096;  // many blocks at a time, where the mode allows it
constexpr int kRounds = 12;

// tests/vectors/tool_ciphers.txt, made with OpenSSL, with python3-cryptography and from RFC 2040: the text is the bytes 30,
// 31 to 44, byte i of the key 37 i + 1, and the iv is a0, a1 and so on. ECB and CBC are padded as in PKCS #5.
struct Row {
    std::string_view cipher;
    Mode mode;
    std::size_t key_bytes;
    std::string_view result;
};

constexpr Row kRows[] = {
    {"des", Mode::kEcb, 8, "88f7efc7ddd105e0bcad7544a5c10d943e5b142fa83c2340"},
    {"des", Mode::kCbc, 8, "6b55c9f1cf0c3bf040e6673b01b537390b9004dfaa2aae81"},
    {"des", Mode::kCfb, 8, "97d3c2f1dc159b897600c61928dda2fca2f54c05d8"},
    {"des", Mode::kOfb, 8, "97d3c2f1dc159b89433c1c34da3c2e4a1e472dfb22"},
    {"des3", Mode::kEcb, 16, "38bf42e849e5d7e0f4ea98511b6c09084d7c817b094a6a3c"},
    {"des3", Mode::kCbc, 16, "c706116ad91b323aa86d988812ad7c68635fb221b0bd8676"},
    {"des3", Mode::kCfb, 16, "2b143ef7183504cd2b13873196bf7212f139e0aea8"},
    {"des3", Mode::kOfb, 16, "2b143ef7183504cd6d4c8f3a8ce38102deb09c5680"},
    {"des3", Mode::kCbc, 24, "f6087fc59cbb615bf5114b2f7bce560a695a2ade225f6bf0"},
    {"seed", Mode::kEcb, 16, "6bfdec2d6d058cadd411f6f9454b134295a800a6d1cc2486b3c8a02e342da533"},
    {"seed", Mode::kCbc, 16, "b711b84fdb634f9c17d0aea8684c4d463f505e54ec1e0dae859cda5897cc72bd"},
    {"seed", Mode::kCfb, 16, "a3f2243895c3c020faeab7d277e2416cc26ff3f0d3"},
    {"seed", Mode::kOfb, 16, "a3f2243895c3c020faeab7d277e2416c196b277b7a"},
    {"idea", Mode::kEcb, 16, "b02b92bd6f187c13d687af40f507b8720062cbe1104a3e12"},
    {"idea", Mode::kCbc, 16, "3151057a78c1511da834532a76d5239c960e55a76e759e43"},
    {"idea", Mode::kCfb, 16, "0979ea03d19d35b5274188bb2192d0253ec5d7b7c4"},
    {"idea", Mode::kOfb, 16, "0979ea03d19d35b55d7a3bad3b57ed3b0432bea827"},
    {"blowfish", Mode::kEcb, 16, "7956f41b6bb7969ca1cf2d1764d80ed709006c5d50a9d4da"},
    {"blowfish", Mode::kCbc, 16, "d0080c6ebd739e2bb7d182ef2ecfef7e327a633d64fc1893"},
    {"blowfish", Mode::kCfb, 16, "0c1c582f51cee5216a372221c7700b945aa455dea1"},
    {"blowfish", Mode::kOfb, 16, "0c1c582f51cee52100685c1805de622dd28f1a9253"},
    {"rc2", Mode::kEcb, 16, "4f181d804cede441a92c0e4b861f6f2e2d860cbf02289e8a"},
    {"rc2", Mode::kCbc, 16, "12fd084b62e9befe74cf9e62f0f4dfefe9edaff23981b684"},
    {"rc2", Mode::kCfb, 16, "69830e25d58d46010021c9ec28d6ca369e63795a92"},
    {"rc2", Mode::kOfb, 16, "69830e25d58d460191f4c891fdcdeea1c98c7355cb"},
    {"rc5", Mode::kEcb, 9, "9ca58fe2b56f9f9b1f9eec855e09752a01fa33e183ee17ce"},
    {"rc5", Mode::kCbc, 9, "1c2b7c0038f2eb7b575ffa88b666b197b82bea488f7291f7"},
    {"rc5", Mode::kCfb, 9, "6b173255ecbf6ccc3637a41f399fd1442628c33cf2"},
    {"rc5", Mode::kOfb, 9, "6b173255ecbf6ccc14bf3bde985adfd30f51032e5b"},
    {"rc4", Mode::kStream, 16, "40da5df3545a8d05e81a67ed2f3a498bb009124a59"},
};

Octets counted(std::size_t size, std::uint8_t first) {
    Octets bytes(size);
    std::iota(bytes.begin(), bytes.end(), first);
    return bytes;
}

Octets usual_key(std::size_t size) {
    Octets key(size);
    for (std::size_t i = 0; i < size; ++i) key[i] = static_cast<std::uint8_t>(37 * i + 1);
    return key;
}

// Whole blocks: with the padding of PKCS #5.
Octets text(std::size_t block) {
    const std::size_t missing = block - kTextBytes % block;
    Octets bytes(kTextBytes + missing, static_cast<std::uint8_t>(missing));
    std::iota(bytes.begin(), bytes.begin() + kTextBytes, std::uint8_t{0x30});
    return bytes;
}

struct Job {
    const Cipher* cipher;
    Mode mode;
    Octets key;
    int parameter;

    Octets run(bool encrypt, Octets data) const {
        Octets schedule(cipher->keying.schedule_bytes), chain = counted(kMaxBlockBytes, 0xa0);
        cipher->keying.set_key(schedule.data(), key, parameter);
        const Directions& directions = cipher->in(mode);
        (encrypt ? directions.encrypt : directions.decrypt)(schedule.data(), data, chain.data(),
                                                            static_cast<int>(8 * cipher->block_bytes));
        return data;
    }
};

const Cipher& cipher_of(std::string_view name, std::size_t key_bytes) {
    const auto all = all_ciphers();
    return *std::ranges::find_if(all, [&](const Cipher& row) { return row.name == name && row.takes_key_of(key_bytes); });
}

Job job_of(const Row& row) {
    const Cipher& cipher = cipher_of(row.cipher, row.key_bytes);
    const auto key_bits = static_cast<int>(8 * row.key_bytes);
    return {&cipher, row.mode, usual_key(row.key_bytes), cipher.parameter == Parameter::kRounds ? kRounds : key_bits};
}

bool gives(const Job& job, const Row& row) {
    Octets data = job.run(true, text(job.cipher->block_bytes));
    const Octets result = octets(row.result);
    return std::equal(result.begin(), result.end(), data.begin());  // CFB, OFB: without what fills the last block
}

bool knows(const Row& row) {
    const Job job = job_of(row);
    const Octets plain = text(job.cipher->block_bytes);
    if (!gives(job, row) || job.run(false, job.run(true, plain)) != plain) return false;
    const Octets longer = counted(kLongBytes, 0);
    return job.run(false, job.run(true, longer)) == longer;
}

bool notices(const Row& row) {
    Job job = job_of(row);
    job.key = with_changed_bit(job.key, row.key_bytes - 1);
    return !gives(job, row);
}

// The residual block by XOR, made with OpenSSL from its single blocks; key, iv and text as above.
template <auto SetKey, auto Encrypt, auto Decrypt, typename Schedule>
SelfTest residual(std::string name, std::size_t block, std::size_t key_bytes, std::string_view result) {
    const auto run = [=](auto transform, const Octets& data, const Octets& key) {
        Schedule schedule;
        SetKey(&schedule, key.data());
        const Octets iv = counted(block, 0xa0);
        Octets whole((kTextBytes + block - 1) / block * block);
        std::ranges::copy(data, whole.begin());
        transform(whole.data(), whole.data(), &schedule, static_cast<std::uint32_t>(kTextBytes), iv.data());
        return Octets(whole.begin(), whole.begin() + kTextBytes);
    };
    const Octets key = usual_key(key_bytes), plain = counted(kTextBytes, 0x30), cipher = octets(result);
    return {std::move(name), [=] { return run(Encrypt, plain, key) == cipher && run(Decrypt, cipher, key) == plain; },
            [=] { return run(Encrypt, plain, with_changed_bit(key, 3)) != cipher; }};
}

// RFC 2268 and RFC 2040: effective bits of RC2, rounds of RC5. One block, without chaining or from an iv of zeros.
struct Corner {
    std::string_view cipher, key;
    int parameter;
    std::string_view in, out;
};

constexpr Corner kCorners[] = {
    {"rc2", "0000000000000000", 63, "0000000000000000", "ebb773f993278eff"},
    {"rc2", "ffffffffffffffff", 64, "ffffffffffffffff", "278b27e42e2f0d49"},
    {"rc2", "88", 64, "0000000000000000", "61a8a244adacccf0"},
    {"rc2", "88bca90e90875a7f0f79c384627bafb2", 64, "0000000000000000", "1a807d272bbe5db1"},
    {"rc5", "00", 0, "0000000000000000", "7a7bba4d79111d1e"},
    {"rc5", "11", 1, "0000000000000000", "2f759fe7ad86a378"},
    {"rc5", "00000000", 2, "0000000000000000", "dca2694bf40e0788"},
};

bool corners_hold(std::string_view name, int more) {
    return std::ranges::all_of(kCorners, [&](const Corner& row) {
        if (row.cipher != name) return true;
        const Octets key = octets(row.key);
        const Job job{&cipher_of(name, key.size()), Mode::kEcb, key, row.parameter + more};
        return (job.run(true, octets(row.in)) == octets(row.out)) == (more == 0);
    });
}

}  // namespace

void add_cipher_tests(SelfTests& all) {
    for (const Row& row : kRows) {
        std::string name(row.cipher);
        if (row.mode != Mode::kStream) name.append("-").append(name_of(row.mode));
        if (row.cipher == "des3" && row.key_bytes == 24) name += "-3-keys";
        all.push_back({std::move(name), [&row] { return knows(row); }, [&row] { return notices(row); }});
    }
    all.push_back(residual<E_DES_KeySchedule, E_DES_CBC_Encrypt_NO_PAD, E_DES_CBC_Decrypt_NO_PAD, E_DES_KEY_SCHEDULE>(
        "des-cbc-residue", 8, 8, "6b55c9f1cf0c3bf040e6673b01b53739bd4ac0d8fc"));
    all.push_back(residual<E_DES3_KeySchedule, E_DES3_CBC_Encrypt_NO_PAD, E_DES3_CBC_Decrypt_NO_PAD, E_DES3_KEY_SCHEDULE>(
        "des3-cbc-residue", 8, 16, "c706116ad91b323aa86d988812ad7c6824b9aacc5a"));
    all.push_back(residual<E_SEED_KeySchedule, E_SEED_CBC_Encrypt_NO_PAD, E_SEED_CBC_Decrypt_NO_PAD, E_SEED_KEY_SCHEDULE>(
        "seed-cbc-residue", 16, 16, "b711b84fdb634f9c17d0aea8684c4d469b76fc328c"));
    all.push_back({"rc2-effective-bits", [] { return corners_hold("rc2", 0); }, [] { return corners_hold("rc2", -20); }});
    all.push_back({"rc5-rounds", [] { return corners_hold("rc5", 0); }, [] { return corners_hold("rc5", 1); }});
}

}  // namespace morvane::tool
