/* Prints base^exponent mod modulus. The arguments and what is printed are numbers in hex. */
#include <morvane/bignum.h>

#include <ctype.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

enum { kMaxDigits = 1 << 16 };

/* The number of a hex text, in a new record; null if it is none, or if there is no memory. */
static ENUM* from_hex(const char* text) {
    static const char kDigits[] = "0123456789abcdef";
    const size_t digits = strlen(text);
    if (digits == 0 || digits > kMaxDigits) return NULL;

    const size_t bytes = (digits + 1) / 2;
    uint8_t* const octets = calloc(bytes, 1);
    ENUM* const x = EN_Create((uint32_t)(bytes + 3) / 4);
    int good = octets != NULL && x != NULL;
    for (size_t i = 0; i < digits && good; ++i) {
        const char* const digit = strchr(kDigits, tolower((unsigned char)text[i]));
        const size_t place = digits - 1 - i; /* from the right: two digits make one octet */
        good = digit != NULL;
        if (good) octets[bytes - 1 - place / 2] |= (uint8_t)((digit - kDigits) << 4 * (place % 2));
    }
    if (good) EN_U8ToENUM(x, octets, (uint32_t)bytes);
    free(octets);
    if (good) return x;
    EN_Destroy(x);
    return NULL;
}

static int print_hex(const ENUM* x) {
    const uint32_t bytes = (EN_GetFilledBitNum(x) + 7) / 8;
    uint8_t* const octets = malloc(bytes + 1); /* one more, so that it is never none */
    if (octets == NULL) return 0;
    EN_ENUMToU8(octets, x);
    printf("%x", bytes > 0 ? octets[0] : 0U);
    for (uint32_t i = 1; i < bytes; ++i) printf("%02x", octets[i]);
    printf("\n");
    free(octets);
    return 1;
}

int main(int argc, char** argv) {
    if (argc != 4) {
        fprintf(stderr, "usage: power BASE EXPONENT MODULUS (numbers in hex)\n");
        return 2;
    }
    int failed = 1;
    ENUM* const base = from_hex(argv[1]);
    ENUM* const exponent = from_hex(argv[2]);
    ENUM* const modulus = from_hex(argv[3]);
    ENUM* result = NULL;
    if (base == NULL || exponent == NULL || modulus == NULL || EN_GetFilledBitNum(modulus) == 0) {
        fprintf(stderr, "power: wanted are numbers in hex of at most %d digits, and a modulus above 0\n", kMaxDigits);
    } else if ((result = EN_Create((uint32_t)modulus->length)) == NULL) { /* as many words as the modulus has */
        fprintf(stderr, "power: no memory\n");
    } else {
        EN_Mod_Exp(result, base, exponent, modulus);
        failed = !print_hex(result);
    }
    EN_Destroy(result);
    EN_Destroy(modulus);
    EN_Destroy(exponent);
    EN_Destroy(base);
    return failed;
}
