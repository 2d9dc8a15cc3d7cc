// RC4.
#include "base/bytes.h"

#include <morvane/cipher.h>

#include <utility>

uint32_t E_RC4_KeySchedule(E_RC4_STATE* state, const uint8_t* key, uint32_t key_len) {
    *state = {};
    if (key_len == 0) return 0;
    for (std::uint32_t i = 0; i < 256; ++i) state->s[i] = i;
    std::uint32_t j = 0, at = 0;
    for (std::uint32_t& s : state->s) {
        j = (j + s + key[at]) & 255;
        std::swap(s, state->s[j]);
        if (++at == key_len) at = 0;
    }
    return j;
}

void E_RC4_Encrypt(const uint8_t* in, uint8_t* out, E_RC4_STATE* state, uint32_t len) {
    std::uint32_t x = state->x & 255, y = state->y & 255;
    std::uint32_t* const s = state->s;
    const auto next = [&]() __attribute__((always_inline)) {
        x = (x + 1) & 255;
        const std::uint32_t a = s[x];
        y = (y + a) & 255;
        const std::uint32_t b = s[y];
        s[x] = b;
        s[y] = a;
        return s[(a + b) & 255] & 255;
    };
    for (; len >= 8; len -= 8, in += 8, out += 8) {
        std::uint64_t key = 0;
        for (unsigned i = 0; i < 8; ++i) key |= std::uint64_t{next()} << 8 * i;
        morvane::store_le(out, morvane::load_le<std::uint64_t>(in) ^ key);
    }
    for (; len != 0; --len) *out++ = static_cast<std::uint8_t>(*in++ ^ next());
    state->x = x;
    state->y = y;
}
