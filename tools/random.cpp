// morvane random: bytes from one of the library's sources.
#include "algorithms.h"
#include "base64.h"
#include "command_line.h"
#include "hex.h"
#include "secret.h"
#include "sources.h"
#include "target.h"

#include <algorithm>

namespace morvane::tool {
namespace {

constexpr std::uint32_t kPiece = 48 * 1024;  // whole groups of base64, whole digests of the chain

using Bytes = std::span<const std::uint8_t>;

// The digits are as secret as the bytes.
template <std::string (*Encode)(Bytes)>
void write_text(Target& target, Bytes bytes) {
    std::string text = Encode(bytes);
    const std::span letters(reinterpret_cast<std::uint8_t*>(text.data()), text.size());
    target.write(letters);
    wipe(letters);
}
void write_raw(Target& target, Bytes bytes) { target.write(bytes); }

struct Format {
    std::string_view name;
    void (*write)(Target& target, Bytes bytes);
    std::string_view end;
};

constexpr Format kFormats[] = {
    {"hex", write_text<to_hex>, "\n"}, {"base64", write_text<to_base64>, "\n"}, {"raw", write_raw, ""}};

template <typename Row>
const Row* find(std::span<const Row> rows, std::string_view name) {
    const auto found = std::ranges::find_if(rows, [name](const Row& row) { return same_name(row.name, name); });
    return found == rows.end() ? nullptr : &*found;
}

}  // namespace

ExitCode run_random(const Verb& verb, const Arguments& arguments) {
    CommandLine line(verb);
    std::int64_t count = 0;
    std::string source_name(all_random_sources().front().name), format_name(kFormats[0].name);
    line.add_option("BYTES", count, "How many")->required()->type_name("");
    line.add_option("--source", source_name, "Which source; 'morvane list' names them; default is " + source_name)
        ->type_name("NAME");
    line.add_option("--format", format_name, "hex and base64, each on one line, or raw; default is hex")->type_name("NAME");
    line.offer("--source", names_of(all_random_sources()));
    line.offer("--format", names_of(kFormats));
    const CLI::Option* const output = line.add_file("--out", "Write to FILE, for nobody but the owner to read");
    bool force = false;
    line.add_flag("--force", force, "Replace FILE if it exists");
    line.footer(
        "Only pool and key-pool are fit for keys and other secrets: what the rest gives can be guessed.\n"
        "\n"
        "Examples:\n"
        "  morvane random 16\n"
        "  morvane random 24 --format raw --out cipher.key\n"
        "\n"
        "Exit codes: 0 good, 2 wrong usage, 3 the output cannot be written.");
    if (const auto code = line.read(arguments)) return *code;
    // The parser takes -1 for a great unsigned number and makes the greatest of what is greater.
    if (count < 0 || count == INT64_MAX) return usage_error(verb.name, "BYTES is out of range");
    const RandomSource* const source = find(all_random_sources(), source_name);
    if (source == nullptr) return usage_error(verb.name, "no random source is called '" + source_name + "'");
    const Format* const format = find(std::span<const Format>(kFormats), format_name);
    if (format == nullptr) return usage_error(verb.name, "'" + format_name + "' is none of hex, base64 and raw");

    Target target(output->empty() ? kStandardOutput : output->results().front(), force, Access::kOwner);
    Secret buffer(std::vector<std::uint8_t>(static_cast<std::size_t>(std::min<std::int64_t>(count, kPiece))));
    while (count > 0) {
        const std::span bytes = std::span(*buffer).first(static_cast<std::size_t>(std::min<std::int64_t>(count, kPiece)));
        source->fill(bytes.data(), static_cast<std::uint32_t>(bytes.size()));
        format->write(target, bytes);
        count -= static_cast<std::int64_t>(bytes.size());
    }
    target.write({reinterpret_cast<const std::uint8_t*>(format->end.data()), format->end.size()});
    target.keep();
    return kSuccess;
}

}  // namespace morvane::tool
