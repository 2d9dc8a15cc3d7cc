#include "ciphers.h"

#include <gcrypt.h>
#include <memory>

namespace morvane::bench {
namespace {

struct Algorithm {
    const Cipher& cipher;
    gcry_cipher_algos algorithm;
    bool assembler;  // chosen when the library was built, and not among what can be disabled
};

constexpr Algorithm kAlgorithms[] = {
    {kDes, GCRY_CIPHER_DES, false},         {kDes3InThree, GCRY_CIPHER_3DES, true}, {kDes33Key, GCRY_CIPHER_3DES, true},
    {kSeed, GCRY_CIPHER_SEED, false},       {kIdea, GCRY_CIPHER_IDEA, false},       {kBlowfish, GCRY_CIPHER_BLOWFISH, true},
    {kRc2, GCRY_CIPHER_RFC2268_128, false},
};

constexpr gcry_cipher_modes mode_of(Mode mode) {
    switch (mode) {
        case Mode::kEcb:
            return GCRY_CIPHER_MODE_ECB;
        case Mode::kCbc:
            return GCRY_CIPHER_MODE_CBC;
        case Mode::kCfb:
            return GCRY_CIPHER_MODE_CFB;
        case Mode::kCfb8:
            return GCRY_CIPHER_MODE_CFB8;
        case Mode::kOfb:
            return GCRY_CIPHER_MODE_OFB;
    }
    return GCRY_CIPHER_MODE_NONE;
}

using Handle = std::shared_ptr<gcry_cipher_handle>;

// Null where the library was built without the algorithm.
Handle open(gcry_cipher_algos algorithm, gcry_cipher_modes mode, const Cipher& cipher) {
    gcry_cipher_hd_t opened = nullptr;
    if (gcry_cipher_open(&opened, algorithm, mode, 0) != 0) return nullptr;
    const Handle handle(opened, gcry_cipher_close);
    return gcry_cipher_setkey(opened, cipher.key.data(), cipher.key.size()) == 0 ? handle : nullptr;
}

template <auto Run>
void add_mode(Rows& all, const ModeRow& row, const Algorithm& algorithm, const Handle& handle) {
    const std::size_t iv_bytes = row.mode == Mode::kEcb ? 0 : algorithm.cipher.block_bytes;
    all.push_back({algorithm.cipher.name + std::string(row.suffix), "gcrypt",
                   [handle, iv_bytes](std::uint8_t* out, const std::uint8_t* in, std::size_t size) {
                       if (iv_bytes != 0) gcry_cipher_setiv(handle.get(), kIv.data(), iv_bytes);
                       Run(handle.get(), out, size, in, size);
                   },
                   Kind::kCipher, algorithm.assembler});
}

// IDEA's subkeys are inverted when the first block is deciphered, so that is done too; the block itself is a tenth of it.
void add_key(Rows& all, const Cipher& cipher, const Handle& handle, bool assembler) {
    add_key_setup(
        all, cipher, "gcrypt",
        [handle, key = cipher.key, inverts_late = &cipher == &kIdea] {
            gcry_cipher_setkey(handle.get(), key.data(), key.size());
            std::uint8_t block[8] = {};
            if (inverts_late) gcry_cipher_decrypt(handle.get(), block, sizeof block, nullptr, 0);
        },
        assembler);
}

}  // namespace

void add_gcrypt_ciphers(Rows& all) {
    for (const Algorithm& algorithm : kAlgorithms) {
        for (const ModeRow& row : kModes) {
            const Handle handle = open(algorithm.algorithm, mode_of(row.mode), algorithm.cipher);
            if (!handle) continue;
            (row.encrypt ? add_mode<gcry_cipher_encrypt> : add_mode<gcry_cipher_decrypt>)(all, row, algorithm, handle);
        }
        // Blowfish enciphers to make its schedule; triple DES does not.
        const Handle handle = open(algorithm.algorithm, GCRY_CIPHER_MODE_ECB, algorithm.cipher);
        if (handle) add_key(all, algorithm.cipher, handle, algorithm.algorithm == GCRY_CIPHER_BLOWFISH);
    }
    const Handle stream = open(GCRY_CIPHER_ARCFOUR, GCRY_CIPHER_MODE_STREAM, kRc4);
    const Handle keyed = open(GCRY_CIPHER_ARCFOUR, GCRY_CIPHER_MODE_STREAM, kRc4);
    if (!stream || !keyed) return;
    all.push_back({kRc4.name, "gcrypt",
                   [stream](std::uint8_t* out, const std::uint8_t* in, std::size_t size) {
                       gcry_cipher_encrypt(stream.get(), out, size, in, size);
                   },
                   Kind::kCipher, true});
    add_key(all, kRc4, keyed, false);
}

}  // namespace morvane::bench
