// morvane selftest: every algorithm of the library, by answers that are known.
#include "selftest.h"

#include "command_line.h"
#include "json.h"
#include "output.h"

#include <exception>

namespace morvane::tool {
namespace {

constexpr void (*kFamilies[])(SelfTests& all) = {add_digest_tests,   add_cipher_tests, add_number_tests, add_random_tests,
                                                 add_rsa_tests,      add_group_tests,  add_curve_tests,  add_encoding_tests,
                                                 add_provider_tests, add_toolkit_tests};

// Empty: it is good.
std::string_view trouble_of(const SelfTest& test, const std::string& broken) {
    if (test.name == broken) return "pretended";
    const LibraryQuiet quiet;
    try {
        if (!test.knows()) return "the known answer did not come out";
        return test.notices() ? "" : "a change was not noticed";
    } catch (const std::exception&) {
        return "it could not be run";
    }
}

}  // namespace

ExitCode run_selftest(const Verb& verb, const Arguments& arguments) {
    CommandLine line(verb);
    std::string broken;
    bool as_json = false;
    line.add_option("--break", broken, "Pretend that NAME failed, to see that failures are reported")->type_name("NAME");
    line.add_json(as_json);
    line.footer(
        "Runs every algorithm of the library on data whose answer is known, and again with one bit changed, which must\n"
        "be noticed.\n"
        "\n"
        "Examples:\n"
        "  morvane selftest\n"
        "\n"
        "Exit codes: 0 all are good, 2 wrong usage, 3 standard output cannot be written, 4 one has failed: do not use\n"
        "the library.");
    if (const auto code = line.read(arguments)) return *code;
    SelfTests all;
    for (const auto add : kFamilies) add(all);
    if (!broken.empty() && std::ranges::find(all, broken, &SelfTest::name) == all.end()) {
        return usage_error(verb.name, "no self-test is called '" + broken + "'");
    }

    std::size_t failed = 0;
    Json json;
    json.open_object().key("tests").open_array();
    for (const SelfTest& test : all) {
        const std::string_view trouble = trouble_of(test, broken);
        if (!trouble.empty()) ++failed;
        json.open_object().member("name", test.name).member("ok", trouble.empty());
        if (!trouble.empty()) json.member("trouble", trouble);
        json.close_object();
        if (!as_json) print(test.name + (trouble.empty() ? " ok" : " FAILED: " + std::string(trouble)) + "\n");
    }
    json.close_array().member("failed", failed).close_object();
    if (as_json) {
        json.print();
    } else {
        const std::string outcome = failed == 0 ? "all good" : std::to_string(failed) + " failed";
        print(std::to_string(all.size()) + " self-tests, " + outcome + "\n");
    }
    return failed == 0 ? kSuccess : kFailedSelfTest;
}

}  // namespace morvane::tool
