// Output over a row of the caller's buffers.
#pragma once

#include "base/bytes.h"

#include <morvane/csp.h>

#include <algorithm>
#include <cstdint>

namespace morvane::csp {

// A buffer has bytes and an address for them, or neither.
inline bool is_consistent(const CSSM_DATA& buffer) noexcept { return (buffer.Length == 0) == (buffer.Data == nullptr); }

// Fills the buffers in order. Each is looked at when it is needed, so what is wrong with one behind the last byte of output
// does not matter.
class Scatter {
public:
    // The first buffer has been found consistent.
    Scatter(const CSSM_DATA* buffers, std::uint32_t count) noexcept : buffers_(buffers), count_(count) {}

    // Where the next bytes go, and how many of them go there.
    std::uint8_t* next() const noexcept { return buffers_[index_].Data + offset_; }
    std::uint32_t room() const noexcept { return buffers_[index_].Length - offset_; }
    // After `size` bytes, within the room, have been written there.
    void advance(std::uint32_t size) noexcept { offset_ += size; }

    // 0, CSP_ERR_BAD_DATA at an inconsistent buffer or CSP_ERR_OUTPUT_TOO_SHORT behind the last.
    std::uint32_t write(const std::uint8_t* bytes, std::uint32_t size) noexcept {
        while (size != 0) {
            if (room() == 0) {
                if (index_ + 1 == count_) return CSP_ERR_OUTPUT_TOO_SHORT;
                ++index_;
                offset_ = 0;
                if (!is_consistent(buffers_[index_])) return CSP_ERR_BAD_DATA;
                continue;
            }
            const std::uint32_t now = std::min(size, room());
            copy_bytes(next(), bytes, now);
            offset_ += now;
            bytes += now;
            size -= now;
        }
        return 0;
    }

private:
    const CSSM_DATA* buffers_;
    std::uint32_t count_;
    std::uint32_t index_ = 0;
    std::uint32_t offset_ = 0;
};

}  // namespace morvane::csp
