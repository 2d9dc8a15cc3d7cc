// The digest of the generators: MD5, over a few octets at a time.
#pragma once

#include "base/wipe.h"
#include "hash/md5.h"

namespace morvane::random {

inline constexpr std::size_t kDigestOctets = 16;

// StepDigest().add(...).add(...).write(digest). Wiped at the end of its life.
class StepDigest {
public:
    StepDigest() noexcept { E_MD4_Init(&ctx_); }
    ~StepDigest() { wipe(&ctx_, sizeof ctx_); }
    StepDigest(const StepDigest&) = delete;
    StepDigest& operator=(const StepDigest&) = delete;

    StepDigest& add(const void* octets, std::int32_t count) noexcept {
        hash::md5_update(&ctx_, static_cast<const std::uint8_t*>(octets), static_cast<std::uint32_t>(count));
        return *this;
    }

    // May overwrite what was added.
    void write(std::uint8_t* digest) noexcept { hash::md5_final(&ctx_, digest); }

private:
    E_MD5_CTX ctx_;
};

}  // namespace morvane::random
