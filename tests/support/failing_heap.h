// Makes the library's allocations fail on demand, and looks at what it frees. Only where the objects of the library are
// linked, with --wrap=calloc, --wrap=malloc, --wrap=free.
#pragma once

#include <cstddef>

namespace morvane::test {

// While it lives, the allocation after `good` further ones fails: it alone, or with all that follow it.
class FailingHeap {
public:
    enum class Then { kFails, kWorks };
    explicit FailingHeap(int good, Then then = Then::kFails);
    ~FailingHeap();
    FailingHeap(const FailingHeap&) = delete;
    FailingHeap& operator=(const FailingHeap&) = delete;

    bool has_failed() const;
    // Blocks from under a heap like this, now or before, that were freed under this one and were not zero all over.
    int dirty() const;

    // Blocks from under a heap like this that were not freed.
    static std::size_t live();
};

}  // namespace morvane::test
