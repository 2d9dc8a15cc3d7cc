// The EN_ functions by name: any of them on operands, and into each place where its result may be.
#pragma once

#include "support/numbers.h"

#include <optional>

namespace morvane::test {

// Calls `name`, an EN_ function or "quotient" or "remainder", once for every place: a record of `room` words for the
// result, then each operand. With `same`, the first two operands are one record. Without an expected value nothing is to be
// written, and a status to be 0. Numbers and answers other than records are passed as words of one.
void expect_result(const std::string& name, const std::vector<Value>& operands, bool same, std::size_t room,
                   const std::optional<Value>& expected);

}  // namespace morvane::test
