// K_KeyShareEncode and K_KeyShareDecode: A. Shamir, How to share a secret, 1979, byte by byte over GF(2^8).
#include "base/wipe.h"
#include "toolkit/request.h"

#include <morvane/random.h>

namespace {

using namespace morvane::toolkit;

// A share: how many are needed, its number from 1 on, a byte for each byte of the key.
constexpr std::uint32_t kHeader = 2;
constexpr std::uint32_t kMostShares = 255;

// Modulo x^8 + x^4 + x^3 + x + 1, in a time that does not depend on the factors.
std::uint8_t multiply(std::uint8_t a, std::uint8_t b) noexcept {
    std::uint32_t product = 0;
    std::uint32_t shifted = a;
    const std::uint32_t factor = b;
    for (unsigned i = 0; i < 8; ++i) {
        product ^= shifted & (0U - (factor >> i & 1U));
        shifted = (shifted << 1) ^ (0x11b & (0U - (shifted >> 7)));
    }
    return static_cast<std::uint8_t>(product);
}

// a^254.
std::uint8_t invert(std::uint8_t a) noexcept {
    std::uint8_t power = a;
    for (int i = 0; i < 6; ++i) power = multiply(multiply(power, power), a);
    return multiply(power, power);
}

std::uint32_t encode(K_CONTEXT* context, const CSSM_DATA& key, std::uint32_t needed, std::uint32_t count,
                     CSSM_DATA* shares) noexcept {
    if (key.Length == 0 || needed == 0 || needed > count || count > kMostShares) return KERR_KEY_SHARE;
    // For each byte a polynomial of degree needed - 1 whose value at 0 it is.
    Buffer polynomial(context, needed, 1);
    if (!polynomial || key.Length > UINT32_MAX - kHeader) return KERR_MEMORY;
    CSSM_DATA made[kMostShares] = {};
    for (std::uint32_t i = 0; i < count; ++i) {
        Buffer share(context, key.Length + kHeader, 1);
        if (!share) {
            while (i-- > 0) K_free(context, made[i].Data);
            return KERR_MEMORY;
        }
        share.get()[0] = static_cast<std::uint8_t>(needed);
        share.get()[1] = static_cast<std::uint8_t>(i + 1);
        share.hand_out(made[i]);
    }
    std::uint8_t* const coefficients = polynomial.get();
    for (std::uint32_t at = 0; at < key.Length; ++at) {
        RAND_Bytes(coefficients, static_cast<std::int32_t>(needed));
        coefficients[0] = key.Data[at];
        for (std::uint32_t i = 0; i < count; ++i) {
            std::uint8_t value = 0;
            for (std::uint32_t k = needed; k-- > 0;) {
                value = static_cast<std::uint8_t>(multiply(value, made[i].Data[1]) ^ coefficients[k]);
            }
            made[i].Data[kHeader + at] = value;
        }
    }
    for (std::uint32_t i = 0; i < count; ++i) shares[i] = made[i];
    return 0;
}

// Whether these are as many shares as are needed, of one key.
bool belong_together(const CSSM_DATA* shares, std::uint32_t count) noexcept {
    bool seen[kMostShares + 1] = {};
    for (std::uint32_t i = 0; i < count; ++i) {
        if (shares[i].Data == nullptr || shares[i].Length <= kHeader || shares[i].Length != shares[0].Length) return false;
        const std::uint8_t number = shares[i].Data[1];
        if (shares[i].Data[0] != shares[0].Data[0] || number == 0 || seen[number]) return false;
        seen[number] = true;
    }
    return count != 0 && shares[0].Data[0] != 0 && count >= shares[0].Data[0];
}

std::uint32_t decode(K_CONTEXT* context, const CSSM_DATA* shares, std::uint32_t count, CSSM_DATA& key) noexcept {
    if (!belong_together(shares, count)) return KERR_KEY_SHARE;
    const std::uint32_t needed = shares[0].Data[0];
    Buffer bytes(context, shares[0].Length - kHeader, 1);
    if (!bytes) return KERR_MEMORY;
    // Lagrange's polynomials at 0.
    for (std::uint32_t i = 0; i < needed; ++i) {
        std::uint8_t factor = 1;
        for (std::uint32_t k = 0; k < needed; ++k) {
            if (k == i) continue;
            const std::uint8_t other = shares[k].Data[1];
            factor = multiply(factor, multiply(other, invert(static_cast<std::uint8_t>(other ^ shares[i].Data[1]))));
        }
        for (std::uint32_t at = 0; at < bytes.data().Length; ++at) {
            bytes.get()[at] ^= multiply(factor, shares[i].Data[kHeader + at]);
        }
    }
    bytes.hand_out(key);
    return 0;
}

}  // namespace

int32_t K_KeyShareEncode(K_CONTEXT* context, const CSSM_DATA* key, uint32_t needed, uint32_t count, CSSM_DATA* shares) {
    return operate(context, has_data(key) && shares != nullptr,
                   [&] { return encode(context, *key, needed, count, shares); });
}

int32_t K_KeyShareDecode(K_CONTEXT* context, const CSSM_DATA* shares, uint32_t count, CSSM_DATA* key) {
    return operate(context, shares != nullptr && key != nullptr, [&] { return decode(context, shares, count, *key); });
}
