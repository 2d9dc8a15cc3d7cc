#include "cipher/cipher_table.h"

#include <gtest/gtest.h>
#include <algorithm>

namespace morvane::test {

namespace {

std::int32_t length_of(const Bytes& key) { return static_cast<std::int32_t>(key.size()); }

// A mode's function as one that takes what any of them wants.
template <typename Schedule, typename... Rest>
ModeFunction wrapped(void (*run)(const std::uint8_t*, std::uint8_t*, const Schedule*, Rest...)) {
    return [run](const std::uint8_t* in, std::uint8_t* out, Record record, std::uint32_t len, std::uint8_t* iv,
                 [[maybe_unused]] std::int32_t width) {
        if constexpr (sizeof...(Rest) == 1) run(in, out, record, len);
        if constexpr (sizeof...(Rest) == 2) run(in, out, record, len, iv);
        if constexpr (sizeof...(Rest) == 3) run(in, out, record, width, len, iv);
    };
}

}  // namespace

// The linker makes the second name of OFB: the objects alone have none.
#if defined(MORVANE_STATIC)
#define OFB_DECRYPT(NAME) E_##NAME##_OFB_Encrypt
#else
#define OFB_DECRYPT(NAME) E_##NAME##_OFB_Decrypt
#endif
#define BOTH(NAME, MODE) \
    BothWays { wrapped(E_##NAME##_##MODE##_Encrypt), wrapped(E_##NAME##_##MODE##_Decrypt) }
#define NO_PAD(NAME) \
    BothWays { wrapped(E_##NAME##_CBC_Encrypt_NO_PAD), wrapped(E_##NAME##_CBC_Decrypt_NO_PAD) }
#define OFB(NAME) \
    BothWays { wrapped(E_##NAME##_OFB_Encrypt), wrapped(OFB_DECRYPT(NAME)) }
#define MODES_WITH(NO_PAD_PAIR, NAME)                                                 \
    {E_##NAME##_Encrypt, E_##NAME##_Decrypt}, {                                       \
        { BOTH(NAME, ECB), BOTH(NAME, CBC), NO_PAD_PAIR, BOTH(NAME, CFB), OFB(NAME) } \
    }
#define MODES(NAME) MODES_WITH(BothWays(), NAME)
#define CBC_ONLY(NAME)                          \
    {E_##NAME##_Encrypt, E_##NAME##_Decrypt}, { \
        { BothWays(), BOTH(NAME, CBC) }         \
    }

const std::vector<Cipher> kCiphers = {
    {"des", "des3.txt", 8, std::endian::little, 8, sizeof(E_DES_KEY_SCHEDULE),
     [](Record to, const Bytes& key, std::int32_t) { EXPECT_EQ(E_DES_KeySchedule(to, key.data()), 1U); },
     MODES_WITH(NO_PAD(DES), DES)},
    {"two-key triple des", "des3.txt", 8, std::endian::little, 16, sizeof(E_DES3_KEY_SCHEDULE),
     [](Record to, const Bytes& key, std::int32_t) { EXPECT_EQ(E_DES3_KeySchedule(to, key.data()), 1U); },
     MODES_WITH(NO_PAD(DES3), DES3)},
    {"three-key triple des", "des3.txt", 8, std::endian::little, 24, sizeof(E_DES3_3KEY_SCHEDULE),
     [](Record to, const Bytes& key, std::int32_t) { EXPECT_EQ(E_DES3_3Key_Schedule(to, key.data()), 1U); },
     CBC_ONLY(DES3_3Key)},
    {"seed", "seed.txt", 16, std::endian::little, 16, sizeof(E_SEED_KEY_SCHEDULE),
     [](Record to, const Bytes& key, std::int32_t) { E_SEED_KeySchedule(to, key.data()); }, MODES_WITH(NO_PAD(SEED), SEED)},
    {"idea", "idea.txt", 8, std::endian::big, 16, sizeof(E_IDEA_KEY_SCHEDULE),
     [](Record to, const Bytes& key, std::int32_t) { E_IDEA_KeySchedule(to, key.data()); }, MODES(IDEA)},
    {"blowfish", "blowfish.txt", 8, std::endian::big, 0, sizeof(E_BF_KEY_SCHEDULE),
     [](Record to, const Bytes& key, std::int32_t) { E_BF_KeySchedule(to, key.data(), length_of(key)); }, MODES(BF)},
    {"rc2", "rc2.txt", 8, std::endian::little, 0, sizeof(E_RC2_KEY_SCHEDULE),
     [](Record to, const Bytes& key, std::int32_t bits) { E_RC2_KeySchedule(to, key.data(), length_of(key), bits); },
     MODES(RC2)},
    {"rc5", "rc5.txt", 8, std::endian::little, 0, sizeof(E_RC5_KEY_SCHEDULE),
     [](Record to, const Bytes& key, std::int32_t rounds) { E_RC5_KeySchedule(to, key.data(), length_of(key), rounds); },
     MODES(RC5)},
};

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

std::size_t Job::step() const {
    return feeds_back() && has_good_width() ? static_cast<std::size_t>(width_bits + 7) / 8 : cipher.block;
}

void Job::call(const std::uint8_t* in, std::uint8_t* out, std::size_t size, std::uint8_t* iv) const {
    Bytes copy = schedule;
    const Record record = {copy.data()};
    cipher.modes[mode][decrypting](in, out, record, static_cast<std::uint32_t>(size), iv, width_bits);
    EXPECT_EQ(copy, schedule) << "schedules are only read";
}

std::ostream& operator<<(std::ostream& to, const Job& job) {
    constexpr const char* kNames[] = {"ecb", "cbc", "cbc no_pad", "cfb", "ofb"};
    to << job.cipher.name << ' ' << kNames[job.mode] << (job.decrypting ? " decrypting" : " encrypting");
    if (job.feeds_back()) to << " by " << job.width_bits << " bits";
    return to;
}

}  // namespace morvane::test
