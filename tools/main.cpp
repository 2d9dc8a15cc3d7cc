// morvane: the command. Its verbs, and the two that tell about the others.
#include "command_line.h"
#include "json.h"
#include "output.h"
#include "system.h"

#include <morvane/version.h>

#include <algorithm>
#include <exception>

namespace morvane::tool {
namespace {

ExitCode run_version(const Verb& verb, const Arguments& arguments);
ExitCode run_help(const Verb& verb, const Arguments& arguments);

constexpr Verb kVerbs[] = {
    {"digest", "Prints or checks digests of files", run_digest},
    {"encrypt", "Enciphers a file", run_encrypt},
    {"decrypt", "Deciphers a file", run_decrypt},
    {"random", "Prints random bytes", run_random},
    {"prime", "Searches for a prime or tests a number", run_prime},
    {"genkey", "Makes a key pair", run_genkey},
    {"sign", "Signs a file", run_sign},
    {"verify", "Verifies the signature of a file", run_verify},
    {"derive", "Derives the secret that two keys agree on", run_derive},
    {"rsa", "Enciphers, deciphers, signs or verifies with an RSA key", run_rsa},
    {"ec", "Enciphers or deciphers with a key on an elliptic curve", run_ec},
    {"selftest", "Tests every algorithm by known answers", run_selftest},
    {"speed", "Measures the library on this machine", run_speed},
    {"list", "Lists the algorithms", run_list},
    {"version", "Prints the version", run_version},
    {"help", "Explains the command or one of its verbs", run_help},
};

const Verb* find_verb(std::string_view name) {
    const auto* const found = std::ranges::find(kVerbs, name, &Verb::name);
    return found == std::end(kVerbs) ? nullptr : found;
}

std::vector<std::string> verb_names() {
    std::vector<std::string> names;
    for (const Verb& verb : kVerbs) names.emplace_back(verb.name);
    return names;
}

ExitCode unknown_verb(const std::string& name) { return usage_error("", "there is no verb '" + name + "'"); }

ExitCode run_version(const Verb& verb, const Arguments& arguments) {
    CommandLine line(verb);
    bool as_json = false;
    line.add_json(as_json);
    line.footer("Examples:\n  morvane version --json");
    if (const auto code = line.read(arguments)) return *code;
    if (as_json) {
        Json().open_object().member("name", "morvane").member("version", MORVANE_VERSION).close_object().print();
    } else {
        print("morvane " MORVANE_VERSION "\n");
    }
    return kSuccess;
}

ExitCode run_help(const Verb& verb, const Arguments& arguments) {
    CommandLine line(verb);
    std::string name;
    const CLI::Option* const topic = line.add_option("VERB", name, "The verb to explain")->type_name("");
    line.offer("VERB", verb_names());
    line.footer("Examples:\n  morvane help digest");
    if (const auto code = line.read(arguments)) return *code;

    if (!topic->empty()) {
        const Verb* const explained = find_verb(name);
        return explained == nullptr ? unknown_verb(name) : explained->run(*explained, {"--help"});
    }
    std::string text = "Usage: morvane VERB [ARGUMENTS]\n\nVerbs:\n";
    for (const Verb& each : kVerbs) {
        constexpr std::size_t kColumn = 12;
        std::string start = "  " + std::string(each.name);
        start.resize(std::max(start.size() + 1, kColumn), ' ');
        text += start + std::string(each.summary) + "\n";
    }
    print(text +
          "\n"
          "'morvane help VERB' explains a verb. Where a file stands, - is standard input or output.\n"
          "\n"
          "Exit codes:\n"
          "  0  good\n"
          "  1  the answer is no: a digest or signature that does not match, a wrong key, damaged data, no prime\n"
          "  2  wrong usage\n"
          "  3  a file cannot be read or written, or is not what it should be; no memory\n"
          "  4  a self-test has failed\n");
    return kSuccess;
}

// What may come next, asked by tools/completion/morvane.bash; the last word is being typed.
ExitCode complete(const Arguments& words) {
    if (words.size() > 1) {
        const Verb* const verb = find_verb(words.front());
        Arguments arguments(words);
        arguments.front() = kCompletionMark;
        return verb == nullptr ? kSuccess : verb->run(*verb, arguments);
    }
    for (const std::string& name : verb_names()) print(name + "\n");
    return kSuccess;
}

ExitCode run_verb(Arguments arguments) {
    if (arguments.empty()) return usage_error("", "a verb is missing");
    std::string name = std::move(arguments.front());
    arguments.erase(arguments.begin());
    if (name == "--version") name = "version";
    if (name == "--help" || name == "-h") name = "help";
    if (name == "complete") return complete(arguments);
    const Verb* const verb = find_verb(name);
    return verb == nullptr ? unknown_verb(name) : verb->run(*verb, arguments);
}

}  // namespace

int run(const Arguments& arguments) {
    ExitCode result = kInputOutput;
    try {
        result = run_verb(arguments);
    } catch (const std::exception& error) {
        complain(error.what());
    }
    return output_failed() && result == kSuccess ? kInputOutput : result;
}

}  // namespace morvane::tool
