#pragma once

#include <morvane/csp.h>

#include <gtest/gtest.h>

// Expects a provider call to fail and to leave this code in the error cell.
#define EXPECT_FAILS(call, code)       \
    do {                               \
        EXPECT_EQ(call, -1);           \
        EXPECT_EQ(GetError(), (code)); \
    } while (false)
