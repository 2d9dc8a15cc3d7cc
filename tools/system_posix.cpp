#include "system.h"

#include <atomic>
#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace morvane::tool {
namespace {

std::atomic<const char*> removed_when_interrupted = nullptr;
static_assert(std::atomic<const char*>::is_always_lock_free);  // a signal may come at any time

void remove_and_end(int signal) {
    if (const char* const name = removed_when_interrupted) unlink(name);
    static_cast<void>(
        raise(signal));  // pending until this returns; then it ends the program as if it had never been caught
}

void catch_interrupts() {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction action {};
        if (sigaction(signal, nullptr, &action) != 0 || action.sa_handler == SIG_IGN) continue;
        action.sa_handler = remove_and_end;
        action.sa_flags = static_cast<int>(SA_RESETHAND);
        sigaction(signal, &action, nullptr);
    }
}

}  // namespace

std::FILE* open_for_reading(const std::string& name) { return std::fopen(name.c_str(), "rb"); }

std::uint64_t size_of(std::FILE* file) {
    struct stat status {};
    if (fstat(fileno(file), &status) != 0 || !S_ISREG(status.st_mode)) return 0;
    return static_cast<std::uint64_t>(status.st_size);
}

FileKind kind_of(const std::string& name) {
    struct stat status {};
    if (lstat(name.c_str(), &status) != 0) return FileKind::kNone;
    return S_ISREG(status.st_mode) ? FileKind::kRegular : FileKind::kOther;
}

std::FILE* create_file(const std::string& name, const std::string& like, Access access) {
    struct stat status {};
    const bool replaces = access == Access::kUsual && stat(like.c_str(), &status) == 0;
    const mode_t permissions = access == Access::kOwner ? 0600 : replaces ? status.st_mode & 0777 : 0666;
    const int file = open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, permissions);
    return file < 0 ? nullptr : fdopen(file, "wb");
}

bool move_file(const std::string& from, const std::string& to, bool replace) {
    if (replace) return std::rename(from.c_str(), to.c_str()) == 0;
    // Unlike a rename, a link never replaces. Some file systems have none; there the earlier look at `to` must do.
    if (link(from.c_str(), to.c_str()) == 0) {
        unlink(from.c_str());
        return true;
    }
    return errno != EEXIST && std::rename(from.c_str(), to.c_str()) == 0;
}

void remove_file(const std::string& name) { unlink(name.c_str()); }

void remove_when_interrupted(const std::string& name) {
    static const bool caught = (catch_interrupts(), true);
    static_cast<void>(caught);
    static std::string kept;  // the handler must not see it change
    removed_when_interrupted = nullptr;
    kept = name;
    if (!kept.empty()) removed_when_interrupted = kept.c_str();
}

bool stderr_is_terminal() { return isatty(STDERR_FILENO) != 0; }

int silence_stdout() {
    const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (nowhere < 0) return -1;
    const int kept = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 0);
    if (kept >= 0) dup2(nowhere, STDOUT_FILENO);
    close(nowhere);
    return kept;
}

void restore_stdout(int kept) {
    if (kept < 0) return;
    dup2(kept, STDOUT_FILENO);
    close(kept);
}

}  // namespace morvane::tool

int main(int argc, char** argv) { return morvane::tool::run({argv + (argc > 0 ? 1 : 0), argv + argc}); }
