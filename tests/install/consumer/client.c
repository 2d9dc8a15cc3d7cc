/* A program of somebody who has installed the library. It calls every family, the companion, and functions that have two
 * names, and prints the SHA-0 digest of "abc" and the version that it was compiled with. */
#include <morvane/bignum.h>
#include <morvane/csp.h>
#include <morvane/primitives.h>
#include <morvane/toolkit.h>

#include <stdio.h>

int main(void) {
    uint8_t text[3] = {'a', 'b', 'c'}, digest[20], octets[16] = {0};
    E_SHA1_CTX ctx;
    ENUM* const number = EN_Create(4);
    K_CONTEXT* const context = K_NewContext(NULL);
    CSSM_DATA message = {3, text}, mac = {0, NULL};
    int i;
    E_SHA_Init(&ctx);
    E_SHA_Update(&ctx, text, 3);
    E_SHA_Final(&ctx, digest);
    E_GenerateRandom(octets, sizeof octets, 0);
    RAND_Bytes(octets, sizeof octets);
    if (number == NULL || !EN_GeneratePrimeRSA(number, 128) || !EN_IsPrime(number)) return 2;
    if (CSP_DecryptDataInit(0, 0, NULL) != -1 || GetError() != CSP_ERR_NO_CONTEXT) return 3;
    if (K_KCCInit(context) != 0 || K_GenMac(context, K_MAC_MD5, &(CSSM_DATA){16, octets}, &message, &mac) != 0) return 4;
    K_free(context, mac.Data);
    K_KCCTerm(context);
    if (K_EndContext(context) != 0) return 5;
    EN_Destroy(number);
    for (i = 0; i < 20; ++i) printf("%02x", digest[i]);
    printf(" %s\n", MORVANE_VERSION);
    return 0;
}
