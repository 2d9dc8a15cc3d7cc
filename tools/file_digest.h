// Digests of whole inputs, computed by the library's provider layer or, where that has no such digest, by its primitives.
#pragma once

#include "algorithms.h"
#include "sum_file.h"

#include <string>
#include <vector>

namespace morvane::tool {

// Reads one input after the other through the same buffer.
class FileDigester {
public:
    explicit FileDigester(const Algorithm& algorithm);

    // The digest of the file of this name, or of standard input for "-". Throws InputError when it cannot be read.
    Digest operator()(const std::string& name);

private:
    const Algorithm& algorithm_;
    std::vector<std::uint8_t> buffer_;
};

}  // namespace morvane::tool
