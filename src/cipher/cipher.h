// What a block cipher is to its modes.
//
// A cipher works on a State, a block in the form that suits its rounds: enter() and leave() turn bytes into it and back.
// Both are linear, enter(a) ^ enter(b) being enter(a ^ b), so that the modes chain in that form and leave the conversions
// out of the chain.
#pragma once

#include "cipher/block.h"

#include <concepts>

namespace morvane::cipher {

enum class Direction { kEncrypt, kDecrypt };

// Enciphers or deciphers `count` blocks that do not depend on one another; out may be in. The more at a call, the better.
template <typename Schedule>
using BlocksFn = void(const Schedule& schedule, const std::uint8_t* in, std::uint8_t* out, std::size_t count);

template <typename C>
using States = std::array<typename C::State, 1>;

template <typename C>
concept BlockCipher = requires(const typename C::Schedule& schedule, const typename C::State& state,
                               const typename C::State& other, States<C>& one, const Block<C::kBlockBytes>& block) {
    { C::kOrder } -> std::convertible_to<std::endian>;  // of the words that the single-block functions take
    { C::kLanes } -> std::convertible_to<std::size_t>;  // how many blocks keep the processor busy
    { C::enter(block) } -> std::same_as<typename C::State>;
    { C::leave(state) } -> std::same_as<Block<C::kBlockBytes>>;
    { state ^ other } -> std::same_as<typename C::State>;
    // Any number of lanes, each enciphered by itself, their rounds interleaved.
    C::template run<Direction::kEncrypt>(schedule, one);
    C::template run<Direction::kDecrypt>(schedule, one);
    // The best routine for many blocks that this processor can run; run_blocks where there is no other.
    { C::template blocks<Direction::kEncrypt>() } -> std::same_as<BlocksFn<typename C::Schedule>*>;
    { C::template blocks<Direction::kDecrypt>() } -> std::same_as<BlocksFn<typename C::Schedule>*>;
};

template <Direction D, typename C>
inline Block<C::kBlockBytes> run_one(const typename C::Schedule& schedule, const Block<C::kBlockBytes>& block) noexcept {
    States<C> state = {C::enter(block)};
    C::template run<D>(schedule, state);
    return C::leave(state[0]);
}

template <typename C, Direction D, std::size_t Lanes>
[[gnu::always_inline]] inline void run_lanes(const typename C::Schedule& schedule, const std::uint8_t* in,
                                             std::uint8_t* out) noexcept {
    std::array<typename C::State, Lanes> states;
    for (std::size_t i = 0; i < Lanes; ++i) states[i] = C::enter(Block<C::kBlockBytes>::load(in + C::kBlockBytes * i));
    C::template run<D>(schedule, states);
    for (std::size_t i = 0; i < Lanes; ++i) C::leave(states[i]).store(out + C::kBlockBytes * i);
}

// The routine for many blocks that every processor can run. What is too little for all lanes goes through half of them.
template <typename C, Direction D, std::size_t Lanes = C::kLanes>
void run_blocks(const typename C::Schedule& schedule, const std::uint8_t* in, std::uint8_t* out, std::size_t count) {
    constexpr std::size_t kStep = Lanes * C::kBlockBytes;
    for (; count >= Lanes; count -= Lanes, in += kStep, out += kStep) run_lanes<C, D, Lanes>(schedule, in, out);
    if constexpr (Lanes > 1) {
        if (count != 0) run_blocks<C, D, Lanes / 2>(schedule, in, out, count);
    }
}

}  // namespace morvane::cipher
