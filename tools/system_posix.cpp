#include "system.h"

#include <sys/stat.h>
#include <unistd.h>

namespace morvane::tool {

std::FILE* open_for_reading(const std::string& name) { return std::fopen(name.c_str(), "rb"); }

std::uint64_t size_of(std::FILE* file) {
    struct stat status {};
    if (fstat(fileno(file), &status) != 0 || !S_ISREG(status.st_mode)) return 0;
    return static_cast<std::uint64_t>(status.st_size);
}

bool stderr_is_terminal() { return isatty(STDERR_FILENO) != 0; }

}  // namespace morvane::tool

int main(int argc, char** argv) { return morvane::tool::run({argv + (argc > 0 ? 1 : 0), argv + argc}); }
