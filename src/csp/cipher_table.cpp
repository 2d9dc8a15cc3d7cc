#include "csp/cipher_table.h"

#include "base/bytes.h"
#include "csp/key_record.h"
#include "csp/table.h"

#include <morvane/cipher.h>

#include <algorithm>

namespace morvane::csp {
namespace {

// The functions of a block cipher that the tables are made of; of two the second deciphers.
template <typename RecordType, std::uint32_t Block>
struct BlockCipher {
    using Record = RecordType;
    static constexpr std::uint32_t kBlockBytes = Block;

    void (*ecb[2])(const std::uint8_t*, std::uint8_t*, const Record*, std::uint32_t);
    void (*cbc[2])(const std::uint8_t*, std::uint8_t*, const Record*, std::uint32_t, const std::uint8_t*);
    void (*cfb[2])(const std::uint8_t*, std::uint8_t*, const Record*, std::int32_t, std::uint32_t, std::uint8_t*);
    void (*ofb)(const std::uint8_t*, std::uint8_t*, const Record*, std::int32_t, std::uint32_t, std::uint8_t*);
    bool reads_iv_reversed;  // CBC takes the bytes of each word of its iv in reverse
};

constexpr BlockCipher<E_DES_KEY_SCHEDULE, 8> kDes = {{E_DES_ECB_Encrypt, E_DES_ECB_Decrypt},
                                                     {E_DES_CBC_Encrypt, E_DES_CBC_Decrypt},
                                                     {E_DES_CFB_Encrypt, E_DES_CFB_Decrypt},
                                                     E_DES_OFB_Encrypt,
                                                     false};
constexpr BlockCipher<E_DES3_KEY_SCHEDULE, 8> kDes3 = {{E_DES3_ECB_Encrypt, E_DES3_ECB_Decrypt},
                                                       {E_DES3_CBC_Encrypt, E_DES3_CBC_Decrypt},
                                                       {E_DES3_CFB_Encrypt, E_DES3_CFB_Decrypt},
                                                       E_DES3_OFB_Encrypt,
                                                       false};
constexpr BlockCipher<E_IDEA_KEY_SCHEDULE, 8> kIdea = {{E_IDEA_ECB_Encrypt, E_IDEA_ECB_Decrypt},
                                                       {E_IDEA_CBC_Encrypt, E_IDEA_CBC_Decrypt},
                                                       {E_IDEA_CFB_Encrypt, E_IDEA_CFB_Decrypt},
                                                       E_IDEA_OFB_Encrypt,
                                                       true};
constexpr BlockCipher<E_RC2_KEY_SCHEDULE, 8> kRc2 = {{E_RC2_ECB_Encrypt, E_RC2_ECB_Decrypt},
                                                     {E_RC2_CBC_Encrypt, E_RC2_CBC_Decrypt},
                                                     {E_RC2_CFB_Encrypt, E_RC2_CFB_Decrypt},
                                                     E_RC2_OFB_Encrypt,
                                                     false};
constexpr BlockCipher<E_RC5_KEY_SCHEDULE, 8> kRc5 = {{E_RC5_ECB_Encrypt, E_RC5_ECB_Decrypt},
                                                     {E_RC5_CBC_Encrypt, E_RC5_CBC_Decrypt},
                                                     {E_RC5_CFB_Encrypt, E_RC5_CFB_Decrypt},
                                                     E_RC5_OFB_Encrypt,
                                                     false};
constexpr BlockCipher<E_BF_KEY_SCHEDULE, 8> kBlowfish = {{E_BF_ECB_Encrypt, E_BF_ECB_Decrypt},
                                                         {E_BF_CBC_Encrypt, E_BF_CBC_Decrypt},
                                                         {E_BF_CFB_Encrypt, E_BF_CFB_Decrypt},
                                                         E_BF_OFB_Encrypt,
                                                         true};
constexpr BlockCipher<E_SEED_KEY_SCHEDULE, 16> kSeed = {{E_SEED_ECB_Encrypt, E_SEED_ECB_Decrypt},
                                                        {E_SEED_CBC_Encrypt, E_SEED_CBC_Decrypt},
                                                        {E_SEED_CFB_Encrypt, E_SEED_CFB_Decrypt},
                                                        E_SEED_OFB_Encrypt,
                                                        false};

template <const auto& Cipher>
using Traits = std::remove_cvref_t<decltype(Cipher)>;

constexpr std::uint32_t rounded_up(std::uint32_t len, std::uint32_t block_bytes) noexcept {
    return len + (block_bytes - len % block_bytes) % block_bytes;
}

template <const auto& Cipher, bool Decrypting>
bool run_ecb(const CSSM_KEY* key, const std::uint8_t* in, std::uint8_t* out, std::uint32_t len, std::uint32_t* written,
             std::uint8_t* /*chain*/) noexcept {
    *written = Decrypting ? len : rounded_up(len, Traits<Cipher>::kBlockBytes);
    return with_schedule<typename Traits<Cipher>::Record>(
        key, [&](const auto& schedule) { Cipher.ecb[Decrypting](in, out, &schedule, len); });
}

// The mode function only reads its iv; what goes on is the last ciphertext block. It is kept in the form in which the
// function will take it.
template <const auto& Cipher, bool Decrypting>
bool run_cbc(const CSSM_KEY* key, const std::uint8_t* in, std::uint8_t* out, std::uint32_t len, std::uint32_t* written,
             std::uint8_t* chain) noexcept {
    constexpr std::uint32_t kBlockBytes = Traits<Cipher>::kBlockBytes;
    const std::uint32_t whole = rounded_up(len, kBlockBytes);
    *written = Decrypting ? len : whole;
    return with_schedule<typename Traits<Cipher>::Record>(key, [&](const auto& schedule) {
        if (len == 0) return;
        std::uint8_t last[kBlockBytes];
        if (Decrypting) std::memcpy(last, in + whole - kBlockBytes, kBlockBytes);  // before out, which may be in
        Cipher.cbc[Decrypting](in, out, &schedule, len, chain);
        if (!Decrypting) std::memcpy(last, out + whole - kBlockBytes, kBlockBytes);
        for (std::uint32_t i = 0; i < kBlockBytes; ++i) chain[i] = last[Cipher.reads_iv_reversed ? i ^ 3 : i];
    });
}

template <const auto& Cipher, auto Mode>
bool run_feedback(const CSSM_KEY* key, const std::uint8_t* in, std::uint8_t* out, std::uint32_t len, std::uint32_t* written,
                  std::uint8_t* chain) noexcept {
    constexpr std::uint32_t kBlockBytes = Traits<Cipher>::kBlockBytes;
    *written = len - len % kBlockBytes;
    return with_schedule<typename Traits<Cipher>::Record>(
        key, [&](const auto& schedule) { Mode(in, out, &schedule, 8 * kBlockBytes, len, chain); });
}

bool run_rc4(const CSSM_KEY* key, const std::uint8_t* in, std::uint8_t* out, std::uint32_t len, std::uint32_t* written,
             std::uint8_t* /*chain*/) noexcept {
    *written = len;
    return with_schedule<E_RC4_STATE, true>(key, [&](E_RC4_STATE& state) { E_RC4_Encrypt(in, out, &state, len); });
}

bool run_nothing(const CSSM_KEY* /*key*/, const std::uint8_t* /*in*/, std::uint8_t* /*out*/, std::uint32_t /*len*/,
                 std::uint32_t* written, std::uint8_t* /*chain*/) noexcept {
    *written = 0;
    return true;
}

bool set_no_key(void* /*record*/, const std::uint8_t* /*key*/, std::uint32_t /*key_bytes*/,
                std::int32_t /*parameter*/) noexcept {
    return true;
}

// A key of the one length that the cipher has.
template <auto Schedule, typename Record, std::uint32_t KeyBytes>
bool set_key(void* record, const std::uint8_t* key, std::uint32_t key_bytes, std::int32_t /*parameter*/) noexcept {
    if (key_bytes != KeyBytes) return false;
    Schedule(static_cast<Record*>(record), key);
    return true;
}

constexpr std::uint32_t kLongestKey = 0x7fffffff;

template <auto Schedule, typename Record>
bool set_key_of_any_length(void* record, const std::uint8_t* key, std::uint32_t key_bytes,
                           std::int32_t parameter) noexcept {
    if (key_bytes == 0 || key_bytes > kLongestKey) return false;
    const auto length = static_cast<std::int32_t>(key_bytes);
    if constexpr (requires { Schedule(static_cast<Record*>(record), key, length, parameter); }) {
        Schedule(static_cast<Record*>(record), key, length, parameter);
    } else {
        Schedule(static_cast<Record*>(record), key, length);
    }
    return true;
}

bool set_rc4_key(void* record, const std::uint8_t* key, std::uint32_t key_bytes, std::int32_t /*parameter*/) noexcept {
    if (key_bytes == 0) return false;
    E_RC4_KeySchedule(static_cast<E_RC4_STATE*>(record), key, key_bytes);
    return true;
}

constexpr std::array<std::uint32_t, 4> kModes = {CSP_MODE_ECB, CSP_MODE_CBC, CSP_MODE_CFB, CSP_MODE_OFB};

// In the order of kModes.
using Tables = std::array<CspCipherTable, kModes.size()>;

template <const auto& Cipher>
constexpr Tables block_cipher(std::uint32_t expanded_key_bytes, std::uint32_t key_bytes, SetKeyFn* set_key) noexcept {
    constexpr std::uint32_t kBlockBytes = Traits<Cipher>::kBlockBytes;
    const auto table = [=](std::uint32_t iv_bytes, CipherFn* encrypt, CipherFn* decrypt) {
        return CspCipherTable{expanded_key_bytes, key_bytes, iv_bytes, kBlockBytes, set_key, encrypt, decrypt, 0};
    };
    CipherFn* const ofb = run_feedback<Cipher, Cipher.ofb>;
    return {table(0, run_ecb<Cipher, false>, run_ecb<Cipher, true>),
            table(kBlockBytes, run_cbc<Cipher, false>, run_cbc<Cipher, true>),
            table(kBlockBytes, run_feedback<Cipher, Cipher.cfb[0]>, run_feedback<Cipher, Cipher.cfb[1]>),
            table(kBlockBytes, ofb, ofb)};
}

// One table for every mode.
constexpr Tables every_mode(const CspCipherTable& table) noexcept { return {table, table, table, table}; }

struct Row {
    std::uint32_t algorithm;
    bool takes_any_mode;
    std::uint32_t record_bytes;
    Tables tables;
};

constexpr std::array kRows = {
    Row{CSP_ALG_NULL_CIPHER, true, 0, every_mode({0, 0, 0, 0, set_no_key, run_nothing, run_nothing, 0})},
    Row{CSP_ALG_DES, false, sizeof(E_DES_KEY_SCHEDULE),
        block_cipher<kDes>(128, 8, set_key<E_DES_KeySchedule, E_DES_KEY_SCHEDULE, 8>)},
    Row{CSP_ALG_DES3, false, sizeof(E_DES3_KEY_SCHEDULE),
        block_cipher<kDes3>(256, 16, set_key<E_DES3_KeySchedule, E_DES3_KEY_SCHEDULE, 16>)},
    Row{CSP_ALG_IDEA, false, sizeof(E_IDEA_KEY_SCHEDULE),
        block_cipher<kIdea>(432, 16, set_key<E_IDEA_KeySchedule, E_IDEA_KEY_SCHEDULE, 16>)},
    Row{CSP_ALG_RC2, false, sizeof(E_RC2_KEY_SCHEDULE),
        block_cipher<kRc2>(128, 0, set_key_of_any_length<E_RC2_KeySchedule, E_RC2_KEY_SCHEDULE>)},
    Row{CSP_ALG_RC5, false, sizeof(E_RC5_KEY_SCHEDULE),
        block_cipher<kRc5>(136, 0, set_key_of_any_length<E_RC5_KeySchedule, E_RC5_KEY_SCHEDULE>)},
    Row{CSP_ALG_RC4, true, sizeof(E_RC4_STATE), every_mode({1032, 0, 0, 0, set_rc4_key, run_rc4, run_rc4, 0})},
    Row{CSP_ALG_BLOWFISH, false, sizeof(E_BF_KEY_SCHEDULE),
        block_cipher<kBlowfish>(4168, 0, set_key_of_any_length<E_BF_KeySchedule, E_BF_KEY_SCHEDULE>)},
    Row{CSP_ALG_SEED, false, sizeof(E_SEED_KEY_SCHEDULE),
        block_cipher<kSeed>(128, 16, set_key<E_SEED_KeySchedule, E_SEED_KEY_SCHEDULE, 16>)},
};
static_assert(is_sorted_table(kRows));

}  // namespace

CipherChoice find_cipher_table(std::uint32_t algorithm, std::uint32_t mode) noexcept {
    const Row* const row = find_row(kRows, algorithm);
    if (row == nullptr) return {nullptr, CSP_ERR_UNKNOWN_ALGORITHM};
    if (row->takes_any_mode) return {row->tables.data(), 0};
    for (std::size_t i = 0; i < kModes.size(); ++i) {
        if (kModes[i] == mode) return {&row->tables[i], 0};
    }
    return {nullptr, CSP_ERR_UNKNOWN_MODE};
}

std::uint32_t expanded_key_room(std::uint32_t algorithm) noexcept {
    const Row* const row = find_row(kRows, algorithm);
    return row == nullptr ? 0 : std::max(row->record_bytes, row->tables[0].expanded_key_bytes);
}

}  // namespace morvane::csp
