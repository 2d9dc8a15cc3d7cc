#include "input.h"

#include "sum_file.h"
#include "system.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace morvane::tool {
namespace {

constexpr std::size_t kLineBuffer = 1 << 16;
constexpr std::size_t kReadBytes = 1 << 20;

[[noreturn]] void fail(const std::string& name) {
    const std::string reason = std::strerror(errno);
    throw InputError(display_name(name) + ": " + reason);
}

std::FILE* open(const std::string& name) {
    std::FILE* const file = name == kStandardInput ? stdin : open_for_reading(name);
    if (file == nullptr) fail(name);
    return file;
}

}  // namespace

std::string display_name(const std::string& name) { return name == kStandardInput ? "standard input" : escape_name(name); }

void Input::Close::operator()(std::FILE* file) const {
    // Nothing was written, so closing has nothing to say.
    if (file != stdin) static_cast<void>(std::fclose(file));
}

Input::Input(const std::string& name) : name_(name), file_(open(name)) {
    // Buffers of the stream's own save nothing, for reads are large, and would keep a copy of what may be a key.
    static_cast<void>(std::setvbuf(file_.get(), nullptr, _IONBF, 0));
}

std::uint64_t Input::size() const { return size_of(file_.get()); }

std::size_t Input::read(std::span<std::uint8_t> buffer) {
    const std::size_t size = std::fread(buffer.data(), 1, buffer.size(), file_.get());
    if (size < buffer.size() && std::ferror(file_.get()) != 0) fail(name_);
    return size;
}

Secret read_short(const std::string& name, std::size_t limit) {
    Secret bytes(std::vector<std::uint8_t>(limit + 1));
    const std::size_t size = Input(name).read(*bytes);
    (*bytes).resize(size);
    return bytes;
}

std::vector<std::uint8_t> read_whole(const std::string& name, std::size_t most) {
    Input input(name);
    std::vector<std::uint8_t> bytes;
    for (std::size_t size = 0;;) {
        bytes.resize(size + kReadBytes);
        const std::size_t more = input.read(std::span(bytes).subspan(size));
        size += more;
        if (size > most)
            throw InputError(display_name(name) + ": is too long: this takes " + std::to_string(most) + " bytes");
        if (more == kReadBytes) continue;
        bytes.resize(size);
        return bytes;
    }
}

LineReader::LineReader(const std::string& name) : input_(name), buffer_(kLineBuffer) {}

std::optional<std::string> LineReader::next() {
    std::string line;
    bool any = false;
    for (;;) {
        if (unread_.empty()) {
            unread_ = std::span(buffer_).first(input_.read(buffer_));
            if (unread_.empty()) break;
        }
        any = true;
        const auto end = std::find(unread_.begin(), unread_.end(), '\n');
        line.append(unread_.begin(), end);
        line.resize(std::min(line.size(), kLongestLine));
        const bool complete = end != unread_.end();
        unread_ = unread_.subspan(static_cast<std::size_t>(end - unread_.begin()) + (complete ? 1 : 0));
        if (complete) break;
    }
    if (!any) return std::nullopt;
    if (!line.empty() && line.back() == '\r') line.pop_back();
    return line;
}

}  // namespace morvane::tool
