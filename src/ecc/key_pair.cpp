#include "ecc/key_pair.h"

#include <morvane/ecc_schemes.h>

namespace morvane::ecc {
namespace {

constexpr std::int32_t kFailed = -1;
constexpr std::uint8_t kKeyBlock = 0x02;
constexpr std::int32_t kBlockHead = 2;

void draw_private_key(Word* d, std::int32_t curve, decltype(E_GenerateRandom_X962)* generator) noexcept {
    do draw(d, curve, generator);
    while (!fits_coordinate(curve, d));
}

}  // namespace

std::int32_t generate_block(KeyPairGeneration* generate, std::int32_t curve, const E_EC_PARAMS* params,
                            TORVA_V1_OPAQUE8* private_out, TORVA_V1_OPAQUE8* public_out) noexcept {
    if (!has_room(private_out)) return kFailed;
    TORVA_V1_OPAQUE8 bare = {0, private_out->octets + kBlockHead};
    if (generate(curve, params, &bare, public_out) != 0) return kFailed;
    private_out->octets[0] = kKeyBlock;
    private_out->octets[1] = static_cast<std::uint8_t>(bare.count);
    private_out->count = kBlockHead + bare.count;
    return 0;
}

bool can_generate(std::int32_t curve, const TORVA_V1_OPAQUE8* private_out, const TORVA_V1_OPAQUE8* public_out) noexcept {
    return is_built_in(curve) && has_room(private_out) && has_room(public_out);
}

std::int32_t put_key_pair(TORVA_V1_OPAQUE8& private_out, TORVA_V1_OPAQUE8& public_out, std::int32_t curve, const Word* d,
                          const Word* factor) noexcept {
    TORVA_V1_POINT q;
    if (!multiply_base(q, curve, factor)) return kFailed;
    put_scalar(private_out, curve, d);
    put_point(public_out, curve, q);
    return 0;
}

}  // namespace morvane::ecc

using namespace morvane::ecc;

std::int32_t TORVA_V1_ECC_KeyPairGeneration_X962(std::int32_t curveId, const E_EC_PARAMS* /*params*/,
                                                 TORVA_V1_OPAQUE8* privateOut, TORVA_V1_OPAQUE8* publicOut) {
    if (!can_generate(curveId, privateOut, publicOut)) return kFailed;
    Scalar d;
    draw_private_key(d, curveId, E_GenerateRandom_X962);
    return put_key_pair(*privateOut, *publicOut, curveId, d, d);
}

std::int32_t TORVA_V1_ECC_KeyPairGeneration_ECKCDSA(std::int32_t curveId, const E_EC_PARAMS* /*params*/,
                                                    TORVA_V1_OPAQUE8* privateOut, TORVA_V1_OPAQUE8* publicOut) {
    if (!can_generate(curveId, privateOut, publicOut)) return kFailed;
    Scalar d, inverse;
    draw_private_key(d, curveId, E_GenerateRandom_ECKCDSA);
    scalar_invert(inverse, curveId, d);
    return put_key_pair(*privateOut, *publicOut, curveId, d, inverse);
}

std::int32_t E_ECC_GenerateKeyPair(std::int32_t curveId, const E_EC_PARAMS* params, TORVA_V1_OPAQUE8* privateOut,
                                   TORVA_V1_OPAQUE8* publicOut) {
    return generate_block(TORVA_V1_ECC_KeyPairGeneration_X962, curveId, params, privateOut, publicOut);
}

std::int32_t E_ECC_GenerateKeyPair_ECKCDSA(std::int32_t curveId, const E_EC_PARAMS* params, TORVA_V1_OPAQUE8* privateOut,
                                           TORVA_V1_OPAQUE8* publicOut) {
    return generate_block(TORVA_V1_ECC_KeyPairGeneration_ECKCDSA, curveId, params, privateOut, publicOut);
}
