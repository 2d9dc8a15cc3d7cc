#include "csp/key_service.h"

#include "csp/cipher_table.h"
#include "csp/scatter.h"

#include <morvane/cipher.h>

#include <cstdlib>
#include <utility>

namespace morvane::csp {
namespace {

CSSM_DATE date_attribute(const CspSession& session, std::uint32_t type) noexcept {
    const CSSM_CONTEXT_ATTRIBUTE* const attribute = find_attribute(session, type);
    return attribute == nullptr || attribute->Attribute.Date == nullptr ? CSSM_DATE{} : *attribute->Attribute.Date;
}

// What the cipher's key schedule takes beside the key.
std::int32_t schedule_parameter(const CspSession& session, std::uint32_t algorithm) noexcept {
    std::uint32_t parameter = 0;
    if (algorithm == CSP_ALG_RC2) {
        parameter = integer_attribute(session, CSP_ATTR_EFFECTIVE_BITS, E_RC2_MAX_BITS);
    } else if (algorithm == CSP_ALG_RC5) {
        parameter = integer_attribute(session, CSP_ATTR_ROUNDS, E_RC5_MAX_ROUNDS);
    }
    return static_cast<std::int32_t>(parameter);
}

}  // namespace

std::uint32_t integer_attribute(const CspSession& session, std::uint32_t type, std::uint32_t otherwise) noexcept {
    const CSSM_CONTEXT_ATTRIBUTE* const attribute = find_attribute(session, type);
    return attribute == nullptr ? otherwise : attribute->Attribute.Uint32;
}

CSSM_KEYHEADER make_header(const CspSession& session, const KeyKind& kind) noexcept {
    CSSM_KEYHEADER header{};
    header.BlobType = kind.blob;
    header.Format = kNoFormat;
    header.AlgorithmId = session.algorithm;
    header.KeyClass = kind.key_class;
    header.LogicalKeySizeInBits = kind.bits;
    header.KeyAttr = kind.attributes;
    header.KeyUsage = kind.usage;
    header.StartDate = date_attribute(session, CSP_ATTR_START_DATE);
    header.EndDate = date_attribute(session, CSP_ATTR_END_DATE);
    return header;
}

Output::~Output() {
    if (bytes_ != nullptr) wipe(bytes_, size_);
    std::free(bytes_);
}

std::uint32_t Output::prepare(const CSSM_DATA& buffer, std::uint32_t size) noexcept {
    if (!is_consistent(buffer)) return CSP_ERR_BAD_DATA;
    if (buffer.Data != nullptr && buffer.Length < size) return CSP_ERR_OUTPUT_TOO_SHORT;
    size_ = size;
    bytes_ = static_cast<std::uint8_t*>(std::calloc(1, std::size_t{size} + 1));  // for no bytes, too, an address
    return bytes_ == nullptr ? CSP_ERR_MEMORY : 0;
}

void Output::hand_out(CSSM_DATA& buffer, std::uint32_t size) noexcept {
    buffer.Length = size;
    if (buffer.Data == nullptr) {
        buffer.Data = std::exchange(bytes_, nullptr);
    } else {
        std::memcpy(buffer.Data, bytes_, size);
    }
}

std::uint32_t make_secret_key(CSSM_KEY& key, const CspSession& session, std::uint32_t algorithm, const std::uint8_t* bytes,
                              std::uint32_t count, std::uint32_t usage, std::uint32_t attributes) noexcept {
    const CipherChoice cipher = find_cipher_table(algorithm, CSP_MODE_ECB);
    if (cipher.table == nullptr) return cipher.error;
    const std::uint32_t room = expanded_key_room(algorithm);
    Output expanded;
    if (const std::uint32_t code = expanded.prepare(key.KeyData, room); code != 0) return code;
    if (!cipher.table->set_key(expanded.get(), bytes, count, schedule_parameter(session, algorithm)))
        return CSP_ERR_BAD_KEY;
    key.KeyHeader = make_header(session, {kReferenceBlob, kSessionKeyClass, count * kBitsPerByte, usage, attributes});
    key.KeyHeader.AlgorithmId = algorithm;
    expanded.hand_out(key.KeyData, room);
    return 0;
}

}  // namespace morvane::csp
