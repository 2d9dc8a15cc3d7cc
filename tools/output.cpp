#include "output.h"

#include "system.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace morvane::tool {
namespace {

int first_failure = 0;  // the errno of it
bool failure_told = false;

void remember_failure() {
    if (first_failure == 0) first_failure = errno != 0 ? errno : EIO;
}

void flush() {
    errno = 0;
    if (std::fflush(stdout) != 0) remember_failure();
}

// To be passed on at once.
std::string tell_failure() {
    failure_told = true;
    return std::string("standard output: ") + std::strerror(first_failure);
}

}  // namespace

void print(std::string_view text) {
    errno = 0;
    if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size()) remember_failure();
}

void write_now(std::span<const std::uint8_t> bytes) {
    errno = 0;
    if (std::fwrite(bytes.data(), 1, bytes.size(), stdout) != bytes.size()) remember_failure();
    flush();
    if (first_failure != 0) throw OutputError(tell_failure());
}

void complain(std::string_view text) {
    flush();
    const std::string line = "morvane: " + std::string(text) + "\n";
    static_cast<void>(std::fwrite(line.data(), 1, line.size(), stderr));  // no place is left to complain to
}

LibraryQuiet::LibraryQuiet() {
    flush();
    kept_ = silence_stdout();
}

LibraryQuiet::~LibraryQuiet() {
    static_cast<void>(std::fflush(stdout));  // what is dropped cannot fail
    restore_stdout(kept_);
}

bool output_failed() {
    flush();
    if (first_failure == 0) return false;
    if (!failure_told) complain(tell_failure());
    return true;
}

}  // namespace morvane::tool
