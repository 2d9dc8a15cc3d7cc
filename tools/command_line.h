// What the verbs share in reading their options.
#pragma once

#include "algorithms.h"
#include "verb.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <functional>
#include <initializer_list>
#include <optional>
#include <stdexcept>

namespace morvane::tool {

// The options of one verb; the verb adds its own to it.
class CommandLine : public CLI::App {
public:
    explicit CommandLine(const Verb& verb);

    // Any number of file names, to be taken from the option's results(): the parser's conversion to a list of strings
    // takes a lone "{}" for an empty list.
    CLI::Option* add_files(const std::string& description);

    // One file name, from the option's results() likewise.
    CLI::Option* add_file(const std::string& name, const std::string& description);

    // Reads the arguments. An exit code when there is nothing left to do: help was asked for, or the usage is wrong.
    std::optional<ExitCode> read(const Arguments& arguments);

private:
    const Verb& verb_;
};

// The usage is wrong: a text for usage_error.
struct UsageError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// What was wrong is the data or the key for it. Its text is a complete message.
struct MismatchError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// Runs `work` and turns what it throws of the two above into a message and an exit code.
ExitCode carry_out(const Verb& verb, const std::function<void()>& work);

// At most one of these files can be standard input. Throws UsageError.
void require_one_standard_input(std::initializer_list<std::string_view> names);

// The row that the value of an option names. Throws UsageError when there is none.
template <typename Row, std::size_t Rows>
const Row& find_row(const Row (&rows)[Rows], const std::string& option, std::string_view name) {
    const auto* const found = std::ranges::find_if(rows, [name](const Row& row) { return same_name(row.name, name); });
    if (found != std::end(rows)) return *found;
    std::string names;
    for (const Row& row : rows) {
        names += ' ';
        names += row.name;
    }
    throw UsageError(option + " is one of" + names);
}

// Says on one line what is wrong and where the usage is explained; `verb` may be empty.
ExitCode usage_error(std::string_view verb, std::string_view what);

}  // namespace morvane::tool
