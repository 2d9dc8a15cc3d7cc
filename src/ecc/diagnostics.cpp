// What programs print to look at numbers and points of secp160r1.
#include "ecc/secp160r1.h"

#include <cstdio>

using namespace morvane::ecc;

void PrintBigNumber(const std::uint32_t* words) {
    static_cast<void>(std::printf("%X%X%X%X%X\n", words[4], words[3], words[2], words[1], words[0]));
}

void PrintECPointProjective(const TORVA_V1_PROJECTIVE* point) {
    const struct {
        const char* name;
        const std::uint32_t* words;
    } coordinates[] = {{"x : ", point->x}, {"y : ", point->y}, {"z : ", point->z}};
    for (const auto& coordinate : coordinates) {
        static_cast<void>(std::fputs(coordinate.name, stdout));
        PrintBigNumber(coordinate.words);
    }
}

std::int32_t ECC_BaseOrderExpTest(void) {
    constexpr std::int32_t kCurve = kSecp160r1;
    E_EC_PARAMS params;
    E_ECParams_Init(kCurve, &params);
    TORVA_V1_POINT point;
    words_of(point.x, p160::kBaseX.limbs());
    words_of(point.y, p160::kBaseY.limbs());
    Word less_1[kWords];
    words_of(less_1, subtract(p160::kOrder.limbs(), {{1}}));
    TORVA_V1_PROJECTIVE product;
    TORVA_V1_toProjective(kCurve, &params, &point, &product);
    TORVA_V1_psmul(kCurve, &params, less_1, kWords, &product, &product);
    TORVA_V1_toAffine(kCurve, &params, &product, &point);
    static_cast<void>(std::fputs("result:\n", stdout));
    PrintBigNumber(point.x);
    PrintBigNumber(point.y);
    return 0;
}
