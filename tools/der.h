// DER as far as files of keys and signatures need it: elements of up to 64 KiB.
#pragma once

#include "number.h"
#include "secret.h"

#include <initializer_list>
#include <optional>
#include <span>

namespace morvane::tool {

using Bytes = std::span<const std::uint8_t>;

namespace der {

inline constexpr std::uint8_t kInteger = 0x02, kBitString = 0x03, kOctetString = 0x04, kOid = 0x06, kSequence = 0x30;

// The content of the element of that tag that the bytes begin with; they are moved behind it. Nothing, and they stay, when
// they begin with another one or with none.
std::optional<Bytes> take(Bytes& bytes, std::uint8_t tag);

// The value of an INTEGER, moved past likewise. Nothing for a negative one and for one that is longer than need be.
std::optional<Number> take_number(Bytes& bytes);

// The element whose content is these parts, one after the other.
Secret element(std::uint8_t tag, std::initializer_list<Bytes> parts);

Secret integer(const ENUM& value);

}  // namespace der
}  // namespace morvane::tool
