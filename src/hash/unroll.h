// Steps written out by the compiler.
#pragma once

#include <cstddef>
#include <utility>

namespace morvane::hash {

// Calls f.template operator()<0>() and so on up to Count - 1, all of it inlined when the lambda is always_inline too.
template <typename F, std::size_t... I>
[[gnu::always_inline]] inline void unroll(F&& f, std::index_sequence<I...> /*indices*/) noexcept {
    (f.template operator()<I>(), ...);
}

template <std::size_t Count, typename F>
[[gnu::always_inline]] inline void unroll(F&& f) noexcept {
    unroll(f, std::make_index_sequence<Count>{});
}

}  // namespace morvane::hash
