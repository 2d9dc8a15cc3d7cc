// Powers of a base that many calls share, the generator of a group: by a table of its powers that the process keeps.
//
// C. H. Lim, P. J. Lee, More flexible exponentiation with precomputation, 1994. The exponent is cut into kTeeth strips,
// each of them into kBlocks pieces. Entry i of block j is the product of base^(2^(strip t + piece j)) over the bits t of i,
// so that a square and kBlocks products take in one bit of every piece.
#pragma once

#include "bignum/exponentiate.h"
#include "bignum/power.h"

#include <cstdint>

namespace morvane::bignum {

inline constexpr std::size_t kTeeth = 4;
inline constexpr std::size_t kBlocks = 4;
inline constexpr std::size_t kBlockEntries = std::size_t{1} << kTeeth;
inline constexpr std::size_t kTableEntries = kBlocks * kBlockEntries;

// The bits of a piece: whatever the number of words, they come out even.
constexpr std::size_t piece_bits(std::span<const Word> exponent) noexcept {
    static_assert(32 % (kTeeth * kBlocks) == 0);
    return 32 * exponent.size() / (kTeeth * kBlocks);
}

// The table of a base, as long as this lives: made already, or to be made by who asked. There is none where the numbers are
// too large, at the base's first sight (many bases are never seen again), and while another thread makes it. Base and
// modulus count as public.
class BaseTable {
public:
    // `ring` stands for a kind of ring; two of them have no table in common.
    BaseTable(const Power& power, const void* ring, std::size_t element_bytes) noexcept;
    ~BaseTable();
    BaseTable(const BaseTable&) = delete;
    BaseTable& operator=(const BaseTable&) = delete;

    explicit operator bool() const noexcept { return slot_ != nullptr; }
    bool is_made() const noexcept { return is_made_; }
    void* elements() const noexcept;
    // What is to be made is complete: others may read it.
    void publish() noexcept;

private:
    struct Slot* slot_ = nullptr;
    bool is_made_ = false;
};

// table = the table of x for exponents of so many bits a piece; x is used up.
template <Ring R>
void make_base_table(const R& ring, typename R::Item* table, typename R::Item* x, std::size_t bits) noexcept {
    const std::size_t size = ring.size();
    const auto block = [&](std::size_t j) { return table + j * kBlockEntries * size; };
    for (std::size_t tooth = 0; tooth < kTeeth; ++tooth) {
        for (std::size_t j = 0; j < kBlocks; ++j) {
            std::copy_n(x, size, block(j) + (std::size_t{1} << tooth) * size);
            for (std::size_t i = 0; i < bits; ++i) ring.square(x, x);
        }
    }
    for (std::size_t j = 0; j < kBlocks; ++j) {
        ring.set_one(block(j));
        for (std::size_t entry = 3; entry < kBlockEntries; ++entry) {
            const std::size_t lowest = entry & (0 - entry);
            if (lowest == entry) continue;
            ring.multiply(block(j) + entry * size, block(j) + (entry - lowest) * size, block(j) + lowest * size);
        }
    }
}

// x = the power of the table's base. Time and memory touched tell only the exponent's length. False if there is no memory.
template <Ring R>
bool exponentiate_by_table(const R& ring, typename R::Item* x, const typename R::Item* table,
                           std::span<const Word> exponent) noexcept {
    using Item = typename R::Item;
    static_assert(R::kStreams == 1);
    const std::size_t size = ring.size();
    const std::size_t bits = piece_bits(exponent);
    Work<Item, frame_items<R>()> factor(size);
    if (!factor) return false;
    ring.set_one(x);
    for (std::size_t bit = bits; bit-- > 0;) {
        if (bit + 1 != bits) ring.square(x, x);
        for (std::size_t j = 0; j < kBlocks; ++j) {
            std::size_t entry = 0;
            for (std::size_t tooth = 0; tooth < kTeeth; ++tooth) {
                const std::size_t position = (tooth * kBlocks + j) * bits + bit;
                entry |= std::size_t{exponent[position / 32] >> position % 32 & 1} << tooth;
            }
            ring.select(factor.get(), table + j * kBlockEntries * size, kBlockEntries, &entry);
            ring.multiply(x, x, factor.get());
        }
    }
    return true;
}

template <typename R>
inline char kRingOf = 0;

// x = x^exponent for the power's base in x, by its table. False if there is none; x is the base still.
template <Ring R>
bool exponentiate_lasting(const R& ring, typename R::Item* x, const Power& power) noexcept {
    using Item = typename R::Item;
    BaseTable table(power, &kRingOf<R>, ring.size() * sizeof(Item));
    if (!table) return false;
    auto* const elements = static_cast<Item*>(table.elements());
    if (!table.is_made()) {
        Work<Item, frame_items<R>()> base(ring.size());
        if (!base) return false;
        std::copy_n(x, ring.size(), base.get());
        make_base_table(ring, elements, base.get(), piece_bits(power.exponent));
        table.publish();
    }
    return exponentiate_by_table(ring, x, elements, power.exponent);
}

}  // namespace morvane::bignum
