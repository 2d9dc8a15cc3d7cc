// What the fuzzers share. Inputs are choices, made by the same generators that the tests use, or blocks as they are. An
// expectation of GoogleTest that fails ends the program, where the fuzzer finds it.
#pragma once

#include "support/bytes.h"

#include <gtest/gtest.h>
#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace morvane::test {

inline Random choices_of(const std::uint8_t* data, std::size_t size) {
    GTEST_FLAG_SET(throw_on_failure, true);
    return Random({data, size});
}

}  // namespace morvane::test
