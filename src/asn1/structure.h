// A key record as a SEQUENCE of INTEGERs: which of its members, in which order.
#pragma once

#include "asn1/der.h"
#include "bignum/record.h"

#include <span>

namespace morvane::asn1 {

template <typename Key>
struct Member {
    ENUM Key::*number;
    std::size_t words;  // its storage
};

template <typename Key>
struct Structure {
    bool has_version;  // an INTEGER 0 in front
    std::span<const Member<Key>> members;
};

// Why a reader stopped. Callers of the library see the position only; the numbers are those that its diagnostics have
// always had.
enum class Refusal : std::uint16_t {
    kNone = 0,
    kHeader = 219,        // of the SEQUENCE
    kFirstInteger = 220,  // of a private key, the version
    kSecondInteger = 222,
    kFurtherInteger = 224,
    kEnd = 227,  // the SEQUENCE does not end where its length says
};

constexpr Refusal refusal_of_integer(std::size_t i) noexcept {
    return i == 0 ? Refusal::kFirstInteger : i == 1 ? Refusal::kSecondInteger : Refusal::kFurtherInteger;
}

// The encoding's octets, written to out unless that is null; 0 without a record, -1 for a member that passes its storage.
template <typename Key>
std::int32_t put(const Key* key, std::uint8_t* out, const Structure<Key>& structure) noexcept {
    if (key == nullptr) return 0;
    for (const Member<Key>& member : structure.members) {
        if (bignum::words_in(key->*member.number) > member.words) return -1;
    }
    return encode(out, [&](Writer& writer) {
        writer.put(kSequence, [&](Writer& content) {
            if (structure.has_version) content.put_number(ENUM{});
            for (const Member<Key>& member : structure.members) content.put_number(key->*member.number);
        });
    });
}

// Reads a structure and moves the reader behind it; a reader that refuses stays, and the members read so far are stored.
template <typename Key>
Refusal get(Key& key, Reader& input, const Structure<Key>& structure) noexcept {
    Reader rest = input;
    Reader content;
    if (!rest.get(kSequence, content)) return Refusal::kHeader;
    std::size_t i = 0;
    if (structure.has_version) {
        std::span<const std::uint8_t> version;
        if (!content.get_magnitude(version) || !version.empty()) return refusal_of_integer(i);
        ++i;
    }
    for (const Member<Key>& member : structure.members) {
        if (!content.get_number(key.*member.number, member.words)) return refusal_of_integer(i);
        ++i;
    }
    if (!content.at_end()) return Refusal::kEnd;
    input = rest;
    return Refusal::kNone;
}

// The readers' common skin: the position moves on success, and that is all a caller learns.
template <typename Key>
void get_at(Key* key, const std::uint8_t** position, std::uint32_t length, const Structure<Key>& structure) noexcept {
    if (key == nullptr || position == nullptr || *position == nullptr) return;
    Reader input(*position, length);
    get(*key, input, structure);
    *position = input.position();
}

}  // namespace morvane::asn1
