// Checking files against the digests kept in sum files.
#pragma once

#include "algorithms.h"
#include "verb.h"

namespace morvane::tool {

// Reads each sum file and checks every file named in it. With `quiet` the good ones are not listed.
ExitCode check_sum_files(const Algorithm& algorithm, const Arguments& sum_files, bool quiet);

}  // namespace morvane::tool
