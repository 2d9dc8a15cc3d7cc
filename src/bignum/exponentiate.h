// Exponentiation in a ring of residues, whoever computes in it.
//
// Left to right with fixed windows. Each window costs the same products whatever its bits are, and its factor is picked
// from the table by reading all of the table, so that the time and the memory touched tell only the exponent's length.
#pragma once

#include "bignum/limb.h"
#include "bignum/work.h"

#include <algorithm>
#include <array>
#include <concepts>
#include <span>
#include <utility>

namespace morvane::bignum {

// A ring computes in kStreams residue systems at once, each with a modulus of its own. An element has size() items for each
// stream, one stream after the other. Results may be operands.
template <typename R>
concept Ring = requires(const R& ring, typename R::Item* r, const typename R::Item* a, const std::size_t* indices) {
    { R::kStreams } -> std::convertible_to<std::size_t>;
    { ring.size() } -> std::same_as<std::size_t>;
    ring.set_one(r);
    ring.multiply(r, a, a);
    ring.square(r, a);
    ring.select(r, a, std::size_t{}, indices);  // r = of each stream, the indexed element of a table; all of it is read
};

inline constexpr std::size_t kMaxEntries = 32;

// All ones if the two are equal, otherwise 0.
template <typename Item>
[[gnu::always_inline]] inline Item mask_if_equal(std::size_t a, std::size_t b) noexcept {
    Item mask = Item{0} - static_cast<Item>(((a ^ b) - 1) >> (8 * sizeof a - 1));
    asm("" : "+r"(mask));  // otherwise the compiler may find out that one entry is enough
    return mask;
}

// r = `Count` items of the element whose mask is all ones.
template <std::size_t Count, typename Item>
[[gnu::always_inline]] inline void select_items(Item* r, const Item* table, std::size_t entries, std::size_t stride,
                                                const Item* masks) noexcept {
    Item chosen[Count] = {};
    for (std::size_t entry = 0; entry < entries; ++entry, table += stride) {
        for (std::size_t i = 0; i < Count; ++i) chosen[i] |= table[i] & masks[entry];
    }
    std::copy_n(chosen, Count, r);
}

// r = the table's element of `index`, all of the table being read. Elements are `stride` items apart.
template <typename Item>
inline void select_masked(Item* r, const Item* table, std::size_t entries, std::size_t stride, std::size_t size,
                          std::size_t index) noexcept {
    Item masks[kMaxEntries];
    for (std::size_t entry = 0; entry < entries; ++entry) masks[entry] = mask_if_equal<Item>(entry, index);
    std::size_t at = 0;
    for (; size - at >= 8; at += 8) select_items<8>(r + at, table + at, entries, stride, masks);
    for (; at < size; ++at) select_items<1>(r + at, table + at, entries, stride, masks);
}

// Items of an element for the usual moduli, of 2400 bits in digits of 52 or in limbs.
template <typename Item>
inline constexpr std::size_t kElementItems = 48 * sizeof(std::uint64_t) / sizeof(Item);

// The items of a stream for which frames on the stack have room: those, or fewer as a ring of many streams says.
template <typename R>
consteval std::size_t frame_items() {
    if constexpr (requires { R::kFrameItems; }) {
        return R::kStreams * R::kFrameItems;
    } else {
        return R::kStreams * kElementItems<typename R::Item>;
    }
}

// x = x^exponent, each stream with its own; these are equally long, and not empty. False if there is no memory.
template <Ring R>
bool exponentiate(const R& ring, typename R::Item* x,
                  const std::array<std::span<const Word>, R::kStreams>& exponents) noexcept {
    using Item = typename R::Item;
    constexpr std::size_t kStreams = R::kStreams;
    const std::size_t size = kStreams * ring.size();
    const std::size_t bits = 32 * exponents[0].size();

    // More bits a window do not pay: the table would be larger than what its reading may cost.
    const std::size_t window = bits <= 512 ? 4 : 5;
    const std::size_t entries = std::size_t{1} << window;  // up to kMaxEntries
    Work<Item, kMaxEntries * frame_items<R>()> table(entries * size);
    Work<Item, frame_items<R>()> factor(size);
    if (!table || !factor) return false;
    const auto entry = [&](std::size_t i) { return table.get() + i * size; };
    ring.set_one(entry(0));
    std::copy_n(x, size, entry(1));
    for (std::size_t i = 2; i < entries; i += 2) {
        ring.square(entry(i), entry(i / 2));
        ring.multiply(entry(i + 1), entry(i), x);
    }

    const auto select = [&](Item* r, std::size_t position) {
        std::array<std::size_t, kStreams> indices{};
        for (std::size_t s = 0; s < kStreams; ++s) {
            const std::span<const Word> e = exponents[s];
            const Word above = position / 32 + 1 < e.size() ? e[position / 32 + 1] : 0;
            const std::uint64_t pair = std::uint64_t{above} << 32 | e[position / 32];
            indices[s] = static_cast<std::size_t>(pair >> position % 32) & (entries - 1);
        }
        ring.select(r, table.get(), entries, indices.data());
    };
    std::size_t position = (bits - 1) / window * window;
    select(x, position);
    while (position != 0) {
        position -= window;
        for (std::size_t i = 0; i < window; ++i) ring.square(x, x);
        select(factor.get(), position);
        ring.multiply(x, x, factor.get());
    }
    return true;
}

// The same for an exponent of one word that everybody may know, not 0.
template <Ring R>
bool exponentiate_vt(const R& ring, typename R::Item* x, Word exponent) noexcept {
    using Item = typename R::Item;
    const std::size_t size = R::kStreams * ring.size();
    Work<Item, R::kStreams * kElementItems<Item>> base(size);
    if (!base) return false;
    std::copy_n(x, size, base.get());
    for (Word bit = std::bit_floor(exponent) >> 1; bit != 0; bit >>= 1) {
        ring.square(x, x);
        if ((exponent & bit) != 0) ring.multiply(x, x, base.get());
    }
    return true;
}

// Sliding windows over an exponent that everybody may know: odd powers of up to kBits bits, each multiplied in at the
// lowest bit of its window.
class SlidingWindow {
public:
    static constexpr std::size_t kBits = 4;
    static constexpr std::size_t kEntries = std::size_t{1} << (kBits - 1);  // x, x^3, x^5, ...

