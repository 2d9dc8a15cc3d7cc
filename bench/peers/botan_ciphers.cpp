#include "ciphers.h"

#include <botan/block_cipher.h>
#include <botan/cipher_mode.h>
#include <botan/stream_cipher.h>
#include <cstring>
#include <memory>

namespace morvane::bench {
namespace {

// `object` keyed, or null where the library was built without it.
template <typename Object>
std::shared_ptr<Object> keyed(std::unique_ptr<Object> object, const Cipher& cipher) {
    if (object) object->set_key(cipher.key.data(), cipher.key.size());
    return object;
}

template <typename Object>
void add_key(Rows& all, const Cipher& cipher, const std::shared_ptr<Object>& object) {
    if (!object) return;
    add_key_setup(all, cipher, "botan", [object, key = cipher.key] { object->set_key(key.data(), key.size()); });
}

using Run = decltype(Row::run);

Run ecb(const Cipher& cipher, const std::string& name, bool encrypt) {
    const auto block = keyed(Botan::BlockCipher::create(name), cipher);
    if (!block) return nullptr;
    if (encrypt) {
        return [block, bytes = cipher.block_bytes](std::uint8_t* out, const std::uint8_t* in, std::size_t size) {
            block->encrypt_n(in, out, size / bytes);
        };
    }
    return [block, bytes = cipher.block_bytes](std::uint8_t* out, const std::uint8_t* in, std::size_t size) {
        block->decrypt_n(in, out, size / bytes);
    };
}

// A mode works in place only.
Run chained(const Cipher& cipher, const std::string& name, bool encrypt) {
    const auto mode = keyed(Botan::Cipher_Mode::create(name, encrypt ? Botan::ENCRYPTION : Botan::DECRYPTION), cipher);
    if (!mode) return nullptr;
    return [mode, bytes = cipher.block_bytes](std::uint8_t* out, const std::uint8_t* in, std::size_t size) {
        std::memcpy(out, in, size);
        mode->start(kIv.data(), bytes);
        mode->process(out, size);
    };
}

Run stream(const Cipher& cipher, const std::string& name, std::size_t iv_bytes) {
    const auto key_stream = keyed(Botan::StreamCipher::create(name), cipher);
    if (!key_stream) return nullptr;
    return [key_stream, iv_bytes](std::uint8_t* out, const std::uint8_t* in, std::size_t size) {
        if (iv_bytes != 0) key_stream->set_iv(kIv.data(), iv_bytes);
        key_stream->cipher(in, out, size);
    };
}

Run run_of(const Cipher& cipher, const std::string& name, const ModeRow& row) {
    switch (row.mode) {
        case Mode::kEcb:
            return ecb(cipher, name, row.encrypt);
        case Mode::kCbc:
            return chained(cipher, name + "/CBC/NoPadding", row.encrypt);
        case Mode::kCfb:
            return chained(cipher, name + "/CFB", row.encrypt);
        case Mode::kCfb8:
            return chained(cipher, name + "/CFB(8)", row.encrypt);
        case Mode::kOfb:
            return stream(cipher, "OFB(" + name + ")", cipher.block_bytes);
    }
    return nullptr;
}

}  // namespace

void add_botan_ciphers(Rows& all) {
    constexpr struct {
        const Cipher& cipher;
        const char* name;
    } kCiphers[] = {{kDes, "DES"},   {kDes3, "TripleDES"}, {kDes33Key, "TripleDES"},
                    {kSeed, "SEED"}, {kIdea, "IDEA"},      {kBlowfish, "Blowfish"}};
    for (const auto& [cipher, name] : kCiphers) {
        for (const ModeRow& row : kModes) {
            const Run run = run_of(cipher, name, row);
            if (!run) continue;
            // IDEA takes eight blocks at a time with SSE2 where they do not depend on each other.
            const bool sse2 = &cipher == &kIdea && (row.mode == Mode::kEcb || (row.mode == Mode::kCbc && !row.encrypt));
            all.push_back({cipher.name + std::string(row.suffix), "botan", run, Kind::kCipher, sse2});
        }
        add_key(all, cipher, keyed(Botan::BlockCipher::create(name), cipher));
    }
    if (const Run run = stream(kRc4, "RC4", 0)) all.push_back({kRc4.name, "botan", run, Kind::kCipher});
    add_key(all, kRc4, keyed(Botan::StreamCipher::create("RC4"), kRc4));
}

}  // namespace morvane::bench
