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

enum class FileKind { kNone, kRegular, kOther };

// What is there under this name; a symbolic link is kOther.
FileKind kind_of(const std::string& name);

enum class Access { kUsual, kOwner };

// Creates a file for writing bytes, with the permissions of the file `like` where there is one; kOwner lets nobody but the
// owner read or write it, on systems where a file says so itself. Null, with the reason in errno, when that fails: EEXIST
// when the name is taken.
std::FILE* create_file(const std::string& name, const std::string& like, Access access);

// Renames a file; one that has the new name already is replaced or, unless `replace`, a reason to fail. False, with the
// reason in errno, when it fails.
bool move_file(const std::string& from, const std::string& to, bool replace);

void remove_file(const std::string& name);

// Until the next call, the file of this name is removed when the user or the system ends the program. Empty: none is.
void remove_when_interrupted(const std::string& name);

bool stderr_is_terminal();

// From the first call to the second one, what is written to the descriptor of standard output goes nowhere. The first
// returns what the second takes, negative when it could do nothing. The stream's buffer is the caller's affair.
int silence_stdout();
void restore_stdout(int kept);

}  // namespace morvane::tool
