/* Prints the SHA-256 digest of "abc". */
#include <morvane/hash.h>

#include <stdio.h>

int main(void) {
    const uint8_t text[3] = {'a', 'b', 'c'};
    uint8_t digest[E_SHA256_DIGEST_BYTES];
    uint32_t length;
    E_SHA256(digest, &length, text, sizeof text);
    for (uint32_t i = 0; i < length; ++i) printf("%02x", digest[i]);
    printf("\n");
    return 0;
}
