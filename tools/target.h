// The file or standard output that a verb fills.
#pragma once

#include "output.h"
#include "system.h"

#include <cstdint>
#include <cstdio>
#include <memory>
#include <span>
#include <string>

namespace morvane::tool {

inline constexpr char kStandardOutput[] = "-";

// A file appears under its name only when it is complete: until then it is a temporary one beside it, which goes when
// something fails or the program is interrupted. Standard output, "-", is written as the bytes come. Every member throws
// OutputError.
class Target {
public:
    // A file that exists is an error unless it is to be replaced; one that is no regular file always is.
    Target(const std::string& name, bool replace, Access access = Access::kUsual);

    // Throws at once what the constructor would for a file that is there.
    static void require_free(const std::string& name, bool replace);
    ~Target();
    Target(const Target&) = delete;
    Target& operator=(const Target&) = delete;

    void write(std::span<const std::uint8_t> bytes);

    // Gives the complete file its name. Whoever may be reading the file of that name has closed it.
    void keep();

private:
    struct Close {
        void operator()(std::FILE* file) const;
    };
    [[noreturn]] void fail() const;

    std::string name_;
    bool replace_;
    std::string temporary_;                   // empty: no such file is there
    std::unique_ptr<std::FILE, Close> file_;  // null for standard output
};

}  // namespace morvane::tool
