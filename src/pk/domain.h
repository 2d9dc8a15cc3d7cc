// Domains and key pairs for DSA and KCDSA.
#pragma once

#include "base/wipe.h"

#include <morvane/dsa.h>

namespace morvane::pk {

// A record of its own, from which a caller's one is filled when everything has come out well.
struct WorkKey {
    E_DSA_KEY key{};

    WorkKey() noexcept { E_DSA_Init(&key); }
    ~WorkKey() { wipe(&key, sizeof key); }
    WorkKey(const WorkKey&) = delete;
    WorkKey& operator=(const WorkKey&) = delete;

    // Takes the domain of another record, if it fits. Gives everything to one.
    void take_domain(const E_DSA_KEY& from) noexcept;
    void give(E_DSA_KEY& to) const noexcept;
};

// Whether a number of so many bits fits a member.
bool are_bits(std::int32_t bits) noexcept;

// Whether a prime q of q_bits bits can divide p - 1 for a p of p_bits bits that fits the record.
bool are_sizes(std::int32_t p_bits, std::int32_t q_bits) noexcept;

// p, q, g as E_DSA_GenerateKey makes them, for sizes that are some. False if there is no memory, here and below.
bool generate_domain(E_DSA_KEY& domain, std::int32_t p_bits, std::int32_t q_bits) noexcept;

// g = h^exponent mod p for a random h, if that is not 1; g.length is 0 if it is. exponent is (p - 1) / q.
bool draw_generator(E_DSA_KEY& domain, const ENUM& exponent) noexcept;

enum class PublicKey : std::uint8_t { kOfX, kOfInverse };

// x = `random` modulo q, and y = g^x mod p or, for KCDSA, g^(1/x mod q) mod p. False also if x is 0 or the domain none.
bool set_pair(E_DSA_KEY& key, const ENUM& random, PublicKey kind) noexcept;

// The same for a random number of so many bits.
bool generate_pair(E_DSA_KEY& key, std::int32_t x_bits, PublicKey kind) noexcept;

}  // namespace morvane::pk