    explicit SlidingWindow(std::span<const Word> exponent) noexcept : exponent_(exponent) {}

    // Goes down to a bit, one lower than before. Returns the entry to multiply by, or kEntries for none.
    std::size_t entry_at(std::size_t bit) noexcept {
        if (value_ == 0) {
            if (!is_set(bit)) return kEntries;
            lowest_ = bit + 1 < kBits ? 0 : bit + 1 - kBits;
            while (!is_set(lowest_)) ++lowest_;
            for (std::size_t i = bit + 1; i-- > lowest_;) value_ = 2 * value_ + static_cast<std::size_t>(is_set(i));
        }
        return bit == lowest_ ? std::exchange(value_, 0) / 2 : kEntries;
    }

private:
    bool is_set(std::size_t bit) const noexcept {
        return bit / 32 < exponent_.size() && (exponent_[bit / 32] >> bit % 32 & 1) != 0;
    }

    std::span<const Word> exponent_;
    std::size_t value_ = 0;
    std::size_t lowest_ = 0;
};

// x = x^e y^f, for exponents that everybody may know; these may be empty. False if there is no memory.
template <Ring R>
bool exponentiate_product_vt(const R& ring, typename R::Item* x, const typename R::Item* y, std::span<const Word> e,
                             std::span<const Word> f) noexcept {
    using Item = typename R::Item;
    static_assert(R::kStreams == 1);
    constexpr std::size_t kEntries = SlidingWindow::kEntries;
    const std::size_t size = ring.size();
    Work<Item, (2 * kEntries + 1) * kElementItems<Item>> table((2 * kEntries + 1) * size);
    if (!table) return false;
    Item* const square = table.get() + 2 * kEntries * size;
    SlidingWindow windows[2] = {SlidingWindow(e), SlidingWindow(f)};
    const Item* const bases[2] = {x, y};
    for (std::size_t side = 0; side < 2; ++side) {
        Item* const powers = table.get() + side * kEntries * size;
        std::copy_n(bases[side], size, powers);
        ring.square(square, powers);
        for (std::size_t i = 1; i < kEntries; ++i) ring.multiply(powers + i * size, powers + (i - 1) * size, square);
    }
    ring.set_one(x);
    for (std::size_t bit = 32 * std::max(e.size(), f.size()); bit-- > 0;) {
        ring.square(x, x);
        for (std::size_t side = 0; side < 2; ++side) {
            const std::size_t entry = windows[side].entry_at(bit);
            if (entry != kEntries) ring.multiply(x, x, table.get() + (side * kEntries + entry) * size);
        }
    }
    return true;
}

}  // namespace morvane::bignum
