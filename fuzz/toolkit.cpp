// Sequences of toolkit calls on whatever earlier calls have handed out, with allocations that fail at any point. A call
// that fails leaves no block behind; where memory is not short, what was enciphered, shared or converted comes back.
#include <morvane/asn1.h>

#include "fuzz.h"
#include "pk/rsa_key.h"
#include "toolkit/fixture.h"

#include <cctype>
#include <cstdlib>

using namespace morvane::test;

namespace {

constexpr int kNever = -1;

struct Arguments {
    CSSM_DATA a, b, c;
    std::uint32_t selector, option;
};
using In = const Arguments&;

struct Row {
    std::int32_t (*call)(K_CONTEXT*, In, CSSM_DATA* out);
    // What must work after it, with its output, and the argument that it gives back.
    std::int32_t (*back)(K_CONTEXT*, In, const CSSM_DATA* out, CSSM_DATA* again) = nullptr;
    CSSM_DATA Arguments::*comes_back = nullptr;
};
constexpr Row kRows[] = {
    {[](auto* k, In x, auto* out) { return K_GenHash(k, x.selector, &x.a, out); }},
    {[](auto* k, In x, auto* out) { return K_GenMac(k, x.selector, &x.a, &x.b, out); },
     [](auto* k, In x, auto* out, auto*) { return K_VerifyMac(k, x.selector, &x.a, &x.b, out); }},
    {[](auto* k, In x, auto*) { return K_VerifyMac(k, x.selector, &x.a, &x.b, &x.c); }},
    {[](auto* k, In x, auto* out) { return K_Encryption(k, x.selector, x.option, &x.a, &x.b, out); },
     [](auto* k, In x, auto* out, auto* again) { return K_Decryption(k, x.selector, x.option, &x.a, out, again); },
     &Arguments::b},
    {[](auto* k, In x, auto* out) { return K_Decryption(k, x.selector, x.option, &x.a, &x.b, out); }},
    {[](auto* k, In x, auto* out) { return K_Encryption_IV_Fix(k, x.selector, x.option, &x.a, &x.b, &x.c, out); },
     [](auto* k, In x, auto* out, auto* again) {
         return K_Decryption_IV_Fix(k, x.selector, x.option, &x.a, &x.b, out, again);
     },
     &Arguments::c},
    {[](auto* k, In x, auto* out) { return K_Decryption_IV_Fix(k, x.selector, x.option, &x.a, &x.b, &x.c, out); }},
    {[](auto* k, In x, auto* out) { return K_KeyEncryption(k, x.selector, &x.a, &x.b, out); },
     [](auto* k, In x, auto* out, auto* again) { return K_KeyDecryption(k, x.selector, &x.a, out, again); }, &Arguments::b},
    {[](auto* k, In x, auto* out) { return K_KeyShareEncode(k, &x.a, 1 + x.selector % 2, 2, out); },
     [](auto* k, In, auto* out, auto* again) { return K_KeyShareDecode(k, out, 2, again); }, &Arguments::a},
    {[](auto* k, In x, auto* out) {
        const CSSM_DATA shares[] = {x.a, x.b, x.c};
        return K_KeyShareDecode(k, shares, x.selector % 4, out);
    }},
    {[](auto* k, In x, auto* out) { return K_RSAPublicEncrypt(k, &x.a, &x.b, out); }},
    {[](auto* k, In x, auto* out) { return K_RSAPrivateDecrypt(k, &x.a, &x.b, out); }},
    {[](auto* k, In x, auto* out) { return K_RSASign(k, x.selector, &x.a, &x.b, out); }},
    {[](auto* k, In x, auto* out) { return K_RSAPublicDecrypt(k, &x.a, &x.b, out); }},
    {[](auto* k, In x, auto*) { return K_RSAVerify(k, x.selector, &x.a, &x.b, &x.c); }},
};

class Calls : public Toolkit {
public:
    void SetUp() override {
        const K_ALLOCATOR allocator = {
            [](void* user, std::size_t bytes) { return static_cast<Calls*>(user)->allocate(bytes); },
            [](void* user, void* block) { static_cast<Calls*>(user)->release(block); }, this};
        context = K_NewContext(&allocator);
        ASSERT_NE(context, nullptr);
        ASSERT_EQ(K_KCCInit(context), 0);
    }
    void TearDown() override {
        Toolkit::TearDown();
        EXPECT_EQ(live, 0);
    }

