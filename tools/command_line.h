// What the verbs share in reading their options.
#pragma once

#include "verb.h"

#include <CLI/CLI.hpp>

#include <optional>

namespace morvane::tool {

// The options of one verb; the verb adds its own to it.
class CommandLine : public CLI::App {
public:
    explicit CommandLine(const Verb& verb);

    // Any number of file names, to be taken from the option's results(): the parser's conversion to a list of strings
    // takes a lone "{}" for an empty list.
    CLI::Option* add_files(const std::string& description);

    // Reads the arguments. An exit code when there is nothing left to do: help was asked for, or the usage is wrong.
    std::optional<ExitCode> read(const Arguments& arguments);

private:
    const Verb& verb_;
};

// Says on one line what is wrong and where the usage is explained; `verb` may be empty.
ExitCode usage_error(std::string_view verb, std::string_view what);

}  // namespace morvane::tool
