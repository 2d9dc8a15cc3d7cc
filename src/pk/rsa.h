// The two operations of RSA on octet strings of the modulus' length; the schemes stand on them.
#pragma once

#include <morvane/pk.h>

#include <cstddef>
#include <cstdint>
#include <span>

namespace morvane::pk {

// k, the octets of the modulus; 0 for a modulus that no operation takes: zero, or longer than its member.
std::size_t modulus_bytes(const E_RSA_KEY& key) noexcept;

// The most octets of a modulus: room for every block.
inline constexpr std::size_t kMaxModulusBytes = 4 * std::size_t{E_RSA_MODULUS_WORDS};

// out = in^e mod n, both of k octets; they may be the same. False if the key does not allow it (no exponent).
bool public_operation(std::uint8_t* out, const std::uint8_t* in, const E_RSA_KEY& key) noexcept;

// When a private operation uses Chinese remainders: the block operations of PKCS #1 v1.5 from 16 words of qInv, after
// testing q qInv mod p = 1; the newer schemes whenever qInv is not zero, without a test.
enum class Remainders { kLongAndTested, kAny };

// out = in^d mod n, both of k octets; they may be the same. False, with nothing written, if the test failed, the key does
// not allow the operation, or the result does not stand up to the public exponent. The time does not depend on the key's
// values or on `in`.
bool private_operation(std::uint8_t* out, const std::uint8_t* in, const E_RSA_KEY& key, Remainders rule) noexcept;

}  // namespace morvane::pk
