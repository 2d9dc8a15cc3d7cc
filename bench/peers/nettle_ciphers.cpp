#include "ciphers.h"

#include <nettle/arcfour.h>
#include <nettle/arctwo.h>
#include <nettle/blowfish.h>
#include <nettle/cbc.h>
#include <nettle/cfb.h>
#include <nettle/des.h>
#include <memory>

namespace morvane::bench {
namespace {

using Chained = void(const void* context, nettle_cipher_func* cipher, size_t block_bytes, uint8_t* iv, size_t size,
                     uint8_t* out, const uint8_t* in);

struct {
    Mode mode;
    Chained* calls[2];     // encryption, decryption
    bool cipher_forwards;  // decryption too enciphers
} const kChained[] = {
    {Mode::kCbc, {nettle_cbc_encrypt, nettle_cbc_decrypt}, false},
    {Mode::kCfb, {nettle_cfb_encrypt, nettle_cfb_decrypt}, true},
    {Mode::kCfb8, {nettle_cfb8_encrypt, nettle_cfb8_decrypt}, true},
};

// The library's own macros cast the ciphers' functions like this.
template <typename Context, auto Encrypt, auto Decrypt>
void add(Rows& all, const Cipher& cipher, void (*set_up)(Context*)) {
    const auto context = std::make_shared<Context>();
    set_up(context.get());
    add_key_setup(all, cipher, "nettle", [context, set_up] { set_up(context.get()); });
    const auto encrypt = reinterpret_cast<nettle_cipher_func*>(Encrypt);
    const auto decrypt = reinterpret_cast<nettle_cipher_func*>(Decrypt);
    for (const ModeRow& row : kModes) {
        const std::string primitive = cipher.name + std::string(row.suffix);
        if (row.mode == Mode::kEcb) {
            all.push_back(
                {primitive, "nettle",
                 [context, run = row.encrypt ? encrypt : decrypt](std::uint8_t* out, const std::uint8_t* in,
                                                                  std::size_t size) { run(context.get(), size, out, in); },
                 Kind::kCipher});
        }
        for (const auto& chained : kChained) {
            if (row.mode != chained.mode) continue;
            const auto block = row.encrypt || chained.cipher_forwards ? encrypt : decrypt;
            all.push_back({primitive, "nettle",
                           [context, block, run = chained.calls[row.encrypt ? 0 : 1], block_bytes = cipher.block_bytes](
                               std::uint8_t* out, const std::uint8_t* in, std::size_t size) {
                               Iv iv = kIv;
                               run(context.get(), block, block_bytes, iv.data(), size, out, in);
                           },
                           Kind::kCipher});
        }
    }
}

}  // namespace

void add_nettle_ciphers(Rows& all) {
    add<des_ctx, nettle_des_encrypt, nettle_des_decrypt>(all, kDes,
                                                         [](des_ctx* c) { nettle_des_set_key(c, kDes.key.data()); });
    add<des3_ctx, nettle_des3_encrypt, nettle_des3_decrypt>(
        all, kDes3InThree, [](des3_ctx* c) { nettle_des3_set_key(c, kDes3InThree.key.data()); });
    add<des3_ctx, nettle_des3_encrypt, nettle_des3_decrypt>(
        all, kDes33Key, [](des3_ctx* c) { nettle_des3_set_key(c, kDes33Key.key.data()); });
    add<blowfish_ctx, nettle_blowfish_encrypt, nettle_blowfish_decrypt>(
        all, kBlowfish, [](blowfish_ctx* c) { nettle_blowfish_set_key(c, kBlowfish.key.size(), kBlowfish.key.data()); });
    add<arctwo_ctx, nettle_arctwo_encrypt, nettle_arctwo_decrypt>(
        all, kRc2, [](arctwo_ctx* c) { nettle_arctwo_set_key_ekb(c, kRc2.key.size(), kRc2.key.data(), kRc2Bits); });

    const auto stream = std::make_shared<arcfour_ctx>();
    nettle_arcfour_set_key(stream.get(), kRc4.key.size(), kRc4.key.data());
    all.push_back({kRc4.name, "nettle",
                   [stream](std::uint8_t* out, const std::uint8_t* in, std::size_t size) {
                       nettle_arcfour_crypt(stream.get(), size, out, in);
                   },
                   Kind::kCipher});
    const auto keyed = std::make_shared<arcfour_ctx>();
    add_key_setup(all, kRc4, "nettle", [keyed] { nettle_arcfour_set_key(keyed.get(), kRc4.key.size(), kRc4.key.data()); });
}

}  // namespace morvane::bench
