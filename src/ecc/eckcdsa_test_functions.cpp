// EC-KCDSA for tests: the key pair of a fixed private key, and a verification that shows what it computes.
#include "ecc/eckcdsa.h"
#include "ecc/key_pair.h"

#include <charconv>
#include <cstdio>
#include <iterator>

namespace {

using namespace morvane::ecc;

// Below every n, and in 20 octets.
constexpr char kFixedKey[] = "000123456789abcdeffedcba98765432100f1e2d3c";
constexpr std::size_t kFixedKeyOctets = (sizeof kFixedKey - 1) / 2;
static_assert(kFixedKeyOctets == 21);

void read_fixed_key(Word* d, std::int32_t curve) noexcept {
    std::uint8_t octets[kFixedKeyOctets];
    for (std::size_t i = 0; i < kFixedKeyOctets; ++i)
        std::from_chars(kFixedKey + 2 * i, kFixedKey + 2 * i + 2, octets[i], 16);
    read_scalar(d, curve, octets);
}

void print(const char* name, const Word* number) noexcept {
    std::printf("\n%s = ", name);
    for (std::size_t i = kWords; i-- > 0;) std::printf("%08X", static_cast<unsigned>(number[i]));
}

void print(const char* name, const HashValue& value) noexcept {
    std::printf("\n%s = ", name);
    for (const std::uint8_t octet : value) std::printf("%02X", static_cast<unsigned>(octet));
}

}  // namespace

std::int32_t TORVA_V1_ECC_KeyPairGeneration_ECKCDSA_TEST(std::int32_t curveId, const E_EC_PARAMS* /*params*/,
                                                         TORVA_V1_OPAQUE8* privateOut, TORVA_V1_OPAQUE8* publicOut) {
    if (!can_generate(curveId, privateOut, publicOut)) return -1;
    Word d[kWords], inverse[kWords];
    read_fixed_key(d, curveId);
    scalar_invert(inverse, curveId, d);
    TORVA_V1_POINT q;
    if (put_key_pair(*privateOut, *publicOut, curveId, d, inverse) != 0 || !multiply_base(q, curveId, inverse)) return -1;
    print("d", d);
    print("dInv", inverse);
    print("Qx", q.x);
    print("Qy", q.y);
    std::printf("\n");
    return 0;
}

std::int32_t E_ECC_GenerateKeyPair_ECKCDSA_TEST(std::int32_t curveId, const E_EC_PARAMS* params,
                                                TORVA_V1_OPAQUE8* privateOut, TORVA_V1_OPAQUE8* publicOut) {
    return generate_block(TORVA_V1_ECC_KeyPairGeneration_ECKCDSA_TEST, curveId, params, privateOut, publicOut);
}

std::int32_t E_ECKCDSA_Verify_TEST(std::int32_t curveId, const E_EC_PARAMS* params, const TORVA_V1_OPAQUE8* message,
                                   const TORVA_V1_OPAQUE8* signature, const TORVA_V1_OPAQUE8* publicKey) {
    EckcdsaCheck check;
    const std::int32_t result = eckcdsa_check(check, curveId, params, message, signature, publicKey);
    if (result != 1) return result;
    print("H", check.h);
    print("e", check.e);
    print("h(x)", check.h_of_x);
    std::printf("\n");
    return check.is_valid ? 1 : 0;
}
