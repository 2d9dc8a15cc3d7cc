#include "command_line.h"

#include "input.h"
#include "output.h"

namespace morvane::tool {

CommandLine::CommandLine(const Verb& verb)
    : CLI::App(std::string(verb.summary), "morvane " + std::string(verb.name)), verb_(verb) {
    // Otherwise /name is an option on Windows.
    allow_windows_style_options(false);
}

CLI::Option* CommandLine::add_files(const std::string& description) {
    // The usual way to ask for any number, expected(-1), makes the parser split a file name in brackets at its commas.
    // Here it takes as many operands as are expected at least, and with this policy it does not mind fewer.
    constexpr int kMany = CLI::detail::expected_max_vector_size;
    return add_option("FILE", CLI::callback_t{}, description)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
        ->expected(kMany, kMany);
}

CLI::Option* CommandLine::add_file(const std::string& name, const std::string& description) {
    return add_option(name, CLI::callback_t{}, description)->expected(1);
}

std::optional<ExitCode> CommandLine::read(const Arguments& arguments) {
    try {
        parse(Arguments(arguments.rbegin(), arguments.rend()));  // the parser takes them from the back
        return std::nullopt;
    } catch (const CLI::CallForHelp&) {
        print(help());
        return kSuccess;
    } catch (const CLI::ParseError& error) {
        return usage_error(verb_.name, error.what());
    }
}

ExitCode carry_out(const Verb& verb, const std::function<void()>& work) {
    try {
        work();
        return kSuccess;
    } catch (const UsageError& error) {
        return usage_error(verb.name, error.what());
    } catch (const MismatchError& error) {
        complain(error.what());
        return kMismatch;
    }
}

void require_one_standard_input(std::initializer_list<std::string_view> names) {
    if (std::ranges::count(names, kStandardInput) > 1) {
        throw UsageError("standard input cannot be several files at once");
    }
}

ExitCode usage_error(std::string_view verb, std::string_view what) {
    const std::string space = verb.empty() ? "" : " ";
    complain(std::string(what) + "; see 'morvane help" + space + std::string(verb) + "'");
    return kUsage;
}

}  // namespace morvane::tool
