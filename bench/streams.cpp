// The provider's encryption in one Update beside the mode function it is made of: what the layer costs.
#include "ciphers.h"

#include <morvane/cipher.h>
#include <morvane/csp.h>

#include <algorithm>
#include <memory>

namespace morvane::bench {
namespace {

// SEED in larger pieces would fill a chunk of the layer, which is no multiple of its block.
constexpr std::size_t kMostOfSeed = 992;

// A session in CBC mode on a key schedule.
struct Stream {
    Stream(std::uint32_t algorithm, void* schedule, std::size_t schedule_bytes) {
        key.KeyHeader.BlobType = 2;
        key.KeyHeader.AlgorithmId = algorithm;
        key.KeyData = {static_cast<std::uint32_t>(schedule_bytes), static_cast<std::uint8_t*>(schedule)};
        attributes[0].AttributeType = CSP_ATTR_KEY;
        attributes[0].Attribute.Key = &key;
        attributes[1].AttributeType = CSP_ATTR_MODE;
        attributes[1].Attribute.Uint32 = CSP_MODE_CBC;
        attributes[2].AttributeType = CSP_ATTR_INIT_VECTOR;
        attributes[2].Attribute.Data = &iv_data;
        session.context_type = CSP_CONTEXT_SYMMETRIC;
        session.algorithm = algorithm;
        session.number_of_attributes = 3;
        session.attributes = attributes;
    }

    template <auto Update>
    void run(std::uint8_t* out, const std::uint8_t* in, std::size_t size) {
        const auto handle = reinterpret_cast<CspHandle>(&session);
        CSP_EncryptDataInit(0, handle, nullptr);
        const std::size_t most = session.algorithm == CSP_ALG_SEED ? kMostOfSeed : size;
        for (std::size_t at = 0; at < size; at += most) {
            const auto piece = static_cast<std::uint32_t>(std::min(most, size - at));
            const CSSM_DATA from = {piece, const_cast<std::uint8_t*>(in) + at}, to = {piece, out + at};
            std::uint32_t written = 0;
            Update(0, handle, &from, 1, &to, 1, &written);
        }
    }

    Iv iv = kIv;
    CSSM_DATA iv_data = {sizeof iv, iv.data()};
    CSSM_KEY key{};
    CSSM_CONTEXT_ATTRIBUTE attributes[3]{};
    CspSession session{};
};

template <auto Encrypt, auto Decrypt, typename Schedule>
void add(Rows& all, const Cipher& cipher, std::uint32_t algorithm, const std::shared_ptr<Schedule>& schedule) {
    const auto add_row = [&](const char* suffix, const char* library, auto run) {
        all.push_back({cipher.name + std::string(suffix), library, run, Kind::kCipher});
    };
    const auto add_direct = [&](const char* suffix, auto function) {
        add_row(suffix, "direct", [=](std::uint8_t* out, const std::uint8_t* in, std::size_t size) {
            function(in, out, schedule.get(), static_cast<std::uint32_t>(size), kIv.data());
        });
    };
    const auto stream = std::make_shared<Stream>(algorithm, schedule.get(), sizeof(Schedule));
    add_row("-cbc-enc-stream", kOurs, [=](std::uint8_t* out, const std::uint8_t* in, std::size_t size) {
        stream->template run<CSP_EncryptDataUpdate>(out, in, size);
    });
    add_row("-cbc-dec-stream", kOurs, [=](std::uint8_t* out, const std::uint8_t* in, std::size_t size) {
        stream->template run<CSP_DecryptDataUpdate>(out, in, size);
    });
    add_direct("-cbc-enc-stream", Encrypt);
    add_direct("-cbc-dec-stream", Decrypt);
}

}  // namespace

void add_streams(Rows& all) {
    const auto des = std::make_shared<E_DES_KEY_SCHEDULE>();
    E_DES_KeySchedule(des.get(), kDes.key.data());
    add<E_DES_CBC_Encrypt, E_DES_CBC_Decrypt>(all, kDes, CSP_ALG_DES, des);
    const auto rc5 = std::make_shared<E_RC5_KEY_SCHEDULE>();
    E_RC5_KeySchedule(rc5.get(), kRc5.key.data(), static_cast<std::int32_t>(kRc5.key.size()), kRc5Rounds);
    add<E_RC5_CBC_Encrypt, E_RC5_CBC_Decrypt>(all, kRc5, CSP_ALG_RC5, rc5);
    const auto seed = std::make_shared<E_SEED_KEY_SCHEDULE>();
    E_SEED_KeySchedule(seed.get(), kSeed.key.data());
    add<E_SEED_CBC_Encrypt, E_SEED_CBC_Decrypt>(all, kSeed, CSP_ALG_SEED, seed);
}

}  // namespace morvane::bench
