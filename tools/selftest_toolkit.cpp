// Self-tests of the toolkit, on a context of the companion library.
#include "selftest.h"

#include "selftest_keys.h"

#include <morvane/toolkit.h>

#include <memory>

namespace morvane::tool {
namespace {

struct EndContext {
    void operator()(K_CONTEXT* context) const {
        K_KCCTerm(context);
        K_EndContext(context);
    }
};

// A context, and what its calls hand out.
class Toolkit {
public:
    Toolkit() { K_KCCInit(context_.get()); }

    // The output of a call that takes one input and, before it, a key; nothing when the call fails.
    template <typename Call>
    Octets output(Call call) {
        CSSM_DATA out = {0, nullptr};
        if (call(context_.get(), &out) != 0) return {};
        Octets bytes(out.Data, out.Data + out.Length);
        K_free(context_.get(), out.Data);
        return bytes;
    }
    K_CONTEXT* context() { return context_.get(); }

private:
    std::unique_ptr<K_CONTEXT, EndContext> context_{K_NewContext(nullptr)};
};

CSSM_DATA data(Octets& bytes) { return {size32(bytes), bytes.data()}; }

bool hashes(Octets message) {
    Toolkit toolkit;
    const CSSM_DATA input = data(message);
    return toolkit.output([&](K_CONTEXT* context, CSSM_DATA* out) {
        return K_GenHash(context, K_HASH_SHA1, &input, out);
    }) == octets("a9993e364706816aba3e25717850c26c9cd0d89d");
}

// FIPS 81, the example of CBC; the block of padding behind it by OpenSSL.
bool deciphers(Octets cipher) {
    Toolkit toolkit;
    Octets key = octets("0123456789abcdef"), iv = octets("1234567890abcdef");
    const CSSM_DATA key_data = data(key), iv_data = data(iv), input = data(cipher);
    return toolkit.output([&](K_CONTEXT* context, CSSM_DATA* out) {
        return K_Decryption_IV_Fix(context, K_CIPHER_DES, K_OPTION_CBC_PKCS5, &key_data, &iv_data, &input, out);
    }) == text_octets("Now is the time for all ");
}

// The example of FIPS 113.
bool verifies_mac(Octets message) {
    Toolkit toolkit;
    Octets key = octets("0123456789abcdef"), mac = octets("f1d30f6849312ca4");
    const CSSM_DATA key_data = data(key), input = data(message), expected = data(mac);
    return K_VerifyMac(toolkit.context(), K_MAC_DES, &key_data, &input, &expected) == 0;
}

bool signs(bool changed) {
    Toolkit toolkit;
    Octets key = octets(kRsaKey), public_key = octets(kRsaPublicKey), message = text_octets("abc");
    const CSSM_DATA own = data(key), known = data(public_key), input = data(message);
    Octets signature = toolkit.output(
        [&](K_CONTEXT* context, CSSM_DATA* out) { return K_RSASign(context, K_SIGN_SHA256, &own, &input, out); });
    if (signature.empty()) return false;
    if (changed) signature = with_changed_bit(signature, 64);
    const CSSM_DATA sent = data(signature);
    return K_RSAVerify(toolkit.context(), K_SIGN_SHA256, &known, &input, &sent) == 0;
}

// Two of three shares give the key back; one does not.
bool shares_join(std::uint32_t count) {
    Toolkit toolkit;
    Octets key = octets("000102030405060708090a0b0c0d0e0f");
    const CSSM_DATA whole = data(key);
    CSSM_DATA shares[3] = {};
    if (K_KeyShareEncode(toolkit.context(), &whole, 2, 3, shares) != 0) return false;
    const Octets joined = toolkit.output(
        [&](K_CONTEXT* context, CSSM_DATA* out) { return K_KeyShareDecode(context, shares + 1, count, out); });
    for (const CSSM_DATA& share : shares) K_free(toolkit.context(), share.Data);
    return joined == key;
}

}  // namespace

void add_toolkit_tests(SelfTests& all) {
    const Octets abc = text_octets("abc"), message = text_octets("7654321 Now is the time for ");
    const Octets cipher = octets("e5c7cdde872bf27c43e934008c389c0f683788499a7c05f662c16a27e4fcf277");
    all.push_back({"toolkit-hash", [=] { return hashes(abc); }, [=] { return !hashes(with_changed_bit(abc, 0)); }});
    all.push_back({"toolkit-encryption", [=] { return deciphers(cipher); },
                   [=] { return !deciphers(with_changed_bit(cipher, 20)); }});
    all.push_back({"toolkit-mac", [=] { return verifies_mac(message); },
                   [=] { return !verifies_mac(with_changed_bit(message, 27)); }});
    all.push_back({"toolkit-signature", [] { return signs(false); }, [] { return !signs(true); }});
    all.push_back({"toolkit-shares", [] { return shares_join(2); }, [] { return !shares_join(1); }});
}

}  // namespace morvane::tool
