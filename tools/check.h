// Checking files against the digests kept in sum files.
#pragma once

#include "algorithms.h"
#include "verb.h"

namespace morvane::tool {

struct CheckOutput {
    bool quiet;  // the good ones are not listed
    bool as_json;
};

// Reads each sum file and checks every file named in it.
ExitCode check_sum_files(const Algorithm& algorithm, const Arguments& sum_files, CheckOutput output);

}  // namespace morvane::tool
