// Constant tables whose rows begin with an algorithm identifier.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace morvane::csp {

// Rows in ascending order of identifiers, none twice.
template <typename Row, std::size_t Rows>
constexpr bool is_sorted_table(const std::array<Row, Rows>& table) {
    for (std::size_t i = 1; i < Rows; ++i) {
        if (table[i - 1].algorithm >= table[i].algorithm) return false;
    }
    return true;
}

// The row of an identifier, or null.
template <typename Row, std::size_t Rows>
constexpr const Row* find_row(const std::array<Row, Rows>& table, std::uint32_t algorithm) noexcept {
    for (const Row& row : table) {
        if (row.algorithm == algorithm) return &row;
    }
    return nullptr;
}

}  // namespace morvane::csp
