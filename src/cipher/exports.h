// The exported functions of a block cipher: thin calls of the modes, one set of names for each cipher. The second name of
// OFB is an alias made by the linker.
#pragma once

#include "cipher/feedback.h"

#include <morvane/cipher.h>

namespace morvane::cipher {

template <Direction D, BlockCipher C>
void run_words(const typename C::Schedule& schedule, std::uint32_t* words) noexcept {
    Block<C::kBlockBytes> block;
    for (std::size_t i = 0; i < block.limbs.size(); ++i) {
        block.limbs[i] = WordPair{words[2 * i], words[2 * i + 1]}.limb(C::kOrder);
    }
    block = run_one<D, C>(schedule, block);
    for (std::size_t i = 0; i < block.limbs.size(); ++i) {
        const WordPair pair = WordPair::of(block.limbs[i], C::kOrder);
        words[2 * i] = pair.first;
        words[2 * i + 1] = pair.second;
    }
}

}  // namespace morvane::cipher

#define MORVANE_CIPHER_BLOCK(NAME, CIPHER)                                 \
    void E_##NAME##_Encrypt(uint32_t* block, const CIPHER::Schedule* ks) { \
        using namespace morvane::cipher;                                   \
        run_words<Direction::kEncrypt, CIPHER>(*ks, block);                \
    }                                                                      \
    void E_##NAME##_Decrypt(uint32_t* block, const CIPHER::Schedule* ks) { \
        using namespace morvane::cipher;                                   \
        run_words<Direction::kDecrypt, CIPHER>(*ks, block);                \
    }

#define MORVANE_CIPHER_ECB(NAME, CIPHER)                                                                     \
    void E_##NAME##_ECB_Encrypt(const uint8_t* in, uint8_t* out, const CIPHER::Schedule* ks, uint32_t len) { \
        morvane::cipher::ecb_encrypt<CIPHER>(*ks, in, out, len);                                             \
    }                                                                                                        \
    void E_##NAME##_ECB_Decrypt(const uint8_t* in, uint8_t* out, const CIPHER::Schedule* ks, uint32_t len) { \
        morvane::cipher::ecb_decrypt<CIPHER>(*ks, in, out, len);                                             \
    }

#define MORVANE_CIPHER_CBC(NAME, CIPHER)                                                                   \
    void E_##NAME##_CBC_Encrypt(const uint8_t* in, uint8_t* out, const CIPHER::Schedule* ks, uint32_t len, \
                                const uint8_t* iv) {                                                       \
        morvane::cipher::cbc_encrypt<CIPHER, morvane::cipher::Tail::kExtended>(*ks, in, out, len, iv);     \
    }                                                                                                      \
    void E_##NAME##_CBC_Decrypt(const uint8_t* in, uint8_t* out, const CIPHER::Schedule* ks, uint32_t len, \
                                const uint8_t* iv) {                                                       \
        morvane::cipher::cbc_decrypt<CIPHER, morvane::cipher::Tail::kExtended>(*ks, in, out, len, iv);     \
    }

#define MORVANE_CIPHER_NO_PAD(NAME, CIPHER)                                                                       \
    void E_##NAME##_CBC_Encrypt_NO_PAD(const uint8_t* in, uint8_t* out, const CIPHER::Schedule* ks, uint32_t len, \
                                       const uint8_t* iv) {                                                       \
        morvane::cipher::cbc_encrypt<CIPHER, morvane::cipher::Tail::kResidual>(*ks, in, out, len, iv);            \
    }                                                                                                             \
    void E_##NAME##_CBC_Decrypt_NO_PAD(const uint8_t* in, uint8_t* out, const CIPHER::Schedule* ks, uint32_t len, \
                                       const uint8_t* iv) {                                                       \
        morvane::cipher::cbc_decrypt<CIPHER, morvane::cipher::Tail::kResidual>(*ks, in, out, len, iv);            \
    }

#define MORVANE_CIPHER_FEEDBACK(NAME, CIPHER)                                                                   \
    void E_##NAME##_CFB_Encrypt(const uint8_t* in, uint8_t* out, const CIPHER::Schedule* ks, int32_t numbits,   \
                                uint32_t len, uint8_t* iv) {                                                    \
        morvane::cipher::feedback<CIPHER, morvane::cipher::Feeds::kCiphertext>(*ks, in, out, numbits, len, iv); \
    }                                                                                                           \
    void E_##NAME##_CFB_Decrypt(const uint8_t* in, uint8_t* out, const CIPHER::Schedule* ks, int32_t numbits,   \
                                uint32_t len, uint8_t* iv) {                                                    \
        morvane::cipher::cfb_decrypt<CIPHER>(*ks, in, out, numbits, len, iv);                                   \
    }                                                                                                           \
    void E_##NAME##_OFB_Encrypt(const uint8_t* in, uint8_t* out, const CIPHER::Schedule* ks, int32_t numbits,   \
                                uint32_t len, uint8_t* iv) {                                                    \
        morvane::cipher::feedback<CIPHER, morvane::cipher::Feeds::kKeyStream>(*ks, in, out, numbits, len, iv);  \
    }
