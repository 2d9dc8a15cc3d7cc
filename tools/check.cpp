#include "check.h"

#include "file_digest.h"
#include "input.h"
#include "json.h"
#include "output.h"
#include "sum_file.h"

namespace morvane::tool {
namespace {

struct Tally {
    std::size_t good_lines = 0;
    std::size_t bad_lines = 0;
    std::size_t unreadable = 0;
    std::size_t mismatches = 0;
};

class Checker {
public:
    Checker(const Algorithm& algorithm, CheckOutput output) : algorithm_(algorithm), digester_(algorithm), output_(output) {
        json_.open_object().member("algorithm", algorithm.name).key("files").open_array();
    }
    void finish() {
        json_.close_array().member("good", result() == kSuccess).close_object();
        if (output_.as_json) json_.print();
    }

    void check(const std::string& sum_file);
    ExitCode result() const { return mismatch_ ? kMismatch : trouble_ ? kInputOutput : kSuccess; }

private:
    void check_lines(const std::string& sum_file, Tally& tally);
    void check_file(const SumLine& line, Tally& tally);
    void tell(const SumLine& line, std::string_view result, std::string_view printed);
    void report(const std::string& sum_file, const Tally& tally);

    const Algorithm& algorithm_;
    FileDigester digester_;
    CheckOutput output_;
    Json json_;
    bool mismatch_ = false;
    bool trouble_ = false;
};

void Checker::check(const std::string& sum_file) {
    Tally tally;
    try {
        check_lines(sum_file, tally);
        if (tally.good_lines == 0) {
            throw InputError(escape_name(sum_file) + ": no line with a digest of " + std::string(algorithm_.name));
        }
    } catch (const InputError& error) {
        complain(error.what());
        trouble_ = true;
    }
    report(sum_file, tally);
}

void Checker::check_lines(const std::string& sum_file, Tally& tally) {
    LineReader lines(sum_file);
    while (const std::optional<std::string> text = lines.next()) {
        if (text->empty() || text->front() == '#') continue;
        const std::optional<SumLine> line = parse_sum_line(*text, algorithm_);
        // Standard input cannot be both the list and one of the files in it.
        const bool itself = line && line->name == kStandardInput && sum_file == kStandardInput;
        if (!line || itself) {
            ++tally.bad_lines;
        } else {
            ++tally.good_lines;
            check_file(*line, tally);
        }
    }
}

void Checker::check_file(const SumLine& line, Tally& tally) {
    try {
        if (digester_(line.name) != line.digest) {
            ++tally.mismatches;
            tell(line, "mismatch", "FAILED");
        } else if (!output_.quiet) {
            tell(line, "good", "OK");
        }
    } catch (const InputError& error) {
        ++tally.unreadable;
        complain(error.what());
        tell(line, "unreadable", "FAILED open or read");
    }
}

void Checker::tell(const SumLine& line, std::string_view result, std::string_view printed) {
    json_.open_object().file_member("file", line.name).member("result", result).close_object();
    if (output_.as_json) return;
    std::string name = escape_name(line.name);
    if (name != line.name) name.insert(0, 1, '\\');
    print(name.append(": ").append(printed).append("\n"));
}

void Checker::report(const std::string& sum_file, const Tally& tally) {
    mismatch_ |= tally.mismatches != 0;
    trouble_ |= tally.unreadable != 0;
    const auto warn = [&](std::size_t count, const char* one, const char* several) {
        if (count == 0) return;
        complain(escape_name(sum_file) + ": warning: " + std::to_string(count) + " " + (count == 1 ? one : several));
    };
    warn(tally.bad_lines, "line is not in the format of a sum file", "lines are not in the format of a sum file");
    warn(tally.unreadable, "listed file could not be read", "listed files could not be read");
    warn(tally.mismatches, "digest does not match", "digests do not match");
}

}  // namespace

ExitCode check_sum_files(const Algorithm& algorithm, const Arguments& sum_files, CheckOutput output) {
    Checker checker(algorithm, output);
    for (const std::string& sum_file : sum_files) checker.check(sum_file);
    checker.finish();
    return checker.result();
}

}  // namespace morvane::tool
