// RSASSA-PSS of PKCS #1 v2.1. The encoded message is a masked data block, a hash H and 0xbc; the data block is zeros, 01,
// the salt; H hashes eight zeros, the message's hash and the salt.
#include <morvane/random.h>

#include "pk/hash_select.h"
#include "pk/message.h"
#include "pk/unpad.h"

#include <algorithm>

using namespace morvane;
using namespace morvane::pk;

namespace {

constexpr std::uint8_t kTrailer = 0xbc;

// The one bit that is cleared, whatever the length of the modulus asks for.
constexpr std::uint8_t kTopBit = 0x80;

// The octets of a number with one bit less than the modulus: k, or k - 1 where the modulus' first octet is 1. In the latter
// case PSS clears no bit, here it is one all the same.
std::size_t encoded_bytes(const E_RSA_KEY& key, std::size_t k) noexcept {
    const std::uint32_t first = key.n.words[(k - 1) / 4] >> (8 * ((k - 1) % 4));
    return first == 1 ? k - 1 : k;
}

// Whether there is room for hash and salt. No sum, which could wrap.
bool has_room(std::size_t encoded, std::size_t hash_bytes, std::int32_t salt_len) noexcept {
    return encoded >= hash_bytes + 2 && static_cast<std::size_t>(salt_len) <= encoded - hash_bytes - 2;
}

// An encoded message and its parts.
struct Encoded {
    std::span<std::uint8_t> data_block;
    std::span<std::uint8_t> hash;
    std::span<std::uint8_t> salt;  // in the data block, after the 01
    std::uint8_t& one;
    std::uint8_t& trailer;

    Encoded(std::span<std::uint8_t> octets, std::size_t hash_bytes, std::size_t salt_bytes) noexcept
        : data_block(octets.first(octets.size() - hash_bytes - 1)),
          hash(octets.subspan(data_block.size(), hash_bytes)),
          salt(data_block.last(salt_bytes)),
          one(data_block[data_block.size() - salt_bytes - 1]),
          trailer(octets.back()) {}
};

void hash_message_and_salt(std::int32_t hash, std::uint8_t* out, Octets message, Octets salt) noexcept {
    constexpr std::uint8_t kZeros[8] = {};
    std::uint8_t message_hash[kMaxFieldBytes];
    fill_field(hash, message_hash, {message});
    fill_field(hash, out, {kZeros, {message_hash, field_bytes(hash)}, salt});
}

Octets message_of(const std::uint8_t* msg, std::int32_t len) noexcept { return {msg, static_cast<std::size_t>(len)}; }

// What is wrong with an encoded message, as a text to print; null for a valid one.
const char* find_fault(const Encoded& encoded, std::int32_t hash, std::int32_t mask_hash, Octets message) noexcept {
    std::uint8_t& first = encoded.data_block.front();
    if (encoded.trailer != kTrailer) return "\nEMSA_PSS_VERIFY ERROR : rightmost octet of EM does not hex value 0xbc";
    if ((first & kTopBit) != 0) return "\nEMSA_PSS_VERIFY ERROR : leftmost bit of maskedDB is not zero bit";
    apply_mgf1(mask_hash, encoded.data_block, encoded.hash);
    first &= static_cast<std::uint8_t>(~kTopBit);
    const bool padded = std::all_of(encoded.data_block.data(), &encoded.one, [](std::uint8_t octet) { return octet == 0; });
    std::uint8_t again[kMaxFieldBytes];
    hash_message_and_salt(hash, again, message, encoded.salt);
    return padded && encoded.one == 1 && std::equal(encoded.hash.begin(), encoded.hash.end(), again) ? nullptr : "";
}

}  // namespace

std::int32_t E_RSASSA_PSS_Sign(std::int32_t hashId, std::int32_t mgfHashId, std::uint8_t* sig, std::int32_t* sig_len,
                               const std::uint8_t* msg, std::int32_t msg_len, std::int32_t salt_len, const E_RSA_KEY* key) {
    const std::size_t k = modulus_bytes(*key);
    const std::size_t size = k == 0 ? 0 : encoded_bytes(*key, k);
    const std::size_t hash_bytes = field_bytes(hashId);
    if (msg_len < 0 || salt_len < 0 || !has_room(size, hash_bytes, salt_len)) {
        print_message("EMSA_PSS_ENCODE ERROR : intended encoded message length too short(emLen < hLen+sLen+2)");
        return 0;
    }
    Block block;
    const Encoded encoded({block.items.data() + (k - size), size}, hash_bytes, static_cast<std::size_t>(salt_len));
    encoded.one = 1;
    encoded.trailer = kTrailer;
    E_GenerateRandom(encoded.salt.data(), static_cast<std::uint32_t>(salt_len), 1);
    hash_message_and_salt(hashId, encoded.hash.data(), message_of(msg, msg_len), encoded.salt);
    apply_mgf1(mgfHashId, encoded.data_block, encoded.hash);
    encoded.data_block.front() &= static_cast<std::uint8_t>(~kTopBit);
    if (!private_operation(sig, block.items.data(), *key, Remainders::kAny)) return 0;
    *sig_len = static_cast<std::int32_t>(k);
    return 1;
}

std::int32_t E_RSASSA_PSS_Verify(std::int32_t hashId, std::int32_t mgfHashId, const std::uint8_t* msg, std::int32_t msg_len,
                                 const std::uint8_t* sig, std::int32_t sig_len, std::int32_t salt_len,
                                 const E_RSA_KEY* key) {
    const auto refuse = [](const char* text) {
        print_message(text);
        return -1;
    };
    const std::size_t k = modulus_bytes(*key);
    if (k == 0 || sig_len != static_cast<std::int32_t>(k) || msg_len < 0 || salt_len < 0) return 0;
    Block block;
    if (!public_operation(block.items.data(), sig, *key)) return 0;
    const std::size_t size = encoded_bytes(*key, k);
    const std::size_t hash_bytes = field_bytes(hashId);
    if (size < k && block.items[0] != 0) return refuse("\nverify part : EM byte Length too long , invalid signature!");
    if (!has_room(size, hash_bytes, salt_len)) return refuse("\nEMSA_PSS_VERIFY ERROR : encoded message too short");
    const Encoded encoded({block.items.data() + (k - size), size}, hash_bytes, static_cast<std::size_t>(salt_len));
    const char* const fault = find_fault(encoded, hashId, mgfHashId, message_of(msg, msg_len));
    if (fault == nullptr) return 1;
    print_message(fault);
    return refuse("\npss verify error : invalid signature");
}
