// Random test data whose seed a failure names.
#pragma once

#include "support/bytes.h"

#include <gtest/gtest.h>

namespace morvane::test {

struct Seeded : Random {
    explicit Seeded(std::uint32_t seed) : Random(seed), trace(__FILE__, __LINE__, testing::Message() << "seed " << seed) {}
    testing::ScopedTrace trace;
};

}  // namespace morvane::test
