// Integers that are no key.
#include "asn1/structure.h"

#include <morvane/asn1.h>

using namespace morvane::asn1;

namespace {

// A 32-bit value as a record of one member, so that it is read and written like a key.
struct Single {
    ENUM number;
};
constexpr Member<Single> kSingleMembers[] = {{&Single::number, 1}};
constexpr Structure<Single> kSingle = {false, kSingleMembers};

}  // namespace

std::int32_t E_ASN1_PutENUM(const ENUM* values, std::uint32_t count, std::uint8_t* out) {
    if (values == nullptr) return 0;
    return encode(out, [=](Writer& writer) {
        writer.put(kSequence, [=](Writer& content) {
            for (const ENUM& value : std::span(values, count)) content.put_number(value);
        });
    });
}

std::int32_t E_ASN1_GetENUMBytes(const ENUM* values, std::uint32_t count) { return E_ASN1_PutENUM(values, count, nullptr); }

std::int32_t E_ASN1_PutU32(std::uint32_t value, std::uint8_t* out) {
    const Single single = {{0, 1, &value}};
    return put(&single, out, kSingle);
}

std::int32_t E_ASN1_GetU32Bytes(std::uint32_t value) { return E_ASN1_PutU32(value, nullptr); }

void E_ASN1_GetU32(std::uint32_t* value, const std::uint8_t** input, std::uint32_t length) {
    if (value == nullptr || input == nullptr) return;
    std::uint32_t word = 0;
    Single single = {{0, 0, &word}};
    const std::uint8_t* position = *input;
    get_at(&single, &position, length, kSingle);
    if (position == *input) return;
    *value = word;
    *input = position;
}