    void run(Random& random) {
        SetUp();
        expected_live_ = live;
        for (Bytes& bytes : given_) bytes = random.bytes(random.below(60));
        given_.push_back(Bytes(400)), given_.push_back(Bytes(1000));
        const RsaKey key(load_key());
        given_[3].resize(static_cast<std::size_t>(E_ASN1_PutRSAPublicKey(key, given_[3].data())));
        given_[4].resize(static_cast<std::size_t>(E_ASN1_PutRSAPrivateKey(key, given_[4].data())));
        for (int i = 0; i < 6; ++i) {
            try_call(random);
            EXPECT_EQ(live, expected_live_) << "blocks left, or too many given back";
        }
        for (CSSM_DATA& block : made_) K_free(context, block.Data);
        TearDown();
    }
    void TestBody() override {}

private:
    void* allocate(std::size_t bytes) {
        if (failing-- == 0) return nullptr;
        ++live;
        return std::malloc(bytes);
    }
    void release(void* block) {
        if (block != nullptr) --live;
        std::free(block);
    }

    static const Vector& load_key() {
        static const Vector key = load_vectors("rsa_pss.txt").front();
        return key;
    }

    // What was given or made, or something with a null or wrong length.
    CSSM_DATA any(Random& random) {
        const std::uint32_t chosen = random.below(size32_of(given_.size() + made_.size()) + 1);
        if (chosen == 0) return {random.below(20), nullptr};
        CSSM_DATA data = chosen <= given_.size() ? view(given_[chosen - 1]) : made_[chosen - 1 - given_.size()];
        if (random.below(4) == 0 && data.Length != 0) data.Length = random.below(data.Length);
        return data;
    }
    static std::uint32_t size32_of(std::size_t size) { return static_cast<std::uint32_t>(size); }

    void try_call(Random& random) {
        const Arguments x = {any(random), any(random), any(random), random.below(14), random.below(16) == 0 ? 0U : 1U};
        const std::uint32_t call = random.below(std::size(kRows) + 2);
        const bool short_memory = random.below(3) == 0;
        failing = short_memory ? static_cast<int>(random.below(8)) : kNever;
        if (call == std::size(kRows)) return convert_key(x.a, short_memory);
        if (call > std::size(kRows)) return convert_text(x.a, short_memory);
        const Row& row = kRows[call];
        CSSM_DATA out[2] = {}, back = {};
        const std::int32_t status = row.call(context, x, out);
        if (status == 0 && !short_memory && row.back != nullptr) {
            EXPECT_EQ(row.back(context, x, out, &back), 0) << "call " << call << ", selector " << x.selector;
            if (row.comes_back != nullptr) {
                const CSSM_DATA& wanted = x.*row.comes_back;
                EXPECT_EQ(taken(back), Bytes(wanted.Data, wanted.Data + wanted.Length)) << call;
            }
        }
        if (short_memory && failing < 0) {
            EXPECT_NE(status, 0) << "call " << call << " without its memory";
        }
        failing = kNever;
        for (CSSM_DATA& block : out) {
            EXPECT_TRUE(status == 0 || block.Data == nullptr) << "call " << call << " fails and hands something out";
            if (block.Data != nullptr) made_.push_back(block), ++expected_live_;
        }
    }

    // A public key in DER into the fields of WTLS, and these into the DER again.
    void convert_key(const CSSM_DATA& der, bool short_memory) {
        std::uint8_t *exponent = nullptr, *modulus = nullptr, *again = nullptr;
        std::uint16_t exponent_length = 0, modulus_length = 0;
        std::uint32_t length = 0;
        K_RSAPublicKey2WTLS(context, der.Data, der.Length, &exponent, &exponent_length, &modulus, &modulus_length);
        failing = kNever;
        if (!short_memory && modulus_length != 0) {
            EXPECT_EQ(K_WTLSPublicKey2RSA(context, exponent, exponent_length, modulus, modulus_length, &again, &length),
                      1U);
            EXPECT_TRUE(length <= der.Length && std::equal(again, again + length, der.Data)) << "another key";
        }
        for (std::uint8_t* const block : {exponent, modulus, again}) K_free(context, block);
    }

    void convert_text(const CSSM_DATA& text, bool short_memory) {
        std::string digits(text.Data, text.Data + (text.Data == nullptr ? 0 : text.Length));
        digits = digits.c_str();
        std::uint8_t* data = nullptr;
        std::uint32_t length = 0;
        const std::int32_t status = K_str2bin(context, digits.c_str(), &data, &length);
        const bool good = digits.size() % 2 == 0 && std::all_of(digits.begin(), digits.end(), [](char digit) {
                              return std::isxdigit(static_cast<unsigned char>(digit)) != 0;
                          });
        EXPECT_EQ(status, good && !(short_memory && failing < 0) ? 0 : -1) << digits;
        if (status == 0) {
            EXPECT_EQ(Bytes(data, data + length), from_hex(digits));
        }
        failing = kNever;
        K_free(context, data);
    }

    std::vector<Bytes> given_ = std::vector<Bytes>(3);
    std::vector<CSSM_DATA> made_;
    int live = 0;
    int failing = kNever;  // how many allocations go well before one does not
    int expected_live_ = 0;
};

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Random random = choices_of(data, size);
    Calls().run(random);
    return 0;
}
