#include "support/failing_heap.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

namespace {

bool watching = false;
bool goes_on_failing = false;
bool failed = false;
int good_ones = 0;
int dirty_ones = 0;

struct Block {
    void* address;
    std::size_t size;
};
std::array<Block, 4096> blocks;
std::size_t block_count = 0;

bool fails() {
    if (!watching || (good_ones > 0 && good_ones-- > 0)) return false;
    const bool first = !failed;
    failed = true;
    return first || goes_on_failing;
}

// It begins as zeros, so that what nobody writes to is no trace.
void* watched(void* address, std::size_t size) {
    if (!watching || address == nullptr || block_count == blocks.size()) return address;
    blocks[block_count++] = {address, size};
    return std::memset(address, 0, size);
}

}  // namespace

extern "C" void* __real_calloc(std::size_t count, std::size_t size);
extern "C" [[gnu::visibility("default")]] void* __wrap_calloc(std::size_t count, std::size_t size) {
    return fails() ? nullptr : watched(__real_calloc(count, size), count * size);
}

extern "C" void* __real_malloc(std::size_t size);
extern "C" [[gnu::visibility("default")]] void* __wrap_malloc(std::size_t size) {
    return fails() ? nullptr : watched(__real_malloc(size), size);
}

extern "C" void __real_free(void* address);
extern "C" [[gnu::visibility("default")]] void __wrap_free(void* address) {
    for (std::size_t i = 0; i < block_count; ++i) {
        if (blocks[i].address != address) continue;
        const auto* const bytes = static_cast<const std::uint8_t*>(address);
        const bool is_zero = std::all_of(bytes, bytes + blocks[i].size, [](std::uint8_t byte) { return byte == 0; });
        if (watching && !is_zero) ++dirty_ones;
        blocks[i] = blocks[--block_count];
        break;
    }
    __real_free(address);
}

namespace morvane::test {

FailingHeap::FailingHeap(int good, Then then) {
    good_ones = good;
    goes_on_failing = then == Then::kFails;
    failed = false;
    dirty_ones = 0;
    watching = true;
}

FailingHeap::~FailingHeap() { watching = false; }

bool FailingHeap::has_failed() const { return failed; }
int FailingHeap::dirty() const { return dirty_ones; }
std::size_t FailingHeap::live() { return block_count; }

}  // namespace morvane::test
