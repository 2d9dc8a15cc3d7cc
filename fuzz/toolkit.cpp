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
        const CSSM_DATA a = any(random), b = any(random), c = any(random);
        CSSM_DATA out[2] = {}, back = {};
        const std::uint32_t selector = random.below(14), option = random.below(16) == 0 ? 0 : 1, call = random.below(15);
        const bool short_memory = random.below(3) == 0;
        failing = short_memory ? static_cast<int>(random.below(8)) : kNever;
        std::int32_t status = KERR_NOT_READY;
        const auto back_is = [&](std::int32_t result, const CSSM_DATA& wanted) {
            ASSERT_EQ(result, 0) << "call " << call << ", selector " << selector;
            EXPECT_EQ(taken(back), Bytes(wanted.Data, wanted.Data + wanted.Length)) << call;
        };
        switch (call) {
            case 0:
                status = K_GenHash(context, selector, &a, out);
                break;
            case 1:
                status = K_GenMac(context, selector, &a, &b, out);
                if (status == 0 && !short_memory) {
                    EXPECT_EQ(K_VerifyMac(context, selector, &a, &b, out), 0);
                }
                break;
            case 2:
                status = K_VerifyMac(context, selector, &a, &b, &c);
                break;
            case 3:
                status = K_Encryption(context, selector, option, &a, &b, out);
                if (status == 0 && !short_memory) back_is(K_Decryption(context, selector, option, &a, out, &back), b);
                break;
            case 4:
                status = K_Decryption(context, selector, option, &a, &b, out);
                break;
            case 5:
                status = K_Encryption_IV_Fix(context, selector, option, &a, &b, &c, out);
                if (status == 0 && !short_memory) {
                    back_is(K_Decryption_IV_Fix(context, selector, option, &a, &b, out, &back), c);
                }
                break;
            case 6:
                status = K_Decryption_IV_Fix(context, selector, option, &a, &b, &c, out);
                break;
            case 7:
                status = K_KeyEncryption(context, selector, &a, &b, out);
                if (status == 0 && !short_memory) back_is(K_KeyDecryption(context, selector, &a, out, &back), b);
                break;
            case 8:
                status = K_KeyShareEncode(context, &a, 1 + selector % 2, 2, out);
                if (status == 0 && !short_memory) back_is(K_KeyShareDecode(context, out, 2, &back), a);
                break;
            case 9: {
                const CSSM_DATA shares[] = {a, b, c};
                status = K_KeyShareDecode(context, shares, selector % 4, out);
                break;
            }
            case 10:
                status = K_RSAPublicEncrypt(context, &a, &b, out);
                break;
            case 11:
                status = selector % 2 == 0 ? K_RSAPrivateDecrypt(context, &a, &b, out)
                                           : K_RSASign(context, selector / 2, &a, &b, out);
                break;
            case 12:
                status = selector % 2 == 0 ? K_RSAPublicDecrypt(context, &a, &b, out)
                                           : K_RSAVerify(context, selector / 2, &a, &b, &c);
                break;
            case 13:
                return convert_key(a, short_memory);
            default:
                return convert_text(a, short_memory);
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
