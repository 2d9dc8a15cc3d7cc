// K_NewContext, K_EndContext, K_KCOInit and K_KCOTerm.
#include "companion/context.h"

#include "base/wipe.h"

#include <cstdio>
#include <cstdlib>

static_assert(sizeof(void*) != 4 || sizeof(K_CONTEXT) == 20);

namespace {

using namespace morvane::companion;

constexpr K_ALLOCATOR kOfTheRuntime = {[](void* /*user*/, std::size_t bytes) { return std::malloc(bytes); },
                                       [](void* /*user*/, void* block) { std::free(block); }, nullptr};

// Names the blocks that are there beyond `expected` ones. Only in debug builds: a library keeps off its program's streams.
void report_blocks([[maybe_unused]] const Context& context, [[maybe_unused]] std::uint32_t expected) noexcept {
#if !defined(NDEBUG)
    if (context.count <= expected) return;
    std::fprintf(stderr, "MorvaneCommon: %u blocks were not freed:", static_cast<unsigned>(context.count - expected));
    std::uint32_t left = context.count - expected;
    for (const Header* header = context.blocks; left != 0; header = header->after, --left) {
        std::fprintf(stderr, " %u", static_cast<unsigned>(header->size));
    }
    std::fputs(" bytes\n", stderr);
#endif
}

}  // namespace

K_CONTEXT* K_NewContext(const K_ALLOCATOR* allocator) {
    const K_ALLOCATOR& memory = allocator != nullptr ? *allocator : kOfTheRuntime;
    if (memory.allocate == nullptr || memory.release == nullptr) return nullptr;
    auto* const context = static_cast<Context*>(memory.allocate(memory.user, sizeof(Context)));
    if (context == nullptr) return nullptr;
    *context = {};
    context->allocator = memory;
    return &context->seen;
}

uint32_t K_EndContext(K_CONTEXT* context) {
    if (context == nullptr) return 0;
    Context& all = whole(context);
    const std::uint32_t left = all.count;
    report_blocks(all, 0);
    // The next block is known before this one goes: K_free leaves a block alone whose mark was written over.
    for (Header* header = all.blocks; header != nullptr;) {
        Header* const after = header->after;
        K_free(context, header + 1);
        header = after;
    }
    const K_ALLOCATOR memory = all.allocator;
    morvane::wipe(&all, sizeof all);
    memory.release(memory.user, &all);
    return left;
}

int32_t K_KCOInit(K_CONTEXT* context) {
    if (context == nullptr) return -1;
    if (context->companion_initialised == 0) whole(context).count_at_init = whole(context).count;
    context->companion_initialised = 1;
    return 0;
}

void K_KCOTerm(K_CONTEXT* context) {
    if (context == nullptr) return;
    const auto own = static_cast<std::uint32_t>(context->crypto != nullptr ? 1 : 0);  // released after this
    report_blocks(whole(context), whole(context).count_at_init + own);
}
