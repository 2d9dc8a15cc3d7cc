#include "asn1/der.h"

#include "bignum/record.h"

#include <algorithm>
#include <bit>

namespace morvane::asn1 {
namespace {

constexpr std::uint32_t kConstructed = 0x20;
constexpr std::uint32_t kLongLength = 0x80;

constexpr std::uint32_t lead(Tag tag) noexcept {
    return static_cast<std::uint32_t>(tag.tag_class) | (tag.constructed ? kConstructed : 0);
}

// Octets of the shortest two's complement.
std::uint64_t content_size(std::span<const bignum::Word> magnitude, bool negative) noexcept {
    if (magnitude.empty()) return 1;
    const bignum::Word top = magnitude.back();
    const std::uint64_t bits = std::uint64_t{32} * (magnitude.size() - 1) + static_cast<std::uint64_t>(std::bit_width(top));
    // One bit more than the magnitude, for the sign; only -2^i does without.
    const bool is_power = std::has_single_bit(top) && std::ranges::count(magnitude, 0U) + 1 == std::ssize(magnitude);
    return negative && is_power ? (bits - 1) / 8 + 1 : bits / 8 + 1;
}

}  // namespace

bool Reader::get(Tag tag, Reader& content) noexcept {
    if (size_ < 2 || tag.number >= kHighTag || bytes_[0] != (lead(tag) | tag.number)) return false;
    std::size_t header = 2;
    std::size_t length = bytes_[1];
    if (length >= kLongLength) {
        const std::size_t octets = length - kLongLength;  // 0 announces the indefinite form
        // A length of more than four octets is beyond any input: those are told by 32-bit lengths.
        if (octets == 0 || octets > 4 || octets > size_ - header || bytes_[header] == 0) return false;
        length = 0;
        for (std::size_t i = 0; i < octets; ++i) length = length << 8 | bytes_[header + i];
        if (length < kLongLength) return false;
        header += octets;
    }
    if (length > size_ - header) return false;
    content = Reader(bytes_ + header, length);
    bytes_ += header + length;
    size_ -= header + length;
    return true;
}

bool Reader::get_magnitude(std::span<const std::uint8_t>& magnitude) noexcept {
    Reader rest = *this;
    Reader content;
    if (!rest.get(kInteger, content) || content.at_end()) return false;
    std::span<const std::uint8_t> octets(content.bytes_, content.size_);
    if (octets[0] >= 0x80) return false;
    if (octets[0] == 0) {
        octets = octets.subspan(1);
        // A zero in front is there to keep the top bit clear, or it is the value.
        if (!octets.empty() && octets[0] < 0x80) return false;
    }
    magnitude = octets;
    *this = rest;
    return true;
}

bool Reader::get_number(ENUM& number, std::size_t room_words) noexcept {
    Reader rest = *this;
    std::span<const std::uint8_t> magnitude;
    if (!rest.get_magnitude(magnitude) || magnitude.size() > 4 * room_words) return false;
    EN_U8ToENUM(&number, magnitude.data(), static_cast<std::uint32_t>(magnitude.size()));
    *this = rest;
    return true;
}

void Writer::put_identifier(Tag tag) noexcept {
    if (tag.number < kHighTag) return put_octet(lead(tag) | tag.number);
    put_octet(lead(tag) | kHighTag);
    // Groups of seven bits, the low-order one first. X.690 has the high-order one first; this library has always written
    // them this way round, and none of its structures has such a tag.
    std::uint32_t rest = tag.number;
    for (; rest > 0x7f; rest >>= 7) put_octet(0x80 | (rest & 0x7f));
    put_octet(rest);
}

void Writer::put_length(std::uint64_t length) noexcept {
    if (length < kLongLength) return put_octet(static_cast<std::uint32_t>(length));
    const auto octets = static_cast<std::uint32_t>((std::bit_width(length) + 7) / 8);
    put_octet(kLongLength | octets);
    for (std::uint32_t i = octets; i-- > 0;) put_octet(static_cast<std::uint32_t>(length >> 8 * i & 0xff));
}

void Writer::put_number(const ENUM& number) noexcept {
    const auto magnitude = bignum::magnitude(number).first(bignum::significant_words(number));
    const bool negative = number.sign != 0 && !magnitude.empty();
    const std::uint64_t octets = content_size(magnitude, negative);
    put_identifier(kInteger);
    put_length(octets);
    if (out_ != nullptr) {
        // From the last octet on, so that the complement's carry goes along.
        std::uint32_t carry = negative ? 1 : 0;
        const std::uint32_t complement = negative ? 0xff : 0;
        for (std::size_t i = 0; i < octets; ++i) {
            const bignum::Word word = i / 4 < magnitude.size() ? magnitude[i / 4] : 0;
            const std::uint32_t sum = ((word >> 8 * (i % 4) & 0xff) ^ complement) + carry;
            out_[size_ + octets - 1 - i] = static_cast<std::uint8_t>(sum);
            carry = sum >> 8;
        }
    }
    size_ += octets;
}

}  // namespace morvane::asn1
