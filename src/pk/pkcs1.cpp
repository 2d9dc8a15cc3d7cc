// The blocks of PKCS #1 v1.5 (RFC 2313): 00, the type, padding, 00, the message.
#include <morvane/random.h>

#include "pk/unpad.h"

#include <algorithm>

using namespace morvane;
using namespace morvane::pk;

namespace {

// The frame, and the fewest octets of padding.
constexpr std::int32_t kFrame = 3;
constexpr std::uint32_t kLeastPadding = 8;
constexpr std::int32_t kOverhead = kFrame + static_cast<std::int32_t>(kLeastPadding);

constexpr std::uint8_t kSigned = 1;
constexpr std::uint8_t kEnciphered = 2;

std::int32_t length_of(const E_RSA_KEY& key) noexcept { return static_cast<std::int32_t>(modulus_bytes(key)); }

// Lays the block out but for its padding, which it returns. The message has from 0 to k - kOverhead octets.
std::span<std::uint8_t> frame(Block& block, std::uint8_t type, const std::uint8_t* in, std::int32_t len,
                              std::int32_t k) noexcept {
    const auto padding = static_cast<std::size_t>(k - kFrame - len);
    block.items[1] = type;
    copy_bytes(block.items.data() + kFrame + padding, in, static_cast<std::size_t>(len));
    return {block.items.data() + 2, padding};
}

// Moves the message of a block to its front. Returns the message's length, or -1 if the block is not one of this type. The
// time depends on k alone.
std::int32_t open(Block& block, std::int32_t k, std::uint8_t type) noexcept {
    const std::uint8_t* const octets = block.items.data();
    const auto size = static_cast<std::uint32_t>(k);
    const Position end = find_first(octets, 2, size, [&](std::uint8_t octet) {
        return type == kSigned ? ~mask_if_equal(octet, 0xff) : mask_if_zero(octet);
    });
    const Mask good = mask_if_zero(octets[0]) & mask_if_equal(octets[1], type) & end.found & mask_if_zero(end.octet) &
                      ~mask_if_below(end.index, 2 + kLeastPadding);
    const std::uint32_t message = end.index + 1;
    move_to_front(block.items.data(), size, message & good);
    return static_cast<std::int32_t>(choose(good, size - message, ~0U));
}

// The content of a signature, in front of the block: its length, or -1.
std::int32_t open_signature(Block& block, const std::uint8_t* sig, std::int32_t len, const E_RSA_KEY& key) noexcept {
    const std::int32_t k = length_of(key);
    if (k == 0 || len != k || !public_operation(block.items.data(), sig, key)) return -1;
    return open(block, k, kSigned);
}

}  // namespace

std::int32_t E_RSA_Public_Encrypt(std::uint8_t* out, const std::uint8_t* in, std::int32_t len, const E_RSA_KEY* key) {
    const std::int32_t k = length_of(*key);
    if (len < 0 || len > k - kOverhead) return -1;
    Block block;
    const std::span<std::uint8_t> padding = frame(block, kEnciphered, in, len, k);
    RAND_Bytes(padding.data(), static_cast<std::int32_t>(padding.size()));
    for (std::uint8_t& octet : padding) {
        while (known(octet == 0)) RAND_Bytes(&octet, 1);  // of what is thrown away, anybody may know
    }
    return public_operation(out, block.items.data(), *key) ? k : -1;
}

std::int32_t E_RSA_Private_Encrypt(std::uint8_t* out, const std::uint8_t* in, std::int32_t len, const E_RSA_KEY* key) {
    const std::int32_t k = length_of(*key);
    if (len < 0 || len > k - kOverhead) return -1;
    Block block;
    std::ranges::fill(frame(block, kSigned, in, len, k), std::uint8_t{0xff});
    return private_operation(out, block.items.data(), *key, Remainders::kLongAndTested) ? k : 0;
}

std::int32_t E_RSA_Public_Decrypt(std::uint8_t* out, const std::uint8_t* in, std::int32_t len, const E_RSA_KEY* key) {
    Block block;
    return hand_over(out, block.items.data(), open_signature(block, in, len, *key));
}

std::int32_t E_RSA_Private_Decrypt(std::uint8_t* out, const std::uint8_t* in, std::int32_t len, const E_RSA_KEY* key) {
    const std::int32_t k = length_of(*key);
    if (k == 0 || len != k) return -1;
    Block block;
    if (!private_operation(block.items.data(), in, *key, Remainders::kLongAndTested)) return 0;
    return hand_over(out, block.items.data(), open(block, k, kEnciphered));
}

std::int32_t E_RSA_Sign(const std::uint8_t* data, std::int32_t data_len, std::uint8_t* sig, std::int32_t* sig_len,
                        const E_RSA_KEY* key) {
    *sig_len = E_RSA_Private_Encrypt(sig, data, data_len, key);
    return 1;
}

std::int32_t E_RSA_Verify(const std::uint8_t* expected, std::int32_t expected_len, const std::uint8_t* sig,
                          std::int32_t sig_len, const E_RSA_KEY* key) {
    // What is expected has always been compared with so many octets of the content, zeros standing where it is shorter.
    constexpr std::int32_t kCompared = 100;
    if (expected_len == 0) return 1;
    if (expected_len < 0 || expected_len > kCompared) return 0;
    Block block;
    if (open_signature(block, sig, sig_len, *key) < 0) return 0;
    return std::equal(expected, expected + expected_len, block.items.begin()) ? 1 : 0;
}
