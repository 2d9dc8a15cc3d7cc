/* Makes a key pair, signs the text on the command line and verifies the signature: signatures (rsa|kcdsa) TEXT. */
#include <morvane/kcdsa.h>
#include <morvane/toolkit.h>

#include <stdio.h>
#include <string.h>

static int32_t sign_by_rsa(K_CONTEXT* context, const CSSM_DATA* text) {
    CSSM_DATA public_key = {0, NULL}, private_key = {0, NULL}, signature = {0, NULL};
    int32_t code = K_GenerateRSAKey(context, 2048, &public_key, &private_key);
    if (code == 0) code = K_RSASign(context, K_SIGN_SHA256, &private_key, text, &signature);
    if (code == 0) code = K_RSAVerify(context, K_SIGN_SHA256, &public_key, text, &signature);
    K_free(context, public_key.Data);
    K_free(context, private_key.Data);
    K_free(context, signature.Data);
    return code;
}

static int32_t sign_by_kcdsa(K_CONTEXT* context, const CSSM_DATA* text) {
    CSSM_DATA public_key = {0, NULL}, private_key = {0, NULL}, signature = {0, NULL};
    int32_t code = K_GenerateKCDSAKeyPair(context, 1024, &public_key, &private_key);
    if (code == 0) code = K_KCDSASign(context, E_KCDSA_HAS160, &private_key, text, &signature);
    if (code == 0) code = K_KCDSAVerify(context, E_KCDSA_HAS160, &public_key, text, &signature);
    K_free(context, public_key.Data);
    K_free(context, private_key.Data);
    K_free(context, signature.Data);
    return code;
}

int main(int argc, char** argv) {
    const int is_rsa = argc == 3 && strcmp(argv[1], "rsa") == 0;
    K_CONTEXT* context;
    CSSM_DATA text;
    int32_t code;
    if (!is_rsa && (argc != 3 || strcmp(argv[1], "kcdsa") != 0)) {
        fprintf(stderr, "usage: signatures (rsa|kcdsa) TEXT\n");
        return 1;
    }
    context = K_NewContext(NULL);
    text.Length = (uint32_t)strlen(argv[2]);
    text.Data = (uint8_t*)argv[2];
    code = K_KCCInit(context);
    if (code == 0) code = is_rsa ? sign_by_rsa(context, &text) : sign_by_kcdsa(context, &text);
    if (code == 0) {
        printf("the signature is valid\n");
    } else {
        fprintf(stderr, "failed: 0x%x\n", (unsigned)code);
    }
    K_KCCTerm(context);
    K_EndContext(context);
    return code == 0 ? 0 : 1;
}
