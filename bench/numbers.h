// What all rows of big numbers share: the operations, their operands, and how a library is put to them.
#pragma once

#include "rows.h"

#include <algorithm>
#include <memory>
#include <span>

namespace morvane::bench {

using Octets = std::vector<std::uint8_t>;  // a magnitude, most significant first

struct Operation {
    const char* name;
    std::span<const std::size_t> bits;  // a row for each
    std::size_t lengths_of_a = 1;
};

inline constexpr std::size_t kUsualBits[] = {1024, 2048};
inline constexpr std::size_t kModulusBits[] = {512, 1024, 2048, 4096};

inline constexpr std::size_t kPrimeBits[] = {512, 1024};
inline constexpr std::size_t kSafePrimeBits[] = {256};

inline constexpr Operation kMultiply{"multiply", kUsualBits};  // a b
inline constexpr Operation kSquare{"square", kUsualBits};      // a^2
inline constexpr Operation kDivide{"divide", kUsualBits, 2};   // a / b, quotient and remainder
inline constexpr Operation kInverse{"inverse", kUsualBits};    // 1 / a modulo m
inline constexpr Operation kGcd{"gcd", kUsualBits};            // of a and b
inline constexpr Operation kModExp{"modexp", kModulusBits};    // a^b modulo m

// The same for every library. All are odd and have as many bits as the row says, but a lengths_of_a times as many; of one
// length, a and b are below m.
struct Operands {
    Octets a, b, m;
};

Operands operands_of(const Operation& operation, std::size_t bits);

// Rows of an operation, one for each size. `Numbers` is made from Operands, each set once, and holds them in the form of
// its library beside two results, 0 until they are written; its results() are both of them, without a sign. `work` does the
// operation once.
template <typename Numbers, typename Work>
void add_operation(Rows& all, const Operation& operation, const char* library, Work work) {
    for (const std::size_t bits : operation.bits) {
        const auto numbers = std::make_shared<Numbers>(operands_of(operation, bits));
        Row row{operation.name, library,
                [numbers, work](std::uint8_t*, const std::uint8_t*, std::size_t) { work(*numbers); }, Kind::kNumber};
        row.bits = bits;
        row.result = [numbers, width = 2 * bits / 8] {
            Octets both;
            for (const Octets& number : numbers->results()) {
                both.resize(both.size() + width - std::min(width, number.size()));
                both.insert(both.end(), number.begin(), number.end());
            }
            return both;
        };
        all.push_back(std::move(row));
    }
}

// A row for each length of a prime, or of a safe one; generate(bits) makes one.
template <typename Generate>
void add_primes(Rows& all, const char* library, Generate generate, bool safe = false) {
    for (const std::size_t bits : safe ? std::span<const std::size_t>(kSafePrimeBits) : kPrimeBits) {
        Row row{safe ? "safe-prime" : "prime", library,
                [=](std::uint8_t*, const std::uint8_t*, std::size_t) { generate(bits); }, Kind::kSearch};
        row.bits = bits;
        row.searches = 14;
        all.push_back(std::move(row));
    }
}

}  // namespace morvane::bench
