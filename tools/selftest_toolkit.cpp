// Self-tests of the toolkit, on the program's context of the companion library.
#include "selftest.h"

#include "known_keys.h"
#include "toolkit.h"

#include <optional>

namespace morvane::tool {
namespace {

using toolkit::In;

bool is(const std::optional<Secret>& output, const Octets& expected) { return output && **output == expected; }

bool hashes(const Octets& message) {
    return is(toolkit::make(toolkit::kNoRefusal, K_GenHash, K_HASH_SHA1, In(message)),
              octets("a9993e364706816aba3e25717850c26c9cd0d89d"));
}

// FIPS 81, the example of CBC; the block of padding behind it by OpenSSL.
bool deciphers(const Octets& cipher) {
    const Octets key = octets("0123456789abcdef"), iv = octets("1234567890abcdef");
    return is(
        toolkit::make(KERR_DECRYPT, K_Decryption_IV_Fix, K_CIPHER_DES, K_OPTION_CBC_PKCS5, In(key), In(iv), In(cipher)),
        text_octets("Now is the time for all "));
}

// The example of FIPS 113.
bool verifies_mac(const Octets& message) {
    const Octets key = octets("0123456789abcdef"), mac = octets("f1d30f6849312ca4");
    return toolkit::check(KERR_MAC_VERIFY, K_VerifyMac, K_MAC_DES, In(key), In(message), In(mac));
}

bool signs(bool changed) {
    const Octets key = octets(kRsaKey), public_key = octets(kRsaPublicKey), message = text_octets("abc");
    const std::optional<Secret> made = toolkit::make(KERR_SIGN, K_RSASign, K_SIGN_SHA256, In(key), In(message));
    const Octets signature = changed ? with_changed_bit(**made, 64) : **made;
    return toolkit::check(KERR_VERIFY, K_RSAVerify, K_SIGN_SHA256, In(public_key), In(message), In(signature));
}

// Two of three shares give the key back; one does not.
bool shares_join(std::uint32_t count) {
    const Octets key = octets("000102030405060708090a0b0c0d0e0f");
    CSSM_DATA shares[3] = {};
    if (K_KeyShareEncode(toolkit::context(), In(key), 2, 3, shares) != 0) return false;
    const std::optional<Secret> joined = toolkit::make(KERR_KEY_SHARE, K_KeyShareDecode, &shares[1], count);
    for (const CSSM_DATA& share : shares) K_free(toolkit::context(), share.Data);
    return is(joined, key);
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
