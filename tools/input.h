// Files and standard input, read from front to back.
#pragma once

#include "secret.h"

#include <cstdint>
#include <cstdio>
#include <memory>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

namespace morvane::tool {

// Its text is a complete message: the name and the reason.
struct InputError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

inline constexpr char kStandardInput[] = "-";

// The name as messages give it.
std::string display_name(const std::string& name);

// One input of any length; the name "-" stands for standard input. Opening and reading throw InputError.
class Input {
public:
    explicit Input(const std::string& name);

    // The size in bytes, 0 where nobody knows.
    std::uint64_t size() const;

    // Fills the buffer as far as the input goes; 0 at the end.
    std::size_t read(std::span<std::uint8_t> buffer);

private:
    struct Close {
        void operator()(std::FILE* file) const;
    };
    std::string name_;
    std::unique_ptr<std::FILE, Close> file_;
};

// At most limit bytes of it and, of a longer one, one more.
Secret read_short(const std::string& name, std::size_t limit);

// All of it, if it is no more than that: as much as the library takes in one call, or less. Throws InputError for more.
std::vector<std::uint8_t> read_whole(const std::string& name, std::size_t most = INT32_MAX);

// The lines of an input, without their ends, LF or CR LF.
class LineReader {
public:
    explicit LineReader(const std::string& name);

    // The next line, nothing after the last. Of a line beyond kLongestLine only the beginning is kept: an input that is no
    // text at all must not fill the memory.
    std::optional<std::string> next();

    static constexpr std::size_t kLongestLine = 1 << 20;

private:
    Input input_;
    std::vector<std::uint8_t> buffer_;
    std::span<const std::uint8_t> unread_;
};

}  // namespace morvane::tool
