// The key schedule of DES (FIPS 46-3).
#include "base/bytes.h"
#include "base/keep_order.h"
#include "cipher/des_tables.h"

#include <morvane/cipher.h>

#include <type_traits>

namespace morvane::cipher::des {
namespace {

// PC-2: the bits of the two 28-bit registers, counted from 1 at the high end of the first, that make the box inputs.
constexpr std::uint8_t kChoice[48] = {14, 17, 11, 24, 1,  5,  3,  28, 15, 6,  21, 10, 23, 19, 12, 4,
                                      26, 8,  16, 7,  27, 20, 13, 2,  41, 52, 31, 37, 47, 55, 30, 40,
                                      51, 45, 33, 48, 44, 49, 39, 56, 34, 53, 46, 42, 50, 36, 29, 32};

// By how much the registers have been rotated left in each round.
constexpr std::uint8_t kRotations[16] = {1, 2, 4, 6, 8, 10, 12, 14, 15, 17, 19, 21, 23, 25, 27, 28};

// Registers of 64 bits make both words of a round key at a time. Those of 32 bits make the upper halves of both from the
// first register, and the lower halves from the second: each in one word, of which the half for the second word is the
// other way round.
inline constexpr bool kIsWide = sizeof(void*) == 8;
using Part = std::conditional_t<kIsWide, std::uint64_t, std::uint32_t>;

// What seven bits of the registers contribute to a round key: groups 0 to 3 of the first register, from its low end, 4 to 7
// of the second.
using KeyTables = std::array<std::array<Part, 128>, 8>;

constexpr KeyTables make_key_tables() noexcept {
    KeyTables tables{};
    for (std::size_t i = 0; i < 48; ++i) {
        const std::size_t box = i / 6, bit = 5 - i % 6;
        const std::size_t byte = box % 2 == 1 ? (7 - box) / 2 : 4 + (6 - box) / 2;  // of the spread form
        const std::size_t of_part = kIsWide ? byte : (byte & 3) ^ (byte >> 1 & 2);
        const std::size_t from = kChoice[i] - 1U, of_register = 27 - from % 28;  // counted from the low end
        const std::size_t group = from / 28 * 4 + of_register / 7;
        for (std::size_t value = 0; value < 128; ++value) {
            if ((value >> of_register % 7 & 1) != 0) tables[group][value] |= Part{1} << (8 * of_part + bit);
        }
    }
    return tables;
}

constexpr KeyTables kKeyTables = make_key_tables();

// The byte of column `c` of the result has the bits `c` of the bytes.
constexpr std::uint64_t transposed(std::uint64_t x) noexcept {
    std::uint64_t differing = (x ^ x >> 7) & 0x00aa00aa00aa00aaU;
    x ^= differing ^ differing << 7;
    differing = (x ^ x >> 14) & 0x0000cccc0000ccccU;
    x ^= differing ^ differing << 14;
    differing = (x ^ x >> 28) & 0x00000000f0f0f0f0U;
    return x ^ differing ^ differing << 28;
}

static_assert(transposed(0x0000000000000080U) == 0x0100000000000000U);

// A register after itself, so that any rotation of it is a part of this.
constexpr std::uint64_t doubled(std::uint64_t bits) noexcept { return bits | bits << 28; }

}  // namespace

void expand_key(E_DES_KEY_SCHEDULE& schedule, const std::uint8_t* key) noexcept {
    // PC-1: the registers are columns of the key's bits, the lowest bit of each byte being left out.
    const std::uint64_t columns = transposed(load_le<std::uint64_t>(key));
    const auto column = [columns](unsigned c) { return columns >> 8 * c & 0xff; };
    const std::uint64_t c = doubled(column(7) << 20 | column(6) << 12 | column(5) << 4 | column(4) >> 4);
    const std::uint64_t d = doubled(column(1) << 20 | column(2) << 12 | column(3) << 4 | (column(4) & 15));
    const auto part = [](const auto* groups, std::uint64_t rotated) {
        const auto bits = static_cast<Part>(rotated);
        return groups[0][bits & 127] | groups[1][bits >> 7 & 127] | groups[2][bits >> 14 & 127] |
               groups[3][bits >> 21 & 127];
    };
    const KeyTables& tables = at_hand(kKeyTables);
    for (std::size_t round = 0; round < 16; ++round) {
        const Part first = part(tables.data(), c >> (28 - kRotations[round]));
        const Part second = part(tables.data() + 4, d >> (28 - kRotations[round]));
        std::uint32_t* const words = schedule.round_keys + 2 * round;
        if constexpr (kIsWide) {
            words[0] = static_cast<std::uint32_t>(first | second);
            words[1] = static_cast<std::uint32_t>((first | second) >> 32);
        } else {
            const Part differing = (first ^ second) & 0xffff;
            words[0] = first ^ differing;
            words[1] = std::rotl(second ^ differing, 16);
        }
    }
}

}  // namespace morvane::cipher::des

using morvane::cipher::des::expand_key;

uint32_t E_DES_KeySchedule(E_DES_KEY_SCHEDULE* ks, const uint8_t* key) {
    expand_key(*ks, key);
    return 1;
}

uint32_t E_DES3_KeySchedule(E_DES3_KEY_SCHEDULE* ks, const uint8_t* key) {
    for (std::size_t i = 0; i < 2; ++i) expand_key(ks->keys[i], key + 8 * i);
    return 1;
}

uint32_t E_DES3_3Key_Schedule(E_DES3_3KEY_SCHEDULE* ks, const uint8_t* key) {
    for (std::size_t i = 0; i < 3; ++i) expand_key(ks->keys[i], key + 8 * i);
    return 1;
}
