// The sieve's primes: the first 2048 without 2.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace morvane::prime {

inline constexpr std::size_t kPrimes = 2047;
inline constexpr std::uint16_t kLastPrime = 17863;
inline constexpr std::uint32_t kTrialLimit = 17881U * 17881;  // the next prime's square: below it, trial division decides

consteval std::array<std::uint16_t, kPrimes> make_primes() {
    std::array<bool, kLastPrime / 2 + 1> composite{};  // of 2 i + 1
    std::array<std::uint16_t, kPrimes> primes{};
    std::size_t count = 0;
    for (std::size_t n = 3; n <= kLastPrime; n += 2) {
        if (composite[n / 2]) continue;
        primes[count++] = static_cast<std::uint16_t>(n);
        for (std::size_t multiple = n * n; multiple <= kLastPrime; multiple += 2 * n) composite[multiple / 2] = true;
    }
    return primes;
}

inline constexpr std::array<std::uint16_t, kPrimes> kTable = make_primes();
static_assert(kTable.front() == 3 && kTable[999] == 7927 && kTable.back() == kLastPrime);

}  // namespace morvane::prime
