/* Prints the SHA-1 digest of the words on the command line, through the service-provider layer. */
#include <morvane/csp.h>

#include <stdio.h>
#include <string.h>

int main(int argc, char** argv) {
    CspSession session = {0}; /* its address is the handle of the operation */
    CspHandle handle = (CspHandle)&session;
    uint8_t digest[20];
    CSSM_DATA out = {sizeof digest, digest};
    int i;

    session.context_type = CSP_CONTEXT_DIGEST;
    session.algorithm = CSP_ALG_SHA1;
    if (CSP_DigestDataInit(100, handle, NULL) != 0) goto failed;
    for (i = 1; i < argc; ++i) {
        CSSM_DATA word = {(uint32_t)strlen(argv[i]), (uint8_t*)argv[i]};
        if (CSP_DigestDataUpdate(100, handle, &word, 1) != 0) goto failed;
    }
    if (CSP_DigestDataFinal(100, handle, &out) != 0) goto failed;

    for (i = 0; i < (int)out.Length; ++i) printf("%02x", digest[i]);
    printf("\n");
    return 0;

failed:
    fprintf(stderr, "digest failed: %u\n", (unsigned)GetError());
    return 1;
}
