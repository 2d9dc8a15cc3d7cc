// What is measured: digests, ciphers in their modes, key set-ups, big numbers, public-key schemes and curves, of this
// library and of public ones.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace morvane::bench {

// A MAC is measured with its key set up anew for each message, on every side.
inline constexpr std::size_t kMacBytes = 20;
inline constexpr std::size_t kMacKeyBytes = 20;
inline constexpr std::uint8_t kMacKey[kMacKeyBytes] = {1,  2,  3,  4,  5,  6,  7,  8,  9,  10,
                                                       11, 12, 13, 14, 15, 16, 17, 18, 19, 20};

inline constexpr const char* kOurs = "morvane";

enum class Kind {
    kDigest,  // out is the digest
    kCipher,  // out has the message's length, a multiple of every block
    kKey,     // one key schedule made; message and out are not used
    kNumber,  // one operation on numbers; message and out are not used
    kSearch,  // a key pair or a prime searched for, in a time that varies, another one each time; the same otherwise
};

// One operation of one library. A whole message at a call, by the library's fastest documented way; what can be set up once
// is set up once.
struct Row {
    std::string primitive;  // sha1, hmac-sha1, ...; des-cbc-enc, rc4, ...; of a key set-up the cipher: des;
                            // of numbers the operation: multiply
    std::string library;
    std::function<void(std::uint8_t* out, const std::uint8_t* message, std::size_t size)> run;
    Kind kind = Kind::kDigest;
    bool assembler = false;  // known to be written for x86-64, in assembler or SSE2, and not to be switched off
    // Of numbers: their size, and what the last run came to, as octets in the same form for every library.
    std::size_t bits = 0;
    int searches = 0;  // to a repetition
    std::function<std::vector<std::uint8_t>()> result{};
};

using Rows = std::vector<Row>;

void add_ours(Rows& all);
void add_our_ciphers(Rows& all);
void add_our_numbers(Rows& all);
void add_our_rsa(Rows& all);
void add_our_dsa(Rows& all);
void add_our_ec_schemes(Rows& all);
// Their peer is this library's own mode function, "direct".
void add_streams(Rows& all);

// Each of these exists where its library was found. With `portable`, before anything of the library runs, its use of the
// processor's extensions is switched off as far as the library can; the environment does that for the others.
void add_openssl(Rows& all);
void add_nettle(Rows& all);
void add_gcrypt(Rows& all, bool portable);
void add_botan(Rows& all, bool portable);
void add_cryptopp(Rows& all);
void add_rhash(Rows& all);
void add_gmp_numbers(Rows& all);

// To be called after the ones above.
void add_openssl_ciphers(Rows& all);
void add_openssl_low_ciphers(Rows& all);
void add_nettle_ciphers(Rows& all);
void add_gcrypt_ciphers(Rows& all);
void add_botan_ciphers(Rows& all);
void add_cryptopp_ciphers(Rows& all);
void add_openssl_numbers(Rows& all);
void add_gcrypt_numbers(Rows& all);
void add_botan_numbers(Rows& all);
void add_cryptopp_numbers(Rows& all);
void add_openssl_rsa(Rows& all);
void add_openssl_dsa(Rows& all);
void add_openssl_ec_schemes(Rows& all);
void add_gcrypt_rsa(Rows& all);
void add_gcrypt_dsa(Rows& all);
void add_botan_rsa(Rows& all);
void add_botan_dsa(Rows& all);
void add_cryptopp_rsa(Rows& all);
void add_cryptopp_dsa(Rows& all);
void add_hogweed_rsa(Rows& all);
void add_hogweed_dsa(Rows& all);

}  // namespace morvane::bench
