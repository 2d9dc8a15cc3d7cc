// Every call of the toolkit and of the provider as rows of one table, each with arguments under which it works.
#pragma once

#include "csp/test_session.h"

#include <morvane/kcdsa.h>
#include <morvane/toolkit.h>

#include <cstdlib>
#include <functional>
#include <set>
#include <span>
#include <tuple>

namespace morvane::test {

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
        if (context != nullptr) release();
        for (const CSSM_DATA& made : p.data) std::free(made.Data);
    }
    // Gives back what the library has to wipe.
    void release() {
        for (CSSM_KEY* const made : keys) CSP_FreeKey(0, nullptr, made);
        for (const CSSM_DATA& made : all_of_toolkit()) K_free(context, made.Data);
        K_KCCTerm(context);
        EXPECT_EQ(K_EndContext(std::exchange(context, nullptr)), 0U);
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
struct CallRow {
    const char* name;
    Codes codes;       // without memory
    bool takes_turns;  // with all others that draw random numbers, or use the parameters that the provider keeps
    std::uint32_t (*call)(Calls&);
    // Once for each of its pointers, which is null then: hands on the argument's number and the code.
    void (*nulls)(Calls&, const std::function<void(std::size_t, std::uint32_t)>&);
};
extern const std::vector<CallRow> kCallRows;

}  // namespace morvane::test
