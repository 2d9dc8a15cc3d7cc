#include "ciphers.h"

#define CRYPTOPP_ENABLE_NAMESPACE_WEAK 1
#include <cryptopp/arc4.h>
#include <cryptopp/blowfish.h>
#include <cryptopp/des.h>
#include <cryptopp/idea.h>
#include <cryptopp/modes.h>
#include <cryptopp/rc2.h>
#include <cryptopp/rc5.h>
#include <cryptopp/seed.h>
#include <memory>

namespace morvane::bench {
namespace {

namespace names = CryptoPP::Name;

// The false after a value says that nobody need use it: RC2 and RC5, CFB and whatever has an iv pick their own.
auto parameters(const ModeRow& row, const Cipher& cipher) {
    const CryptoPP::ConstByteArrayParameter iv(kIv.data(), cipher.block_bytes);
    return CryptoPP::MakeParameters(names::EffectiveKeyLength(), kRc2Bits, false)(names::Rounds(), kRc5Rounds, false)(
        names::FeedbackSize(), row.mode == Mode::kCfb8 ? 1 : 0, false)(names::IV(), iv, false);
}

template <typename Transformation>
void add_mode(Rows& all, const Cipher& cipher, const ModeRow& row) {
    const auto transformation = std::make_shared<Transformation>();
    transformation->SetKey(cipher.key.data(), cipher.key.size(), parameters(row, cipher));
    all.push_back({cipher.name + std::string(row.suffix), "cryptopp",
                   [transformation](std::uint8_t* out, const std::uint8_t* in, std::size_t size) {
                       if (transformation->IsResynchronizable()) transformation->Resynchronize(kIv.data());
                       transformation->ProcessData(out, in, size);
                   },
                   Kind::kCipher});
}

template <typename Algorithm, template <typename> typename ModeOf>
void add_direction(Rows& all, const Cipher& cipher, const ModeRow& row) {
    if (row.encrypt) {
        add_mode<typename ModeOf<Algorithm>::Encryption>(all, cipher, row);
    } else {
        add_mode<typename ModeOf<Algorithm>::Decryption>(all, cipher, row);
    }
}

template <typename Algorithm>
void add(Rows& all, const Cipher& cipher) {
    for (const ModeRow& row : kModes) {
        switch (row.mode) {
            case Mode::kEcb:
                add_direction<Algorithm, CryptoPP::ECB_Mode>(all, cipher, row);
                break;
            case Mode::kCbc:
                add_direction<Algorithm, CryptoPP::CBC_Mode>(all, cipher, row);
                break;
            case Mode::kCfb:
            case Mode::kCfb8:
                add_direction<Algorithm, CryptoPP::CFB_Mode>(all, cipher, row);
                break;
            case Mode::kOfb:
                add_direction<Algorithm, CryptoPP::OFB_Mode>(all, cipher, row);
                break;
        }
    }
    add_key_setup(all, cipher, "cryptopp",
                  [encryption = std::make_shared<typename Algorithm::Encryption>(),
                   decryption = std::make_shared<typename Algorithm::Decryption>(), key = cipher.key] {
                      const auto bits = CryptoPP::MakeParameters(names::EffectiveKeyLength(), kRc2Bits, false);
                      encryption->SetKey(key.data(), key.size(), bits);
                      if (std::is_same_v<Algorithm, CryptoPP::IDEA>) decryption->SetKey(key.data(), key.size());
                  });
}

}  // namespace

void add_cryptopp_ciphers(Rows& all) {
    add<CryptoPP::DES>(all, kDes);
    add<CryptoPP::DES_EDE2>(all, kDes3);
    add<CryptoPP::DES_EDE3>(all, kDes33Key);
    add<CryptoPP::SEED>(all, kSeed);
    add<CryptoPP::IDEA>(all, kIdea);
    add<CryptoPP::Blowfish>(all, kBlowfish);
    add<CryptoPP::RC2>(all, kRc2);
    add<CryptoPP::RC5>(all, kRc5);

    using Rc4 = CryptoPP::Weak::ARC4;
    all.push_back({kRc4.name, "cryptopp",
                   [stream = std::make_shared<Rc4>(kRc4.key.data(), kRc4.key.size())](
                       std::uint8_t* out, const std::uint8_t* in, std::size_t size) { stream->ProcessData(out, in, size); },
                   Kind::kCipher});
    add_key_setup(all, kRc4, "cryptopp", [keyed = std::make_shared<Rc4>(kRc4.key.data(), kRc4.key.size())] {
        keyed->SetKey(kRc4.key.data(), kRc4.key.size());
    });
}

}  // namespace morvane::bench
