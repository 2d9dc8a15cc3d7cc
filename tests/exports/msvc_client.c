/* A program compiled for Microsoft's ABI and linked with MorvaneCrypto.lib, without any run-time library. Its exit code is
 * 0 when a digest through both calling conventions comes out right. */
#include <morvane/csp.h>
#include <morvane/hash.h>

int start(void) {
    static const uint8_t expected[4] = {0xa9, 0x99, 0x3e, 0x36}; /* SHA-1 of "abc" */
    static CspSession session;
    uint8_t text[3] = {'a', 'b', 'c'};
    uint8_t direct[20];
    uint8_t provided[20];
    CSSM_DATA input = {3, text};
    CSSM_DATA output = {sizeof provided, provided};
    int i;

    session.context_type = CSP_CONTEXT_DIGEST;
    session.algorithm = CSP_ALG_SHA1;
    if (CSP_DigestDataInit(100, (CspHandle)&session, 0) != 0) return 10;
    if (CSP_DigestDataUpdate(100, (CspHandle)&session, &input, 1) != 0) return 11;
    if (CSP_DigestDataFinal(100, (CspHandle)&session, &output) != 0 || output.Length != 20) return 12;
    E_SHA1(direct, text, 3);
    for (i = 0; i < 20; ++i) {
        if (direct[i] != provided[i]) return 20;
    }
    for (i = 0; i < 4; ++i) {
        if (direct[i] != expected[i]) return 21;
    }
    if (CSP_DigestDataInit(100, 0, 0) != -1 || GetError() != CSP_ERR_NO_CONTEXT) return 30;
    return 0;
}
