// CSP_GenerateKey and CSP_FreeKey: secret keys.
#include "base/wipe.h"
#include "csp/cipher_table.h"
#include "csp/error.h"
#include "csp/key_record.h"
#include "csp/scatter.h"
#include "csp/session.h"

#include <morvane/cipher.h>
#include <morvane/csp.h>
#include <morvane/random.h>

#include <cstdlib>

namespace {

using namespace morvane::csp;

std::uint32_t integer_attribute(const CspSession& session, std::uint32_t type, std::uint32_t otherwise) noexcept {
    const CSSM_CONTEXT_ATTRIBUTE* const attribute = find_attribute(session, type);
    return attribute == nullptr ? otherwise : attribute->Attribute.Uint32;
}

CSSM_DATE date_attribute(const CspSession& session, std::uint32_t type) noexcept {
    const CSSM_CONTEXT_ATTRIBUTE* const attribute = find_attribute(session, type);
    return attribute == nullptr || attribute->Attribute.Date == nullptr ? CSSM_DATE{} : *attribute->Attribute.Date;
}

// What the cipher's key schedule takes beside the key.
std::int32_t schedule_parameter(const CspSession& session) noexcept {
    std::uint32_t parameter = 0;
    if (session.algorithm == CSP_ALG_RC2) {
        parameter = integer_attribute(session, CSP_ATTR_EFFECTIVE_BITS, E_RC2_MAX_BITS);
    } else if (session.algorithm == CSP_ALG_RC5) {
        parameter = integer_attribute(session, CSP_ATTR_ROUNDS, E_RC5_MAX_ROUNDS);
    }
    return static_cast<std::int32_t>(parameter);
}

// As long as the longest key of any cipher.
constexpr std::uint32_t kMostRandomBytes = 256;

}  // namespace

int32_t MORVANE_STDCALL CSP_GenerateKey(uint32_t /*csp*/, CspHandle handle, const CSSM_CONTEXT* context, uint32_t usage,
                                        uint32_t attributes, const CSSM_DATA* label, CSSM_KEY* key) {
    const CspSession* const session = resolve(handle, context);
    if (session == nullptr) return fail(CSP_ERR_NO_CONTEXT);
    if (session->context_type != CSP_CONTEXT_KEYGEN) return fail(CSP_ERR_WRONG_CONTEXT_TYPE);
    if (key == nullptr) return fail(CSP_ERR_NULL_POINTER);
    const CipherChoice cipher = find_cipher_table(session->algorithm, CSP_MODE_ECB);
    if (cipher.table == nullptr) return fail(cipher.error);
    const CSSM_DATA bytes = label == nullptr ? CSSM_DATA{0, nullptr} : *label;
    const bool is_random = bytes.Data == nullptr && bytes.Length == 0;
    const std::uint32_t otherwise = cipher.table->key_bytes != 0 ? cipher.table->key_bytes : bytes.Length;
    const std::uint32_t key_bytes = integer_attribute(*session, CSP_ATTR_BLOCK_SIZE, otherwise);
    if (is_random ? key_bytes > kMostRandomBytes : bytes.Data == nullptr || bytes.Length < key_bytes) {
        return fail(CSP_ERR_BAD_KEY);
    }

    const std::uint32_t room = expanded_key_room(session->algorithm);
    const CSSM_DATA given = key->KeyData;
    if (!is_consistent(given)) return fail(CSP_ERR_BAD_DATA);
    if (given.Data != nullptr && given.Length < room) return fail(CSP_ERR_OUTPUT_TOO_SHORT);
    auto* const expanded = static_cast<std::uint8_t*>(std::calloc(1, room + 1));  // for the null cipher, too, an address
    if (expanded == nullptr) return fail(CSP_ERR_MEMORY);
    morvane::SecretArray<std::uint8_t, kMostRandomBytes> random;
    if (is_random) RAND_Bytes(random.items.data(), static_cast<std::int32_t>(key_bytes));
    const std::uint8_t* const key_data = is_random ? random.items.data() : bytes.Data;
    if (!cipher.table->set_key(expanded, key_data, key_bytes, schedule_parameter(*session))) {
        std::free(expanded);
        return fail(CSP_ERR_BAD_KEY);
    }

    key->KeyHeader = {};
    key->KeyHeader.BlobType = kReferenceBlob;
    key->KeyHeader.Format = kNoFormat;
    key->KeyHeader.AlgorithmId = session->algorithm;
    key->KeyHeader.KeyClass = kSessionKeyClass;
    constexpr std::uint32_t kBitsPerByte = 8;
    key->KeyHeader.LogicalKeySizeInBits = key_bytes * kBitsPerByte;
    key->KeyHeader.KeyAttr = attributes;
    key->KeyHeader.KeyUsage = usage;
    key->KeyHeader.StartDate = date_attribute(*session, CSP_ATTR_START_DATE);
    key->KeyHeader.EndDate = date_attribute(*session, CSP_ATTR_END_DATE);
    key->KeyData.Length = room;
    if (given.Data == nullptr) {
        key->KeyData.Data = expanded;
        return kSuccess;
    }
    std::memcpy(given.Data, expanded, room);
    morvane::wipe(expanded, room);
    std::free(expanded);
    return kSuccess;
}

int32_t MORVANE_STDCALL CSP_FreeKey(uint32_t /*csp*/, const CSSM_DATA* /*pass_phrase*/, CSSM_KEY* key) {
    if (key == nullptr) return fail(CSP_ERR_NULL_POINTER);
    if (key->KeyData.Data == nullptr) return kSuccess;
    morvane::wipe(key->KeyData.Data, key->KeyData.Length);
    std::free(key->KeyData.Data);
    key->KeyData = {0, nullptr};
    return kSuccess;
}
