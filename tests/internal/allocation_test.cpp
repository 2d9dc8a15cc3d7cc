// Every call of the toolkit and of the provider, while each of its allocations fails in turn.
#include "csp/test_session.h"
#include "support/failing_heap.h"

#include <morvane/kcdsa.h>
#include <morvane/toolkit.h>

#include <climits>
#include <cstdlib>
#include <set>
#include <span>

namespace {

using namespace morvane::test;

// What the calls make. The toolkit's is all of one type.
struct OfToolkit {
    CSSM_DATA digest, random, mac, sealed, opened, fixed, fixed_back, wrapped, unwrapped, shares[3], joined, rsa[2], dsa[2],
        kcdsa[2], kcdsa2[2], ec[2], eckcdsa[2], block[3], block_back[3], rsa_signature, pss, kcdsa_signature, old_signature,
        ecdsa, eckcdsa_signature, shared, ec_sealed, ec_opened, wtls[2], der, long_block;
};
struct OfProvider {
    CSSM_KEY des, wrapped, unwrapped, pair[2], derived;
    CSSM_DATA data[9];  // digest, last blocks, MACs, parameters
};

// What they get: the result of a call is an input of later ones.
struct Calls {
    Bytes bytes = Random(20411).bytes(40), room = Bytes(200), modulus = Bytes(600, 0xd5);
    CSSM_DATA text = {20, bytes.data()}, key = {26, bytes.data()}, iv = {16, bytes.data()}, out = {200, room.data()};
    CSSM_KEY base{};
    OfToolkit k{};
    OfProvider p{};
    CSSM_KEY* const keys[6] = {&p.des, &p.wrapped, &p.unwrapped, &p.pair[0], &p.pair[1], &p.derived};
    std::uint16_t exponent_bytes = 0, modulus_bytes = 0;
    std::uint32_t written = 0;
    CspSizePair sizes{};
    K_CONTEXT* context;

    Session digest{CSP_CONTEXT_DIGEST, CSP_ALG_SHA1}, random{CSP_CONTEXT_RANDOM, CSP_ALG_RANDOM},
        des{CSP_CONTEXT_SYMMETRIC, CSP_ALG_DES}, md5_mac{CSP_CONTEXT_MAC, CSP_ALG_MD5},
        des_mac{CSP_CONTEXT_MAC, CSP_ALG_DES}, des_key{CSP_CONTEXT_KEYGEN, CSP_ALG_DES},
        pair{CSP_CONTEXT_KEYGEN, CSP_ALG_RSA}, domain{CSP_CONTEXT_KEYGEN, CSP_ALG_HAS160_WITH_KCDSA},
        dh{CSP_CONTEXT_KEYGEN, CSP_ALG_DH};

