#include "target.h"

#include "sum_file.h"

#include <cerrno>
#include <cstring>

namespace morvane::tool {
namespace {

// Files of interrupted runs are passed over, but not without end.
constexpr int kAttempts = 100;

}  // namespace

void Target::Close::operator()(std::FILE* file) const {
    // Only a file that is thrown away is closed by its owner's end.
    static_cast<void>(std::fclose(file));
}

void Target::fail() const { throw OutputError(escape_name(name_) + ": " + std::strerror(errno)); }

void Target::require_free(const std::string& name, bool replace) {
    if (name == kStandardOutput) return;
    const FileKind there = kind_of(name);
    if (there == FileKind::kOther) throw OutputError(escape_name(name) + ": is not a regular file");
    if (there == FileKind::kRegular && !replace) {
        throw OutputError(escape_name(name) + ": exists; --force replaces it");
    }
}

Target::Target(const std::string& name, bool replace, Access access) : name_(name), replace_(replace) {
    require_free(name_, replace_);
    if (name_ == kStandardOutput) return;
    for (int i = 0; i < kAttempts && file_ == nullptr; ++i) {
        temporary_ = name_ + ".part" + std::to_string(i);
        file_.reset(create_file(temporary_, name_, access));
        if (file_ == nullptr && errno != EEXIST) break;
    }
    if (file_ == nullptr) fail();
    // What is written comes in large pieces, and a buffer would keep a copy of what may be a key.
    static_cast<void>(std::setvbuf(file_.get(), nullptr, _IONBF, 0));
    remove_when_interrupted(temporary_);
}

Target::~Target() {
    if (temporary_.empty()) return;
    file_.reset();
    remove_file(temporary_);
    remove_when_interrupted("");
}

void Target::write(std::span<const std::uint8_t> bytes) {
    if (file_ == nullptr) return write_now(bytes);
    errno = 0;
    if (std::fwrite(bytes.data(), 1, bytes.size(), file_.get()) != bytes.size()) fail();
}

void Target::keep() {
    if (file_ == nullptr) return;
    errno = 0;
    if (std::fclose(file_.release()) != 0 || !move_file(temporary_, name_, replace_)) fail();
    temporary_.clear();
    remove_when_interrupted("");
}

}  // namespace morvane::tool
