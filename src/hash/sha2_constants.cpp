// The constants of SHA-2 (FIPS 180-2, section 4.2): the fractional parts of the cube roots of the first 80 primes, 64 bits
// of each for SHA-512 and the first 32 for SHA-256. Computed by the compiler.
#include "hash/sha2_compress.h"

namespace morvane::hash {
namespace {

constexpr std::size_t kPrimes = 80;

constexpr std::array<std::uint32_t, kPrimes> first_primes() {
    std::array<std::uint32_t, kPrimes> primes{};
    std::size_t count = 0;
    for (std::uint32_t candidate = 2; count < kPrimes; ++candidate) {
        bool prime = true;
        for (std::size_t i = 0; i < count; ++i) prime &= candidate % primes[i] != 0;
        if (prime) primes[count++] = candidate;
    }
    return primes;
}

// The low 64 bits of floor(2^64 * cube root of n): of the largest number whose cube is not above n * 2^192, found bit by
// bit. For the primes in question the cube root is below 8.
constexpr std::uint64_t cube_root_fraction(std::uint32_t n) {
    constexpr int kLimbs = 7;  // of 32 bits, the lowest first: n * 2^192 fills the last one
    std::uint32_t root[3] = {};
    for (int bit = 64 + 2; bit >= 0; --bit) {
        root[bit / 32] |= 1U << bit % 32;
        std::uint32_t square[6] = {};
        std::uint32_t cube[kLimbs + 2] = {};
        for (int i = 0; i < 3; ++i) {
            std::uint64_t carry = 0;
            for (int j = 0; j < 3; ++j) {
                carry += std::uint64_t{root[i]} * root[j] + square[i + j];
                square[i + j] = static_cast<std::uint32_t>(carry);
                carry >>= 32;
            }
            square[i + 3] = static_cast<std::uint32_t>(carry);
        }
        for (int i = 0; i < 3; ++i) {
            std::uint64_t carry = 0;
            for (int j = 0; j < 6; ++j) {
                carry += std::uint64_t{root[i]} * square[j] + cube[i + j];
                cube[i + j] = static_cast<std::uint32_t>(carry);
                carry >>= 32;
            }
            if (i + 6 < kLimbs + 2) cube[i + 6] = static_cast<std::uint32_t>(carry);
        }
        // Never equal: the cube root of a prime is no fraction.
        const bool too_large = cube[8] != 0 || cube[7] != 0 || cube[6] >= n;
        if (too_large) root[bit / 32] ^= 1U << bit % 32;
    }
    return std::uint64_t{root[1]} << 32 | root[0];
}

constexpr std::array<std::uint64_t, kPrimes + 1> make_constants() {
    std::array<std::uint64_t, kPrimes + 1> constants{};
    const auto primes = first_primes();
    for (std::size_t i = 0; i < kPrimes; ++i) constants[i] = cube_root_fraction(primes[i]);
    return constants;
}

constexpr std::array<std::uint32_t, 64> high_words(const std::array<std::uint64_t, kPrimes + 1>& constants) {
    std::array<std::uint32_t, 64> words{};
    for (std::size_t i = 0; i < words.size(); ++i) words[i] = static_cast<std::uint32_t>(constants[i] >> 32);
    return words;
}

}  // namespace

constexpr std::array<std::uint64_t, 81> kSha512Constants = make_constants();
alignas(16) constexpr std::array<std::uint32_t, 64> kSha256Constants = high_words(kSha512Constants);
static_assert(kSha512Constants[0] == 0x428a2f98d728ae22 && kSha512Constants[79] == 0x6c44198c4a475817);
static_assert(kSha256Constants[63] == 0xc67178f2);

}  // namespace morvane::hash
