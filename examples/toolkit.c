/* What an application does with the toolkit: prints the SHA-1 digest and a MAC of the text on the command line, and checks
 * the MAC. */
#include <morvane/toolkit.h>

#include <stdio.h>
#include <string.h>

static void print_hex(const CSSM_DATA* data) {
    uint32_t i;
    for (i = 0; i < data->Length; ++i) printf("%02x", data->Data[i]);
}

int main(int argc, char** argv) {
    char empty[] = "";
    char* const text = argc > 1 ? argv[1] : empty;
    CSSM_DATA message = {(uint32_t)strlen(text), (uint8_t*)text};
    CSSM_DATA key = {0, NULL}, digest = {0, NULL}, mac = {0, NULL};
    K_CONTEXT* const context = K_NewContext(NULL);
    int32_t code;

    if (context == NULL || K_KCCInit(context) != 0) {
        fprintf(stderr, "no memory\n");
        K_EndContext(context);
        return 1;
    }
    /* A key that cannot be had stays null, and the MAC is refused. */
    K_str2bin(context, "0123456789abcdef", &key.Data, &key.Length);

    code = K_GenHash(context, K_HASH_SHA1, &message, &digest);
    if (code == 0) code = K_GenMac(context, K_MAC_DES, &key, &message, &mac);
    if (code == 0) code = K_VerifyMac(context, K_MAC_DES, &key, &message, &mac);
    if (code == 0) {
        print_hex(&digest);
        printf(" ");
        print_hex(&mac);
        printf("\n");
    } else {
        fprintf(stderr, "failed: 0x%x\n", (unsigned)code);
    }

    K_free(context, key.Data);
    K_free(context, digest.Data);
    K_free(context, mac.Data);
    K_KCCTerm(context);
    return K_EndContext(context) == 0 && code == 0 ? 0 : 1;
}
