// Work space: on the stack for the usual sizes, on the heap beyond them, wiped either way.
#pragma once

#include "base/wipe.h"
#include "bignum/limb.h"

#include <cstdlib>

namespace morvane::bignum {

inline constexpr std::size_t kFrameWords = 160;  // the square of a residue of 75 words, and what division adds to it

// `size` items, not initialised, aligned for any vector.
template <typename Item, std::size_t Fixed>
class Work {
public:
    explicit Work(std::size_t size) noexcept : size_(size), items_(size <= Fixed ? frame_ : allocate(size)) {}
    ~Work() {
        if (items_ == nullptr) return;
        wipe(items_, size_ * sizeof(Item));
        if (items_ != frame_) std::free(block_);
    }
    Work(const Work&) = delete;
    Work& operator=(const Work&) = delete;

    // Whether there is space. The only way it can fail is a heap without memory.
    explicit operator bool() const noexcept { return items_ != nullptr; }

    Item* get() noexcept { return items_; }
    const Item* get() const noexcept { return items_; }
    Item& operator[](std::size_t i) noexcept { return items_[i]; }
    std::size_t size() const noexcept { return size_; }

private:
    static constexpr std::size_t kAlign = 64;

    Item* allocate(std::size_t size) noexcept {
        if (size > (SIZE_MAX - kAlign) / sizeof(Item)) return nullptr;
        block_ = std::malloc(size * sizeof(Item) + kAlign);
        if (block_ == nullptr) return nullptr;
        const std::size_t skip = (0 - reinterpret_cast<std::uintptr_t>(block_)) % kAlign;
        return reinterpret_cast<Item*>(static_cast<unsigned char*>(block_) + skip);
    }

    alignas(kAlign) Item frame_[Fixed];
    std::size_t size_;
    void* block_ = nullptr;
    Item* items_;
};

using WorkWords = Work<Word, kFrameWords>;
using WorkLimbs = Work<Limb, limbs_for(kFrameWords)>;

// For several numbers, with room for a limb or two more in each.
template <std::size_t Numbers>
using WorkNumbers = Work<Limb, Numbers*(limbs_for(kFrameWords) + 2)>;

}  // namespace morvane::bignum
