// RC4.
#include "base/byte_sum.h"

#include <morvane/cipher.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace {

using morvane::add_byte;
using morvane::add_byte_at;

// The generator's next byte. x and y stay below 256.
//
// A byte takes eight instructions and five registers; the compiler, which does not know that sums of bytes leave the rest
// of a register zero, makes nearly twice as many of the C++ below.
[[gnu::always_inline]] inline std::uint8_t step(std::uint32_t* s, std::size_t& x, std::size_t& y) noexcept {
    std::size_t a = 0, b = 0;
#if defined(__x86_64__) || defined(__i386__)
    asm volatile(
        "addb $1, %b[x]\n\t"
        "movl (%[s],%[x],4), %k[a]\n\t"
        "addb %b[a], %b[y]\n\t"
        "movzbl (%[s],%[y],4), %k[b]\n\t"
        "movl %k[b], (%[s],%[x],4)\n\t"
        "movl %k[a], (%[s],%[y],4)\n\t"
        "addb %b[a], %b[b]\n\t"
        "movzbl (%[s],%[b],4), %k[b]"
        : [x] "+&q"(x), [y] "+&q"(y), [a] "=&q"(a), [b] "=&q"(b)
        : [s] "r"(s)
        : "cc", "memory");
    return static_cast<std::uint8_t>(b);
#else
    add_byte(x, 1);
    a = s[x];
    add_byte(y, a);
    b = s[y] & 255;
    s[x] = static_cast<std::uint32_t>(b);
    s[y] = static_cast<std::uint32_t>(a);
    add_byte(b, a);
    return static_cast<std::uint8_t>(s[b]);
#endif
}

}  // namespace

uint32_t E_RC4_KeySchedule(E_RC4_STATE* state, const uint8_t* key, uint32_t key_len) {
    if (key_len == 0) {
        *state = {};
        return 0;
    }
    state->x = 0;
    state->y = 0;
    std::uint32_t* const s = state->s;
#pragma GCC unroll 8
    for (std::uint32_t i = 0; i < 256; ++i) s[i] = i;
    key_len = std::min<std::uint32_t>(key_len, 256);
    std::size_t j = 0;
    for (std::uint32_t i = 0; i < 256;) {
        const std::uint32_t stop = std::min<std::uint32_t>(256, i + key_len);
        for (const std::uint8_t* k = key; i != stop; ++i, ++k) {
            const std::uint32_t a = s[i];
            add_byte(j, a);
            add_byte_at(j, k);
            s[i] = s[j];
            s[j] = a;
        }
    }
    return static_cast<std::uint32_t>(j);
}

void E_RC4_Encrypt(const uint8_t* in, uint8_t* out, E_RC4_STATE* state, uint32_t len) {
    std::size_t x = state->x & 255, y = state->y & 255;
    for (; len >= 8; len -= 8, in += 8, out += 8) {
#pragma GCC unroll 8
        for (std::size_t i = 0; i < 8; ++i) {
            const std::uint8_t key =
                step(state->s, x, y);  // before the byte of `in`, which would need a register meanwhile
            out[i] = static_cast<std::uint8_t>(key ^ in[i]);
        }
    }
    for (; len != 0; --len) *out++ = static_cast<std::uint8_t>(*in++ ^ step(state->s, x, y));
    state->x = static_cast<std::uint32_t>(x);
    state->y = static_cast<std::uint32_t>(y);
}
