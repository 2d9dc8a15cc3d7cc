// The lines in which digests of files are printed and kept: those of the sum tools of the GNU core utilities, and for
// reading also those of the BSD systems.
#pragma once

#include "algorithms.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace morvane::tool {

using Digest = std::vector<std::uint8_t>;

// The name as it stands in a line: one with a backslash, LF or CR in it gets them as \\, \n and \r, and a backslash in
// front of the whole line says so.
std::string escape_name(std::string_view name);

// "<hex>  <name>" and a line end.
std::string format_sum_line(std::span<const std::uint8_t> digest, std::string_view name);

struct SumLine {
    Digest digest;
    std::string name;
};

// Reads one line without its end: "<hex>  <name>", "<hex> *<name>" or "<algorithm> (<name>) = <hex>", each possibly
// escaped. Nothing when it is none of these, or of another algorithm or digest length.
std::optional<SumLine> parse_sum_line(std::string_view line, const Algorithm& algorithm);

}  // namespace morvane::tool
