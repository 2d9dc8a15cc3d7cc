// Memory of the caller's context, released by whoever holds it.
#pragma once

#include <morvane/common.h>

#include <cstdint>
#include <type_traits>
#include <utility>

namespace morvane::toolkit {

// `count` zero-filled items, or none when memory is short. K_free wipes them.
template <typename Item>
class Block {
    static_assert(std::is_trivial_v<Item>);

public:
    explicit Block(K_CONTEXT* context, std::uint32_t count = 1) noexcept
        : context_(context), items_(static_cast<Item*>(K_calloc(context, count, sizeof(Item)))) {}
    // size + extra items, or none when that is too much.
    Block(K_CONTEXT* context, std::uint32_t size, std::uint32_t extra) noexcept
        : context_(context),
          items_(size > UINT32_MAX - extra ? nullptr : static_cast<Item*>(K_calloc(context, size + extra, sizeof(Item)))) {}
    ~Block() { K_free(context_, items_); }
    Block(const Block&) = delete;
    Block& operator=(const Block&) = delete;

    explicit operator bool() const noexcept { return items_ != nullptr; }
    Item* get() const noexcept { return items_; }
    Item* operator->() const noexcept { return items_; }

    // Leaves the items to the caller.
    Item* release() noexcept { return std::exchange(items_, nullptr); }

private:
    K_CONTEXT* context_;
    Item* items_;
};

}  // namespace morvane::toolkit
