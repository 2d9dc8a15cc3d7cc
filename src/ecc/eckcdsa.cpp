#include "ecc/eckcdsa.h"

#include <morvane/hash.h>

#include "base/bytes.h"
#include "bignum/octets.h"
#include "ecc/signature_block.h"
#include "random/hedge.h"

#include <algorithm>
#include <functional>

namespace morvane::ecc {
namespace {

constexpr std::int32_t kCannotSign = -4;
constexpr std::size_t kBlockOctets = 64;  // of HAS-160

// H: z is what follows the first octet of the public key, cut or filled with zeros to a block.
HashValue hash_message(Octets public_key, Octets message) noexcept {
    std::uint8_t z[kBlockOctets] = {};
    if (!public_key.empty()) copy_bytes(z, public_key.data() + 1, std::min(public_key.size() - 1, kBlockOctets));
    HashValue value;
    E_HAS160_CTX hash;
    E_HAS160_Init(&hash);
    E_HAS160_Update(&hash, z, kBlockOctets);
    E_HAS160_Update(&hash, message.data(), static_cast<std::int32_t>(message.size()));
    E_HAS160_Final(&hash, value.data());
    return value;
}

HashValue hash_x(std::int32_t curve, const TORVA_V1_POINT& point) noexcept {
    std::uint8_t x[kMostCoordinateOctets];
    const std::size_t size = coordinate_octets(curve);
    bignum::words_to_octets(x, size, point.x, kWords);
    HashValue value;
    E_HAS160_CTX hash;
    E_HAS160_Init(&hash);
    E_HAS160_Update(&hash, x, static_cast<std::int32_t>(size));
    E_HAS160_Final(&hash, value.data());
    return value;
}

// e = (r XOR H) mod n.
void challenge(Word* e, std::int32_t curve, const HashValue& r, const HashValue& h) noexcept {
    HashValue mixed;
    std::transform(r.begin(), r.end(), h.begin(), mixed.begin(), std::bit_xor<>());
    bignum::octets_to_words(e, kWords, mixed.data(), mixed.size());
    scalar_reduce(e, curve, e, kWords);
}

struct Signature {
    HashValue r;
    Word s[kWords];
};

Signed sign_with(Signature& signature, std::int32_t curve, const HashValue& h, const Word* d, const Word* k) noexcept {
    TORVA_V1_POINT point;
    if (!multiply_base(point, curve, k)) return Signed::kFailed;
    signature.r = hash_x(curve, point);
    Word e[kWords];
    challenge(e, curve, signature.r, h);
    Scalar difference;
    scalar_subtract(difference, curve, k, e);
    scalar_multiply(signature.s, curve, d, difference);
    const bool is_usable = !is_zero(signature.s) && fits_coordinate(curve, signature.s);
    return is_usable ? Signed::kYes : Signed::kTryAnotherK;
}

// With a k of the caller, or with random ones.
std::int32_t sign(Signature& signature, std::int32_t curve, const TORVA_V1_OPAQUE8* message,
                  const TORVA_V1_OPAQUE8* private_key, const TORVA_V1_OPAQUE8* public_key, const Word* given_k) noexcept {
    const std::optional<Octets> text = octets_of(message);
    const std::optional<Octets> q = octets_of(public_key);
    Scalar d, k;
    if (!text || !q || !read_private_key(d, curve, private_key)) return kCannotSign;
    const HashValue h = hash_message(*q, *text);
    if (given_k != nullptr) return sign_with(signature, curve, h, d, given_k) == Signed::kYes ? 0 : kCannotSign;
    random::hedge(d.items, *text);
    Signed result = Signed::kTryAnotherK;
    while (result == Signed::kTryAnotherK) {
        draw(k, curve, E_GenerateRandom_ECKCDSA);
        result = sign_with(signature, curve, h, d, k);
    }
    wipe_stack_below<kScalarStack>();
    return result == Signed::kYes ? 0 : kCannotSign;
}

std::int32_t sign_block(std::int32_t curve, const TORVA_V1_OPAQUE8* message, TORVA_V1_OPAQUE8* out,
                        const TORVA_V1_OPAQUE8* private_key, const TORVA_V1_OPAQUE8* public_key,
                        const Word* given_k) noexcept {
    Signature signature;
    if (!has_room(out)) return kCannotSign;
    const std::int32_t result = sign(signature, curve, message, private_key, public_key, given_k);
    if (result != 0) return result;
    std::uint8_t octets[kMostCoordinateOctets];
    TORVA_V1_OPAQUE8 s = {0, octets};
    put_scalar(s, curve, signature.s);
    put_eckcdsa_block(*out, signature.r, *octets_of(&s));
    return 0;
}

// Fills `check`, unless r or s cannot be one: false.
bool check_equations(EckcdsaCheck& check, std::int32_t curve, const TORVA_V1_OPAQUE8* message,
                     std::optional<Octets> r_octets, std::optional<Octets> s_octets, const TORVA_V1_OPAQUE8* public_key,
                     const TORVA_V1_POINT& q) noexcept {
    const std::optional<Octets> text = octets_of(message);
    Word s[kWords];
    if (!text || !r_octets || r_octets->size() != E_ECKCDSA_HASH_OCTETS || !read_scalar(s, curve, s_octets)) return false;
    HashValue r;
    std::copy(r_octets->begin(), r_octets->end(), r.begin());
    check.h = hash_message(*octets_of(public_key), *text);
    challenge(check.e, curve, r, check.h);
    TORVA_V1_POINT point;
    if (!multiply_two_vt(point, curve, check.e, s, q)) return false;
    check.h_of_x = hash_x(curve, point);
    check.is_valid = check.h_of_x == r;
    return true;
}

}  // namespace

std::int32_t eckcdsa_check(EckcdsaCheck& check, std::int32_t curve, const E_EC_PARAMS* params,
                           const TORVA_V1_OPAQUE8* message, const TORVA_V1_OPAQUE8* signature,
                           const TORVA_V1_OPAQUE8* public_key) noexcept {
    TORVA_V1_POINT q;
    if (!read_public_key(q, curve, params, public_key)) return -1;
    const std::optional<Octets> block = octets_of(signature);
    Octets r, s;
    if (!block || !read_eckcdsa_block(r, s, curve, *block)) return 0;
    return check_equations(check, curve, message, r, s, public_key, q) ? 1 : 0;
}

}  // namespace morvane::ecc

