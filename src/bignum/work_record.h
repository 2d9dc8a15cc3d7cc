// Records for intermediate values.
#pragma once

#include "bignum/work.h"

#include <morvane/types.h>

#include <algorithm>

namespace morvane::bignum {

// A zero of length 0 with `room` words, on the stack for the usual sizes; wiped at the end of its life.
class WorkRecord {
public:
    explicit WorkRecord(std::size_t room) noexcept : words_(std::max<std::size_t>(room, 1)) {
        record_.words = words_.get();
    }
    explicit operator bool() const noexcept { return static_cast<bool>(words_); }
    ENUM* get() noexcept { return &record_; }
    ENUM* operator->() noexcept { return &record_; }
    const ENUM* operator->() const noexcept { return &record_; }
    ENUM& operator*() noexcept { return record_; }
    const ENUM& operator*() const noexcept { return record_; }

private:
    WorkWords words_;
    ENUM record_{0, 0, nullptr};
};

}  // namespace morvane::bignum
