#include "support/failing_heap.h"

#include <cstddef>

namespace {

bool failing = false;
int good_ones = 0;

}  // namespace

extern "C" void* __real_calloc(std::size_t count, std::size_t size);
extern "C" [[gnu::visibility("default")]] void* __wrap_calloc(std::size_t count, std::size_t size) {
    return failing && good_ones-- <= 0 ? nullptr : __real_calloc(count, size);
}

extern "C" void* __real_malloc(std::size_t size);
extern "C" [[gnu::visibility("default")]] void* __wrap_malloc(std::size_t size) {
    return failing && good_ones-- <= 0 ? nullptr : __real_malloc(size);
}

namespace morvane::test {

FailingHeap::FailingHeap(int good) {
    good_ones = good;
    failing = true;
}

FailingHeap::~FailingHeap() { failing = false; }

}  // namespace morvane::test
