#include "cipher/cipher_table.h"

#include <gtest/gtest.h>
#include <algorithm>

namespace morvane::test {

namespace {

std::int32_t length_of(const Bytes& key) { return static_cast<std::int32_t>(key.size()); }

}  // namespace

// The linker makes the second name of OFB: the objects alone have none.
#if defined(MORVANE_STATIC)
#define OFB_DECRYPT(NAME) E_##NAME##_OFB_Encrypt
#else
#define OFB_DECRYPT(NAME) E_##NAME##_OFB_Decrypt
#endif
#define BLOCK_AND_CBC(NAME) \
    {E_##NAME##_Encrypt, E_##NAME##_Decrypt}, { E_##NAME##_CBC_Encrypt, E_##NAME##_CBC_Decrypt }
#define ALL_MODES(NAME)                                                    \
    BLOCK_AND_CBC(NAME), {E_##NAME##_ECB_Encrypt, E_##NAME##_ECB_Decrypt}, \
        {E_##NAME##_CFB_Encrypt, E_##NAME##_CFB_Decrypt}, {                \
        E_##NAME##_OFB_Encrypt, OFB_DECRYPT(NAME)                          \
    }
#define NO_PAD(NAME) \
    { E_##NAME##_CBC_Encrypt_NO_PAD, E_##NAME##_CBC_Decrypt_NO_PAD }

const std::vector<Cipher> kCiphers = {
    {"des", "des3.txt", 8, std::endian::little, 8, sizeof(E_DES_KEY_SCHEDULE),
     [](Record to, const Bytes& key, std::int32_t) { EXPECT_EQ(E_DES_KeySchedule(to, key.data()), 1U); }, ALL_MODES(DES),
     NO_PAD(DES)},
    {"two-key triple des", "des3.txt", 8, std::endian::little, 16, sizeof(E_DES3_KEY_SCHEDULE),
     [](Record to, const Bytes& key, std::int32_t) { EXPECT_EQ(E_DES3_KeySchedule(to, key.data()), 1U); }, ALL_MODES(DES3),
     NO_PAD(DES3)},
    {"three-key triple des", "des3.txt", 8, std::endian::little, 24, sizeof(E_DES3_3KEY_SCHEDULE),
     [](Record to, const Bytes& key, std::int32_t) { EXPECT_EQ(E_DES3_3Key_Schedule(to, key.data()), 1U); },
     BLOCK_AND_CBC(DES3_3Key)},
    {"seed", "seed.txt", 16, std::endian::little, 16, sizeof(E_SEED_KEY_SCHEDULE),
     [](Record to, const Bytes& key, std::int32_t) { E_SEED_KeySchedule(to, key.data()); }, ALL_MODES(SEED), NO_PAD(SEED)},
    {"idea", "idea.txt", 8, std::endian::big, 16, sizeof(E_IDEA_KEY_SCHEDULE),
     [](Record to, const Bytes& key, std::int32_t) { E_IDEA_KeySchedule(to, key.data()); }, ALL_MODES(IDEA)},
    {"blowfish", "blowfish.txt", 8, std::endian::big, 0, sizeof(E_BF_KEY_SCHEDULE),
     [](Record to, const Bytes& key, std::int32_t) { E_BF_KeySchedule(to, key.data(), length_of(key)); }, ALL_MODES(BF)},
    {"rc2", "rc2.txt", 8, std::endian::little, 0, sizeof(E_RC2_KEY_SCHEDULE),
     [](Record to, const Bytes& key, std::int32_t bits) { E_RC2_KeySchedule(to, key.data(), length_of(key), bits); },
     ALL_MODES(RC2)},
    {"rc5", "rc5.txt", 8, std::endian::little, 0, sizeof(E_RC5_KEY_SCHEDULE),
     [](Record to, const Bytes& key, std::int32_t rounds) { E_RC5_KeySchedule(to, key.data(), length_of(key), rounds); },
     ALL_MODES(RC5)},
};

#undef OFB_DECRYPT
#undef BLOCK_AND_CBC
#undef ALL_MODES
#undef NO_PAD

const Cipher& cipher_named(std::string_view name) {
    return *std::find_if(kCiphers.begin(), kCiphers.end(), [&](const Cipher& row) { return row.name == name; });
}

Bytes Cipher::scheduled(const Bytes& with, std::int32_t number) const {
    Bytes made(record, 0xee);
    schedule({made.data()}, with, number);
    return made;
}

Bytes Cipher::cbc_iv(Bytes iv) const {
    if (order == std::endian::big) {
        for (auto half = iv.begin(); half != iv.end(); half += 4) std::reverse(half, half + 4);
    }
    return iv;
}

bool Job::exists() const {
    switch (mode) {
        case kEcb:
            return cipher.ecb[0] != nullptr;
        case kCbc:
            return cipher.cbc[0] != nullptr;
        case kNoPad:
            return cipher.no_pad[0] != nullptr;
        default:
            return cipher.cfb[0] != nullptr;
    }
}

std::size_t Job::step() const {
    return feeds_back() && has_good_width() ? static_cast<std::size_t>(width_bits + 7) / 8 : cipher.block;
}

void Job::call(const std::uint8_t* in, std::uint8_t* out, std::size_t size, std::uint8_t* iv) const {
    Bytes copy = schedule;
    const Record record = {copy.data()};
    const auto len = static_cast<std::uint32_t>(size);
    switch (mode) {
        case kEcb:
            cipher.ecb[decrypting](in, out, record, len);
            break;
        case kCbc:
            cipher.cbc[decrypting](in, out, record, len, iv);
            break;
        case kNoPad:
            cipher.no_pad[decrypting](in, out, record, len, iv);
            break;
        case kCfb:
            cipher.cfb[decrypting](in, out, record, width_bits, len, iv);
            break;
        case kOfb:
            cipher.ofb[decrypting](in, out, record, width_bits, len, iv);
            break;
    }
    EXPECT_EQ(copy, schedule) << "schedules are only read";
}

std::ostream& operator<<(std::ostream& to, const Job& job) {
    constexpr const char* kNames[] = {"ecb", "cbc", "cbc no_pad", "cfb", "ofb"};
    to << job.cipher.name << ' ' << kNames[job.mode] << (job.decrypting ? " decrypting" : " encrypting");
    if (job.feeds_back()) to << " by " << job.width_bits << " bits";
    return to;
}

}  // namespace morvane::test
