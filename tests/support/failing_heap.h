// Makes the library's allocations fail on demand. Only where the objects of the library are linked, with --wrap=calloc,
// --wrap=malloc.
#pragma once

namespace morvane::test {

// While it lives, the allocation after `good` further ones fails, and all that follow it.
class FailingHeap {
public:
    explicit FailingHeap(int good);
    ~FailingHeap();
    FailingHeap(const FailingHeap&) = delete;
    FailingHeap& operator=(const FailingHeap&) = delete;
};

}  // namespace morvane::test
