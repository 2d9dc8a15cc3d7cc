// What is wrong with the values of options, and tables that options choose from.
#pragma once

#include "algorithms.h"

#include <algorithm>
#include <initializer_list>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace morvane::tool {

// The usage is wrong: a text for usage_error.
struct UsageError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// What was wrong is the data or the key for it. Its text is a complete message.
struct MismatchError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// At most one of these files can be standard input. Throws UsageError.
void require_one_standard_input(std::initializer_list<std::string_view> names);

// The row that the value of an option names. Throws UsageError when there is none.
template <typename Row, std::size_t Rows>
const Row& find_row(const Row (&rows)[Rows], const std::string& option, std::string_view name) {
    const auto* const found = std::ranges::find_if(rows, [name](const Row& row) { return same_name(row.name, name); });
    if (found != std::end(rows)) return *found;
    std::string names;
    for (const Row& row : rows) {
        names += ' ';
        names += row.name;
    }
    throw UsageError(option + " is one of" + names);
}

// The names of the rows of a table, for offer.
std::vector<std::string> names_of(const auto& rows) {
    std::vector<std::string> names;
    for (const auto& row : rows) names.emplace_back(row.name);
    return names;
}

}  // namespace morvane::tool
