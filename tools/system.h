// The few things that differ between the systems. system_posix.cpp and system_windows.cpp also hold the program's entry.
#pragma once

#include "verb.h"

#include <cstdint>
#include <cstdio>

namespace morvane::tool {

// The whole command, in main.cpp: called by the entry with binary standard streams and without the program's name.
int run(const Arguments& arguments);

// Opens a file for reading bytes. Null, with the reason in errno, when that fails; a directory is refused here or by the
// first read.
std::FILE* open_for_reading(const std::string& name);

// The size of a regular file, 0 for anything else.
std::uint64_t size_of(std::FILE* file);

bool stderr_is_terminal();

}  // namespace morvane::tool
