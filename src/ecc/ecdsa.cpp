// ECDSA of ANSI X9.62 with SHA-1.
#include "ecc/ecdsa.h"

#include <morvane/ecc_schemes.h>
#include <morvane/hash.h>

#include "bignum/octets.h"
#include "bignum/record.h"
#include "ecc/signature_block.h"
#include "random/big_endian.h"
#include "random/hedge.h"

#include <algorithm>

namespace morvane::ecc {

Signed ecdsa_sign(Word* r, Word* s, std::int32_t curve, const Word* e, const Word* d, const Word* k) noexcept {
    TORVA_V1_POINT point;
    if (!multiply_base(point, curve, k)) return Signed::kFailed;
    scalar_reduce(r, curve, point.x, kWords);
    Scalar sum, inverse;
    scalar_multiply(sum, curve, d, r);
    scalar_add(sum, curve, sum, e);
    scalar_invert(inverse, curve, k);
    scalar_multiply(s, curve, sum, inverse);
    return is_zero(r) || is_zero(s) ? Signed::kTryAnotherK : Signed::kYes;
}

namespace {

void invert_vt(Word* r, std::int32_t curve, const Word* a) noexcept {
    Word n[kWords], words[kWords];
    order(n, curve);
    std::copy_n(a, kWords, words);
    std::fill_n(r, kWords, Word{0});
    ENUM modulus = {0, 0, n}, number = {0, 0, words}, inverse = {0, 0, r};
    bignum::set_normalised_length(modulus, kWords);
    bignum::set_normalised_length(number, kWords);
    EN_Mod_Inv(&inverse, &number, &modulus);
}

}  // namespace

bool ecdsa_verify_vt(std::int32_t curve, const Word* e, const Word* r, const Word* s, const TORVA_V1_POINT& q) noexcept {
    Word inverse[kWords], u[kWords], v[kWords], x[kWords];
    invert_vt(inverse, curve, s);
    scalar_multiply(u, curve, e, inverse);
    scalar_multiply(v, curve, r, inverse);
    TORVA_V1_POINT point;
    if (!multiply_two_vt(point, curve, u, v, q)) return false;
    scalar_reduce(x, curve, point.x, kWords);
    return std::equal(x, x + kWords, r);
}

namespace {

constexpr std::int32_t kCannotSign = -4;

void digest(Word* e, std::int32_t curve, Octets message) noexcept {
    std::uint8_t octets[E_SHA1_DIGEST_BYTES];
    E_SHA1(octets, message.data(), static_cast<std::uint32_t>(message.size()));
    bignum::octets_to_words(e, kWords, octets, sizeof octets);
    scalar_reduce(e, curve, e, kWords);
}

std::int32_t sign(Word* r, Word* s, std::int32_t curve, const TORVA_V1_OPAQUE8* message,
                  const TORVA_V1_OPAQUE8* private_key) noexcept {
    const std::optional<Octets> text = octets_of(message);
    Scalar d, k;
    if (!text || !read_private_key(d, curve, private_key)) return kCannotSign;
    Word e[kWords];
    digest(e, curve, *text);
    random::hedge(d.items, *text);
    Signed result = Signed::kTryAnotherK;
    while (result == Signed::kTryAnotherK) {
        draw(k, curve, E_GenerateRandom_X962);
        result = ecdsa_sign(r, s, curve, e, d, k);
    }
    wipe_stack_below<kScalarStack>();
    declare_known(r, kWords);
    declare_known(s, kWords);
    return result == Signed::kYes ? 0 : kCannotSign;
}

bool is_valid(std::int32_t curve, const TORVA_V1_OPAQUE8* message, std::optional<Octets> r_octets,
              std::optional<Octets> s_octets, const TORVA_V1_POINT& q) noexcept {
    const std::optional<Octets> text = octets_of(message);
    Word e[kWords], r[kWords], s[kWords];
    if (!text || !read_scalar(r, curve, r_octets) || !read_scalar(s, curve, s_octets)) return false;
    digest(e, curve, *text);
    return ecdsa_verify_vt(curve, e, r, s, q);
}

void put_minimal(TORVA_V1_OPAQUE8& out, const Word* k) noexcept {
    std::uint8_t octets[kOrderOctets];
    bignum::words_to_octets(octets, sizeof octets, k, kWords);
    out.count = static_cast<std::int32_t>(random::put_minimal(out.octets, octets, sizeof octets));
}

}  // namespace
}  // namespace morvane::ecc

using namespace morvane::ecc;

std::int32_t TORVA_V1_ECC_SignatureGeneration_X917(std::int32_t curveId, const E_EC_PARAMS* /*params*/,
                                                   const TORVA_V1_OPAQUE8* message, TORVA_V1_OPAQUE8* rOut,
                                                   TORVA_V1_OPAQUE8* sOut, const TORVA_V1_OPAQUE8* privateKey) {
    Word r[kWords], s[kWords];
    if (!has_room(rOut) || !has_room(sOut)) return kCannotSign;
    const std::int32_t result = sign(r, s, curveId, message, privateKey);
    if (result != 0) return result;
    put_minimal(*rOut, r);
    put_minimal(*sOut, s);
    return 0;
}

std::int32_t E_ECDSA_Sign(std::int32_t curveId, const E_EC_PARAMS* /*params*/, const TORVA_V1_OPAQUE8* message,
                          TORVA_V1_OPAQUE8* signatureOut, const TORVA_V1_OPAQUE8* privateKey) {
    Word r[kWords], s[kWords];
    if (!has_room(signatureOut)) return kCannotSign;
    const std::int32_t result = sign(r, s, curveId, message, privateKey);
    if (result == 0) put_ecdsa_block(*signatureOut, r, s);
    return result;
}

std::int32_t TORVA_V1_ECC_SignatureVerification(std::int32_t curveId, const E_EC_PARAMS* params,
                                                const TORVA_V1_OPAQUE8* message, const TORVA_V1_OPAQUE8* r,
                                                const TORVA_V1_OPAQUE8* s, const TORVA_V1_OPAQUE8* publicKey) {
    TORVA_V1_POINT q;
    if (!read_public_key(q, curveId, params, publicKey)) return -1;
    return is_valid(curveId, message, octets_of(r), octets_of(s), q) ? 1 : 0;
}

std::int32_t E_ECDSA_Verify(std::int32_t curveId, const E_EC_PARAMS* params, const TORVA_V1_OPAQUE8* message,
                            const TORVA_V1_OPAQUE8* signature, const TORVA_V1_OPAQUE8* publicKey) {
    TORVA_V1_POINT q;
    if (!read_public_key(q, curveId, params, publicKey)) return -1;
    const std::optional<Octets> block = octets_of(signature);
    Octets r, s;
    return block && read_ecdsa_block(r, s, *block) && is_valid(curveId, message, r, s, q) ? 1 : 0;
}
