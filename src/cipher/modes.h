// ECB and CBC, once for all block ciphers.
#pragma once

#include "base/wipe.h"
#include "cipher/cipher.h"
#include "cipher/xor_into.h"

#include <algorithm>

namespace morvane::cipher {

// How much the modes give a cipher at a time where they work on its result: it stays in the nearest cache.
inline constexpr std::size_t kBatchBytes = 4096;

// Bytes on the way through a mode, wiped as far as they were used.
class Batch {
public:
    Batch() = default;
    Batch(const Batch&) = delete;
    Batch& operator=(const Batch&) = delete;
    ~Batch() { wipe(bytes_, used_); }

    // Room for `size` bytes, of unknown content.
    std::uint8_t* use(std::size_t size) noexcept {
        used_ = std::max(used_, size);
        return bytes_;
    }

private:
    std::size_t used_ = 0;
    alignas(64) std::uint8_t bytes_[kBatchBytes];
};

// Whether `size` bytes at `a` and at `b` have none in common.
inline bool are_apart(const std::uint8_t* a, const std::uint8_t* b, std::size_t size) noexcept {
    const auto first = reinterpret_cast<std::uintptr_t>(a), second = reinterpret_cast<std::uintptr_t>(b);
    return first < second ? second - first >= size : first - second >= size;
}

template <BlockCipher C>
void ecb_encrypt(const typename C::Schedule& schedule, const std::uint8_t* in, std::uint8_t* out, std::uint32_t len) {
    using Block = Block<C::kBlockBytes>;
    const std::size_t tail = len % C::kBlockBytes, whole = len - tail;
    C::template blocks<Direction::kEncrypt>()(schedule, in, out, whole / C::kBlockBytes);
    if (tail != 0) run_one<Direction::kEncrypt, C>(schedule, Block::load(in + whole, tail)).store(out + whole);
}

template <BlockCipher C>
void ecb_decrypt(const typename C::Schedule& schedule, const std::uint8_t* in, std::uint8_t* out, std::uint32_t len) {
    using Block = Block<C::kBlockBytes>;
    const std::size_t tail = len % C::kBlockBytes, whole = len - tail;
    C::template blocks<Direction::kDecrypt>()(schedule, in, out, whole / C::kBlockBytes);
    if (tail != 0) run_one<Direction::kDecrypt, C>(schedule, Block::load(in + whole)).store(out + whole, tail);
}

// The chaining value that a CBC call begins with. Ciphers of big-endian words take it as little-endian words all the same:
// the bytes of each word are in reverse. What was enciphered so must stay readable.
template <BlockCipher C>
Block<C::kBlockBytes> load_cbc_iv(const std::uint8_t* iv) noexcept {
    auto chain = Block<C::kBlockBytes>::load(iv);
    for (std::uint64_t& limb : chain.limbs) limb = WordPair::of(limb, C::kOrder).limb(std::endian::little);
    return chain;
}

// Whole blocks only. Returns the last ciphertext block, `chain` when there is none.
template <BlockCipher C>
Block<C::kBlockBytes> cbc_encrypt_blocks(const typename C::Schedule& schedule, const std::uint8_t* in, std::uint8_t* out,
                                         std::size_t count, const Block<C::kBlockBytes>& chain) {
    States<C> state = {C::enter(chain)};
    for (; count != 0; --count, in += C::kBlockBytes, out += C::kBlockBytes) {
        state[0] = state[0] ^ C::enter(Block<C::kBlockBytes>::load(in));
        C::template run<Direction::kEncrypt>(schedule, state);
        C::leave(state[0]).store(out);
    }
    return C::leave(state[0]);
}

// Whole blocks only. Returns the last ciphertext block, `chain` when there is none.
template <BlockCipher C>
Block<C::kBlockBytes> cbc_decrypt_blocks(const typename C::Schedule& schedule, const std::uint8_t* in, std::uint8_t* out,
                                         std::size_t count, Block<C::kBlockBytes> chain) {
    constexpr std::size_t kBlockBytes = C::kBlockBytes;
    const auto decrypt = C::template blocks<Direction::kDecrypt>();
    const bool direct = are_apart(in, out, count * kBlockBytes);
    Batch batch;
    while (count != 0) {
        const std::size_t now = std::min(count, kBatchBytes / kBlockBytes), size = now * kBlockBytes;
        std::uint8_t* const plain = direct ? out : batch.use(size);
        decrypt(schedule, in, plain, now);
        (Block<kBlockBytes>::load(plain) ^ chain).store(plain);
        xor_into.get()(plain + kBlockBytes, in, size - kBlockBytes);
        chain = Block<kBlockBytes>::load(in + size - kBlockBytes);  // before out, which may be in, is written
        if (!direct) std::memcpy(out, plain, size);
        in += size;
        out += size;
        count -= now;
    }
    return chain;
}

// What becomes of the bytes behind the last whole block.
//   kExtended  zeros make a block of them, and the chain takes it like any other; decryption reads it whole
//   kResidual  they are XORed with the encryption of the ciphertext block before them, in both directions. Encryption
//   writes
//              a whole block, as programs know it, though its last bytes carry nothing
enum class Tail { kExtended, kResidual };

template <BlockCipher C, Tail T>
void cbc_encrypt(const typename C::Schedule& schedule, const std::uint8_t* in, std::uint8_t* out, std::uint32_t len,
                 const std::uint8_t* iv) {
    if (len == 0) return;
    using Block = Block<C::kBlockBytes>;
    const std::size_t tail = len % C::kBlockBytes, whole = len - tail;
    const Block last = cbc_encrypt_blocks<C>(schedule, in, out, whole / C::kBlockBytes, load_cbc_iv<C>(iv));
    if (tail == 0) return;
    const Block rest = Block::load(in + whole, tail);
    if constexpr (T == Tail::kExtended) {
        run_one<Direction::kEncrypt, C>(schedule, last ^ rest).store(out + whole);
    } else {
        (run_one<Direction::kEncrypt, C>(schedule, last) ^ rest).store(out + whole);
    }
}

template <BlockCipher C, Tail T>
void cbc_decrypt(const typename C::Schedule& schedule, const std::uint8_t* in, std::uint8_t* out, std::uint32_t len,
                 const std::uint8_t* iv) {
    if (len == 0) return;
    using Block = Block<C::kBlockBytes>;
    const std::size_t tail = len % C::kBlockBytes, whole = len - tail;
    const Block last = cbc_decrypt_blocks<C>(schedule, in, out, whole / C::kBlockBytes, load_cbc_iv<C>(iv));
    if (tail == 0) return;
    const Block rest = Block::load(in + whole);
    if constexpr (T == Tail::kExtended) {
        (last ^ run_one<Direction::kDecrypt, C>(schedule, rest)).store(out + whole, tail);
    } else {
        (run_one<Direction::kEncrypt, C>(schedule, last) ^ rest).store(out + whole, tail);
    }
}

}  // namespace morvane::cipher
