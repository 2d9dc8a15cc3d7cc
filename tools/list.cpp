// morvane list: what the library offers.
#include "algorithms.h"
#include "ciphers.h"
#include "command_line.h"
#include "json.h"
#include "key.h"
#include "output.h"
#include "sources.h"

#include <algorithm>

namespace morvane::tool {
namespace {

struct Row {
    std::string_view name, kind;
    std::string bytes;
    std::string_view note;
};

const Row kTitles = {"NAME", "KIND", "BYTES", "NOTE"};

std::vector<Row> all_rows() {
    std::vector<Row> rows;
    for (const Algorithm& algorithm : all_algorithms()) {
        rows.push_back({algorithm.name, name_of(algorithm.kind), std::to_string(algorithm.digest_bytes), algorithm.note});
    }
    for (const Cipher& cipher : all_ciphers()) rows.push_back({cipher.name, "cipher", cipher.key_lengths(), cipher.note});
    for (const KeyKind& kind : all_key_kinds())
        rows.push_back({kind.name, "public-key", std::string(kind.sizes), kind.note});
    for (const RandomSource& source : all_random_sources()) rows.push_back({source.name, "random", "any", source.note});
    return rows;
}

void print_json(const std::vector<Row>& rows) {
    Json json;
    json.open_array();
    for (const Row& row : rows) {
        json.open_object().member("name", row.name).member("kind", row.kind).member("bytes", row.bytes);
        json.member("note", row.note).close_object();
    }
    json.close_array().print();
}

void print_table(const std::vector<Row>& rows) {
    std::size_t name = kTitles.name.size(), kind = kTitles.kind.size(), bytes = kTitles.bytes.size();
    for (const Row& row : rows) {
        name = std::max(name, row.name.size());
        kind = std::max(kind, row.kind.size());
        bytes = std::max(bytes, row.bytes.size());
    }
    const auto print_row = [&](const Row& row) {
        std::string text(row.name);
        text.resize(name + 2, ' ');
        text += row.kind;
        text.resize(name + kind + 4, ' ');
        text += row.bytes;
        text.resize(name + kind + bytes + 6, ' ');
        text += row.note;
        text.resize(text.find_last_not_of(' ') + 1);
        print(text + "\n");
    };
    print_row(kTitles);
    for (const Row& row : rows) print_row(row);
}

}  // namespace

ExitCode run_list(const Verb& verb, const Arguments& arguments) {
    CommandLine line(verb);
    bool as_json = false;
    line.add_json(as_json);
    line.footer(
        "BYTES are those of the digest, for a cipher of the key and for public keys of the modulus or a coordinate; a "
        "random\n"
        "source gives any number.\n"
        "\n"
        "Examples:\n"
        "  morvane list\n"
        "  morvane list --json");
    if (const auto code = line.read(arguments)) return *code;
    as_json ? print_json(all_rows()) : print_table(all_rows());
    return kSuccess;
}

}  // namespace morvane::tool
