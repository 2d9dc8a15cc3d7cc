#include "pem.h"

#include "base64.h"

#include <algorithm>

namespace morvane::tool {
namespace {

constexpr std::string_view kBegin = "-----BEGIN ";
constexpr std::string_view kEnd = "-----END ";
constexpr std::string_view kDashes = "-----";
constexpr std::size_t kLineBytes = 48;  // 64 digits

void append(std::vector<std::uint8_t>& bytes, std::string_view text) {
    bytes.insert(bytes.end(), text.begin(), text.end());
}

}  // namespace

std::optional<PemBlock> read_pem(std::string_view text) {
    const std::size_t begin = text.find(kBegin);
    if (begin == std::string_view::npos) return std::nullopt;
    text.remove_prefix(begin + kBegin.size());
    const std::string_view label = text.substr(0, text.find(kDashes));
    text.remove_prefix(std::min(label.size() + kDashes.size(), text.size()));
    const std::size_t end = text.find(std::string(kEnd).append(label).append(kDashes));
    if (end == std::string_view::npos) throw PemError("its PEM text has no end");
    if (label.ends_with("PARAMETERS")) {
        if (std::optional<PemBlock> key = read_pem(text.substr(end + 1))) return key;
    }
    const std::string_view body = text.substr(0, end);
    if (label.find("ENCRYPTED") != std::string_view::npos || body.find("ENCRYPTED") != std::string_view::npos) {
        throw PemError("the key in it is enciphered under a password, which this command does not read");
    }
    std::optional<std::vector<std::uint8_t>> bytes = from_base64(body);
    if (!bytes) throw PemError("its PEM text is damaged");
    return PemBlock{std::string(label), Secret(std::move(*bytes))};
}

Secret write_pem(std::string_view label, std::span<const std::uint8_t> bytes) {
    std::vector<std::uint8_t> text;
    text.reserve(2 * bytes.size() + 2 * label.size() + 100);  // so that no copy is left behind
    append(text, std::string(kBegin).append(label).append("-----\n"));
    for (; !bytes.empty(); bytes = bytes.subspan(std::min(kLineBytes, bytes.size()))) {
        std::string line = to_base64(bytes.first(std::min(kLineBytes, bytes.size())));
        append(text, line);
        text.push_back('\n');
        wipe({reinterpret_cast<std::uint8_t*>(line.data()), line.size()});
    }
    append(text, std::string(kEnd).append(label).append("-----\n"));
    return Secret(std::move(text));
}

}  // namespace morvane::tool
