// DES on as many blocks at once as a register has bits: each bit of all blocks in a register of its own, the S-boxes being
// circuits of logic. Nothing is looked up. Included behind one of the lanes headers and one of the circuits by files that
// first define
//     exchange<Shift>(low, high, mask)   exchanges the bits of `high` at `mask` with those of `low` at mask << Shift
//     Circuits                           the circuits
#pragma once

#include "cipher/des.h"
#include "cipher/des_tables.h"

#include <type_traits>
#include <utility>

namespace morvane::cipher {
namespace {  // NOLINT(cert-dcl59-cpp): every file that includes this makes functions of its own

// The row of bit `n`, counted from 0 at the high end, of the left half behind IP. A row is a bit of the blocks read
// little-endian. The right half has the rows behind those of the left one.
constexpr std::size_t row_of(std::size_t n) noexcept { return 8 * (7 - n % 8) + 6 - 2 * (n / 8); }

// The bits of the round keys, a word of ones for each that is set, in the order of the rounds.
struct KeyMasks {
    static constexpr std::size_t kPerRound = 48, kPerPass = 16 * kPerRound;

    std::uint32_t* masks;
    std::size_t passes;

    // Sixteen rounds more, under `schedule`, whose words have six bits of an S-box in a byte.
    template <Direction D>
    MORVANE_INLINE void add(const E_DES_KEY_SCHEDULE& schedule) noexcept {
        std::uint32_t* to = masks + passes * kPerPass;
        for (std::size_t round = 0; round < 16; ++round, to += kPerRound) {
            const std::uint32_t* const key = schedule.round_keys + 2 * (D == Direction::kEncrypt ? round : 15 - round);
            for (std::uint32_t i = 0; i < 24; ++i) {
                to[i] = 0U - (key[0] >> (i / 6 * 8 + 5 - i % 6) & 1);
                to[24 + i] = 0U - (key[1] >> (i / 6 * 8 + 5 - i % 6) & 1);
            }
        }
        ++passes;
    }
};

// Exchanges rows and columns of the 64x64 bits that each 64-bit lane of the rows makes, in two steps of three stages: eight
// rows at a distance of eight, then neighbours.
template <int Shift>
MORVANE_INLINE void exchange_stage(Lanes (&rows)[8], std::uint32_t apart) noexcept {
    constexpr std::uint64_t kMask = ~std::uint64_t{0} / ((std::uint64_t{1} << Shift) + 1);
    for (std::size_t i = 0; i < 8; ++i) {
        if ((i & apart) == 0) exchange<Shift>(rows[i], rows[i + apart], all64(kMask));
    }
}
MORVANE_INLINE void exchange_far(Lanes (&rows)[8]) noexcept {
    exchange_stage<32>(rows, 4);
    exchange_stage<16>(rows, 2);
    exchange_stage<8>(rows, 1);
}
MORVANE_INLINE void exchange_near(Lanes (&rows)[8]) noexcept {
    exchange_stage<4>(rows, 4);
    exchange_stage<2>(rows, 2);
    exchange_stage<1>(rows, 1);
}

MORVANE_INLINE void to_rows(const std::uint8_t* in, Lanes (&rows)[64]) noexcept {
    Lanes eight[8];
    for (std::size_t first = 0; first < 8; ++first) {
        for (std::size_t i = 0; i < 8; ++i) eight[i] = load(in + (first + 8 * i) * sizeof(Lanes));
        exchange_far(eight);
        for (std::size_t i = 0; i < 8; ++i) rows[first + 8 * i] = eight[i];
    }
    for (std::size_t first = 0; first < 64; first += 8) {
        for (std::size_t i = 0; i < 8; ++i) eight[i] = rows[first + i];
        exchange_near(eight);
        for (std::size_t i = 0; i < 8; ++i) rows[first + i] = eight[i];
    }
}

// The halves come out exchanged, as the standard has it.
MORVANE_INLINE void from_rows(Lanes (&rows)[64], std::uint8_t* out) noexcept {
    Lanes eight[8];
    for (std::size_t first = 0; first < 64; first += 8) {
        for (std::size_t i = 0; i < 8; ++i) eight[i] = rows[first + (i ^ 1)];
        exchange_near(eight);
        for (std::size_t i = 0; i < 8; ++i) rows[first + i] = eight[i];
    }
    for (std::size_t first = 0; first < 8; ++first) {
        for (std::size_t i = 0; i < 8; ++i) eight[i] = rows[first + 8 * i];
        exchange_far(eight);
        for (std::size_t i = 0; i < 8; ++i) store(out + (first + 8 * i) * sizeof(Lanes), eight[i]);
    }
}

// The row that takes output bit `bit` of a box, both counted from 0.
constexpr std::size_t row_of_output(std::size_t box, std::size_t bit) noexcept {
    std::size_t n = 0;
    while (des::kPermutation[n] != 4 * box + bit + 1) ++n;
    return row_of(n);
}

template <std::size_t Box>
MORVANE_INLINE void add_box(Lanes* to, const Lanes* half, const std::uint32_t* masks) noexcept {
    constexpr std::size_t kFirstMask = Box % 2 == 1 ? (7 - Box) / 2 * 6 : 24 + (6 - Box) / 2 * 6;
    Lanes x[6], y[4];
    for (std::size_t i = 0; i < 6; ++i) {
        x[i] = bits_xor(half[row_of((4 * Box + 31 + i) % 32)], all32(masks[kFirstMask + i]));
    }
    Circuits::run<Box>(x, y);
    constexpr std::size_t kRows[4] = {row_of_output(Box, 0), row_of_output(Box, 1), row_of_output(Box, 2),
                                      row_of_output(Box, 3)};
    for (std::size_t i = 0; i < 4; ++i) to[kRows[i]] = bits_xor(to[kRows[i]], y[i]);
}

template <std::size_t... Box>
MORVANE_INLINE void add_boxes(Lanes* to, const Lanes* half, const std::uint32_t* masks,
                              std::index_sequence<Box...> /*boxes*/) noexcept {
    (add_box<Box>(to, half, masks), ...);
}

// A round; what is added to is added to again in the first round of a second pass.
MORVANE_TARGET inline void run_rounds(Lanes* rows, const KeyMasks& keys) noexcept {
    Lanes* to = rows;
    Lanes* half = rows + 1;
    const std::uint32_t* masks = keys.masks;
    for (std::size_t round = 1; round <= 16 * keys.passes; ++round, masks += KeyMasks::kPerRound) {
        add_boxes(to, half, masks, std::make_index_sequence<8>{});
        if (round % 16 != 0) std::swap(to, half);
    }
}

MORVANE_TARGET inline void run_bitsliced(const KeyMasks& keys, const std::uint8_t* in, std::uint8_t* out,
                                         std::size_t count) noexcept {
    constexpr std::size_t kBatchBytes = 64 * sizeof(Lanes);
    alignas(64) Lanes rows[64];
    for (std::size_t left = count * 8; left != 0; left -= kBatchBytes, in += kBatchBytes, out += kBatchBytes) {
        to_rows(in, rows);
        run_rounds(rows, keys);
        from_rows(rows, out);
    }
    wipe(rows, sizeof rows);
}

template <Direction D, typename Record>
MORVANE_INLINE void des_batches(const Record& record, const std::uint8_t* in, std::uint8_t* out,
                                std::size_t count) noexcept {
    constexpr bool kOnePass = std::is_same_v<Record, E_DES_KEY_SCHEDULE>;
    SecretArray<std::uint32_t, (kOnePass ? 1 : 3) * KeyMasks::kPerPass> masks;
    KeyMasks keys{masks.items.data(), 0};
    if constexpr (kOnePass) {
        keys.add<D>(record);
    } else {
        constexpr Direction kInner = D == Direction::kEncrypt ? Direction::kDecrypt : Direction::kEncrypt;
        constexpr std::size_t kLast = std::extent_v<decltype(Record::keys)> == 3 ? 2 : 0;
        keys.add<D>(record.keys[D == Direction::kEncrypt ? 0 : kLast]);
        keys.add<kInner>(record.keys[1]);
        keys.add<D>(record.keys[D == Direction::kEncrypt ? kLast : 0]);
    }
    run_bitsliced(keys, in, out, count);
}

}  // namespace
}  // namespace morvane::cipher
