// The whole of a context, and the blocks of its memory.
#pragma once

#include <morvane/common.h>

#include <cstddef>
#include <cstdint>

namespace morvane::companion {

struct Context;

// What stands in front of every block. The blocks of a context are a list, so that its end finds them.
struct alignas(2 * sizeof(void*)) Header {  // the alignment that the block behind it has
    Context* owner;
    Header* before;
    Header* after;
    std::uint32_t size;
    std::uint32_t mark;  // kLive while it is a block
};

inline constexpr std::uint32_t kLive = 0x6b636f62;

struct Context {
    K_CONTEXT seen;  // what programs know; a pointer to it is one to the whole
    K_ALLOCATOR allocator;
    Header* blocks;
    std::uint32_t count;          // of blocks
    std::uint32_t count_at_init;  // when K_KCOInit ran
};

inline Context& whole(K_CONTEXT* context) noexcept { return *reinterpret_cast<Context*>(context); }

}  // namespace morvane::companion
