// Standard output and the messages on standard error.
#pragma once

#include <cstdint>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>

namespace morvane::tool {

// Writes to standard output. A failure is remembered for output_failed.
void print(std::string_view text);

// Its text is a complete message: the name and the reason.
struct OutputError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// Writes to standard output, past its buffer. Throws OutputError when that or an earlier print failed; output_failed then
// has nothing to add.
void write_now(std::span<const std::uint8_t> bytes);

// Writes "morvane: <text>" and a line end to standard error, after everything printed so far.
void complain(std::string_view text);

// While one lives, what the library says on standard output is dropped: it must not be taken for data, nor tell which check
// a ciphertext did not pass.
class LibraryQuiet {
public:
    LibraryQuiet();
    ~LibraryQuiet();
    LibraryQuiet(const LibraryQuiet&) = delete;
    LibraryQuiet& operator=(const LibraryQuiet&) = delete;

private:
    int kept_ = -1;
};

// Writes out what is still in the buffer. If that or any print failed, returns true, and complains if nobody
// did yet.
bool output_failed();

}  // namespace morvane::tool
