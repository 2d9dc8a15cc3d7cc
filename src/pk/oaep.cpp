// RSAES-OAEP, the older pair with SHA-1 and the pair with hashes by number: PKCS #1 v2.0 and v2.1. The encoded message has
// one octet less than the modulus: masked seed, masked data block. The data block is the label's hash, zeros, 01, the
// message.
#include <morvane/random.h>

#include "pk/hash_select.h"
#include "pk/message.h"
#include "pk/unpad.h"

using namespace morvane;
using namespace morvane::pk;

namespace {

struct Scheme {
    std::int32_t hash;
    std::int32_t mask_hash;
    bool whole;               // whether the deciphered integer must have all the octets of an encoded message
    const char* other_label;  // what is printed for another label
};

// The older pair insists on the length of the integer. An encoded message that begins with a zero octet, one in 256, is
// shorter, and is refused.
constexpr Scheme kOlder = {kSha1, kSha1, true, "pHash' does mot equal pHash"};

Scheme newer(std::int32_t hash, std::int32_t mask_hash) noexcept {
    return {hash, mask_hash, false, "lHash' does not equal lHash"};
}

struct Input {
    const std::uint8_t* octets;
    std::int32_t length;

    operator Octets() const noexcept { return {octets, static_cast<std::size_t>(length)}; }
};

// Fills an encoded message of zeros. It stays so, and that is printed, if the message is too long.
void encode(std::span<std::uint8_t> encoded, const Scheme& scheme, Octets message, Octets label) noexcept {
    const std::size_t hash_bytes = field_bytes(scheme.hash);
    const std::size_t least = 2 * hash_bytes + 1;
    if (encoded.size() < least || message.size() > encoded.size() - least) {
        print_message("Input message too long. Fail to oaep encoding!");
        return;
    }
    const std::span<std::uint8_t> seed = encoded.first(hash_bytes);
    const std::span<std::uint8_t> block = encoded.subspan(hash_bytes);
    const std::span<std::uint8_t> end = block.last(message.size() + 1);
    fill_field(scheme.hash, block.data(), {label});
    end[0] = 1;
    copy_bytes(end.data() + 1, message.data(), message.size());
    E_GenerateRandom(seed.data(), static_cast<std::uint32_t>(hash_bytes), 1);
    apply_mgf1(scheme.mask_hash, block, seed);
    apply_mgf1(scheme.mask_hash, seed, block);
}

// Enciphers a message of at most k - overhead octets.
std::int32_t encrypt(const Scheme& scheme, std::size_t overhead, const char* too_long, std::uint8_t* out, Input message,
                     Input label, const E_RSA_KEY& key) noexcept {
    const auto k = static_cast<std::int32_t>(modulus_bytes(key));
    if (message.length < 0 || label.length < 0 || message.length > k - static_cast<std::int32_t>(overhead)) {
        print_message(too_long);
        return -1;
    }
    Block block;
    encode({block.items.data() + 1, static_cast<std::size_t>(k - 1)}, scheme, message, label);
    return public_operation(out, block.items.data(), key) ? k : -1;
}

// What an encoded message turned out to be, the message moved to its front. Masks, which only hand-over looks at.
struct Opened {
    Mask same_label;
    Mask has_message;
    std::uint32_t length;
};

// Opens an encoded message of at least 2 hLen + 1 octets. The time depends on its length and the label.
Opened decode(std::span<std::uint8_t> encoded, const Scheme& scheme, Octets label) noexcept {
    const std::size_t hash_bytes = field_bytes(scheme.hash);
    const std::span<std::uint8_t> seed = encoded.first(hash_bytes);
    const std::span<std::uint8_t> block = encoded.subspan(hash_bytes);
    apply_mgf1(scheme.mask_hash, seed, block);
    apply_mgf1(scheme.mask_hash, block, seed);

    std::uint8_t label_hash[kMaxFieldBytes];
    fill_field(scheme.hash, label_hash, {label});
    std::uint32_t difference = 0;
    for (std::size_t i = 0; i < hash_bytes; ++i) difference |= static_cast<std::uint32_t>(label_hash[i] ^ block[i]);

    // What stands before the 01 has never been looked at.
    const auto size = static_cast<std::uint32_t>(block.size());
    const Position one =
        find_first(block.data(), hash_bytes, size, [](std::uint8_t octet) { return mask_if_equal(octet, 1); });
    const std::uint32_t message = one.index + 1;
    move_to_front(block.data(), size, message);
    return {mask_if_zero(difference), one.found, size - message};
}

std::int32_t refuse(const char* text) noexcept {
    print_message(text);
    return -1;
}

std::int32_t decrypt(const Scheme& scheme, std::uint8_t* out, Input in, Input label, const E_RSA_KEY& key) noexcept {
    const std::size_t k = modulus_bytes(key);
    if (k == 0 || in.length != static_cast<std::int32_t>(k) || label.length < 0) return -1;
    Block block;
    if (!private_operation(block.items.data(), in.octets, key, Remainders::kAny)) return -1;
    const std::span<std::uint8_t> encoded(block.items.data() + 1, k - 1);
    const std::size_t hash_bytes = field_bytes(scheme.hash);
    const bool long_enough = encoded.size() >= 2 * hash_bytes + 1;
    const Mask right_size = mask_if_zero(block.items[0]) & (scheme.whole ? ~mask_if_zero(block.items[1]) : ~Mask{0});
    const Opened opened = long_enough ? decode(encoded, scheme, label) : Opened{};

    // All is decided; what follows is the result, which the caller sees.
    declare_known(&right_size);
    declare_known(&opened);
    if (right_size == 0) return refuse("decrypt part : EM byte Length too long , decryption error");
    if (!long_enough) return refuse("EM length too small. Fail to oaep decoding!");
    if (opened.same_label == 0) return refuse(scheme.other_label);
    if (opened.has_message == 0) return -1;
    return hand_over(out, encoded.data() + hash_bytes, static_cast<std::int32_t>(opened.length));
}

}  // namespace

