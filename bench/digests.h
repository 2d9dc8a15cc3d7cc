// The digests that are measured: this library's and the same ones of public libraries.
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

// One digest of one library. A whole message at a call, by the library's fastest documented way; what can be set up once is
// set up once.
struct Digest {
    std::string primitive;  // sha1, md5, ..., hmac-sha1
    std::string library;
    std::function<void(std::uint8_t* digest, const std::uint8_t* message, std::size_t size)> run;
};

using Digests = std::vector<Digest>;

void add_ours(Digests& all);
// Each of these exists where its library was found. With `portable`, before anything of the library runs, its use of the
// processor's extensions is switched off as far as the library can; the environment does that for the others.
void add_openssl(Digests& all);
void add_nettle(Digests& all);
void add_gcrypt(Digests& all, bool portable);
void add_botan(Digests& all, bool portable);
void add_cryptopp(Digests& all);
void add_rhash(Digests& all);

}  // namespace morvane::bench
