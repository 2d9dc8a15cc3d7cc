// K_Encryption, K_Decryption and their relatives.
#include "base/wipe.h"
#include "toolkit/secret_key.h"

#include <morvane/random.h>

#include <algorithm>

namespace {

using namespace morvane::toolkit;

// The provider's steps in a direction, and the codes that they leave in the toolkit's part of the context.
struct Direction {
    decltype(CSP_EncryptDataUpdate)* update;
    decltype(CSP_EncryptDataFinal)* final;
    std::uint32_t update_code;
    std::uint32_t final_code;
    std::uint32_t padding;
};

constexpr std::uint32_t kPadPkcs5 = 6;
constexpr Direction kEncrypt{CSP_EncryptDataUpdate, CSP_EncryptDataFinal, KERR_ENCRYPT_UPDATE, KERR_ENCRYPT_FINAL,
                             kPadPkcs5};
constexpr Direction kDecrypt{CSP_DecryptDataUpdate, CSP_DecryptDataFinal, KERR_DECRYPT_UPDATE, KERR_DECRYPT_FINAL, 0};

constexpr std::uint32_t kMostBlockBytes = 16;

// The provider's chunk of 1000 bytes ends in a partial block of a cipher with blocks of 16; this is the most below it.
constexpr std::uint32_t kPieceBytes = 992;

// 0 for RC4 and for what is no cipher.
std::uint32_t block_bytes(std::uint32_t selector) noexcept {
    switch (cipher_of(selector)) {
        case 0:
        case CSP_ALG_RC4:
            return 0;
        case CSP_ALG_SEED:
            return kMostBlockBytes;
        default:
            return 8;
    }
}

struct Message {
    std::uint32_t selector;
    const CSSM_DATA* key;
    CSSM_DATA iv;
    CSSM_DATA text;
};

// Puts a message through a cipher, in CBC if it has blocks. `out` has room for the text and a block; its length becomes
// what has come out.
std::uint32_t run(K_CONTEXT* context, const Direction& direction, Message message, CSSM_DATA& out) noexcept {
    SecretKey key(context);
    Request<4> request(context, CSP_CONTEXT_SYMMETRIC, cipher_of(message.selector));
    Buffer last(context, kMostBlockBytes, 0);
    if (!key || !request || !last) return KERR_MEMORY;
    if (const std::uint32_t code = key.make(message.selector, message.key); code != 0) return code;
    request.set(0, CSP_ATTR_KEY, key.get());
    request.set(1, CSP_ATTR_MODE, CSP_MODE_CBC);
    request.set(2, CSP_ATTR_INIT_VECTOR, &message.iv);
    request.set(3, CSP_ATTR_PADDING, direction.padding);
    if (CSP_EncryptDataInit(kProvider, request.handle(), nullptr) != 0) return KERR_CIPHER_INIT;
    std::uint32_t written = 0;
    for (std::uint32_t at = 0; at < message.text.Length;) {
        const std::uint32_t size = std::min(kPieceBytes, message.text.Length - at);
        const CSSM_DATA piece{size, message.text.Data + at};
        const CSSM_DATA room{out.Length - written, out.Data + written};
        std::uint32_t now = 0;
        if (direction.update(kProvider, request.handle(), &piece, 1, &room, 1, &now) != 0) return direction.update_code;
        written += now;
        at += size;
    }
    if (direction.final(kProvider, request.handle(), &last.data()) != 0) return direction.final_code;
    const std::uint32_t rest = block_bytes(message.selector) == 0 ? 0 : last.data().Length;
    if (rest > out.Length - written) return direction.final_code;
    morvane::copy_bytes(out.Data + written, last.get(), rest);
    out.Length = written + rest;
    return 0;
}

std::uint32_t encrypt(K_CONTEXT* context, Message message, bool sends_iv, CSSM_DATA& output) noexcept {
    const std::uint32_t block = block_bytes(message.selector);
    const std::uint32_t front = sends_iv ? block : 0;
    Buffer out(context, message.text.Length, front + block + 1);
    if (!out) return KERR_MEMORY;
    if (sends_iv) {
        RAND_Bytes(out.get(), static_cast<std::int32_t>(block));
        message.iv = {block, out.get()};
    }
    CSSM_DATA ciphertext{message.text.Length + block, out.get() + front};
    if (const std::uint32_t code = run(context, kEncrypt, message, ciphertext); code != 0) return code;
    out.set_length(front + ciphertext.Length);
    out.hand_out(output);
    return 0;
}

// Bytes of PKCS #5 padding at the end; 0 if it is wrong. The time does not depend on where.
std::uint32_t padding_of(const CSSM_DATA& text, std::uint32_t block) noexcept {
    if (text.Length < block) return 0;
    const std::uint8_t* const last = text.Data + (text.Length - block);
    const std::uint32_t padding = last[block - 1];
    std::uint32_t wrong = static_cast<std::uint32_t>(padding == 0 || padding > block);
    for (std::uint32_t i = 0; i < block; ++i) {
        wrong |= static_cast<std::uint32_t>(block - i <= padding) & static_cast<std::uint32_t>(last[i] != padding);
    }
    return wrong != 0 ? 0 : padding;
}

std::uint32_t decrypt(K_CONTEXT* context, Message message, bool brings_iv, CSSM_DATA& output) noexcept {
    const std::uint32_t block = block_bytes(message.selector);
    if (brings_iv) {
        if (message.text.Length < block) return KERR_CIPHER_HELPER;
        message.iv = {block, message.text.Data};
        message.text = {message.text.Length - block, message.text.Data + block};
    }
    if (block != 0 && (message.text.Length == 0 || message.text.Length % block != 0)) return KERR_CIPHER_HELPER;
    Buffer out(context, message.text.Length, block + 1);
    if (!out) return KERR_MEMORY;
    CSSM_DATA plaintext{message.text.Length + block, out.get()};
    if (const std::uint32_t code = run(context, kDecrypt, message, plaintext); code != 0) return code;
    const std::uint32_t padding = block == 0 ? 0 : padding_of(plaintext, block);
    if (block != 0 && padding == 0) return KERR_CIPHER_HELPER;
    const std::uint32_t length = plaintext.Length - padding;
    morvane::wipe(out.get() + length, padding);
    out.set_length(length);
    out.hand_out(output);
    return 0;
}

struct Codes {
    std::uint32_t other, des3, rc2;
};
constexpr Codes kEncryptCodes{KERR_ENCRYPT, KERR_ENCRYPT_IV, KERR_ENCRYPT_STREAM};
constexpr Codes kDecryptCodes{KERR_DECRYPT, KERR_DECRYPT_IV, KERR_DECRYPT_STREAM};
constexpr Codes kKeyEncryptCodes{KERR_ENCRYPT, KERR_ENCRYPT, KERR_ENCRYPT};
constexpr Codes kKeyDecryptCodes{KERR_DECRYPT, KERR_DECRYPT, KERR_DECRYPT};

using Step = std::uint32_t(K_CONTEXT*, Message, bool, CSSM_DATA&) noexcept;

// A call. Without an iv of the caller's, that of the message stands in front of its ciphertext. What went wrong goes into
// the toolkit's part of the context, and the call answers with its own code; but short memory is always told.
std::int32_t call(K_CONTEXT* context, std::uint32_t selector, std::uint32_t option, const CSSM_DATA* key,
                  const CSSM_DATA* iv, bool has_iv, const CSSM_DATA* input, CSSM_DATA* output, Step* step,
                  const Codes& codes) noexcept {
    return operate(context, has_data(input) && output != nullptr, [&] {
        auto& crypto = *static_cast<KccContext*>(context->crypto);
        const CSSM_DATA vector = has_iv && iv != nullptr ? *iv : CSSM_DATA{0, nullptr};
        crypto.error = KERR_CIPHER_OPTION;
        if (option == K_OPTION_CBC_PKCS5) {
            crypto.error = step(crypto.context, {selector, key, vector, *input}, !has_iv, *output);
        }
        if (crypto.error == 0 || crypto.error == KERR_MEMORY) return crypto.error;
        const std::uint32_t cipher = cipher_of(selector);
        return cipher == CSP_ALG_DES3 ? codes.des3 : cipher == CSP_ALG_RC2 ? codes.rc2 : codes.other;
    });
}

}  // namespace

