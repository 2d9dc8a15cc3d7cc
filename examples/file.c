/* Enciphers a file with SEED, or deciphers it: file (seal|open) KEY-IN-HEX IN OUT. The key has 16 bytes. */
#include <morvane/toolkit.h>

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

static int read_file(const char* name, CSSM_DATA* data) {
    FILE* const file = fopen(name, "rb");
    long size;
    int done = 0;
    if (file == NULL) return 0;
    if (fseek(file, 0, SEEK_END) == 0 && (size = ftell(file)) >= 0 && fseek(file, 0, SEEK_SET) == 0) {
        data->Length = (uint32_t)size;
        data->Data = malloc((size_t)size + 1);
        done = data->Data != NULL && fread(data->Data, 1, (size_t)size, file) == (size_t)size;
    }
    fclose(file);
    return done;
}

static int write_file(const char* name, const CSSM_DATA* data) {
    FILE* const file = fopen(name, "wb");
    int done;
    if (file == NULL) return 0;
    done = fwrite(data->Data, 1, data->Length, file) == data->Length;
    return fclose(file) == 0 && done;
}

int main(int argc, char** argv) {
    CSSM_DATA key = {0, NULL}, in = {0, NULL}, out = {0, NULL};
    K_CONTEXT* const context = K_NewContext(NULL);
    int32_t code = -1;
    if (argc != 5 || (strcmp(argv[1], "seal") != 0 && strcmp(argv[1], "open") != 0)) {
        fprintf(stderr, "usage: file (seal|open) KEY-IN-HEX IN OUT\n");
    } else if (context == NULL || K_KCCInit(context) != 0) {
        fprintf(stderr, "no memory\n");
    } else if (!read_file(argv[3], &in)) {
        fprintf(stderr, "cannot read %s\n", argv[3]);
    } else {
        K_str2bin(context, argv[2], &key.Data, &key.Length);
        code = strcmp(argv[1], "seal") == 0 ? K_Encryption(context, K_CIPHER_SEED, K_OPTION_CBC_PKCS5, &key, &in, &out)
                                            : K_Decryption(context, K_CIPHER_SEED, K_OPTION_CBC_PKCS5, &key, &in, &out);
        if (code != 0) {
            fprintf(stderr, "failed: 0x%x\n", (unsigned)code);
        } else if (!write_file(argv[4], &out)) {
            fprintf(stderr, "cannot write %s\n", argv[4]);
            code = -1;
        } else {
            printf("%u bytes\n", (unsigned)out.Length);
        }
    }
    free(in.Data);
    K_free(context, key.Data);
    K_free(context, out.Data);
    K_KCCTerm(context);
    K_EndContext(context);
    return code == 0 ? 0 : 1;
}
