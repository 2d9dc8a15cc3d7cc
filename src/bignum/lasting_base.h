// Powers of a base that many calls share, such as the generator of a group: by a table of its powers that the process
// keeps.
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

// What a table is made for. `ring` stands for a kind of ring, and elements are what it computes with.
struct TableKey {
    std::span<const Word> base;
    std::span<const Word> modulus;
    std::size_t exponent_words;
    const void* ring;
    std::size_t element_bytes;
};

// The table of a base, as long as this lives: made already, or to be made by who asked. There is none where the numbers are
// too large, at the base's first sight (many bases are never seen again), and while another thread makes it. The key counts
// as public.
class BaseTable {
public:
    explicit BaseTable(const TableKey& key) noexcept;
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

// The entry of a block that a bit of its pieces calls for.
inline std::size_t entry_at(std::span<const Word> exponent, std::size_t block, std::size_t bit) noexcept {
    std::size_t entry = 0;
    for (std::size_t tooth = 0; tooth < kTeeth; ++tooth) {
        const std::size_t position = (tooth * kBlocks + block) * piece_bits(exponent) + bit;
        entry |= std::size_t{exponent[position / 32] >> position % 32 & 1} << tooth;
    }
    return entry;
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
            const std::size_t entry = entry_at(exponent, j, bit);
            ring.select(factor.get(), table + j * kBlockEntries * size, kBlockEntries, &entry);
            ring.multiply(x, x, factor.get());
        }
    }
    return true;
}

template <typename R>
inline char kRingOf = 0;

// The elements of a table, which are made if it is their time; null if there is none. x is the base in the ring.
template <Ring R>
const typename R::Item* elements_of(BaseTable& table, const R& ring, const typename R::Item* x,
                                    std::span<const Word> exponent) noexcept {
    using Item = typename R::Item;
    if (!table) return nullptr;
    auto* const elements = static_cast<Item*>(table.elements());
    if (!table.is_made()) {
        Work<Item, frame_items<R>()> power(ring.size());
        if (!power) return nullptr;
        std::copy_n(x, ring.size(), power.get());
        make_base_table(ring, elements, power.get(), piece_bits(exponent));
        table.publish();
    }
    return elements;
}

// x = x^exponent for a base with a table. False if it has none, or if there is no memory; x is the base still.
template <Ring R>
bool exponentiate_lasting(const R& ring, typename R::Item* x, const Power& power) noexcept {
    BaseTable table({power.base, power.modulus, power.exponent.size(), &kRingOf<R>, ring.size() * sizeof *x});
    const auto* const elements = elements_of(table, ring, x, power.exponent);
    return elements != nullptr && exponentiate_by_table(ring, x, elements, power.exponent);
}

// x = x^e y^f modulo the modulus of `a`, for two bases with tables and equally long exponents that everybody may know.
// False if they have none; x is the base still.
template <Ring R>
bool exponentiate_product_lasting_vt(const R& ring, typename R::Item* x, const typename R::Item* y, const Power& a,
                                     const Power& b) noexcept {
    static_assert(R::kStreams == 1);
    if (a.exponent.size() != b.exponent.size()) return false;
    const std::size_t size = ring.size();
    const std::size_t words = a.exponent.size();
    BaseTable tables[] = {BaseTable({a.base, a.modulus, words, &kRingOf<R>, size * sizeof *x}),
                          BaseTable({b.base, a.modulus, words, &kRingOf<R>, size * sizeof *x})};
    const typename R::Item* const elements[] = {elements_of(tables[0], ring, x, a.exponent),
                                                elements_of(tables[1], ring, y, b.exponent)};
    if (elements[0] == nullptr || elements[1] == nullptr) return false;
    ring.set_one(x);
    for (std::size_t bit = piece_bits(a.exponent); bit-- > 0;) {
        ring.square(x, x);
        for (std::size_t j = 0; j < kBlocks; ++j) {
            for (std::size_t side = 0; side < 2; ++side) {
                const std::size_t entry = entry_at(side == 0 ? a.exponent : b.exponent, j, bit);
                if (entry != 0) ring.multiply(x, x, elements[side] + (j * kBlockEntries + entry) * size);
            }
        }
    }
    return true;
}

}  // namespace morvane::bignum
