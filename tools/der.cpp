#include "der.h"

#include <morvane/bignum.h>

#include <stdexcept>

namespace morvane::tool::der {

std::optional<Bytes> take(Bytes& bytes, std::uint8_t tag) {
    if (bytes.size() < 2 || bytes[0] != tag) return std::nullopt;
    std::size_t length = bytes[1], header = 2;
    if (length >= 0x80) {
        const std::size_t octets = length - 0x80;
        if (octets < 1 || octets > 2 || bytes.size() < header + octets) return std::nullopt;
        length = 0;
        for (const std::uint8_t octet : bytes.subspan(header, octets)) length = length << 8 | octet;
        if (length < (octets == 1 ? 0x80u : 0x100u)) return std::nullopt;
        header += octets;
    }
    if (bytes.size() - header < length) return std::nullopt;
    const Bytes content = bytes.subspan(header, length);
    bytes = bytes.subspan(header + length);
    return content;
}

std::optional<Number> take_number(Bytes& bytes) {
    Bytes rest = bytes;
    const std::optional<Bytes> content = take(rest, kInteger);
    if (!content || content->empty() || content->front() >= 0x80) return std::nullopt;
    if (content->size() > 1 && content->front() == 0 && (*content)[1] < 0x80) return std::nullopt;
    bytes = rest;
    Number value(static_cast<std::uint32_t>(content->size() / 4 + 1));
    EN_U8ToENUM(value.get(), content->data(), static_cast<std::uint32_t>(content->size()));
    return value;
}

Secret element(std::uint8_t tag, std::initializer_list<Bytes> parts) {
    std::size_t length = 0;
    for (const Bytes part : parts) length += part.size();
    if (length > UINT16_MAX) throw std::length_error("a key is too long for its file");
    std::vector<std::uint8_t> bytes;
    bytes.reserve(length + 4);  // so that no copy is left behind
    bytes.push_back(tag);
    const auto low = static_cast<std::uint8_t>(length), high = static_cast<std::uint8_t>(length >> 8);
    if (length >= 0x100) {
        bytes.insert(bytes.end(), {0x82, high, low});
    } else if (length >= 0x80) {
        bytes.insert(bytes.end(), {0x81, low});
    } else {
        bytes.push_back(low);
    }
    for (const Bytes part : parts) bytes.insert(bytes.end(), part.begin(), part.end());
    return Secret(std::move(bytes));
}

Secret integer(const ENUM& value) {
    // A zero octet before a highest bit that is set, and the one octet that 0 has.
    Secret octets(std::vector<std::uint8_t>(EN_GetFilledBitNum(&value) / 8 + 1));
    const std::size_t filled = (EN_GetFilledBitNum(&value) + 7) / 8;
    if (filled != 0) EN_ENUMToU8((*octets).data() + (*octets).size() - filled, &value);
    return element(kInteger, {*octets});
}

}  // namespace morvane::tool::der
