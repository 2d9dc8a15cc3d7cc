// morvane speed: how quick the library is on this machine.
#include "speed.h"

#include "algorithms.h"
#include "command_line.h"
#include "json.h"
#include "output.h"

#include <algorithm>
#include <charconv>
#include <chrono>

namespace morvane::tool {
namespace {

constexpr double kDefaultSeconds = 0.2;
constexpr double kMostSeconds = 3600;
constexpr double kMegabyte = 1e6;

// Calls in a second. Batches grow until one takes a twentieth of the time, so that the clock costs nothing.
double calls_per_second(const Operation& operation, double seconds) {
    using Clock = std::chrono::steady_clock;
    operation();  // what is only done once: tables, caches, the choice of a routine
    double calls = 0, elapsed = 0;
    std::uint64_t batch = 1;
    do {
        const auto start = Clock::now();
        for (std::uint64_t i = 0; i < batch; ++i) operation();
        const double took = std::chrono::duration<double>(Clock::now() - start).count();
        calls += static_cast<double>(batch);
        elapsed += took;
        if (took < seconds / 20) batch *= 2;
    } while (elapsed < seconds);
    return calls / elapsed;
}

// "des-cbc" is the name of all rows that begin with it and a dash.
bool is_meant(const SpeedRow& row, std::string_view name) {
    const std::string_view start = std::string_view(row.name).substr(0, name.size());
    return same_name(start, name) && (row.name.size() == name.size() || row.name[name.size()] == '-');
}

SpeedRows chosen_rows(const Arguments& names) {
    SpeedRows all, chosen;
    add_stream_speeds(all);
    add_key_speeds(all);
    for (const std::string& name : names) {
        if (std::ranges::none_of(all, [&](const SpeedRow& row) { return is_meant(row, name); })) {
            throw UsageError("nothing that is measured is called '" + name + "'");
        }
    }
    if (names.empty()) return all;
    for (SpeedRow& row : all) {
        const bool meant = std::ranges::any_of(names, [&](const std::string& name) { return is_meant(row, name); });
        if (meant) chosen.push_back(std::move(row));
    }
    return chosen;
}

std::string line_of(const SpeedRow& row, double rate, std::size_t width) {
    char number[32];
    const auto end = std::to_chars(number, number + sizeof number, rate, std::chars_format::fixed, 1).ptr;
    const auto right = [](std::string_view cell, std::size_t columns) {
        return std::string(columns - std::min(columns, cell.size()), ' ').append(cell);
    };
    std::string text(row.name);
    text.resize(width + 1, ' ');
    text += right(row.bytes == 0 ? "-" : std::to_string(row.bytes), 6);
    text += right({number, end}, 13);
    text += row.bytes == 0 ? " operations/s\n" : " MB/s\n";
    return text;
}

void measure(const SpeedRows& rows, double seconds, bool as_json) {
    std::size_t width = 0;
    for (const SpeedRow& row : rows) width = std::max(width, row.name.size());
    Json json;
    json.open_object().member("seconds", seconds).key("rows").open_array();
    for (const SpeedRow& row : rows) {
        double rate = 0;
        {
            const LibraryQuiet quiet;
            rate = calls_per_second(row.prepare(), seconds);
        }
        if (row.bytes != 0) rate *= static_cast<double>(row.bytes) / kMegabyte;
        if (!as_json) print(line_of(row, rate, width));
        json.open_object().member("name", row.name);
        if (row.bytes != 0) json.member("bytes", row.bytes);
        json.member(row.bytes != 0 ? "mb_per_s" : "operations_per_s", rate).close_object();
    }
    json.close_array().close_object();
    if (as_json) json.print();
}

}  // namespace

ExitCode run_speed(const Verb& verb, const Arguments& arguments) {
    CommandLine line(verb);
    double seconds = kDefaultSeconds;
    bool as_json = false;
    const CLI::Option* const names = line.add_list(
        "NAME", "What to measure: sha1, des-cbc, des-cbc-decrypt, rsa, rsa-2048-sign; everything when it is missing");
    line.add_option("--seconds", seconds, "How long each row is measured; default is 0.2")->type_name("S");
    line.add_json(as_json);
    line.footer(
        "Each row has a name, the bytes of a message, and megabytes (10^6) or operations in a second, on one thread.\n"
        "Messages are 64 bytes and 16 KiB, keys set up before. Searches for primes and keys take a time that varies:\n"
        "give them more seconds.\n"
        "\n"
        "Examples:\n"
        "  morvane speed sha1 des-cbc --seconds 0.05\n"
        "\n"
        "Exit codes: 0 good, 2 wrong usage, 3 standard output cannot be written.");
    if (const auto code = line.read(arguments)) return *code;
    return carry_out(verb, [&] {
        if (!(seconds > 0 && seconds <= kMostSeconds)) throw UsageError("--seconds is above 0, up to 3600");
        measure(chosen_rows(names->results()), seconds, as_json);
    });
}

}  // namespace morvane::tool
