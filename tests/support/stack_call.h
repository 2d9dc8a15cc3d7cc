// Calls with the stack pointer at any multiple of four, as 32-bit programs make them.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <type_traits>

namespace morvane::test {

#if defined(__i386__)

extern "C" std::uint32_t call_with_stack_offset(const void* function, const std::uint32_t* arguments, std::uint32_t count,
                                                std::uint32_t offset);

// The offsets from a 16-byte boundary that a stack pointer aligned to words can have.
inline constexpr std::uint32_t kStackOffsets[] = {0, 4, 8, 12};

template <typename Argument>
std::uint32_t stack_word(Argument argument) {
    if constexpr (std::is_pointer_v<Argument>) {
        return reinterpret_cast<std::uint32_t>(argument);
    } else {
        return static_cast<std::uint32_t>(argument);
    }
}

template <typename Result, typename... Parameters, typename... Arguments>
std::uint32_t call_at(std::uint32_t offset, Result (*function)(Parameters...), Arguments... arguments) {
    const std::uint32_t words[] = {stack_word(static_cast<Parameters>(arguments))...};
    return call_with_stack_offset(reinterpret_cast<const void*>(function), words, sizeof...(Parameters), offset);
}

#if defined(_WIN32)
template <typename Result, typename... Parameters, typename... Arguments>
std::uint32_t call_at(std::uint32_t offset, Result(__attribute__((stdcall)) * function)(Parameters...),
                      Arguments... arguments) {
    const std::uint32_t words[] = {stack_word(static_cast<Parameters>(arguments))...};
    return call_with_stack_offset(reinterpret_cast<const void*>(function), words, sizeof...(Parameters), offset);
}
#endif

#endif

}  // namespace morvane::test