using namespace morvane::ecc;

std::int32_t TORVA_V1_ECC_SignatureGeneration_ECKCDSA(std::int32_t curveId, const E_EC_PARAMS* /*params*/,
                                                      const TORVA_V1_OPAQUE8* message, TORVA_V1_OPAQUE8* rOut,
                                                      TORVA_V1_OPAQUE8* sOut, const TORVA_V1_OPAQUE8* privateKey,
                                                      const TORVA_V1_OPAQUE8* publicKey) {
    Signature signature;
    if (!has_room(rOut) || !has_room(sOut)) return kCannotSign;
    const std::int32_t result = sign(signature, curveId, message, privateKey, publicKey, nullptr);
    if (result != 0) return result;
    std::copy(signature.r.begin(), signature.r.end(), rOut->octets);
    rOut->count = E_ECKCDSA_HASH_OCTETS;
    put_scalar(*sOut, curveId, signature.s);
    return 0;
}

std::int32_t E_ECKCDSA_Sign(std::int32_t curveId, const E_EC_PARAMS* /*params*/, const TORVA_V1_OPAQUE8* message,
                            TORVA_V1_OPAQUE8* signatureOut, const TORVA_V1_OPAQUE8* privateKey,
                            const TORVA_V1_OPAQUE8* publicKey) {
    return sign_block(curveId, message, signatureOut, privateKey, publicKey, nullptr);
}

std::int32_t E_ECKCDSA_Sign_givenK(std::int32_t curveId, const E_EC_PARAMS* /*params*/, const TORVA_V1_OPAQUE8* message,
                                   TORVA_V1_OPAQUE8* signatureOut, const TORVA_V1_OPAQUE8* privateKey,
                                   const TORVA_V1_OPAQUE8* publicKey, const TORVA_V1_OPAQUE8* k) {
    Scalar given;
    if (!read_scalar(given, curveId, octets_of(k))) return kCannotSign;
    return sign_block(curveId, message, signatureOut, privateKey, publicKey, given);
}

std::int32_t TORVA_V1_ECC_SignatureVerification_ECKCDSA(std::int32_t curveId, const E_EC_PARAMS* params,
                                                        const TORVA_V1_OPAQUE8* message, const TORVA_V1_OPAQUE8* r,
                                                        const TORVA_V1_OPAQUE8* s, const TORVA_V1_OPAQUE8* publicKey) {
    TORVA_V1_POINT q;
    if (!read_public_key(q, curveId, params, publicKey)) return -1;
    EckcdsaCheck check;
    check_equations(check, curveId, message, octets_of(r), octets_of(s), publicKey, q);
    return check.is_valid ? 1 : 0;
}

std::int32_t E_ECKCDSA_Verify(std::int32_t curveId, const E_EC_PARAMS* params, const TORVA_V1_OPAQUE8* message,
                              const TORVA_V1_OPAQUE8* signature, const TORVA_V1_OPAQUE8* publicKey) {
    EckcdsaCheck check;
    const std::int32_t result = eckcdsa_check(check, curveId, params, message, signature, publicKey);
    return result == 1 && !check.is_valid ? 0 : result;
}
