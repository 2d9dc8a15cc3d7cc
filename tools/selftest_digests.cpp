// Self-tests of the digests, and of the MAC that is a primitive.
#include "selftest.h"

#include "digest_calls.h"

#include <morvane/hash.h>

#include <algorithm>

namespace morvane::tool {
namespace {

constexpr std::size_t kMillion = 1000000;
constexpr std::size_t kPiece = 999;
constexpr std::size_t kWholeBlocks = 8000;  // SHA-0 in other pieces is another digest

struct Row {
    std::string_view name;
    std::string_view of_abc, of_a_million;  // of "abc", and of the letter a a million times
    std::size_t piece = kPiece;
};

// RFC 1319, 1320 and 1321; FIPS 180 and 180-2; the values of RIPEMD-160's authors; TTAS.KO-12.0011. MD2, MD4 and MD5 of the
// million, which the RFCs lack, are those of other programs.
constexpr Row kRows[] = {
    {"md2", "da853b0d3f88d99b30283a69e6ded6bb", "8c0a09ff1216ecaf95c8130953c62efd"},
    {"md4", "a448017aaf21d8525fc10ae87aa6729d", "bbce80cc6bb65e5c6745e30d4eeca9a4"},
    {"md5", "900150983cd24fb0d6963f7d28e17f72", "7707d6ae4e027c70eea2a935c2296f21"},
    {"sha0", "0164b8a914cd2a5e74c4f7ff082c4d97f1edf880", "3232affa48628a26653b5aaa44541fd90d690603", kWholeBlocks},
    {"sha1", "a9993e364706816aba3e25717850c26c9cd0d89d", "34aa973cd4c4daa4f61eeb2bdbad27316534016f"},
    {"sha256", "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad",
     "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0"},
    {"sha384", "cb00753f45a35e8bb5a03d699ac65007272c32ab0eded1631a8b605a43ff5bed8086072ba1e7cc2358baeca134c825a7",
     "9d0e1809716474cb086e834e310a4a1ced149e9c00f248527972cec5704c2a5b07b8b3dc38ecc4ebae97ddd87f3d8985"},
    {"sha512",
     "ddaf35a193617abacc417349ae20413112e6fa4e89a97ea20a9eeee64b55d39a"
     "2192992a274fc1a836ba3c23a3feebbd454d4423643ce80e2a9ac94fa54ca49f",
     "e718483d0ce769644e2e42c7bc15b4638e1f98b13b2044285632a803afa973eb"
     "de0ff244877ea60a4cb0432ce577c31beb009c5c2c49aa2e4eadb217ad8cc09b"},
    {"ripemd160", "8eb208f7e05d987a9b044a8e98c6b087f15a0bfc", "52783243c1697bdbe16d37f97f68f08325dc1528"},
    {"has160", "975e810488cf2a3d49838478124afce4b1c78804", "d6ad6f0608b878da9b87999c2525cc84f4c9f18d"},
};

const DigestCalls& calls(const Row& row) { return *std::ranges::find(all_digest_calls(), row.name, &DigestCalls::name); }

bool knows(const Row& row) {
    Octets digest(calls(row).bytes), abc = text_octets("abc"), million(kMillion, 'a');
    calls(row).once(digest.data(), abc);
    if (digest != octets(row.of_abc)) return false;
    calls(row).pieces(digest.data(), million, row.piece);
    return digest == octets(row.of_a_million);
}

bool notices(const Row& row) {
    Octets digest(calls(row).bytes), changed = with_changed_bit(text_octets("abc"), 1);
    calls(row).once(digest.data(), changed);
    return digest != octets(row.of_abc);
}

// By the library's own rules, which are not those of RFC 2104, from tests/vectors/hmac_sha1.txt.
bool hmac_sha1_of(const Octets& message) {
    const Octets key(20, 0x0b);
    Octets mac(20);
    E_HMAC_SHA1(message.data(), size32(message), key.data(), signed_size(key), mac.data());
    return mac == octets("dc92b26eb0049144fad4880f0aa78106cc4eddd2");
}

}  // namespace

void add_digest_tests(SelfTests& all) {
    for (const Row& row : kRows) {
        all.push_back({std::string(row.name), [&row] { return knows(row); }, [&row] { return notices(row); }});
    }
    const Octets message = text_octets("Hi There");
    all.push_back({"hmac-sha1", [message] { return hmac_sha1_of(message); },
                   [message] { return !hmac_sha1_of(with_changed_bit(message, 7)); }});
}

}  // namespace morvane::tool
