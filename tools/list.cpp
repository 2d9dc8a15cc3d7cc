// morvane list: what the library offers.
#include "algorithms.h"
#include "ciphers.h"
#include "command_line.h"
#include "key.h"
#include "output.h"
#include "sources.h"

#include <algorithm>
#include <array>

namespace morvane::tool {
namespace {

using Row = std::array<std::string, 4>;

std::string padded(std::string text, std::size_t width) {
    text.resize(std::max(text.size(), width), ' ');
    return text;
}

}  // namespace

ExitCode run_list(const Verb& verb, const Arguments& arguments) {
    CommandLine line(verb);
    line.footer(
        "BYTES are those of the digest, for a cipher of the key and for public keys of the modulus or a coordinate; a "
        "random\n"
        "source gives any number.");
    if (const auto code = line.read(arguments)) return *code;

    std::vector<Row> rows = {{"NAME", "KIND", "BYTES", "NOTE"}};
    for (const Algorithm& algorithm : all_algorithms()) {
        rows.push_back({std::string(algorithm.name), std::string(name_of(algorithm.kind)),
                        std::to_string(algorithm.digest_bytes), std::string(algorithm.note)});
    }
    for (const Cipher& cipher : all_ciphers()) {
        rows.push_back({std::string(cipher.name), "cipher", cipher.key_lengths(), std::string(cipher.note)});
    }
    for (const KeyKind& kind : all_key_kinds()) {
        rows.push_back({std::string(kind.name), "public-key", std::string(kind.sizes), std::string(kind.note)});
    }
    for (const RandomSource& source : all_random_sources()) {
        rows.push_back({std::string(source.name), "random", "any", std::string(source.note)});
    }
    std::array<std::size_t, 3> widths{};
    for (const Row& row : rows) {
        for (std::size_t i = 0; i < widths.size(); ++i) widths[i] = std::max(widths[i], row[i].size());
    }
    for (const Row& row : rows) {
        std::string text;
        for (std::size_t i = 0; i < widths.size(); ++i) text += padded(row[i], widths[i] + 2);
        text += row.back();
        text.resize(text.find_last_not_of(' ') + 1);
        print(text + "\n");
    }
    return kSuccess;
}

}  // namespace morvane::tool
