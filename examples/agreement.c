/* Two sides agree on a secret over an elliptic curve, and one sends the other a message: agreement TEXT. */
#include <morvane/toolkit.h>

#include <stdio.h>
#include <string.h>

enum { kCurve = 7 }; /* secp160r1 */

typedef struct Side {
    CSSM_DATA public_key, private_key, secret;
} Side;

static void release(K_CONTEXT* context, Side* side) {
    K_free(context, side->public_key.Data);
    K_free(context, side->private_key.Data);
    K_free(context, side->secret.Data);
}

int main(int argc, char** argv) {
    char empty[] = "";
    char* const text = argc > 1 ? argv[1] : empty;
    CSSM_DATA message = {(uint32_t)strlen(text), (uint8_t*)text}, sealed = {0, NULL}, opened = {0, NULL};
    Side a = {{0, NULL}, {0, NULL}, {0, NULL}}, b = {{0, NULL}, {0, NULL}, {0, NULL}};
    K_CONTEXT* const context = K_NewContext(NULL);
    int32_t code = K_KCCInit(context);

    if (code == 0) code = K_GenerateECCKeyPair(context, kCurve, &a.public_key, &a.private_key);
    if (code == 0) code = K_GenerateECCKeyPair(context, kCurve, &b.public_key, &b.private_key);
    /* Each side uses its own private key and the other one's public key. */
    if (code == 0) code = K_ECDH(context, kCurve, &a.private_key, &b.public_key, &a.secret);
    if (code == 0) code = K_ECDH(context, kCurve, &b.private_key, &a.public_key, &b.secret);
    /* A message to b needs b's public key only. */
    if (code == 0) code = K_ECC_Encryption(context, kCurve, &b.public_key, &message, &sealed);
    if (code == 0) code = K_ECC_Decryption(context, kCurve, &b.private_key, &sealed, &opened);
    if (code == 0) {
        const int same = a.secret.Length == b.secret.Length && memcmp(a.secret.Data, b.secret.Data, a.secret.Length) == 0;
        printf("%s: %.*s\n", same ? "the same secret" : "different secrets", (int)opened.Length, (const char*)opened.Data);
    } else {
        fprintf(stderr, "failed: 0x%x\n", (unsigned)code);
    }

    K_free(context, sealed.Data);
    K_free(context, opened.Data);
    release(context, &a);
    release(context, &b);
    K_KCCTerm(context);
    K_EndContext(context);
    return code == 0 ? 0 : 1;
}
