// K_RSAPublicKey2WTLS and K_WTLSPublicKey2RSA.
#include "toolkit/request.h"

#include <morvane/asn1.h>
#include <morvane/bignum.h>

#include <algorithm>

namespace {

using namespace morvane::toolkit;

// These two calls answer so, unlike the others.
constexpr std::uint32_t kDone = 1;
constexpr auto kRefused = static_cast<std::uint32_t>(-1);

// What callers have always been given; longer keys get what they need.
constexpr std::uint32_t kUsualFieldRoom = 400;
constexpr std::uint32_t kUsualKeyRoom = 200;

static_assert(4 * E_RSA_MODULUS_WORDS <= UINT16_MAX, "a field's length has 16 bits");

struct PublicKey {
    E_RSA_KEY record = {};
    PublicKey() noexcept { E_RSA_Init(&record); }
};

std::uint32_t octets_in(const ENUM& number) noexcept { return (EN_GetFilledBitNum(&number) + 7) / 8; }

bool hand_out_field(K_CONTEXT* context, const ENUM& number, std::uint8_t** field, std::uint16_t* length) noexcept {
    Block<std::uint8_t> room(context, std::max(kUsualFieldRoom, octets_in(number)));
    *field = room.release();
    if (*field == nullptr) return false;
    *length = static_cast<std::uint16_t>(EN_ENUMToU8(*field, &number));
    return true;
}

// False if the octets do not fit so many words.
bool load(ENUM& number, std::size_t room_words, const std::uint8_t* octets, std::uint16_t length) noexcept {
    const std::uint8_t* const end = octets + length;
    const std::uint8_t* const first = std::find_if(octets, end, [](std::uint8_t octet) { return octet != 0; });
    const auto count = static_cast<std::uint32_t>(end - first);
    if (count > 4 * room_words) return false;
    EN_U8ToENUM(&number, first, count);
    return true;
}

}  // namespace

uint32_t K_RSAPublicKey2WTLS(K_CONTEXT* context, const uint8_t* der, uint32_t der_length, uint8_t** exponent,
                             uint16_t* exponent_length, uint8_t** modulus, uint16_t* modulus_length) {
    if (context == nullptr) return kRefused;
    if (exponent == nullptr || exponent_length == nullptr || modulus == nullptr || modulus_length == nullptr)
        return context->last_error = KERR_NOT_READY;
    PublicKey key;
    // Whether this went well is not asked: of a key that does not decode, the fields are those up to the fault.
    E_ASN1_GetRSAPublicKey(&key.record, &der, der_length);
    if (!hand_out_field(context, key.record.e, exponent, exponent_length)) return context->last_error = KERR_MEMORY;
    if (!hand_out_field(context, key.record.n, modulus, modulus_length)) return context->last_error = KERR_MEMORY;
    return kDone;
}

uint32_t K_WTLSPublicKey2RSA(K_CONTEXT* context, const uint8_t* exponent, uint16_t exponent_length, const uint8_t* modulus,
                             uint16_t modulus_length, uint8_t** der, uint32_t* der_length) {
    if (context == nullptr) return kRefused;
    if ((exponent == nullptr && exponent_length != 0) || (modulus == nullptr && modulus_length != 0) || der == nullptr ||
        der_length == nullptr)
        return context->last_error = KERR_NOT_READY;
    PublicKey key;
    *der = nullptr;
    if (!load(key.record.e, 1, exponent, exponent_length) ||
        !load(key.record.n, E_RSA_MODULUS_WORDS, modulus, modulus_length))
        return kRefused;
    const auto needed = static_cast<std::uint32_t>(E_ASN1_GetRSAPublicKeyBytes(&key.record));
    Block<std::uint8_t> room(context, std::max(kUsualKeyRoom, needed));
    if (!room) return context->last_error = KERR_MEMORY;
    *der_length = static_cast<std::uint32_t>(E_ASN1_PutRSAPublicKey(&key.record, room.get()));
    *der = room.release();
    return kDone;
}
