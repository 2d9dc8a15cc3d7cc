// Digests of whole inputs. What fits the buffer goes to the library's toolkit in one call, what is longer to its provider
// layer in pieces; digests that these do not have are computed by the primitives.
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
