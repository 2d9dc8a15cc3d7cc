#include "ciphers.h"

#include <morvane/cipher.h>

#include <memory>

namespace morvane::bench {
namespace {

template <typename Schedule>
using Ecb = void(const std::uint8_t* in, std::uint8_t* out, const Schedule* ks, std::uint32_t size);
template <typename Schedule>
using Cbc = void(const std::uint8_t* in, std::uint8_t* out, const Schedule* ks, std::uint32_t size, const std::uint8_t* iv);
template <typename Schedule>
using Feedback = void(const std::uint8_t* in, std::uint8_t* out, const Schedule* ks, std::int32_t bits, std::uint32_t size,
                      std::uint8_t* iv);

// Pairs are encryption and decryption; null where there is no such function.
template <typename Schedule>
struct Functions {
    void (*set_up)(Schedule* ks, const std::uint8_t* key, std::size_t key_bytes);
    Ecb<Schedule>* ecb[2];
    Cbc<Schedule>* cbc[2];
    Feedback<Schedule>* cfb[2];
    Feedback<Schedule>* ofb;
    bool iv_halves_reversed = false;  // CBC takes them so
};

template <typename Schedule>
void add_mode(Rows& all, const Cipher& cipher, const Functions<Schedule>& functions, const ModeRow& row,
              const std::shared_ptr<Schedule>& ks) {
    const auto add = [&](auto run) { all.push_back({cipher.name + std::string(row.suffix), kOurs, run, Kind::kCipher}); };
    const auto add_feedback = [&](Feedback<Schedule>* function, std::size_t bytes) {
        if (function == nullptr) return;
        add([=, bits = static_cast<std::int32_t>(8 * bytes)](std::uint8_t* out, const std::uint8_t* in, std::size_t size) {
            Iv iv = kIv;
            function(in, out, ks.get(), bits, static_cast<std::uint32_t>(size), iv.data());
        });
    };
    switch (const int direction = row.encrypt ? 0 : 1; row.mode) {
        case Mode::kEcb: {
            const auto function = functions.ecb[direction];
            if (function == nullptr) return;
            return add([=](std::uint8_t* out, const std::uint8_t* in, std::size_t size) {
                function(in, out, ks.get(), static_cast<std::uint32_t>(size));
            });
        }
        case Mode::kCbc: {
            Iv iv = kIv;
            for (std::size_t i = 0; functions.iv_halves_reversed && i < iv.size(); ++i) iv[i] = kIv[i ^ 3];
            return add(
                [=, function = functions.cbc[direction]](std::uint8_t* out, const std::uint8_t* in, std::size_t size) {
                    function(in, out, ks.get(), static_cast<std::uint32_t>(size), iv.data());
                });
        }
        case Mode::kCfb:
            return add_feedback(functions.cfb[direction], cipher.block_bytes);
        case Mode::kCfb8:
            return add_feedback(functions.cfb[direction], 1);
        case Mode::kOfb:
            return add_feedback(functions.ofb, cipher.block_bytes);
    }
}

template <typename Schedule>
void add(Rows& all, const Cipher& cipher, const Functions<Schedule>& functions) {
    const auto ks = std::make_shared<Schedule>();
    functions.set_up(ks.get(), cipher.key.data(), cipher.key.size());
    for (const ModeRow& row : kModes) add_mode(all, cipher, functions, row, ks);
    add_key_setup(all, cipher, kOurs,
                  [ks, set_up = functions.set_up, key = cipher.key] { set_up(ks.get(), key.data(), key.size()); });
}

// Leaves out the length where the cipher has only one.
template <auto KeySchedule, auto... Parameters>
constexpr auto set_up = []<typename Schedule>(Schedule* ks, const std::uint8_t* key, std::size_t key_bytes) {
    if constexpr (requires { KeySchedule(ks, key); }) {
        KeySchedule(ks, key);
    } else {
        KeySchedule(ks, key, static_cast<std::int32_t>(key_bytes), Parameters...);
    }
};

}  // namespace

void add_our_ciphers(Rows& all) {
    add<E_DES_KEY_SCHEDULE>(all, kDes,
                            {set_up<E_DES_KeySchedule>,
                             {E_DES_ECB_Encrypt, E_DES_ECB_Decrypt},
                             {E_DES_CBC_Encrypt, E_DES_CBC_Decrypt},
                             {E_DES_CFB_Encrypt, E_DES_CFB_Decrypt},
                             E_DES_OFB_Encrypt});
    add<E_DES3_KEY_SCHEDULE>(all, kDes3,
                             {set_up<E_DES3_KeySchedule>,
                              {E_DES3_ECB_Encrypt, E_DES3_ECB_Decrypt},
                              {E_DES3_CBC_Encrypt, E_DES3_CBC_Decrypt},
                              {E_DES3_CFB_Encrypt, E_DES3_CFB_Decrypt},
                              E_DES3_OFB_Encrypt});
    add<E_DES3_3KEY_SCHEDULE>(
        all, kDes33Key,
        {set_up<E_DES3_3Key_Schedule>, {}, {E_DES3_3Key_CBC_Encrypt, E_DES3_3Key_CBC_Decrypt}, {}, nullptr});
    add<E_SEED_KEY_SCHEDULE>(all, kSeed,
                             {set_up<E_SEED_KeySchedule>,
                              {E_SEED_ECB_Encrypt, E_SEED_ECB_Decrypt},
                              {E_SEED_CBC_Encrypt, E_SEED_CBC_Decrypt},
                              {E_SEED_CFB_Encrypt, E_SEED_CFB_Decrypt},
                              E_SEED_OFB_Encrypt});
    add<E_IDEA_KEY_SCHEDULE>(all, kIdea,
                             {set_up<E_IDEA_KeySchedule>,
                              {E_IDEA_ECB_Encrypt, E_IDEA_ECB_Decrypt},
                              {E_IDEA_CBC_Encrypt, E_IDEA_CBC_Decrypt},
                              {E_IDEA_CFB_Encrypt, E_IDEA_CFB_Decrypt},
                              E_IDEA_OFB_Encrypt,
                              true});
    add<E_BF_KEY_SCHEDULE>(all, kBlowfish,
                           {set_up<E_BF_KeySchedule>,
                            {E_BF_ECB_Encrypt, E_BF_ECB_Decrypt},
                            {E_BF_CBC_Encrypt, E_BF_CBC_Decrypt},
                            {E_BF_CFB_Encrypt, E_BF_CFB_Decrypt},
                            E_BF_OFB_Encrypt,
                            true});
    add<E_RC2_KEY_SCHEDULE>(all, kRc2,
                            {set_up<E_RC2_KeySchedule, kRc2Bits>,
                             {E_RC2_ECB_Encrypt, E_RC2_ECB_Decrypt},
                             {E_RC2_CBC_Encrypt, E_RC2_CBC_Decrypt},
                             {E_RC2_CFB_Encrypt, E_RC2_CFB_Decrypt},
                             E_RC2_OFB_Encrypt});
    add<E_RC5_KEY_SCHEDULE>(all, kRc5,
                            {set_up<E_RC5_KeySchedule, kRc5Rounds>,
                             {E_RC5_ECB_Encrypt, E_RC5_ECB_Decrypt},
                             {E_RC5_CBC_Encrypt, E_RC5_CBC_Decrypt},
                             {E_RC5_CFB_Encrypt, E_RC5_CFB_Decrypt},
                             E_RC5_OFB_Encrypt});

    const auto stream = std::make_shared<E_RC4_STATE>();
    E_RC4_KeySchedule(stream.get(), kRc4.key.data(), static_cast<std::uint32_t>(kRc4.key.size()));
    all.push_back({kRc4.name, kOurs,
                   [stream](std::uint8_t* out, const std::uint8_t* in, std::size_t size) {
                       E_RC4_Encrypt(in, out, stream.get(), static_cast<std::uint32_t>(size));
                   },
                   Kind::kCipher});
    const auto keyed = std::make_shared<E_RC4_STATE>();
    add_key_setup(all, kRc4, kOurs, [keyed] {
        E_RC4_KeySchedule(keyed.get(), kRc4.key.data(), static_cast<std::uint32_t>(kRc4.key.size()));
    });
}

}  // namespace morvane::bench