    Calls() {
        const K_ALLOCATOR allocator = {[](void*, std::size_t size) { return std::malloc(size); },
                                       [](void*, void* block) { std::free(block); }, nullptr};
        context = K_NewContext(&allocator);
        for (Session* const session : {&des, &md5_mac, &des_mac}) {
            session->with(&p.des).with(&iv).with(CSP_ATTR_MODE, CSP_MODE_CBC).with(CSP_ATTR_PADDING, 6);
        }
        for (Session* const session : {&des_key, &dh}) session->with(CSP_ATTR_BLOCK_SIZE, 8);
        random.with(CSP_ATTR_OUTPUT_SIZE, 16);
        pair.with(CSP_ATTR_BLOCK_SIZE, 512);
        base.KeyData = text;
        p.derived.KeyHeader.AlgorithmId = CSP_ALG_DES;
    }
    ~Calls() {
        const FailingHeap heap(INT_MAX);
        for (CSSM_KEY* const made : keys) CSP_FreeKey(0, nullptr, made);
        for (const CSSM_DATA& made : all_of_toolkit()) K_free(context, made.Data);
        K_KCCTerm(context);
        EXPECT_EQ(K_EndContext(context), 0U);
        EXPECT_EQ(heap.dirty(), 0);
        for (const CSSM_DATA& made : p.data) std::free(made.Data);
    }
    std::span<const CSSM_DATA> all_of_toolkit() const {
        return {reinterpret_cast<const CSSM_DATA*>(&k), sizeof k / sizeof(CSSM_DATA)};
    }
    std::vector<std::pair<std::uint32_t, const void*>> outputs() const {
        std::vector<std::pair<std::uint32_t, const void*>> all;
        for (const CSSM_DATA& made : all_of_toolkit()) all.emplace_back(made.Length, made.Data);
        for (const CSSM_DATA& made : p.data) all.emplace_back(made.Length, made.Data);
        for (const CSSM_KEY* const made : keys) all.emplace_back(made->KeyData.Length, made->KeyData.Data);
        return all;
    }
    Calls(const Calls&) = delete;
    Calls& operator=(const Calls&) = delete;
};

using Codes = std::set<std::uint32_t>;

// 0, or the code of the failure. That of a provider's step is the same whether memory was short there or not.
struct Row {
    const char* name;
    Codes codes;
    std::uint32_t (*call)(Calls&);
};

Row row(const char* name, Codes codes, std::uint32_t (*call)(Calls&)) { return {name, codes, call}; }

#define ROW(name, codes, result) row(#name, codes, [](Calls& c) { return static_cast<std::uint32_t>(result); })
#define CSP(name, code, ...)     ROW(name, {code}, name(0, __VA_ARGS__) == 0 ? 0 : GetError())
#define K(name, codes, ...)      ROW(name, codes, name(c.context, __VA_ARGS__))

const Codes kNone = {}, kMemory = {KERR_MEMORY}, kPair = {KERR_OUTPUT_ALLOC},
            kRequestAndPair = {KERR_MEMORY, KERR_OUTPUT_ALLOC, KERR_KEYGEN};
constexpr std::int32_t kCurve = 7;

const Row kRows[] = {
    CSP(CSP_GenerateKey, CSP_ERR_MEMORY, c.des_key.handle(), nullptr, 0, 0, &c.key, &c.p.des),
    CSP(CSP_QuerySize, 0, c.des.handle(), nullptr, 0, 0, &c.sizes),
    CSP(CSP_QuerySizeInBits, 0, c.des.handle(), nullptr, &c.sizes),
    CSP(CSP_GenerateRandom, 0, c.random.handle(), nullptr, &c.out),
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
    CSP(CSP_GenerateKeyPair, CSP_ERR_MEMORY, c.pair.handle(), nullptr, 0, 0, nullptr, &c.p.pair[0], 0, 0, nullptr,
        &c.p.pair[1]),
    CSP(CSP_GenerateAlgorithmParams, CSP_ERR_MEMORY, c.domain.handle(), nullptr, 512, &c.p.data[7]),
    CSP(CSP_GenerateAlgorithmParams, CSP_ERR_MEMORY, c.dh.handle(), nullptr, 128, &c.p.data[8]),
    CSP(CSP_DeriveKey, CSP_ERR_MEMORY, c.dh.handle(), nullptr, &c.base, &c.iv, 0, 0, nullptr, &c.p.derived),

    {"K_KCCInit", kMemory, [](Calls& c) { return K_KCCInit(c.context) == 0 ? 0 : c.context->last_error; }},
    K(K_GenHash, (Codes{KERR_MEMORY, KERR_OUTPUT_ALLOC, KERR_DIGEST_INIT}), K_HASH_SHA1, &c.text,
      &c.k.digest),
    K(K_GenRandom, kMemory, 0, 32, &c.k.random.Data),
    K(K_GenMac, (Codes{KERR_MEMORY, KERR_KEY_SETUP, KERR_MAC_INIT}), K_MAC_MD5, &c.key, &c.text, &c.k.mac),
    K(K_VerifyMac, (Codes{KERR_MEMORY, KERR_KEY_SETUP, UINT32_MAX}), K_MAC_MD5, &c.key, &c.text, &c.k.mac),
    K(K_Encryption, (Codes{KERR_MEMORY, KERR_ENCRYPT}), K_CIPHER_SEED, 1, &c.key, &c.text, &c.k.sealed),
    K(K_Decryption, (Codes{KERR_MEMORY, KERR_DECRYPT}), K_CIPHER_SEED, 1, &c.key, &c.k.sealed, &c.k.opened),
    K(K_Encryption_IV_Fix, (Codes{KERR_MEMORY, KERR_ENCRYPT_STREAM}), K_CIPHER_RC2, 1, &c.key, &c.iv, &c.text, &c.k.fixed),
    K(K_Decryption_IV_Fix, (Codes{KERR_MEMORY, KERR_DECRYPT_STREAM}), K_CIPHER_RC2, 1, &c.key, &c.iv, &c.k.fixed, &c.k.fixed_back),
    K(K_KeyEncryption, (Codes{KERR_MEMORY, KERR_ENCRYPT}), K_CIPHER_RC4, &c.key, &c.text, &c.k.wrapped),
    K(K_KeyDecryption, (Codes{KERR_MEMORY, KERR_DECRYPT}), K_CIPHER_RC4, &c.key, &c.k.wrapped, &c.k.unwrapped),
    K(K_KeyShareEncode, kMemory, &c.key, 2, 3, c.k.shares),
    K(K_KeyShareDecode, kMemory, c.k.shares, 2, &c.k.joined),
    K(K_GenerateRSAKey, kRequestAndPair, 512, &c.k.rsa[0], &c.k.rsa[1]),
    K(K_GenAssymetricKey, kRequestAndPair, K_PAIR_DSA, 300, &c.k.dsa[0], &c.k.dsa[1]),
    K(K_GenerateKCDSAKeyPair, kRequestAndPair, 300, &c.k.kcdsa[0], &c.k.kcdsa[1]),
    K(K_GenerateKCDSAKeyPair_Params, kPair, &c.p.data[7], &c.k.kcdsa2[0], &c.k.kcdsa2[1]),
    K(K_GenerateECCKeyPair, kPair, kCurve, &c.k.ec[0], &c.k.ec[1]),
    K(K_GenerateECKCDSAKeyPair, kPair, kCurve, &c.k.eckcdsa[0], &c.k.eckcdsa[1]),
    K(K_RSAPublicEncrypt, kMemory, &c.k.rsa[0], &c.text, &c.k.block[0]),
    K(K_RSAPrivateDecrypt, kMemory, &c.k.rsa[1], &c.k.block[0], &c.k.block_back[0]),
    K(K_RSAPublicEncryptOAEP, kMemory, &c.k.rsa[0], nullptr, &c.text, &c.k.block[1]),
    K(K_RSAPrivateDecryptOAEP, kMemory, &c.k.rsa[1], nullptr, &c.k.block[1], &c.k.block_back[1]),
    K(K_RSAPrivateEncrypt, kMemory, &c.k.rsa[1], &c.text, &c.k.block[2]),
    K(K_RSAPublicDecrypt, kMemory, &c.k.rsa[0], &c.k.block[2], &c.k.block_back[2]),
    K(K_RSASign, kMemory, K_HASH_SHA1, &c.k.rsa[1], &c.text, &c.k.rsa_signature),
    K(K_RSAVerify, kMemory, K_HASH_SHA1, &c.k.rsa[0], &c.text, &c.k.rsa_signature),
    K(K_RSASignPSS, kMemory, 0, 20, &c.k.rsa[1], &c.text, &c.k.pss),
    K(K_RSAVerifyPSS, kNone, 0, 20, &c.k.rsa[0], &c.text, &c.k.pss),
    K(K_KCDSASign, kMemory, E_KCDSA_SHA1, &c.k.kcdsa2[1], &c.text, &c.k.kcdsa_signature),
    K(K_KCDSAVerify, kNone, E_KCDSA_SHA1, &c.k.kcdsa2[0], &c.text, &c.k.kcdsa_signature),
    K(K_KCDSASignHash, kMemory, &c.k.kcdsa2[1], &c.text, &c.k.old_signature),
    K(K_KCDSAVerifyHash, kNone, &c.k.kcdsa2[0], &c.text, &c.k.old_signature),
    K(K_ECDSASign, kMemory, kCurve, &c.k.ec[1], &c.text, &c.k.ecdsa),
    K(K_ECDSAVerify, kNone, kCurve, &c.k.ec[0], &c.text, &c.k.ecdsa),
    K(K_ECKCDSASign, kMemory, kCurve, &c.k.eckcdsa[1], &c.k.eckcdsa[0], &c.text, &c.k.eckcdsa_signature),
    K(K_ECKCDSAVerify, kNone, kCurve, &c.k.eckcdsa[0], &c.text, &c.k.eckcdsa_signature),
    K(K_ECDH, kMemory, kCurve, &c.k.ec[1], &c.k.eckcdsa[0], &c.k.shared),
    K(K_ECC_Encryption, kMemory, kCurve, &c.k.ec[0], &c.text, &c.k.ec_sealed),
    K(K_ECC_Decryption, kMemory, kCurve, &c.k.ec[1], &c.k.ec_sealed, &c.k.ec_opened),
    {"K_WTLSPublicKey2RSA", kMemory,
     [](Calls& c) {
         constexpr std::uint8_t kExponent[] = {1, 0, 1};
         const std::uint32_t code = K_WTLSPublicKey2RSA(c.context, kExponent, 3, c.modulus.data(), 600, &c.k.der.Data,
                                                        &c.k.der.Length);
         return code == 1 ? 0 : code;
     }},
    {"K_RSAPublicKey2WTLS", kMemory,
     [](Calls& c) {
         const std::uint32_t code =
             K_RSAPublicKey2WTLS(c.context, c.k.der.Data, c.k.der.Length, &c.k.wtls[0].Data, &c.exponent_bytes,
                                 &c.k.wtls[1].Data, &c.modulus_bytes);
         if (code == 1) return 0U;
         K_free(c.context, std::exchange(c.k.wtls[0].Data, nullptr));  // handed out if it is the modulus that has no room
         return code;
     }},
    // Under a modulus that needs work space.
    K(K_RSAPublicEncrypt, (Codes{KERR_MEMORY, KERR_RSA_PUBLIC_ENCRYPT}), &c.k.der, &c.text, &c.k.long_block),
};

// A failure has its code, hands nothing out, leaves nothing behind and wipes what it frees; then the call works.
TEST(AllocationFailure, OfEveryCall) {
    const std::size_t live_at_first = FailingHeap::live();
    {
        Calls calls;
        for (const Row& row : kRows) {
            Codes seen;
            for (int n = 0;; ++n) {
                SCOPED_TRACE(testing::Message() << row.name << ", allocation " << n);
                const auto outputs = calls.outputs();
                const std::size_t live = FailingHeap::live();
                std::uint32_t code = 0;
                bool has_failed = false;
                {
                    const FailingHeap heap(n, FailingHeap::Then::kWorks);
                    code = row.call(calls);
                    has_failed = heap.has_failed();
                    EXPECT_EQ(heap.dirty(), 0);
                }
                // Division by a long modulus is quicker with space, and goes without it.
                if (code == 0 && has_failed && &row == &std::end(kRows)[-1]) {
                    K_free(calls.context, calls.k.long_block.Data);
                    calls.k.long_block = {};
                    continue;
                }
                ASSERT_EQ(code != 0, has_failed) << code;
                if (code == 0) break;
                seen.insert(code);
                EXPECT_EQ(FailingHeap::live(), live);
                EXPECT_EQ(calls.outputs(), outputs);
                EXPECT_TRUE(row.name[0] != 'K' || calls.context->last_error == code);
            }
            Codes codes = row.codes;
            codes.erase(0);
            EXPECT_EQ(seen, codes) << row.name;
        }
    }
    EXPECT_EQ(FailingHeap::live(), live_at_first);
}

TEST(AllocationFailure, TableHasEveryCall) {
    std::set<std::string> names = {"K_KCCTerm"};
    for (const Row& row : kRows) names.insert(row.name);
#define EXPORT(function, name, convention, bytes, target) #target,
    for (const std::string name : {
#include "export_table.inc"
         }) {
        EXPECT_TRUE((name.rfind("K_", 0) != 0 && name.rfind("CSP_", 0) != 0) || names.count(name) == 1) << name;
    }
}

}  // namespace
