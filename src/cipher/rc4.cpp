// RC4.
#include "base/bytes.h"

#include <morvane/cipher.h>

uint32_t E_RC4_KeySchedule(E_RC4_STATE* state, const uint8_t* key, uint32_t key_len) {
    if (key_len == 0) {
        *state = {};
        return 0;
    }
    state->x = 0;
    state->y = 0;
    std::uint32_t* const s = state->s;
    for (std::uint32_t i = 0; i < 256; ++i) s[i] = i;
    std::uint32_t j = 0, at = 0;
    for (std::uint32_t i = 0; i < 256; ++i) {
        const std::uint32_t a = s[i];
        j = (j + a + key[at]) & 255;
        s[i] = s[j];
        s[j] = a;
        at = at + 1 == key_len ? 0 : at + 1;
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
