#include "support/bytes.h"

#include <stdexcept>

namespace morvane::test {

Bytes from_hex(std::string_view hex) {
    if (hex.size() % 2 != 0) throw std::invalid_argument("odd number of hex digits");
    Bytes bytes;
    for (std::size_t i = 0; i < hex.size(); i += 2) {
        bytes.push_back(static_cast<std::uint8_t>(std::stoul(std::string(hex.substr(i, 2)), nullptr, 16)));
    }
    return bytes;
}

std::string to_hex(const std::uint8_t* bytes, std::size_t size) {
    constexpr char kDigits[] = "0123456789abcdef";
    std::string hex;
    for (std::size_t i = 0; i < size; ++i) {
        hex += kDigits[bytes[i] >> 4];
        hex += kDigits[bytes[i] & 15];
    }
    return hex;
}

Bytes from_text(std::string_view text) { return {text.begin(), text.end()}; }

Bytes repeated(std::string_view text, std::size_t times) {
    Bytes bytes;
    for (std::size_t i = 0; i < times; ++i) bytes.insert(bytes.end(), text.begin(), text.end());
    return bytes;
}

Bytes Random::bytes(std::size_t size) {
    Bytes bytes(size);
    for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>(draw(1));
    return bytes;
}

std::uint32_t Random::draw(int octets) {
    if (input_.empty()) return static_cast<std::uint32_t>(engine_());
    std::uint32_t value = 0;
    for (; octets != 0 && !input_.empty(); --octets, input_ = input_.subspan(1)) value = value << 8 | input_[0];
    return value;
}

}  // namespace morvane::test
