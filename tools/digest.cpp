// morvane digest: prints digests of files, or checks them.
#include "check.h"
#include "command_line.h"
#include "file_digest.h"
#include "input.h"
#include "output.h"

namespace morvane::tool {
namespace {

ExitCode print_digests(const Algorithm& algorithm, const Arguments& names) {
    FileDigester digester(algorithm);
    ExitCode result = kSuccess;
    for (const std::string& name : names) {
        try {
            print(format_sum_line(digester(name), name));
        } catch (const InputError& error) {
            complain(error.what());
            result = kInputOutput;
        }
    }
    return result;
}

}  // namespace

ExitCode run_digest(const Verb& verb, const Arguments& arguments) {
    CommandLine line(verb);
    std::string name;
    bool check = false, quiet = false;
    line.add_option("ALGORITHM", name, "Which digest; 'morvane list' names them")->required()->type_name("");
    const CLI::Option* const files = line.add_files("What to read; standard input for - and when there is none");
    CLI::Option* const check_flag =
        line.add_flag("-c,--check", check, "Read digests and file names from each FILE and check them");
    line.add_flag("--quiet", quiet, "With --check: do not list files that are good")->needs(check_flag);
    line.footer(
        "Exit codes: 0 good, 1 a digest does not match, 2 wrong usage, 3 a file cannot be read or a\n"
        "sum file holds no digest of the algorithm.");
    if (const auto code = line.read(arguments)) return *code;

    const Algorithm* const algorithm = find_algorithm(Kind::kDigest, name);
    if (algorithm == nullptr) return usage_error(verb.name, "no digest is called '" + name + "'");
    const Arguments names = files->empty() ? Arguments{kStandardInput} : files->results();
    return check ? check_sum_files(*algorithm, names, quiet) : print_digests(*algorithm, names);
}

}  // namespace morvane::tool
