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
    files_.push_back(add_list("FILE", description));
    return get_option("FILE");
}

CLI::Option* CommandLine::add_list(const std::string& name, const std::string& description) {
    // The usual way to ask for any number, expected(-1), makes the parser split a file name in brackets at its commas.
    // Here it takes as many operands as are expected at least, and with this policy it does not mind fewer.
    constexpr int kMany = CLI::detail::expected_max_vector_size;
    return add_option(name, CLI::callback_t{}, description)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
        ->expected(kMany, kMany);
}

CLI::Option* CommandLine::add_file(const std::string& name, const std::string& description) {
    CLI::Option* const option = add_option(name, CLI::callback_t{}, description)->expected(1)->type_name("FILE");
    files_.push_back(option);
    return option;
}

CLI::Option* CommandLine::add_key_file(const std::string& description) {
    return add_file("--key,--key-file", description)->required();
}

void CommandLine::offer(const std::string& option, std::vector<std::string> words) {
    words_.emplace_back(get_option(option), std::move(words));
}

void CommandLine::suggest(const CLI::Option& option) const {
    for (const auto& [offered, words] : words_) {
        if (offered != &option) continue;
        for (const std::string& word : words) print(word + "\n");
    }
    if (std::ranges::count(files_, &option) != 0) print(std::string(kFilesFit) + "\n");
}

void CommandLine::complete(const Arguments& typed) const {
    // The option whose value the word at a place is.
    const auto option_before = [&](std::size_t at) {
        const bool follows_one = at != 0 && typed[at - 1].starts_with("--");
        const CLI::Option* const option = follows_one ? get_option_no_throw(typed[at - 1]) : nullptr;
        return option != nullptr && option->get_items_expected_max() > 0 ? option : nullptr;
    };
    const std::size_t last = typed.size() - 1;
    if (const CLI::Option* const option = option_before(last)) return suggest(*option);
    std::size_t operands = 0;
    for (std::size_t i = 0; i < last; ++i) {
        if (option_before(i) == nullptr && !typed[i].starts_with("--")) ++operands;
    }
    const bool wants_option = typed[last].starts_with("-");
    for (const CLI::Option* const option : get_options()) {
        if (wants_option) {
            for (const std::string& name : option->get_lnames()) print("--" + name + "\n");
        } else if (option->get_positional()) {
            const bool is_list = option->get_items_expected_max() > 1;
            if (operands == 0 || is_list) return suggest(*option);
            --operands;
        }
    }
}

void CommandLine::add_json(bool& as_json) { add_flag("--json", as_json, "Print the answer as JSON"); }

std::optional<ExitCode> CommandLine::read(const Arguments& arguments) {
    if (arguments.size() > 1 && arguments.front() == kCompletionMark) {
        complete({arguments.begin() + 1, arguments.end()});
        return kSuccess;
    }
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

ExitCode usage_error(std::string_view verb, std::string_view what) {
    const std::string space = verb.empty() ? "" : " ";
    complain(std::string(what) + "; see 'morvane help" + space + std::string(verb) + "'");
    return kUsage;
}

}  // namespace morvane::tool
