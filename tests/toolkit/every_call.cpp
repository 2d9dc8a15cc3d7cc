#include "toolkit/every_call.h"

#pragma GCC diagnostic ignored "-Wsign-conversion"  // small constants go through templates as integers

namespace morvane::test {
namespace {

// Calls with null in place of one argument, for each that is a pointer or a handle and not null: its number, and the code.
template <typename Call, typename... Arguments>
void with_each_null(const std::function<void(std::size_t, std::uint32_t)>& check, Call call, Arguments... arguments) {
    for (std::size_t at = 0; at < sizeof...(arguments); ++at) {
        std::size_t i = 0;
        bool changed = false;
        const auto changed_at = [&]<typename Argument>(Argument argument) {
            const bool here = i++ == at && argument != Argument{};
            if constexpr (std::is_pointer_v<Argument>) {
                if (here) return changed = true, Argument{};
            } else if constexpr (std::is_same_v<Argument, CspHandle>) {
                if (here && at == 0) return changed = true, Argument{};
            }
            return argument;
        };
        const std::tuple<Arguments...> all{changed_at(arguments)...};
        if (changed) check(at, static_cast<std::uint32_t>(std::apply(call, all)));
    }
}

#define ROW(name, codes, turns, code, ...)                                                                 \
    {                                                                                                      \
#name, codes, turns, [](Calls& c) { return static_cast<std::uint32_t>(code(name)(__VA_ARGS__)); },       \
     [](Calls& c, const auto& check) { with_each_null(check, code(name), __VA_ARGS__); } \
    }
#define CSP_CODE(name)               [](auto... arguments) { return name(0, arguments...) == 0 ? 0 : GetError(); }
#define K_CODE(name)                 [](auto... arguments) { return name(arguments...); }
#define CSP(name, code, ...)         ROW(name, {code}, false, CSP_CODE, __VA_ARGS__)
#define CSP_IN_TURN(name, code, ...) ROW(name, {code}, true, CSP_CODE, __VA_ARGS__)
#define K(name, codes, ...)          ROW(name, codes, false, K_CODE, c.context, __VA_ARGS__)
#define K_IN_TURN(name, codes, ...)  ROW(name, codes, true, K_CODE, c.context, __VA_ARGS__)

const Codes kNone = {}, kMemory = {KERR_MEMORY}, kPair = {KERR_OUTPUT_ALLOC},
            kRequestAndPair = {KERR_MEMORY, KERR_OUTPUT_ALLOC, KERR_KEYGEN};
constexpr std::int32_t kCurve = 7;

}  // namespace

const std::vector<CallRow> kCallRows = {
    CSP(CSP_GenerateKey, CSP_ERR_MEMORY, c.des_key.handle(), nullptr, 0, 0, &c.key, &c.p.des),
    CSP(CSP_QuerySize, 0, c.des.handle(), nullptr, 0, 0, &c.sizes),
    CSP(CSP_QuerySizeInBits, 0, c.des.handle(), nullptr, &c.sizes),
    CSP_IN_TURN(CSP_GenerateRandom, 0, c.random.handle(), nullptr, &c.out),
    CSP(CSP_DigestDataInit, CSP_ERR_PRIMITIVE_FAILED, c.digest.handle(), nullptr),
    CSP(CSP_DigestDataUpdate, 0, c.digest.handle(), &c.text, 1),
    CSP(CSP_DigestDataFinal, CSP_ERR_MEMORY, c.digest.handle(), &c.p.data[0]),
    CSP(CSP_EncryptDataInit, 0, c.des.handle(), nullptr),
    CSP(CSP_EncryptDataUpdate, 0, c.des.handle(), &c.text, 1, &c.key, 1, &c.written),
    CSP(CSP_EncryptDataFinal, CSP_ERR_MEMORY, c.des.handle(), &c.p.data[1]),
    CSP(CSP_DecryptDataUpdate, 0, c.des.handle(), &c.text, 1, &c.key, 1, &c.written),
    CSP(CSP_DecryptDataFinal, CSP_ERR_MEMORY, c.des.handle(), &c.p.data[2]),
    CSP(CSP_EncryptData, CSP_ERR_MEMORY, c.des.handle(), nullptr, &c.text, 1, &c.key, 1, &c.written, &c.p.data[3]),
    CSP(CSP_DecryptData, CSP_ERR_MEMORY, c.des.handle(), nullptr, &c.text, 1, &c.key, 1, &c.written, &c.p.data[4]),
    CSP(CSP_GenerateMacInit, CSP_ERR_MEMORY, c.md5_mac.handle(), nullptr),
    CSP(CSP_GenerateMacUpdate, 0, c.md5_mac.handle(), &c.iv, 1),
    CSP(CSP_GenerateMacFinal, CSP_ERR_MEMORY, c.md5_mac.handle(), &c.p.data[5]),
    CSP(CSP_VerifyMacInit, CSP_ERR_MEMORY, c.md5_mac.handle(), nullptr),
    CSP(CSP_GenerateMacUpdate, 0, c.md5_mac.handle(), &c.iv, 1),
    CSP(CSP_VerifyMacFinal, 0, c.md5_mac.handle(), &c.p.data[5]),
    CSP(CSP_GenerateMac, CSP_ERR_MEMORY, c.des_mac.handle(), nullptr, &c.iv, 1, &c.p.data[6]),
    CSP(CSP_VerifyMac, 0, c.des_mac.handle(), nullptr, &c.iv, 1, &c.p.data[6]),
    CSP(CSP_WrapKey, CSP_ERR_MEMORY, c.des.handle(), nullptr, nullptr, &c.p.des, &c.p.wrapped),
    CSP(CSP_UnwrapKey, CSP_ERR_MEMORY, c.des.handle(), nullptr, nullptr, &c.p.wrapped, &c.p.unwrapped),
    CSP(CSP_FreeKey, 0, nullptr, &c.p.unwrapped),
    CSP_IN_TURN(CSP_GenerateKeyPair, CSP_ERR_MEMORY, c.pair.handle(), nullptr, 0, 0, nullptr, &c.p.pair[0], 0, 0, nullptr,
        &c.p.pair[1]),
    CSP_IN_TURN(CSP_GenerateAlgorithmParams, CSP_ERR_MEMORY, c.domain.handle(), nullptr, 512, &c.p.data[7]),
    CSP_IN_TURN(CSP_GenerateAlgorithmParams, CSP_ERR_MEMORY, c.dh.handle(), nullptr, 128, &c.p.data[8]),
    CSP_IN_TURN(CSP_DeriveKey, CSP_ERR_MEMORY, c.dh.handle(), nullptr, &c.base, &c.iv, 0, 0, nullptr, &c.p.derived),

    {"K_KCCInit", kMemory, false, [](Calls& c) { return K_KCCInit(c.context) == 0 ? 0 : c.context->last_error; }, nullptr},
    K(K_GenHash, (Codes{KERR_MEMORY, KERR_OUTPUT_ALLOC, KERR_DIGEST_INIT}), K_HASH_SHA1, &c.text,
      &c.k.digest),
    K_IN_TURN(K_GenRandom, kMemory, 0, 32, &c.k.random.Data),
    K(K_GenMac, (Codes{KERR_MEMORY, KERR_KEY_SETUP, KERR_MAC_INIT}), K_MAC_MD5, &c.key, &c.text, &c.k.mac),
    K(K_VerifyMac, (Codes{KERR_MEMORY, KERR_KEY_SETUP, UINT32_MAX}), K_MAC_MD5, &c.key, &c.text, &c.k.mac),
    K_IN_TURN(K_Encryption, (Codes{KERR_MEMORY, KERR_ENCRYPT}), K_CIPHER_SEED, 1, &c.key, &c.text, &c.k.sealed),
    K(K_Decryption, (Codes{KERR_MEMORY, KERR_DECRYPT}), K_CIPHER_SEED, 1, &c.key, &c.k.sealed, &c.k.opened),
    K(K_Encryption_IV_Fix, (Codes{KERR_MEMORY, KERR_ENCRYPT_STREAM}), K_CIPHER_RC2, 1, &c.key, &c.iv, &c.text, &c.k.fixed),
    K(K_Decryption_IV_Fix, (Codes{KERR_MEMORY, KERR_DECRYPT_STREAM}), K_CIPHER_RC2, 1, &c.key, &c.iv, &c.k.fixed, &c.k.fixed_back),
    K_IN_TURN(K_KeyEncryption, (Codes{KERR_MEMORY, KERR_ENCRYPT}), K_CIPHER_RC4, &c.key, &c.text, &c.k.wrapped),
    K(K_KeyDecryption, (Codes{KERR_MEMORY, KERR_DECRYPT}), K_CIPHER_RC4, &c.key, &c.k.wrapped, &c.k.unwrapped),
    K_IN_TURN(K_KeyShareEncode, kMemory, &c.key, 2, 3, c.k.shares),
    K(K_KeyShareDecode, kMemory, c.k.shares, 2, &c.k.joined),
    K_IN_TURN(K_GenerateRSAKey, kRequestAndPair, 512, &c.k.rsa[0], &c.k.rsa[1]),
    K_IN_TURN(K_GenAssymetricKey, kRequestAndPair, K_PAIR_DSA, 300, &c.k.dsa[0], &c.k.dsa[1]),
    K_IN_TURN(K_GenerateKCDSAKeyPair, kRequestAndPair, 300, &c.k.kcdsa[0], &c.k.kcdsa[1]),
    K_IN_TURN(K_GenerateKCDSAKeyPair_Params, kPair, &c.p.data[7], &c.k.kcdsa2[0], &c.k.kcdsa2[1]),
    K_IN_TURN(K_GenerateECCKeyPair, kPair, kCurve, &c.k.ec[0], &c.k.ec[1]),
    K_IN_TURN(K_GenerateECKCDSAKeyPair, kPair, kCurve, &c.k.eckcdsa[0], &c.k.eckcdsa[1]),
    K_IN_TURN(K_RSAPublicEncrypt, kMemory, &c.k.rsa[0], &c.text, &c.k.block[0]),
    K(K_RSAPrivateDecrypt, kMemory, &c.k.rsa[1], &c.k.block[0], &c.k.block_back[0]),
    K_IN_TURN(K_RSAPublicEncryptOAEP, kMemory, &c.k.rsa[0], nullptr, &c.text, &c.k.block[1]),
    K(K_RSAPrivateDecryptOAEP, kMemory, &c.k.rsa[1], nullptr, &c.k.block[1], &c.k.block_back[1]),
    K(K_RSAPrivateEncrypt, kMemory, &c.k.rsa[1], &c.text, &c.k.block[2]),
    K(K_RSAPublicDecrypt, kMemory, &c.k.rsa[0], &c.k.block[2], &c.k.block_back[2]),
    K(K_RSASign, kMemory, K_HASH_SHA1, &c.k.rsa[1], &c.text, &c.k.rsa_signature),
    K(K_RSAVerify, kMemory, K_HASH_SHA1, &c.k.rsa[0], &c.text, &c.k.rsa_signature),
    K_IN_TURN(K_RSASignPSS, kMemory, 0, 20, &c.k.rsa[1], &c.text, &c.k.pss),
    K(K_RSAVerifyPSS, kNone, 0, 20, &c.k.rsa[0], &c.text, &c.k.pss),
    K_IN_TURN(K_KCDSASign, kMemory, E_KCDSA_SHA1, &c.k.kcdsa2[1], &c.text, &c.k.kcdsa_signature),
    K(K_KCDSAVerify, kNone, E_KCDSA_SHA1, &c.k.kcdsa2[0], &c.text, &c.k.kcdsa_signature),
    K_IN_TURN(K_KCDSASignHash, kMemory, &c.k.kcdsa2[1], &c.text, &c.k.old_signature),
    K(K_KCDSAVerifyHash, kNone, &c.k.kcdsa2[0], &c.text, &c.k.old_signature),
    K_IN_TURN(K_ECDSASign, kMemory, kCurve, &c.k.ec[1], &c.text, &c.k.ecdsa),
    K(K_ECDSAVerify, kNone, kCurve, &c.k.ec[0], &c.text, &c.k.ecdsa),
    K_IN_TURN(K_ECKCDSASign, kMemory, kCurve, &c.k.eckcdsa[1], &c.k.eckcdsa[0], &c.text, &c.k.eckcdsa_signature),
    K(K_ECKCDSAVerify, kNone, kCurve, &c.k.eckcdsa[0], &c.text, &c.k.eckcdsa_signature),
    K(K_ECDH, kMemory, kCurve, &c.k.ec[1], &c.k.eckcdsa[0], &c.k.shared),
    K_IN_TURN(K_ECC_Encryption, kMemory, kCurve, &c.k.ec[0], &c.text, &c.k.ec_sealed),
    K(K_ECC_Decryption, kMemory, kCurve, &c.k.ec[1], &c.k.ec_sealed, &c.k.ec_opened),
    {"K_WTLSPublicKey2RSA", kMemory, false,
     [](Calls& c) {
         constexpr std::uint8_t kExponent[] = {1, 0, 1};
         const std::uint32_t code = K_WTLSPublicKey2RSA(c.context, kExponent, 3, c.modulus.data(), 600, &c.k.der.Data,
                                                        &c.k.der.Length);
         return code == 1 ? 0 : code;
     },
     nullptr},
    {"K_RSAPublicKey2WTLS", kMemory, false,
     [](Calls& c) {
         const std::uint32_t code =
             K_RSAPublicKey2WTLS(c.context, c.k.der.Data, c.k.der.Length, &c.k.wtls[0].Data, &c.exponent_bytes,
                                 &c.k.wtls[1].Data, &c.modulus_bytes);
         if (code == 1) return 0U;
         K_free(c.context, std::exchange(c.k.wtls[0].Data, nullptr));  // handed out if it is the modulus that has no room
         return code;
     },
     nullptr},
    // Under a modulus that needs work space.
    K_IN_TURN(K_RSAPublicEncrypt, (Codes{KERR_MEMORY, KERR_RSA_PUBLIC_ENCRYPT}), &c.k.der, &c.text, &c.k.long_block),
};

}  // namespace morvane::test
