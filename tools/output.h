// Standard output and the messages on standard error.
#pragma once

#include <string>
#include <string_view>

namespace morvane::tool {

// Writes to standard output. A failure is remembered for output_failed.
void print(std::string_view text);

// Writes "morvane: <text>" and a line end to standard error, after everything printed so far.
void complain(std::string_view text);

// Writes out what is still in the buffer. If that or any print failed, complains once and returns true.
bool output_failed();

}  // namespace morvane::tool
