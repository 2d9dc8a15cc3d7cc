/* Enciphers each argument as one piece of a message, with SEED in CBC mode through the service-provider layer, and prints
 * the ciphertext in hex. PKCS #5 padding ends it. */
#include <morvane/cipher.h>
#include <morvane/csp.h>

#include <stdio.h>
#include <string.h>

/* SEED takes at most this much at a time, see morvane/csp.h; 15 bytes may be waiting from the piece before. */
enum { kPiece = 992 - 15 };

static void print_hex(const uint8_t* bytes, uint32_t size) {
    for (uint32_t i = 0; i < size; ++i) printf("%02x", bytes[i]);
}

int main(int argc, char** argv) {
    static const uint8_t key_bytes[16] = "0123456789abcde";
    uint8_t iv_bytes[E_SEED_BLOCK_BYTES] = {0};

    /* The key record holds the expanded key. */
    E_SEED_KEY_SCHEDULE schedule;
    E_SEED_KeySchedule(&schedule, key_bytes);
    CSSM_KEY key = {0};
    key.KeyHeader.BlobType = 2;
    key.KeyHeader.AlgorithmId = CSP_ALG_SEED;
    key.KeyData.Length = sizeof schedule;
    key.KeyData.Data = (uint8_t*)&schedule;

    CSSM_DATA iv = {sizeof iv_bytes, iv_bytes};
    CSSM_CONTEXT_ATTRIBUTE attributes[4] = {{0}};
    attributes[0].AttributeType = CSP_ATTR_KEY;
    attributes[0].Attribute.Key = &key;
    attributes[1].AttributeType = CSP_ATTR_MODE;
    attributes[1].Attribute.Uint32 = CSP_MODE_CBC;
    attributes[2].AttributeType = CSP_ATTR_INIT_VECTOR;
    attributes[2].Attribute.Data = &iv;
    attributes[3].AttributeType = CSP_ATTR_PADDING;
    attributes[3].Attribute.Uint32 = 6;

    CspSession session = {0};
    session.context_type = CSP_CONTEXT_SYMMETRIC;
    session.algorithm = CSP_ALG_SEED;
    session.number_of_attributes = 4;
    session.attributes = attributes;
    const CspHandle handle = (CspHandle)&session;

    int failed = CSP_EncryptDataInit(0, handle, NULL) != 0;
    for (int i = 1; i < argc && !failed; ++i) {
        uint8_t ciphertext[kPiece + E_SEED_BLOCK_BYTES];
        CSSM_DATA in = {(uint32_t)strlen(argv[i]), (uint8_t*)argv[i]};
        const CSSM_DATA out = {sizeof ciphertext, ciphertext};
        uint32_t written = 0;
        if (in.Length > kPiece) in.Length = kPiece; /* of a longer argument only the beginning */
        failed = CSP_EncryptDataUpdate(0, handle, &in, 1, &out, 1, &written) != 0;
        print_hex(ciphertext, failed ? 0 : written);
    }
    if (!failed) {
        uint8_t block[E_SEED_BLOCK_BYTES];
        CSSM_DATA last = {sizeof block, block};
        failed = CSP_EncryptDataFinal(0, handle, &last) != 0;
        print_hex(block, failed ? 0 : last.Length);
    }
    memset(&schedule, 0, sizeof schedule);
    if (failed) {
        fprintf(stderr, "encryption failed: %u\n", (unsigned)GetError());
        return 1;
    }
    printf("\n");
    return 0;
}
