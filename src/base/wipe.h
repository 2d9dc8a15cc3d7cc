// Clearing memory that held secrets, in a way the optimiser keeps.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace morvane {

inline void wipe(void* bytes, std::size_t size) noexcept {
    std::memset(bytes, 0, size);
    asm volatile("" : : "r"(bytes) : "memory");  // pretends to read the zeros, so that they must be written
}

// Clears so many octets of the stack below its caller: what the calls before it left there, copies of registers that the
// compiler put aside among it.
template <std::size_t Size>
[[gnu::noinline]] void wipe_stack_below() noexcept {
    std::uint8_t used[Size];
    wipe(used, Size);
}

// A zero-filled array that is wiped when it goes out of scope.
template <typename Item, std::size_t Size>
struct SecretArray {
    std::array<Item, Size> items{};

    SecretArray() = default;
    SecretArray(const SecretArray&) = delete;
    SecretArray& operator=(const SecretArray&) = delete;
    ~SecretArray() { wipe(items.data(), sizeof items); }
};

}  // namespace morvane
