// OpenSSL by its envelope interface; openssl_low_ciphers.cpp has the older one.
#include "ciphers.h"

#include <openssl/evp.h>
#include <openssl/provider.h>
#include <memory>

namespace morvane::bench {
namespace {

using Context = std::shared_ptr<EVP_CIPHER_CTX>;

// A context keyed, or null where the library knows no such cipher.
Context keyed(const std::string& name, const Cipher& cipher, bool encrypt) {
    const std::unique_ptr<EVP_CIPHER, decltype(&EVP_CIPHER_free)> fetched(EVP_CIPHER_fetch(nullptr, name.c_str(), nullptr),
                                                                          EVP_CIPHER_free);
    if (!fetched) return nullptr;
    const Context context(EVP_CIPHER_CTX_new(), EVP_CIPHER_CTX_free);
    if (EVP_CipherInit_ex2(context.get(), fetched.get(), cipher.key.data(), kIv.data(), encrypt, nullptr) != 1)
        return nullptr;
    EVP_CIPHER_CTX_set_padding(context.get(), 0);
    return context;
}

void add(Rows& all, const Cipher& cipher, const std::string& primitive, const std::string& name, bool encrypt,
         bool assembler = false) {
    const Context context = keyed(name, cipher, encrypt);
    if (!context) return;
    const bool has_iv = EVP_CIPHER_CTX_get_iv_length(context.get()) != 0;
    all.push_back({primitive, "openssl",
                   [context, has_iv](std::uint8_t* out, const std::uint8_t* in, std::size_t size) {
                       int written = 0;
                       if (has_iv) EVP_CipherInit_ex2(context.get(), nullptr, nullptr, kIv.data(), -1, nullptr);
                       EVP_CipherUpdate(context.get(), out, &written, in, static_cast<int>(size));
                   },
                   Kind::kCipher, assembler});
}

void add_key(Rows& all, const Cipher& cipher, const std::string& name) {
    const Context context = keyed(name, cipher, true);
    if (!context) return;
    add_key_setup(all, cipher, "openssl", [context, key = cipher.key] {
        EVP_CipherInit_ex2(context.get(), nullptr, key.data(), nullptr, -1, nullptr);
    });
}

}  // namespace

void add_openssl_ciphers(Rows& all) {
    OSSL_PROVIDER_load(nullptr, "legacy");  // all ciphers but triple DES
    OSSL_PROVIDER_load(nullptr, "default");
    constexpr struct {
        const Cipher& cipher;
        const char* name;
    } kCiphers[] = {{kDes, "DES"},     {kDes3, "DES-EDE"}, {kDes33Key, "DES-EDE3"}, {kSeed, "SEED"}, {kIdea, "IDEA"},
                    {kBlowfish, "BF"}, {kRc2, "RC2"}};
    for (const auto& [cipher, name] : kCiphers) {
        for (const ModeRow& row : kModes) {
            constexpr const char* kModeNames[] = {"-ECB", "-CBC", "-CFB", "-CFB8", "-OFB"};
            const std::string mode = kModeNames[static_cast<int>(row.mode)];
            const std::string primitive = cipher.name + std::string(row.suffix);
            if (&cipher == &kDes3 && row.mode == Mode::kCfb8) {
                add(all, kDes3InThree, primitive, "DES-EDE3" + mode, row.encrypt);  // there is none for two keys
            } else {
                add(all, cipher, primitive, name + mode, row.encrypt);
            }
        }
        add_key(all, cipher, name + std::string("-ECB"));
    }
    add(all, kRc4, kRc4.name, "RC4", true, true);
    add_key(all, kRc4, "RC4");
}

}  // namespace morvane::bench
