// What is secret and what is known, for the check of times (scripts/check-secrets). That one runs private operations under
// valgrind with the bytes of keys marked as undefined, and every branch and every address that depends on them is reported.
// Where something that follows from secrets may be told through time, it is declared known, with the reason beside it. In
// all other builds nothing of this is there.
#pragma once

#include <cstddef>

#if defined(MORVANE_CHECK_SECRETS)
#include <valgrind/memcheck.h>
#endif

namespace morvane {

template <typename Item>
inline void declare_known([[maybe_unused]] const Item* items, [[maybe_unused]] std::size_t count = 1) noexcept {
#if defined(MORVANE_CHECK_SECRETS)
    VALGRIND_MAKE_MEM_DEFINED(items, count * sizeof(Item));
#endif
}

template <typename Item>
inline void declare_secret([[maybe_unused]] const Item* items, [[maybe_unused]] std::size_t count = 1) noexcept {
#if defined(MORVANE_CHECK_SECRETS)
    VALGRIND_MAKE_MEM_UNDEFINED(items, count * sizeof(Item));
#endif
}

// An answer that may be told.
template <typename Value>
constexpr Value known(Value value) noexcept {
#if defined(MORVANE_CHECK_SECRETS)
    if (!__builtin_is_constant_evaluated()) declare_known(&value);
#endif
    return value;
}

}  // namespace morvane