std::int32_t E_RSA_Public_Encrypt_OAEP(std::uint8_t* out, const std::uint8_t* msg, std::int32_t len,
                                       const std::uint8_t* label, std::int32_t label_len, const E_RSA_KEY* key) {
    // The length was once compared with one hash and two octets, not two of them. Messages between that limit and the
    // encoder's become a block of zeros, as callers have come to know.
    constexpr std::size_t kOverhead = 22;
    return encrypt(kOlder, kOverhead, "encrypt part : message too long. encoding error", out, {msg, len},
                   {label, label_len}, *key);
}

std::int32_t E_RSA_Private_Decrypt_OAEP(std::uint8_t* out, const std::uint8_t* in, std::int32_t len,
                                        const std::uint8_t* label, std::int32_t label_len, const E_RSA_KEY* key) {
    return decrypt(kOlder, out, {in, len}, {label, label_len}, *key);
}

std::int32_t E_RSAES_OAEP_Encrypt(std::int32_t hashId, std::int32_t mgfHashId, std::uint8_t* out, const std::uint8_t* msg,
                                  std::int32_t len, const std::uint8_t* label, std::int32_t label_len,
                                  const E_RSA_KEY* key) {
    return encrypt(newer(hashId, mgfHashId), 2 * field_bytes(hashId) + 2, "encrypt part : message too long.", out,
                   {msg, len}, {label, label_len}, *key);
}

std::int32_t E_RSAES_OAEP_Decrypt(std::int32_t hashId, std::int32_t mgfHashId, std::uint8_t* out, const std::uint8_t* in,
                                  std::int32_t len, const std::uint8_t* label, std::int32_t label_len,
                                  const E_RSA_KEY* key) {
    return decrypt(newer(hashId, mgfHashId), out, {in, len}, {label, label_len}, *key);
}
