#include "toolkit/secret_key.h"

namespace morvane::toolkit {
namespace {

// What a selector makes. The expanded sizes are the provider's count, but for RC2 with 40 bits, which has always been asked
// for so; the provider goes by its own.
struct KeyType {
    std::uint32_t selector;
    std::uint32_t algorithm;
    std::uint32_t expanded_bytes;
    std::uint32_t key_bytes;
};

constexpr KeyType kKeyTypes[] = {
    {0, CSP_ALG_DES, 128, 8},       {1, CSP_ALG_DES3, 256, 16}, {2, CSP_ALG_RC2, 128, 8},
    {3, CSP_ALG_RC4, 1032, 8},      {4, CSP_ALG_RC5, 136, 26},  {5, CSP_ALG_IDEA, 432, 16},
    {6, CSP_ALG_BLOWFISH, 4168, 8}, {11, CSP_ALG_RC2, 40, 5},   {12, CSP_ALG_SEED, 128, 16},
};

// Algorithm 0, which the provider refuses, for an unknown selector.
KeyType key_type(std::uint32_t selector) noexcept {
    for (const KeyType& type : kKeyTypes) {
        if (type.selector == selector) return type;
    }
    return {};
}

// Longer than any expanded key.
constexpr std::uint32_t kExpandedRoom = 5000;

// The header's words: for encryption and decryption; the data is in the record.
constexpr std::uint32_t kUsage = 3;
constexpr std::uint32_t kAttributes = 0x20000000;

}  // namespace

std::uint32_t cipher_of(std::uint32_t selector) noexcept { return key_type(selector).algorithm; }

SecretKey::SecretKey(K_CONTEXT* context) noexcept
    : request_(context, CSP_CONTEXT_KEYGEN, 0), key_(context), expanded_(context, kExpandedRoom, 1) {}

std::uint32_t SecretKey::make(std::uint32_t selector, const CSSM_DATA* bytes) noexcept {
    const KeyType type = key_type(selector);
    if (!has_data(bytes) || bytes->Length < type.key_bytes) return KERR_KEY_SETUP;
    request_.set_algorithm(type.algorithm);
    request_.set(0, CSP_ATTR_KEY_LENGTH, type.expanded_bytes);
    request_.set(1, CSP_ATTR_BLOCK_SIZE, type.key_bytes);
    key_->KeyData = expanded_.data();
    const std::int32_t status =
        CSP_GenerateKey(kProvider, request_.handle(), nullptr, kUsage, kAttributes, bytes, key_.get());
    return status == 0 ? 0 : KERR_KEY_SETUP;
}

}  // namespace morvane::toolkit
