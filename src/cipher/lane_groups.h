// Blocks on their way through vector registers. Included behind one of the lanes headers.
#pragma once

#include "cipher/cipher.h"

namespace morvane::cipher {
namespace {  // NOLINT(cert-dcl59-cpp): every file that includes this makes functions of its own

template <typename Group, std::size_t Together, typename Rounds>
MORVANE_INLINE void run_groups_by(const Rounds& rounds, const std::uint8_t*& in, std::uint8_t*& out,
                                  std::size_t& count) noexcept {
    for (; count >= Together; count -= Together) {
        Group groups[Together];
        for (Group& group : groups) {
            group.get(in);
            in += sizeof(Group);
        }
        rounds.run(groups);
        for (const Group& group : groups) {
            group.put(out);
            out += sizeof(Group);
        }
    }
}

// Takes `count` groups through the rounds: so many together as there are registers for, interleaved so that none waits for
// its own results, and what is left one by one. A Group holds its blocks, as many as its bytes make.
template <typename Group, std::size_t Together, typename Rounds>
MORVANE_INLINE void run_groups(const Rounds& rounds, const std::uint8_t* in, std::uint8_t* out,
                               std::size_t count) noexcept {
    run_groups_by<Group, Together>(rounds, in, out, count);
    if constexpr (Together > 1) run_groups_by<Group, 1>(rounds, in, out, count);
}

}  // namespace
}  // namespace morvane::cipher
