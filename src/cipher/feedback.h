// CFB and OFB with any feedback width, once for all block ciphers.
#pragma once

#include "cipher/modes.h"

namespace morvane::cipher {

// The shift register of CFB and OFB, and the width of their steps.
//
// It is one long number of the block's bits, in the order of the cipher's words. Little-endian: its first bit is the
// lowest, a step uses the low bits of the bytes it takes. Big-endian: the first bit is the highest, a step uses the high
// bits. Widths of whole bytes are the same in both.
template <std::size_t Bytes, std::endian Order>
class ShiftRegister {
public:
    using Block = cipher::Block<Bytes>;

    // 1 <= width_bits <= 8 * Bytes
    ShiftRegister(const std::uint8_t* iv, std::uint32_t width_bits) noexcept
        : content_(ordered(Block::load(iv))), width_(width_bits) {
        for (std::uint32_t i = 0; i < kLimbs; ++i) {
            if (width_ >= 64 * (i + 1)) {
                mask_.limbs[i] = ~std::uint64_t{0};
            } else if (width_ > 64 * i) {
                mask_.limbs[i] = towards_front(~std::uint64_t{0}, 64 - (width_ - 64 * i));
            }
        }
        mask_ = ordered(mask_);
    }

    bool is_whole_block() const noexcept { return width_ == 8 * Bytes; }
    std::size_t step_bytes() const noexcept { return (width_ + 7) / 8; }
    // The bits of a step, in the bytes of a block.
    const Block& mask() const noexcept { return mask_; }
    Block content() const noexcept { return ordered(content_); }

    // Drops the first bits, as many as a step uses, and appends those of `step`. Its other bits are dropped.
    void shift_in(const Block& step) noexcept {
        const Block appended = ordered(step);
        if (is_whole_block()) {
            content_ = appended;
            return;
        }
        std::array<std::uint64_t, 2 * kLimbs> bits{};
        for (std::size_t i = 0; i < kLimbs; ++i) {
            bits[i] = content_.limbs[i];
            bits[kLimbs + i] = appended.limbs[i];
        }
        const std::size_t limbs = kLimbs == 1 ? 0 : width_ / 64;
        const std::uint32_t rest = width_ % 64;
        for (std::size_t i = 0; i < kLimbs; ++i) {
            content_.limbs[i] = bits[i + limbs];
            if (rest != 0) {
                content_.limbs[i] = towards_front(bits[i + limbs], rest) | towards_back(bits[i + limbs + 1], 64 - rest);
            }
        }
    }

private:
    static constexpr std::size_t kLimbs = Block::kLimbs;

    static Block ordered(Block block) noexcept {
        if constexpr (Order == std::endian::big) {
            for (std::uint64_t& limb : block.limbs) limb = byteswap(limb);
        }
        return block;
    }
    static std::uint64_t towards_front(std::uint64_t limb, std::uint32_t bits) noexcept {
        return Order == std::endian::little ? limb >> bits : limb << bits;
    }
    static std::uint64_t towards_back(std::uint64_t limb, std::uint32_t bits) noexcept {
        return Order == std::endian::little ? limb << bits : limb >> bits;
    }

    Block content_;
    Block mask_;
    std::uint32_t width_;
};

// Whether there is a step to take: the width is one, and the input reaches for it. Otherwise a call touches nothing, its iv
// included.
template <BlockCipher C>
constexpr bool has_step(std::int32_t width_bits, std::uint32_t len) noexcept {
    constexpr auto kMostBits = static_cast<std::int32_t>(8 * C::kBlockBytes);
    return width_bits > 0 && width_bits <= kMostBits && len >= (static_cast<std::uint32_t>(width_bits) + 7) / 8;
}

// What is shifted in: the ciphertext in CFB, what it is made with in OFB.
enum class Feeds { kCiphertext, kKeyStream };

// CFB encryption, and OFB in both directions: each step needs the one before. Whole-block feedback is a chain of blocks,
// and what most programs use; it goes without the shift register.
template <BlockCipher C, Feeds F>
void feedback(const typename C::Schedule& schedule, const std::uint8_t* in, std::uint8_t* out, std::int32_t width_bits,
              std::uint32_t len, std::uint8_t* iv) {
    using Block = Block<C::kBlockBytes>;
    if (!has_step<C>(width_bits, len)) return;
    ShiftRegister<C::kBlockBytes, C::kOrder> shift(iv, static_cast<std::uint32_t>(width_bits));
    const std::size_t step = shift.step_bytes();
    if (shift.is_whole_block()) {
        States<C> state = {C::enter(shift.content())};
        for (; len >= step; len -= static_cast<std::uint32_t>(step), in += step, out += step) {
            C::template run<Direction::kEncrypt>(schedule, state);
            const Block text = Block::load(in);
            if constexpr (F == Feeds::kCiphertext) {
                state[0] = state[0] ^ C::enter(text);
                C::leave(state[0]).store(out);
            } else {
                (C::leave(state[0]) ^ text).store(out);
            }
        }
        C::leave(state[0]).store(iv);
        return;
    }
    for (; len >= step; len -= static_cast<std::uint32_t>(step), in += step, out += step) {
        const Block key = run_one<Direction::kEncrypt, C>(schedule, shift.content());
        const Block text = (Block::load(in, step) ^ key) & shift.mask();
        text.store(out, step);
        if constexpr (F == Feeds::kCiphertext) {
            shift.shift_in(text);
        } else {
            shift.shift_in(key);
        }
    }
    shift.content().store(iv);
}

// Deciphering knows all contents of the register beforehand, so it has the cipher work on many of them at once.
template <BlockCipher C>
void cfb_decrypt(const typename C::Schedule& schedule, const std::uint8_t* in, std::uint8_t* out, std::int32_t width_bits,
                 std::uint32_t len, std::uint8_t* iv) {
    using Block = Block<C::kBlockBytes>;
    constexpr std::size_t kBlockBytes = C::kBlockBytes;
    if (!has_step<C>(width_bits, len)) return;
    ShiftRegister<kBlockBytes, C::kOrder> shift(iv, static_cast<std::uint32_t>(width_bits));
    const std::size_t step = shift.step_bytes();
    std::size_t steps = len / step;
    const auto encrypt = C::template blocks<Direction::kEncrypt>();
    const bool direct = shift.is_whole_block() && are_apart(in, out, steps * step);
    Batch batch;
    while (steps != 0) {
        const std::size_t now = std::min(steps, kBatchBytes / kBlockBytes), size = now * kBlockBytes;
        std::uint8_t* const keys = direct ? out : batch.use(size);
        if (shift.is_whole_block()) {
            shift.content().store(keys);
            std::memcpy(keys + kBlockBytes, in, size - kBlockBytes);
            shift.shift_in(Block::load(in + size - kBlockBytes));
            encrypt(schedule, keys, keys, now);
            xor_into.get()(keys, in, size);
            if (!direct) std::memcpy(out, keys, size);
        } else {
            for (std::size_t i = 0; i < now; ++i) {
                shift.content().store(keys + kBlockBytes * i);
                shift.shift_in(Block::load(in + step * i, step));
            }
            encrypt(schedule, keys, keys, now);
            for (std::size_t i = 0; i < now; ++i) {
                const Block key = Block::load(keys + kBlockBytes * i);
                ((Block::load(in + step * i, step) ^ key) & shift.mask()).store(out + step * i, step);
            }
        }
        in += now * step;
        out += now * step;
        steps -= now;
    }
    shift.content().store(iv);
}

}  // namespace morvane::cipher
