// What the verbs share in reading their options.
#pragma once

#include "usage.h"
#include "verb.h"

#include <CLI/CLI.hpp>

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

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

    // The files that many verbs have under the same names; "-" and none at all stand for the standard streams.
    CLI::Option* add_input(const std::string& description) { return add_file("INPUT", description); }
    CLI::Option* add_output(const std::string& description) { return add_file("OUTPUT,--out", description); }
    CLI::Option* add_key_file(const std::string& description);

    // A list of names likewise.
    CLI::Option* add_list(const std::string& name, const std::string& description);

    // The flag that all verbs have whose answers a program may read.
    void add_json(bool& as_json);

    // The words that can be the value of an option or stand in the place of an operand, for completion in a shell.
    void offer(const std::string& option, std::vector<std::string> words);

    // Reads the arguments. An exit code when there is nothing left to do: help was asked for, or the usage is wrong.
    std::optional<ExitCode> read(const Arguments& arguments);

private:
    void complete(const Arguments& typed) const;
    void suggest(const CLI::Option& option) const;

    const Verb& verb_;
    std::vector<std::pair<const CLI::Option*, std::vector<std::string>>> words_;
    std::vector<const CLI::Option*> files_;
};

// In front of the arguments of a verb it asks what may come next: the last one is being typed. The answer is a word on each
// line, and kFilesFit where any file may stand.
inline constexpr std::string_view kCompletionMark = "--complete-next";
inline constexpr std::string_view kFilesFit = ":files";

// Runs `work` and turns what it throws of the two above into a message and an exit code.
ExitCode carry_out(const Verb& verb, const std::function<void()>& work);

// Says on one line what is wrong and where the usage is explained; `verb` may be empty.
ExitCode usage_error(std::string_view verb, std::string_view what);

}  // namespace morvane::tool
