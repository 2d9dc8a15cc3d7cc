// What all rows of RSA share: the key, the message, and how a library is put to them.
#pragma once

#include "numbers.h"

namespace morvane::bench {

inline constexpr std::uint32_t kPublicExponent = 65537;

// A key of so many bits, the same for every library, and a signature that it made.
struct RsaKey {
    Octets n, d, p, q, dP, dQ, qInv;
    Octets message;    // what is signed, without hashing
    Octets block;      // padded with type 1 of PKCS #1 v1.5, as long as n
    Octets signature;  // of the block
};

const RsaKey& rsa_key(std::size_t bits);

// Three rows for each size. `Rsa` is made from an RsaKey and holds it in the form of its library. sign() and recover() do
// the private and the public operation once and return the signature and the message; what the public operation gets
// wrong is not the message. generate(bits) makes another key.
template <typename Rsa>
void add_rsa(Rows& all, const char* library) {
    struct Side {
        explicit Side(const RsaKey& key) : rsa(key) {}
        Rsa rsa;
        Octets result;
    };
    for (const std::size_t bits : kUsualBits) {
        const auto add = [&](const char* operation, auto work, Kind kind = Kind::kNumber) {
            const auto side = std::make_shared<Side>(rsa_key(bits));
            Row row{operation, library,
                    [side, work](std::uint8_t*, const std::uint8_t*, std::size_t) { side->result = work(side->rsa); },
                    kind};
            row.bits = bits;
            row.searches = bits <= 1024 ? 4 : 2;
            row.result = [side] { return side->result; };
            all.push_back(std::move(row));
        };
        add("rsa-private", [](Rsa& rsa) { return rsa.sign(); });
        add("rsa-public", [](Rsa& rsa) { return rsa.recover(); });
        const auto generate = [bits](Rsa&) {
            Rsa::generate(bits);
            return Octets();
        };
        add("rsa-generate", generate, Kind::kSearch);
    }
}

}  // namespace morvane::bench
