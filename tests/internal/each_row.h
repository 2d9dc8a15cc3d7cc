// Every routine that this machine can run, one after the other.
#pragma once

#include "cpu/cpu.h"

#include <gtest/gtest.h>

namespace morvane::test {

// Runs `check` once per usable row, the last of which is portable, with that row in use.
template <typename Fn, std::size_t Rows, typename Check>
void with_each_row(cpu::Dispatch<Fn, Rows>& dispatch, Check check) {
    int usable = 0;
    for (const cpu::Variant<Fn>& row : dispatch.rows()) {
        if (!cpu::usable(row.needs)) continue;
        ++usable;
        SCOPED_TRACE(testing::Message() << "row that needs features " << row.needs);
        dispatch.pin(row.run);
        ASSERT_EQ(dispatch.get(), row.run);
        check(row.run);
    }
    dispatch.pin(nullptr);
    EXPECT_GE(usable, 1);
    testing::Test::RecordProperty("usable_rows", usable);
}

}  // namespace morvane::test
