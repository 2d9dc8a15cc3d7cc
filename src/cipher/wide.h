// Routines that work on many blocks at once in vector registers, and the table from which a cipher takes the best one that
// this processor can run.
//
// A wide routine knows whole batches only. A rest is laid into a batch of its own where it is long enough, and goes
// to the next narrower routine otherwise, at last to the cipher's lanes in general registers. There is one for each cipher
// and set of instructions, in a file of its own:
//
//     struct Rc5Avx2 {
//         static constexpr cpu::Features kNeeds = cpu::kAvx2;
//         static constexpr std::size_t kBatchBlocks = 8;
//         static constexpr std::size_t kPadFrom = 6;
//         static BlocksFn<Schedule> encrypt, decrypt;
//     };
//     constinit BlocksTable<Schedule, 2> rc5_blocks = blocks_table<Rc5, Rc5Avx2>();
//
// Narrower is the next in the table that needs nothing beyond the first one's kNeeds, which may name more for this.
#pragma once

#include "base/wipe.h"
#include "cipher/cipher.h"
#include "cpu/cpu.h"

namespace morvane::cipher {

template <typename W, typename Schedule>
concept WideRoutine = requires {
    { W::kNeeds } -> std::convertible_to<cpu::Features>;
    { W::kBatchBlocks } -> std::convertible_to<std::size_t>;
    { W::kPadFrom } -> std::convertible_to<std::size_t>;  // the shortest rest worth a batch; kBatchBlocks where none is
    // For multiples of kBatchBlocks, at any alignment.
    { &W::encrypt } -> std::same_as<BlocksFn<Schedule>*>;
    { &W::decrypt } -> std::same_as<BlocksFn<Schedule>*>;
};

// The rows of both directions, the best first; the last needs nothing.
template <typename Schedule, std::size_t Rows>
struct BlocksTable {
    cpu::Dispatch<BlocksFn<Schedule>, Rows> encrypt;
    cpu::Dispatch<BlocksFn<Schedule>, Rows> decrypt;

    template <Direction D>
    BlocksFn<Schedule>* get() noexcept {
        return D == Direction::kEncrypt ? encrypt.get() : decrypt.get();
    }
};

template <BlockCipher C, Direction D, typename W, typename... Narrower>
void run_wide(const typename C::Schedule& schedule, const std::uint8_t* in, std::uint8_t* out, std::size_t count);

// The first of these routines that needs nothing but `present`.
template <BlockCipher C, Direction D, cpu::Features Present>
consteval BlocksFn<typename C::Schedule>* narrower() {
    return run_blocks<C, D>;
}
template <BlockCipher C, Direction D, cpu::Features Present, typename W, typename... Narrower>
consteval BlocksFn<typename C::Schedule>* narrower() {
    if constexpr ((W::kNeeds & ~Present) == 0) {
        return run_wide<C, D, W, Narrower...>;
    } else {
        return narrower<C, D, Present, Narrower...>();
    }
}

template <BlockCipher C, Direction D, typename W, typename... Narrower>
void run_wide(const typename C::Schedule& schedule, const std::uint8_t* in, std::uint8_t* out, std::size_t count) {
    static_assert(WideRoutine<W, typename C::Schedule>);
    constexpr BlocksFn<typename C::Schedule>* kRun = D == Direction::kEncrypt ? W::encrypt : W::decrypt;
    const std::size_t rest = count % W::kBatchBlocks, whole = count - rest;
    if (whole != 0) kRun(schedule, in, out, whole);
    in += whole * C::kBlockBytes;
    out += whole * C::kBlockBytes;
    if constexpr (W::kPadFrom < W::kBatchBlocks) {
        if (rest >= W::kPadFrom) {
            SecretArray<std::uint8_t, W::kBatchBlocks * C::kBlockBytes> batch;
            std::memcpy(batch.items.data(), in, rest * C::kBlockBytes);
            kRun(schedule, batch.items.data(), batch.items.data(), W::kBatchBlocks);
            std::memcpy(out, batch.items.data(), rest * C::kBlockBytes);
            return;
        }
    }
    if (rest != 0) narrower<C, D, W::kNeeds, Narrower...>()(schedule, in, out, rest);
}

template <BlockCipher C, Direction D>
consteval void fill_rows(cpu::Variant<BlocksFn<typename C::Schedule>>* row) {
    *row = {cpu::kNone, run_blocks<C, D>};
}
template <BlockCipher C, Direction D, typename W, typename... Narrower>
consteval void fill_rows(cpu::Variant<BlocksFn<typename C::Schedule>>* row) {
    *row = {W::kNeeds, run_wide<C, D, W, Narrower...>};
    fill_rows<C, D, Narrower...>(row + 1);
}

// The table of a cipher: its wide routines, best first, and the lanes in general registers.
template <BlockCipher C, typename... W>
consteval auto blocks_table() {
    using Fn = BlocksFn<typename C::Schedule>;
    constexpr std::size_t kRows = sizeof...(W) + 1;
    std::array<cpu::Variant<Fn>, kRows> encrypt{}, decrypt{};
    fill_rows<C, Direction::kEncrypt, W...>(encrypt.data());
    fill_rows<C, Direction::kDecrypt, W...>(decrypt.data());
    return BlocksTable<typename C::Schedule, kRows>{cpu::Dispatch<Fn, kRows>{encrypt}, cpu::Dispatch<Fn, kRows>{decrypt}};
}

}  // namespace morvane::cipher
