#include "system.h"

#include <atomic>
#include <cerrno>

#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>
#include <windows.h>

namespace morvane::tool {
namespace {

// Empty when the text is not UTF-8.
std::wstring to_wide(const std::string& text) {
    const int bytes = static_cast<int>(text.size());
    std::wstring wide(text.size(), L'\0');  // no encoding of UTF-16 has fewer bytes than words
    const int words = MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, text.data(), bytes, wide.data(), bytes);
    wide.resize(static_cast<std::size_t>(words));
    return wide;
}

std::string to_utf8(const wchar_t* wide) {
    const int size = WideCharToMultiByte(CP_UTF8, 0, wide, -1, nullptr, 0, nullptr, nullptr);
    if (size <= 0) return {};
    std::string text(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, wide, -1, text.data(), size, nullptr, nullptr);
    text.pop_back();  // the terminating zero
    return text;
}

int errno_of(DWORD error) {
    switch (error) {
        case ERROR_FILE_EXISTS:
        case ERROR_ALREADY_EXISTS:
            return EEXIST;
        case ERROR_FILE_NOT_FOUND:
        case ERROR_PATH_NOT_FOUND:
        case ERROR_INVALID_NAME:
            return ENOENT;
        case ERROR_DISK_FULL:
            return ENOSPC;
        default:
            return EACCES;
    }
}

std::atomic<const wchar_t*> removed_when_interrupted = nullptr;

// Runs in a thread of its own while the program goes on.
BOOL WINAPI remove_interrupted(DWORD) {
    if (const wchar_t* const name = removed_when_interrupted) DeleteFileW(name);
    return FALSE;  // the system's own handler then ends the program
}

// Makes a console show UTF-8 while the program runs.
class Utf8Console {
public:
    Utf8Console() : before_(GetConsoleOutputCP()) { SetConsoleOutputCP(CP_UTF8); }
    ~Utf8Console() { SetConsoleOutputCP(before_); }
    Utf8Console(const Utf8Console&) = delete;
    Utf8Console& operator=(const Utf8Console&) = delete;

private:
    UINT before_;
};

}  // namespace

std::FILE* open_for_reading(const std::string& name) {
    const std::wstring wide = to_wide(name);
    if (wide.empty()) {
        errno = ENOENT;
        return nullptr;
    }
    std::FILE* const file = _wfopen(wide.c_str(), L"rb");
    if (file == nullptr) {
        // The runtime calls a directory "permission denied".
        const int reason = errno;
        const DWORD attributes = GetFileAttributesW(wide.c_str());
        const bool directory = attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
        errno = directory ? EISDIR : reason;
    }
    return file;
}

std::uint64_t size_of(std::FILE* file) {
    struct _stat64 status {};
    if (_fstat64(_fileno(file), &status) != 0 || (status.st_mode & _S_IFMT) != _S_IFREG) return 0;
    return static_cast<std::uint64_t>(status.st_size);
}

FileKind kind_of(const std::string& name) {
    const DWORD attributes = GetFileAttributesW(to_wide(name).c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) return FileKind::kNone;
    constexpr DWORD kOthers = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_DEVICE | FILE_ATTRIBUTE_REPARSE_POINT;
    return (attributes & kOthers) == 0 ? FileKind::kRegular : FileKind::kOther;
}

// Permissions come from the folder here.
std::FILE* create_file(const std::string& name, const std::string&, Access) {
    // The runtime's own functions would keep an interrupted file from being deleted while it is open.
    const HANDLE handle = CreateFileW(to_wide(name).c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr,
                                      CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE) {
        errno = errno_of(GetLastError());
        return nullptr;
    }
    const int file = _open_osfhandle(reinterpret_cast<intptr_t>(handle), _O_WRONLY | _O_BINARY);
    return _fdopen(file, "wb");
}

bool move_file(const std::string& from, const std::string& to, bool replace) {
    if (MoveFileExW(to_wide(from).c_str(), to_wide(to).c_str(), replace ? MOVEFILE_REPLACE_EXISTING : 0)) return true;
    errno = errno_of(GetLastError());
    return false;
}

void remove_file(const std::string& name) { DeleteFileW(to_wide(name).c_str()); }

void remove_when_interrupted(const std::string& name) {
    static const bool caught = SetConsoleCtrlHandler(remove_interrupted, TRUE) != 0;
    static_cast<void>(caught);
    static std::wstring kept;  // the handler must not see it change
    removed_when_interrupted = nullptr;
    kept = to_wide(name);
    if (!kept.empty()) removed_when_interrupted = kept.c_str();
}

bool stderr_is_terminal() {
    // _isatty says yes to every character device, NUL among them.
    DWORD mode = 0;
    return GetConsoleMode(GetStdHandle(STD_ERROR_HANDLE), &mode) != 0;
}

int silence_stdout() {
    const int nowhere = _open("NUL", _O_WRONLY | _O_BINARY);
    if (nowhere < 0) return -1;
    const int kept = _dup(_fileno(stdout));
    if (kept >= 0) _dup2(nowhere, _fileno(stdout));
    _close(nowhere);
    return kept;
}

void restore_stdout(int kept) {
    if (kept < 0) return;
    _dup2(kept, _fileno(stdout));
    _close(kept);
}

}  // namespace morvane::tool

extern "C" int wmain(int argc, wchar_t** argv) {
    using namespace morvane::tool;
    for (std::FILE* stream : {stdin, stdout, stderr}) _setmode(_fileno(stream), _O_BINARY);
    const Utf8Console console;
    Arguments arguments;
    for (int i = 1; i < argc; ++i) arguments.push_back(to_utf8(argv[i]));
    return run(arguments);
}