int32_t K_Encryption(K_CONTEXT* context, uint32_t selector, uint32_t option, const CSSM_DATA* key, const CSSM_DATA* input,
                     CSSM_DATA* output) {
    return call(context, selector, option, key, nullptr, false, input, output, encrypt, kEncryptCodes);
}

int32_t K_Decryption(K_CONTEXT* context, uint32_t selector, uint32_t option, const CSSM_DATA* key, const CSSM_DATA* input,
                     CSSM_DATA* output) {
    return call(context, selector, option, key, nullptr, false, input, output, decrypt, kDecryptCodes);
}

int32_t K_Encryption_IV_Fix(K_CONTEXT* context, uint32_t selector, uint32_t option, const CSSM_DATA* key,
                            const CSSM_DATA* iv, const CSSM_DATA* input, CSSM_DATA* output) {
    return call(context, selector, option, key, iv, true, input, output, encrypt, kEncryptCodes);
}

int32_t K_Decryption_IV_Fix(K_CONTEXT* context, uint32_t selector, uint32_t option, const CSSM_DATA* key,
                            const CSSM_DATA* iv, const CSSM_DATA* input, CSSM_DATA* output) {
    return call(context, selector, option, key, iv, true, input, output, decrypt, kDecryptCodes);
}

int32_t K_KeyEncryption(K_CONTEXT* context, uint32_t selector, const CSSM_DATA* key_of_keys, const CSSM_DATA* key,
                        CSSM_DATA* output) {
    return call(context, selector, K_OPTION_CBC_PKCS5, key_of_keys, nullptr, false, key, output, encrypt, kKeyEncryptCodes);
}

int32_t K_KeyDecryption(K_CONTEXT* context, uint32_t selector, const CSSM_DATA* key_of_keys, const CSSM_DATA* encrypted,
                        CSSM_DATA* key) {
    return call(context, selector, K_OPTION_CBC_PKCS5, key_of_keys, nullptr, false, encrypted, key, decrypt,
                kKeyDecryptCodes);
}
