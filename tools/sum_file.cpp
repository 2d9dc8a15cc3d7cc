#include "sum_file.h"

#include "hex.h"

namespace morvane::tool {
namespace {

std::optional<std::string> unescape(std::string_view text) {
    std::string name;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\') {
            name += text[i];
            continue;
        }
        if (++i == text.size()) return std::nullopt;
        switch (text[i]) {
            case '\\':
                name += '\\';
                break;
            case 'n':
                name += '\n';
                break;
            case 'r':
                name += '\r';
                break;
            default:
                return std::nullopt;
        }
    }
    return name;
}

std::string_view without_blanks_at_end(std::string_view text) {
    const std::size_t last = text.find_last_not_of(" \t");
    return text.substr(0, last == std::string_view::npos ? 0 : last + 1);
}

struct Parts {
    std::string_view hex;
    std::string_view name;
};

std::optional<Parts> split_plain(std::string_view line, const Algorithm& algorithm) {
    const std::size_t digits = 2 * std::size_t{algorithm.digest_bytes};
    if (line.size() < digits + 2 || line[digits] != ' ') return std::nullopt;
    if (line[digits + 1] != ' ' && line[digits + 1] != '*') return std::nullopt;
    return Parts{line.substr(0, digits), line.substr(digits + 2)};
}

// From both ends, because the name may hold anything, ") = " included. The blanks are optional: some programs leave out
// the one before "(" or before "=".
std::optional<Parts> split_tagged(std::string_view line, const Algorithm& algorithm) {
    const std::size_t open = line.find('(');
    const std::size_t equals = line.rfind('=');
    if (open == std::string_view::npos || equals == std::string_view::npos || equals < open) return std::nullopt;
    if (!algorithm.is_called(without_blanks_at_end(line.substr(0, open)))) return std::nullopt;

    const std::string_view name = without_blanks_at_end(line.substr(open + 1, equals - open - 1));
    if (name.empty() || name.back() != ')') return std::nullopt;
    std::string_view hex = without_blanks_at_end(line.substr(equals + 1));
    hex.remove_prefix(std::min(hex.find_first_not_of(" \t"), hex.size()));
    return Parts{hex, name.substr(0, name.size() - 1)};
}

}  // namespace

std::string escape_name(std::string_view name) {
    if (name.find_first_of("\\\n\r") == std::string_view::npos) return std::string(name);
    std::string escaped;
    for (const char c : name) {
        switch (c) {
            case '\\':
                escaped += "\\\\";
                break;
            case '\n':
                escaped += "\\n";
                break;
            case '\r':
                escaped += "\\r";
                break;
            default:
                escaped += c;
        }
    }
    return escaped;
}

std::string format_sum_line(std::span<const std::uint8_t> digest, std::string_view name) {
    const std::string escaped = escape_name(name);
    std::string line(escaped == name ? "" : "\\");
    line += to_hex(digest);
    line += "  ";
    line += escaped;
    line += '\n';
    return line;
}

std::optional<SumLine> parse_sum_line(std::string_view line, const Algorithm& algorithm) {
    const bool escaped = line.starts_with('\\');
    if (escaped) line.remove_prefix(1);
    std::optional<Parts> parts = split_plain(line, algorithm);
    if (!parts) parts = split_tagged(line, algorithm);
    if (!parts) return std::nullopt;

    std::optional<Digest> digest = from_hex(parts->hex);
    std::optional<std::string> name = escaped ? unescape(parts->name) : std::string(parts->name);
    // No file name holds a zero byte; the part before it would name another file.
    if (!digest || digest->size() != algorithm.digest_bytes || !name || name->empty() ||
        name->find('\0') != std::string::npos)
        return std::nullopt;
    return SumLine{std::move(*digest), std::move(*name)};
}

}  // namespace morvane::tool
