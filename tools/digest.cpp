// morvane digest: prints digests of files, or checks them.
#include "check.h"
#include "command_line.h"
#include "file_digest.h"
#include "hex.h"
#include "input.h"
#include "json.h"
#include "output.h"

namespace morvane::tool {
namespace {

ExitCode print_digests(const Algorithm& algorithm, const Arguments& names, bool as_json) {
    FileDigester digester(algorithm);
    ExitCode result = kSuccess;
    Json json;
    json.open_object().member("algorithm", algorithm.name).key("files").open_array();
    for (const std::string& name : names) {
        try {
            const Digest digest = digester(name);
            if (!as_json) print(format_sum_line(digest, name));
            json.open_object().file_member("file", name).member("digest", to_hex(digest)).close_object();
        } catch (const InputError& error) {
            complain(error.what());
            json.open_object().file_member("file", name).member("error", error.what()).close_object();
            result = kInputOutput;
        }
    }
    json.close_array().close_object();
    if (as_json) json.print();
    return result;
}

}  // namespace

ExitCode run_digest(const Verb& verb, const Arguments& arguments) {
    CommandLine line(verb);
    std::string name;
    bool check = false, quiet = false, as_json = false;
    line.add_option("ALGORITHM", name, "Which digest; 'morvane list' names them")->required()->type_name("");
    line.offer("ALGORITHM", names_of(all_algorithms()));
    const CLI::Option* const files = line.add_files("What to read; standard input for - and when there is none");
    CLI::Option* const check_flag =
        line.add_flag("-c,--check", check, "Read digests and file names from each FILE and check them");
    line.add_flag("--quiet", quiet, "With --check: do not list files that are good")->needs(check_flag);
    line.add_json(as_json);
    line.footer(
        "JSON has U+FFFD for what is no UTF-8 in a file's name, and then the name's bytes in file_hex.\n"
        "\n"
        "Examples:\n"
        "  morvane digest sha256 letter.txt\n"
        "  morvane digest sha256 --check SHA256SUMS\n"
        "\n"
        "Exit codes: 0 good, 1 a digest does not match, 2 wrong usage, 3 a file cannot be read or a\n"
        "sum file holds no digest of the algorithm.");
    if (const auto code = line.read(arguments)) return *code;

    const Algorithm* const algorithm = find_algorithm(Kind::kDigest, name);
    if (algorithm == nullptr) return usage_error(verb.name, "no digest is called '" + name + "'");
    const Arguments names = files->empty() ? Arguments{kStandardInput} : files->results();
    return check ? check_sum_files(*algorithm, names, {quiet, as_json}) : print_digests(*algorithm, names, as_json);
}

}  // namespace morvane::tool
