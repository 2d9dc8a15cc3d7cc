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

// A zero-filled array that is wiped when it goes out of scope.
template <std::size_t Size>
struct SecretBytes {
    std::array<std::uint8_t, Size> bytes{};

    SecretBytes() = default;
    SecretBytes(const SecretBytes&) = delete;
    SecretBytes& operator=(const SecretBytes&) = delete;
    ~SecretBytes() { wipe(bytes.data(), Size); }
};

}  // namespace morvane
