#include "usage.h"

#include "input.h"

namespace morvane::tool {

void require_one_standard_input(std::initializer_list<std::string_view> names) {
    if (std::ranges::count(names, kStandardInput) > 1) {
        throw UsageError("standard input cannot be several files at once");
    }
}

}  // namespace morvane::tool
