// What all rows of DSA, KCDSA and Diffie-Hellman share: the key, the message, and how a library is put to them.
#pragma once

#include "numbers.h"

#include <array>

namespace morvane::bench {

inline constexpr std::size_t kDsaBits = 1024;  // of p; q has 160

// A key, the same for every library, and a signature that it made.
struct DsaKey {
    Octets p, q, g, x, y;
    Octets message, digest;  // SHA-1
    Octets r, s;
};

// r and s, one after the other, in 20 octets each.
using DsaPair = std::array<std::uint8_t, 40>;

const DsaKey& dsa_key();

// Whether it is a signature of the message: by the equation, so that every library can be asked for a new one.
bool is_signature(const DsaPair& pair);

// `Dsa` is made from a DsaKey and holds it in the form of its library. sign() and verify() do the operation once and return
// the signature, and whether that of the key is good. Nobody else has KCDSA: the rows of the two stand beside one another.
template <typename Dsa>
void add_dsa(Rows& all, const char* library) {
    struct Side {
        Dsa dsa{dsa_key()};
        DsaPair signature{};
        bool good = false;
    };
    const auto side = std::make_shared<Side>();
    for (const char* const operation : {"dsa-sign", "kcdsa-sign"}) {
        Row row{operation, library,
                [side](std::uint8_t*, const std::uint8_t*, std::size_t) { side->signature = side->dsa.sign(); },
                Kind::kNumber};
        row.bits = kDsaBits;
        row.result = [side] { return Octets{is_signature(side->signature)}; };
        all.push_back(std::move(row));
    }
    for (const char* const operation : {"dsa-verify", "kcdsa-verify"}) {
        Row row{operation, library,
                [side](std::uint8_t*, const std::uint8_t*, std::size_t) { side->good = side->dsa.verify(); },
                Kind::kNumber};
        row.bits = kDsaBits;
        row.result = [side] { return Octets{side->good}; };
        all.push_back(std::move(row));
    }
}

// One secret: a is the other side's value, b the own private one and m a prime, which it must be for those who blind. It is
// none of those that some libraries know and treat in another way.
inline constexpr Operation kDh{"dh", kUsualBits};
inline constexpr std::uint8_t kDhGenerator = 2;

Operands with_prime_modulus(Operands operands);

// `Dh` is made from Operands; agree() returns the secret, with zeros in front or without.
template <typename Dh>
void add_dh(Rows& all, const char* library) {
    struct Side {
        explicit Side(const Operands& operands) : dh(with_prime_modulus(operands)) {}
        std::array<Octets, 1> results() const { return {secret}; }
        Dh dh;
        Octets secret;
    };
    add_operation<Side>(all, kDh, library, [](Side& side) { side.secret = side.dh.agree(); });
}

}  // namespace morvane::bench
