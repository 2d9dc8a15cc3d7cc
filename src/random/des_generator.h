// The DES generator: two registers that DES enciphers under two fixed keys and mixes.
#pragma once

#include <morvane/cipher.h>

#include <cstdint>

namespace morvane::random {

struct DesGenerator {
    using Register = std::uint32_t[2];  // a block of DES as it lies in memory

    void start(std::uint32_t seconds, std::uint32_t process_id, std::uint32_t clock) noexcept;
    void draw(std::uint8_t* octets, std::uint32_t count) noexcept;

    Register a, b;
    E_DES_KEY_SCHEDULE first_key, second_key;

private:
    void encipher() noexcept;
};

}  // namespace morvane::random
