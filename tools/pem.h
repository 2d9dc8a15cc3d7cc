// The textual form of keys (RFC 7468, and RFC 1421 as far as its headers say that a key is enciphered).
#pragma once

#include "secret.h"

#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace morvane::tool {

struct PemBlock {
    std::string label;  // "RSA PRIVATE KEY"
    Secret bytes;
};

// There is such a text, but it cannot be read. Its text says why.
struct PemError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// The first block of the text, past parameters that stand before a key, as some programs write them. Nothing when it has
// none.
std::optional<PemBlock> read_pem(std::string_view text);

// The text of a block, as bytes.
Secret write_pem(std::string_view label, std::span<const std::uint8_t> bytes);

}  // namespace morvane::tool
