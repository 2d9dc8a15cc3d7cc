#include "asn1/kcdsa_signature.h"

#include <morvane/asn1.h>

#include <algorithm>

namespace morvane::asn1 {
namespace {

constexpr std::uint8_t kUnusedBits[] = {0};

}  // namespace

std::int32_t put_kcdsa_signature(std::uint8_t* out, const std::uint8_t (&r)[E_KCDSA_R_BYTES], const ENUM& s) noexcept {
    return encode(out, [&](Writer& writer) {
        writer.put(kSequence, [&](Writer& content) {
            content.put(kBitString, [&](Writer& bits) {
                bits.put_octets(kUnusedBits);
                bits.put_octets(r);
            });
            content.put_number(s);
        });
    });
}

bool get_kcdsa_signature(std::uint8_t (&r)[E_KCDSA_R_BYTES], ENUM& s, Reader& input) noexcept {
    Reader rest = input;
    Reader content;
    Reader bits;
    if (!rest.get(kSequence, content) || !content.get(kBitString, bits)) return false;
    const std::span<const std::uint8_t> octets = bits.rest();
    if (octets.size() != 1 + E_KCDSA_R_BYTES || octets[0] != kUnusedBits[0]) return false;
    if (!content.get_number(s, E_KCDSA_WORDS) || !content.at_end()) return false;
    std::copy(octets.begin() + 1, octets.end(), r);
    input = rest;
    return true;
}

}  // namespace morvane::asn1

using namespace morvane::asn1;

void E_ASN1_GetSignRS_KCDSA(E_KCDSA_SIGNATURE* signature, const std::uint8_t** input, std::uint32_t length) {
    if (signature == nullptr || input == nullptr || *input == nullptr) return;
    signature->s = {0, 0, signature->s_words};
    Reader reader(*input, length);
    get_kcdsa_signature(signature->r, signature->s, reader);
    *input = reader.position();
}
