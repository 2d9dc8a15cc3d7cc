// With MORVANE_TEST_GUARDS set to "after" or "before", every block of operator new, and so every buffer of a test, ends or
// begins at a page that nobody may touch: a read or write too far stops the program. Not on 32-bit Windows, which gives out
// addresses by 64 KiB and has not enough of them.
#if defined(__linux__) && !defined(__SANITIZE_ADDRESS__)  // the sanitizer sees this by itself

#include <sys/mman.h>
#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>

namespace {

constexpr std::size_t kPage = 4096;

enum class Guards { kNone, kAfter, kBefore };

Guards guards() {
    static const Guards chosen = [] {
        const char* const wanted = std::getenv("MORVANE_TEST_GUARDS");
        if (wanted == nullptr) return Guards::kNone;
        return std::strcmp(wanted, "after") == 0 ? Guards::kAfter : Guards::kBefore;
    }();
    return chosen;
}

std::uint8_t* map(std::size_t size) {
    void* const block = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    return block == MAP_FAILED ? nullptr : static_cast<std::uint8_t*>(block);
}
void close_page(std::uint8_t* page) { mprotect(page, kPage, PROT_NONE); }
void unmap(std::uint8_t* block, std::size_t size) { munmap(block, size); }

// A page with this at its beginning, a closed one, the pages of the block, a closed one. They are used again and again, for
// closing takes its time.
struct Head {
    std::size_t room;
    Head* next;
};

constexpr std::size_t kKeptPages = 64;
Head* kept[kKeptPages + 1];
std::atomic_flag busy;

class Turn {
public:
    Turn() {
        while (busy.test_and_set()) {
        }
    }
    ~Turn() { busy.clear(); }
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;
};

Head* make(std::size_t room) {
    std::uint8_t* const base = map(room + 3 * kPage);
    if (base == nullptr) std::abort();
    close_page(base + kPage);
    close_page(base + 2 * kPage + room);
    return new (base) Head{room, nullptr};
}

void* guarded(std::size_t size) {
    size = size == 0 ? 1 : size;
    const std::size_t pages = (size + kPage - 1) / kPage;
    Head* head = nullptr;
    if (pages <= kKeptPages) {
        const Turn turn;
        head = kept[pages];
        if (head != nullptr) kept[pages] = head->next;
    }
    if (head == nullptr) head = make(pages * kPage);
    std::uint8_t* const data = reinterpret_cast<std::uint8_t*>(head) + 2 * kPage;
    return guards() == Guards::kAfter ? data + (head->room - size) : data;
}

// Either way the block begins in the first of its pages.
void release(void* block) {
    const std::uintptr_t in_page = reinterpret_cast<std::uintptr_t>(block) % kPage;
    auto* const head = reinterpret_cast<Head*>(static_cast<std::uint8_t*>(block) - in_page - 2 * kPage);
    if (head->room > kKeptPages * kPage) return unmap(reinterpret_cast<std::uint8_t*>(head), head->room + 3 * kPage);
    const Turn turn;
    head->next = kept[head->room / kPage];
    kept[head->room / kPage] = head;
}

}  // namespace

void* operator new(std::size_t size) {
    if (guards() != Guards::kNone) return guarded(size);
    void* const block = std::malloc(size == 0 ? 1 : size);
    if (block == nullptr) std::abort();
    return block;
}

void operator delete(void* block) noexcept {
    if (block == nullptr) return;
    if (guards() == Guards::kNone) {
        std::free(block);
    } else {
        release(block);
    }
}

void operator delete(void* block, std::size_t /*size*/) noexcept { operator delete(block); }

#endif
