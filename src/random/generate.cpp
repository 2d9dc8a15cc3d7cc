// E_GenerateRandom and EN_GenerateRandom: the digest chain or the DES generator, by a number.
#include <morvane/random.h>

#include <cstdint>

void E_GenerateRandom(std::uint8_t* octets, std::uint32_t count, std::uint32_t mode) {
    if (mode == 0) {
        E_GenerateRandom_MD5(octets, count);
    } else {
        E_GenerateRandom_DES(octets, count);
    }
}

void EN_GenerateRandom(ENUM* x, std::uint32_t count, std::uint32_t mode) {
    x->sign = 0;
    E_GenerateRandom(reinterpret_cast<std::uint8_t*>(x->words), count, mode);
    x->length = static_cast<std::int32_t>(count / 4 + (count % 4 != 0 ? 1 : 0));
}
