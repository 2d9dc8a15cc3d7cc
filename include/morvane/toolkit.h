/* The toolkit: whole operations in one call, on a context of the companion library MorvaneCommon.
 *
 *     K_CONTEXT* context = K_NewContext(NULL);
 *     CSSM_DATA message = {3, (uint8_t*)"abc"}, digest = {0, NULL};
 *     if (K_KCCInit(context) == 0 && K_GenHash(context, K_HASH_SHA1, &message, &digest) == 0) {
 *         fwrite(digest.Data, 1, digest.Length, stdout);
 *         K_free(context, digest.Data);
 *     }
 *     K_KCCTerm(context);
 *     K_EndContext(context);
 *
 * In the examples below `context` is such a context; `text`, `key`, of up to 26 bytes, and what an example does not declare
 * are records of the caller's. What an example is handed out remains to be released with K_free.
 *
 * Results. A call returns 0, or the code of its failure, a KERR_ value, which it also stores in the context's last_error; a
 * null context is answered with -1. Where a call returns -1 otherwise, or stores nothing, its comment says so. When the
 * provider layer failed beneath, GetError (morvane/csp.h) has its code.
 *
 * Memory. What a call hands out comes from the context's allocator and is the caller's, to be released with K_free on the
 * same context. A call that fails hands out nothing and leaves no block behind. Keys and copies of messages are wiped.
 *
 * Threads. A context is used by one thread at a time; different contexts do not know of one another. What draws random
 * numbers takes turns across all of them (see morvane/random.h): K_GenRandom, K_Encryption, K_KeyShareEncode, what makes
 * key pairs, encryption with public keys, and all that signs but K_RSASign. */
#ifndef MORVANE_TOOLKIT_H
#define MORVANE_TOOLKIT_H

#include <morvane/common.h>
#include <morvane/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Codes of failures. */
enum {
    KERR_MEMORY = 0x10006,         /* no memory on the context's allocator */
    KERR_EMPTY_KEY = 0x10007,      /* K_RSAPrivateEncrypt: a key of no bytes */
    KERR_NOT_READY = 0x20000,      /* no K_KCCInit, or a required input is null */
    KERR_OUTPUT_ALLOC = 0x20001,   /* K_GenHash: no memory for the digest; key pairs: no memory for a key */
    KERR_KEY_SETUP = 0x20002,      /* the secret key could not be made: too short, absent, of no known type; no memory */
    KERR_KEYGEN = 0x20003,         /* the key pair could not be made: a size or a domain that is none; no memory */
    KERR_CIPHER_OPTION = 0x20004,  /* steps of the symmetric operations, in KccContext.error: the option is not 1 */
    KERR_CIPHER_INIT = 0x20005,    /* the initialisation vector is missing or too short */
    KERR_ENCRYPT_UPDATE = 0x20006, /* the provider's encryption steps */
    KERR_ENCRYPT_FINAL = 0x20007,
    KERR_DECRYPT_UPDATE = 0x2000a, /* the provider's decryption steps */
    KERR_DECRYPT_FINAL = 0x2000b,
    KERR_DIGEST_INIT = 0x2000f, /* the provider's digest steps */
    KERR_DIGEST_UPDATE = 0x20010,
    KERR_DIGEST_FINAL = 0x20011,
    KERR_MAC_INIT = 0x20013,   /* the provider's MAC steps */
    KERR_MAC_FINAL = 0x20015,  /* also its update */
    KERR_MAC_VERIFY = 0x20016, /* the MAC is not the expected one */
    KERR_ENCRYPT_IV = 0x20017, /* encryption and decryption: with triple DES */
    KERR_DECRYPT_IV = 0x20018,
    KERR_ENCRYPT_STREAM = 0x20019, /* with RC2 */
    KERR_DECRYPT_STREAM = 0x2001a,
    KERR_CIPHER_HELPER = 0x2001b,      /* in KccContext.error: the ciphertext's length or padding is wrong */
    KERR_RSA_PUBLIC_ENCRYPT = 0x2001c, /* RSA: a key that is none, input that is too long, wrong padding */
    KERR_RSA_PRIVATE_DECRYPT = 0x2001d,
    KERR_RSA_PRIVATE_ENCRYPT = 0x2001e,
    KERR_RSA_PUBLIC_DECRYPT = 0x2001f,
    KERR_ENCRYPT = 0x20020, /* with the other ciphers, and of keys */
    KERR_DECRYPT = 0x20021,
    KERR_SIGN = 0x20022,     /* a signature could not be made: a key that is none, a selector that is none */
    KERR_VERIFY = 0x20023,   /* the signature is not valid, or the key is none */
    KERR_AGREE = 0x20024,    /* no shared secret: a key or a point that is none */
    KERR_KEY_SHARE = 0x20025 /* shares that do not belong together, or numbers of them that cannot be */
};

/* Cipher selectors: the key is as many bytes as stand here, the first ones of what is given. */
enum {
    K_CIPHER_DES = 0,      /* 8 bytes */
    K_CIPHER_DES3 = 1,     /* 16: two-key triple DES */
    K_CIPHER_RC2 = 2,      /* 8 */
    K_CIPHER_RC4 = 3,      /* 8 */
    K_CIPHER_RC5 = 4,      /* 26, 16 rounds */
    K_CIPHER_IDEA = 5,     /* 16 */
    K_CIPHER_BLOWFISH = 6, /* 8 */
    K_CIPHER_RC2_40 = 11,  /* 5 */
    K_CIPHER_SEED = 12     /* 16 */
};
#define K_OPTION_CBC_PKCS5 1u /* the only option there is: CBC with the padding of PKCS #5; RC4 has neither */

/* Selectors of key pairs. */
enum { K_PAIR_RSA = 7, K_PAIR_DSA = 8, K_PAIR_KCDSA = 9 };

/* Hash selectors. */
enum { K_HASH_MD2 = 0, K_HASH_MD5 = 1, K_HASH_SHA1 = 2, K_HASH_MD4 = 3, K_HASH_RIPEMD160 = 4, K_HASH_HAS160 = 5 };

/* Further ones that K_RSASign and K_RSAVerify take, and K_GenHash does not. */
enum { K_SIGN_SHA256 = 6, K_SIGN_SHA384 = 7, K_SIGN_SHA512 = 8 };

/* MAC selectors: which key is made and which MAC is made with it.
 *   K_MAC_DES   a DES key of 8 bytes, CBC-MAC with DES, 8 bytes
 *   K_MAC_DES3  a two-key triple DES key of 16 bytes; the MAC is CBC-MAC with DES under its first half, 8 bytes
 *   K_MAC_MD5   an RC2 key of 8 bytes; the MAC is HMAC-MD5 under the 128 bytes of its expansion, 16 bytes
 * morvane/csp.h says what is particular about the DES MACs.
 *
 * Departs from RFC 2104: K_MAC_MD5 does not take the caller's key as it is but the 128 bytes that RC2 expands its first 8
 * to. */
enum { K_MAC_DES = 0, K_MAC_DES3 = 1, K_MAC_MD5 = 2 };

/* The toolkit's part of a context, in the context's word `crypto`. */
typedef struct KccContext {
    K_CONTEXT* context;
    uint32_t error; /* of the symmetric operations */
} KccContext;

/* Makes the context ready for the toolkit; runs K_KCOInit if nobody has. Another call changes nothing.
 * Returns 0, or -1 for a null context (nothing stored), a failing K_KCOInit (nothing stored) and short memory (KERR_MEMORY
 * is stored).
 *
 *     if (K_KCCInit(context) != 0) fprintf(stderr, "no memory\n");
 */
MORVANE_API int32_t MORVANE_CALL K_KCCInit(K_CONTEXT* context);

/* Takes the toolkit's part away again, and with K_KCOTerm what K_KCOInit made. A null context, or one that is not ready, is
 * left alone. Blocks that calls have handed out stay the caller's.
 *
 *     K_KCCTerm(context);
 *     if (K_EndContext(context) != 0) fprintf(stderr, "something was not released\n");
 */
MORVANE_API void MORVANE_CALL K_KCCTerm(K_CONTEXT* context);

/* Hashes input, a buffer of any length, and hands the digest out in output, 16 or 20 bytes.
 *   selector   a K_HASH_ value
 * Stores and returns 0, or: KERR_NOT_READY (no K_KCCInit; input, its Data or output is null), KERR_MEMORY,
 * KERR_OUTPUT_ALLOC, KERR_DIGEST_INIT (no such selector, or short memory in the provider), KERR_DIGEST_UPDATE,
 * KERR_DIGEST_FINAL; then output is as it was.
 *
 *     CSSM_DATA digest = {0, NULL};
 *     int32_t code = K_GenHash(context, K_HASH_HAS160, &text, &digest);
 *     if (code != 0) fprintf(stderr, "failed: 0x%x, provider %u\n", (unsigned)code, (unsigned)GetError());
 *     K_free(context, digest.Data);
 */
MORVANE_API int32_t MORVANE_CALL K_GenHash(K_CONTEXT* context, uint32_t selector, const CSSM_DATA* input,
                                           CSSM_DATA* output);

/* Hands out `count` random bytes through `bytes`.
 *   selector   0 the generator of CSP_ALG_RANDOM_ALT, 1 that of CSP_ALG_RANDOM; neither is fit for keys
 * Returns 0 and stores nothing; -1, stores nothing and sets *bytes to null when the provider refuses, as it does any other
 * selector. Otherwise stores and returns KERR_NOT_READY (bytes is null) or KERR_MEMORY,
 * which also answers a count of 2^32 - 1. Does not need K_KCCInit.
 *
 *     uint8_t* salt = NULL;
 *     if (K_GenRandom(context, 0, 16, &salt) == 0) {
 *         fwrite(salt, 1, 16, stdout);
 *         K_free(context, salt);
 *     }
 */
MORVANE_API int32_t MORVANE_CALL K_GenRandom(K_CONTEXT* context, uint32_t selector, uint32_t count, uint8_t** bytes);

/* Hands out the MAC of message in output.
 *   selector   a K_MAC_ value
 *   key        the first 8 or 16 bytes are used
 * Stores and returns 0, or: KERR_NOT_READY (message, its Data or output is null), KERR_MEMORY, KERR_KEY_SETUP (key is null
 * or too short, or there is no such selector), KERR_MAC_INIT (the selector is one for other calls), KERR_MAC_FINAL; then
 * output is empty: Length 0, Data null. Does not need K_KCCInit.
 *
 *     CSSM_DATA mac = {0, NULL};
 *     if (K_GenMac(context, K_MAC_MD5, &key, &text, &mac) == 0) {
 *         int32_t code = K_VerifyMac(context, K_MAC_MD5, &key, &text, &mac);
 *         puts(code == 0 ? "unchanged" : code == KERR_MAC_VERIFY ? "changed" : "not to be said");
 *     }
 */
MORVANE_API int32_t MORVANE_CALL K_GenMac(K_CONTEXT* context, uint32_t selector, const CSSM_DATA* key,
                                          const CSSM_DATA* message, CSSM_DATA* output);

/* Compares the MAC of message with the expected one, in a time that does not depend on the bytes.
 * Stores and returns 0 when they agree, KERR_MAC_VERIFY when not; KERR_NOT_READY (message, expected or the Data of one is
 * null), KERR_MEMORY and KERR_KEY_SETUP as K_GenMac. When the provider refuses the MAC it stores and returns -1. Of a DES
 * MAC the first 8 bytes are compared, and an expected MAC that is shorter counts as extended with zeros. Does not need
 * K_KCCInit. */
MORVANE_API int32_t MORVANE_CALL K_VerifyMac(K_CONTEXT* context, uint32_t selector, const CSSM_DATA* key,
                                             const CSSM_DATA* message, const CSSM_DATA* expected);

/* ---- Encryption ----
 *
 * All calls from here to the end of public-key operations need K_KCCInit. They store and return 0; KERR_NOT_READY without
 * it, or where a record is null that is not said to be optional, or the Data of one that is read; KERR_MEMORY; or a code of
 * their own. What they hand out replaces what was in the record; a failure leaves the record alone. */

/* Enciphers input, of any length, in CBC with the padding of PKCS #5: the ciphertext has up to 16 bytes more. With RC4 it
 * has none. In front of it stands an initialisation vector from RAND_Bytes, a block long (RC4: none).
 *   selector   a K_CIPHER_ value
 *   option     K_OPTION_CBC_PKCS5
 * Codes: KERR_ENCRYPT_IV with triple DES, KERR_ENCRYPT_STREAM with RC2, else KERR_ENCRYPT; what failed is then in
 * KccContext.error: KERR_CIPHER_OPTION, KERR_KEY_SETUP (the key is null or too short, or no such selector),
 * KERR_CIPHER_INIT, KERR_ENCRYPT_UPDATE, KERR_ENCRYPT_FINAL.
 *
 *     CSSM_DATA sealed = {0, NULL}, opened = {0, NULL};
 *     int32_t code = K_Encryption(context, K_CIPHER_SEED, K_OPTION_CBC_PKCS5, &key, &text, &sealed);
 *     if (code == 0) code = K_Decryption(context, K_CIPHER_SEED, K_OPTION_CBC_PKCS5, &key, &sealed, &opened);
 *     if (code == KERR_DECRYPT) fprintf(stderr, "0x%x\n", (unsigned)((KccContext*)context->crypto)->error);
 *
 * Nothing here notices a changed ciphertext: add a MAC under another key. */
MORVANE_API int32_t MORVANE_CALL K_Encryption(K_CONTEXT* context, uint32_t selector, uint32_t option, const CSSM_DATA* key,
                                              const CSSM_DATA* input, CSSM_DATA* output);

/* The way back. Codes: KERR_DECRYPT_IV, KERR_DECRYPT_STREAM, KERR_DECRYPT, with the causes above, KERR_DECRYPT_UPDATE,
 * KERR_DECRYPT_FINAL, or KERR_CIPHER_HELPER for a wrong length or padding. Whoever lets strangers see that a padding was
 * wrong lets them decipher: answer all failures alike. */
MORVANE_API int32_t MORVANE_CALL K_Decryption(K_CONTEXT* context, uint32_t selector, uint32_t option, const CSSM_DATA* key,
                                              const CSSM_DATA* input, CSSM_DATA* output);

/* The same with the caller's initialisation vector, at least a block (RC4: never looked at, may be null), and without one
 * in front of the ciphertext. Too short a one is KERR_CIPHER_INIT.
 *
 *     CSSM_DATA iv = {8, (uint8_t*)"01234567"}, sealed = {0, NULL}, opened = {0, NULL};
 *     int32_t code = K_Encryption_IV_Fix(context, K_CIPHER_DES3, K_OPTION_CBC_PKCS5, &key, &iv, &text, &sealed);
 *     if (code == 0) code = K_Decryption_IV_Fix(context, K_CIPHER_DES3, K_OPTION_CBC_PKCS5, &key, &iv, &sealed, &opened);
 */
MORVANE_API int32_t MORVANE_CALL K_Encryption_IV_Fix(K_CONTEXT* context, uint32_t selector, uint32_t option,
                                                     const CSSM_DATA* key, const CSSM_DATA* iv, const CSSM_DATA* input,
                                                     CSSM_DATA* output);
MORVANE_API int32_t MORVANE_CALL K_Decryption_IV_Fix(K_CONTEXT* context, uint32_t selector, uint32_t option,
                                                     const CSSM_DATA* key, const CSSM_DATA* iv, const CSSM_DATA* input,
                                                     CSSM_DATA* output);

/* Enciphers a key under another, as K_Encryption does; any bytes will do. Codes: KERR_ENCRYPT, KERR_DECRYPT.
 *
 *     CSSM_DATA session_key = {16, (uint8_t*)"of this session."}, sent = {0, NULL}, received = {0, NULL};
 *     int32_t code = K_KeyEncryption(context, K_CIPHER_SEED, &key, &session_key, &sent);
 *     if (code == 0) code = K_KeyDecryption(context, K_CIPHER_SEED, &key, &sent, &received);
 */
MORVANE_API int32_t MORVANE_CALL K_KeyEncryption(K_CONTEXT* context, uint32_t selector, const CSSM_DATA* key_of_keys,
                                                 const CSSM_DATA* key, CSSM_DATA* output);
MORVANE_API int32_t MORVANE_CALL K_KeyDecryption(K_CONTEXT* context, uint32_t selector, const CSSM_DATA* key_of_keys,
                                                 const CSSM_DATA* encrypted, CSSM_DATA* key);

/* Splits a key of at least one byte into `count` shares, up to 255, so that any `needed` of them give it back, and fewer
 * tell nothing (Shamir's scheme over GF(2^8)). Each share is the key's length and two bytes: `needed`, and its number.
 *   shares   an array of `count` records
 * Code: KERR_KEY_SHARE (numbers that cannot be). Nothing in a share tells whether somebody changed it.
 *
 *     CSSM_DATA shares[5] = {{0, NULL}}, again = {0, NULL};
 *     int32_t code = K_KeyShareEncode(context, &key, 3, 5, shares);
 *     if (code == 0) code = K_KeyShareDecode(context, shares + 1, 3, &again);
 */
MORVANE_API int32_t MORVANE_CALL K_KeyShareEncode(K_CONTEXT* context, const CSSM_DATA* key, uint32_t needed, uint32_t count,
                                                  CSSM_DATA* shares);

/* Gives the key back from `count` shares, of which as many as are needed are used. Code: KERR_KEY_SHARE (too few, two of
 * one number, or of different keys as far as lengths and heads show). */
MORVANE_API int32_t MORVANE_CALL K_KeyShareDecode(K_CONTEXT* context, const CSSM_DATA* shares, uint32_t count,
                                                  CSSM_DATA* key);

/* ---- Key pairs ----
 *
 * Keys are handed out in DER (morvane/asn1.h), and calls take them so: a key is exactly one encoding. Codes:
 * KERR_OUTPUT_ALLOC (no memory for a key), KERR_KEYGEN (a size or domain that is none, or short memory in the provider).
 *
 *     CSSM_DATA rsa[2] = {{0, NULL}}, kcdsa[2] = {{0, NULL}}, dsa[2] = {{0, NULL}};
 *     int32_t code = K_GenerateRSAKey(context, 3072, &rsa[0], &rsa[1]);
 *     if (code == 0) code = K_GenerateKCDSAKeyPair(context, 2048, &kcdsa[0], &kcdsa[1]);
 *     if (code == 0) code = K_GenAssymetricKey(context, K_PAIR_DSA, 2048, &dsa[0], &dsa[1]);
 *     if (code == KERR_KEYGEN) fprintf(stderr, "not of that size\n");
 */

/* selector is a K_PAIR_ value: RSA with the exponent 65537, or DSA, or KCDSA in a new domain, with an order of 160 bits
 * below 2048 bits and of 256 from there on. */
MORVANE_API int32_t MORVANE_CALL K_GenAssymetricKey(K_CONTEXT* context, uint32_t selector, uint32_t bits,
                                                    CSSM_DATA* public_key, CSSM_DATA* private_key);
MORVANE_API int32_t MORVANE_CALL K_GenerateRSAKey(K_CONTEXT* context, uint32_t bits, CSSM_DATA* public_key,
                                                  CSSM_DATA* private_key);
MORVANE_API int32_t MORVANE_CALL K_GenerateKCDSAKeyPair(K_CONTEXT* context, uint32_t bits, CSSM_DATA* public_key,
                                                        CSSM_DATA* private_key);
/* In a domain, given as KCDSA params in DER. Here, the one that is built in:
 *
 *     CSSM_DATA public_key = {0, NULL}, private_key = {0, NULL}, params;
 *     uint8_t der[400];
 *     E_KCDSA_KEY domain;
 *     E_KCDSA_Init(&domain);
 *     E_KCDSA_GenerateKey_fixParam(&domain, 0, 160);
 *     params.Length = (uint32_t)E_ASN1_PutKCDSAParams(&domain, der);
 *     params.Data = der;
 *     if (K_GenerateKCDSAKeyPair_Params(context, &params, &public_key, &private_key) != 0) fprintf(stderr, "no key\n");
 */
MORVANE_API int32_t MORVANE_CALL K_GenerateKCDSAKeyPair_Params(K_CONTEXT* context, const CSSM_DATA* params,
                                                               CSSM_DATA* public_key, CSSM_DATA* private_key);

/* ---- RSA ----
 *
 * What the primitives print (morvane/pk.h), they print here too. Keys above 2400 bits make the primitives ask the heap for
 * work space; where there is none, the call answers with its own code. Below, the pair is one of K_GenerateRSAKey. */

/* PKCS #1 v1.5, block type 2: input has at most 11 bytes less than the modulus. Codes: KERR_RSA_PUBLIC_ENCRYPT,
 * KERR_RSA_PRIVATE_DECRYPT, which also answers a message of no bytes: the primitive cannot tell it from a key whose members
 * do not fit.
 *
 *     CSSM_DATA sent = {0, NULL}, received = {0, NULL};
 *     int32_t code = K_RSAPublicEncrypt(context, &public_key, &text, &sent);
 *     if (code == 0) code = K_RSAPrivateDecrypt(context, &private_key, &sent, &received);
 */
MORVANE_API int32_t MORVANE_CALL K_RSAPublicEncrypt(K_CONTEXT* context, const CSSM_DATA* public_key, const CSSM_DATA* input,
                                                    CSSM_DATA* output);
MORVANE_API int32_t MORVANE_CALL K_RSAPrivateDecrypt(K_CONTEXT* context, const CSSM_DATA* private_key,
                                                     const CSSM_DATA* input, CSSM_DATA* output);

/* RSAES-OAEP with SHA-1. label may be null. Codes as above.
 *
 *     CSSM_DATA sent = {0, NULL}, received = {0, NULL};
 *     int32_t code = K_RSAPublicEncryptOAEP(context, &public_key, NULL, &text, &sent);
 *     if (code == 0) code = K_RSAPrivateDecryptOAEP(context, &private_key, NULL, &sent, &received);
 */
MORVANE_API int32_t MORVANE_CALL K_RSAPublicEncryptOAEP(K_CONTEXT* context, const CSSM_DATA* public_key,
                                                        const CSSM_DATA* label, const CSSM_DATA* input, CSSM_DATA* output);
MORVANE_API int32_t MORVANE_CALL K_RSAPrivateDecryptOAEP(K_CONTEXT* context, const CSSM_DATA* private_key,
                                                         const CSSM_DATA* label, const CSSM_DATA* input, CSSM_DATA* output);

/* PKCS #1 v1.5, block type 1, around bytes as they are. Codes: KERR_EMPTY_KEY (a private key of Length 0, before all but a
 * null context), KERR_RSA_PRIVATE_ENCRYPT; KERR_RSA_PUBLIC_DECRYPT.
 *
 *     CSSM_DATA block = {0, NULL}, opened = {0, NULL};
 *     int32_t code = K_RSAPrivateEncrypt(context, &private_key, &text, &block);
 *     if (code == 0) code = K_RSAPublicDecrypt(context, &public_key, &block, &opened);
 */
MORVANE_API int32_t MORVANE_CALL K_RSAPrivateEncrypt(K_CONTEXT* context, const CSSM_DATA* private_key,
                                                     const CSSM_DATA* input, CSSM_DATA* output);
MORVANE_API int32_t MORVANE_CALL K_RSAPublicDecrypt(K_CONTEXT* context, const CSSM_DATA* public_key, const CSSM_DATA* input,
                                                    CSSM_DATA* output);

/* RSASSA-PKCS1-v1_5: signs the DigestInfo of a message. selector is a K_HASH_ or K_SIGN_ value. Verifying compares the
 * whole DigestInfo. Codes: KERR_SIGN, KERR_VERIFY.
 *
 *     CSSM_DATA signature = {0, NULL};
 *     int32_t code = K_RSASign(context, K_SIGN_SHA256, &private_key, &text, &signature);
 *     if (code == 0) code = K_RSAVerify(context, K_SIGN_SHA256, &public_key, &text, &signature);
 *     puts(code == 0 ? "valid" : code == KERR_VERIFY ? "not valid" : "no signature");
 */
MORVANE_API int32_t MORVANE_CALL K_RSASign(K_CONTEXT* context, uint32_t selector, const CSSM_DATA* private_key,
                                           const CSSM_DATA* message, CSSM_DATA* signature);
MORVANE_API int32_t MORVANE_CALL K_RSAVerify(K_CONTEXT* context, uint32_t selector, const CSSM_DATA* public_key,
                                             const CSSM_DATA* message, const CSSM_DATA* signature);

/* RSASSA-PSS. hash is a hashId of morvane/pk.h, for message and masks. Codes: KERR_SIGN, KERR_VERIFY. With SHA-256:
 *
 *     CSSM_DATA signature = {0, NULL};
 *     int32_t code = K_RSASignPSS(context, 6, 32, &private_key, &text, &signature);
 *     if (code == 0) code = K_RSAVerifyPSS(context, 6, 32, &public_key, &text, &signature);
 */
MORVANE_API int32_t MORVANE_CALL K_RSASignPSS(K_CONTEXT* context, int32_t hash, int32_t salt_length,
                                              const CSSM_DATA* private_key, const CSSM_DATA* message, CSSM_DATA* signature);
MORVANE_API int32_t MORVANE_CALL K_RSAVerifyPSS(K_CONTEXT* context, int32_t hash, int32_t salt_length,
                                                const CSSM_DATA* public_key, const CSSM_DATA* message,
                                                const CSSM_DATA* signature);

/* ---- KCDSA ---- */

/* E_KCDSA_Sign_New and E_KCDSA_Verify_New (morvane/kcdsa.h): hash is E_KCDSA_SHA1 or E_KCDSA_HAS160. Codes: KERR_SIGN,
 * KERR_VERIFY.
 *
 *     CSSM_DATA signature = {0, NULL};
 *     int32_t code = K_KCDSASign(context, E_KCDSA_HAS160, &private_key, &text, &signature);
 *     if (code == 0) code = K_KCDSAVerify(context, E_KCDSA_HAS160, &public_key, &text, &signature);
 */
MORVANE_API int32_t MORVANE_CALL K_KCDSASign(K_CONTEXT* context, int32_t hash, const CSSM_DATA* private_key,
                                             const CSSM_DATA* message, CSSM_DATA* signature);
MORVANE_API int32_t MORVANE_CALL K_KCDSAVerify(K_CONTEXT* context, int32_t hash, const CSSM_DATA* public_key,
                                               const CSSM_DATA* message, const CSSM_DATA* signature);

/* The older generation, E_KCDSA_Sign and E_KCDSA_Verify, of a hash value.
 *
 *     CSSM_DATA hash = {0, NULL}, signature = {0, NULL};
 *     int32_t code = K_GenHash(context, K_HASH_HAS160, &text, &hash);
 *     if (code == 0) code = K_KCDSASignHash(context, &private_key, &hash, &signature);
 *     if (code == 0) code = K_KCDSAVerifyHash(context, &public_key, &hash, &signature);
 */
MORVANE_API int32_t MORVANE_CALL K_KCDSASignHash(K_CONTEXT* context, const CSSM_DATA* private_key, const CSSM_DATA* hash,
                                                 CSSM_DATA* signature);
MORVANE_API int32_t MORVANE_CALL K_KCDSAVerifyHash(K_CONTEXT* context, const CSSM_DATA* public_key, const CSSM_DATA* hash,
                                                   const CSSM_DATA* signature);

/* ---- Elliptic curves ----
 *
 * curve is 3, 5 or 7 (morvane/ecc.h). Keys are octets as the primitives of morvane/ecc_schemes.h make them: a public key is
 * an uncompressed point, a private key the block 0x02, L, scalar. A public key that is no valid point is refused. */

/* For ECDSA, agreement and encryption, and for EC-KCDSA. Codes: KERR_OUTPUT_ALLOC, KERR_KEYGEN.
 *
 *     CSSM_DATA public_key = {0, NULL}, private_key = {0, NULL}, kcdsa_public = {0, NULL}, kcdsa_private = {0, NULL};
 *     int32_t code = K_GenerateECCKeyPair(context, 7, &public_key, &private_key);
 *     if (code == 0) code = K_GenerateECKCDSAKeyPair(context, 7, &kcdsa_public, &kcdsa_private);
 */
MORVANE_API int32_t MORVANE_CALL K_GenerateECCKeyPair(K_CONTEXT* context, int32_t curve, CSSM_DATA* public_key,
                                                      CSSM_DATA* private_key);
MORVANE_API int32_t MORVANE_CALL K_GenerateECKCDSAKeyPair(K_CONTEXT* context, int32_t curve, CSSM_DATA* public_key,
                                                          CSSM_DATA* private_key);

/* E_ECDSA_Sign and E_ECDSA_Verify; E_ECKCDSA_Sign, which takes the signer's public key too, and E_ECKCDSA_Verify. Codes:
 * KERR_SIGN, KERR_VERIFY.
 *
 *     CSSM_DATA signature = {0, NULL};
 *     int32_t code = K_ECDSASign(context, 7, &private_key, &text, &signature);
 *     if (code == 0) code = K_ECDSAVerify(context, 7, &public_key, &text, &signature);
 *
 * and with a pair of EC-KCDSA
 *
 *     CSSM_DATA signature = {0, NULL};
 *     int32_t code = K_ECKCDSASign(context, 7, &private_key, &public_key, &text, &signature);
 *     if (code == 0) code = K_ECKCDSAVerify(context, 7, &public_key, &text, &signature);
 */
MORVANE_API int32_t MORVANE_CALL K_ECDSASign(K_CONTEXT* context, int32_t curve, const CSSM_DATA* private_key,
                                             const CSSM_DATA* message, CSSM_DATA* signature);
MORVANE_API int32_t MORVANE_CALL K_ECDSAVerify(K_CONTEXT* context, int32_t curve, const CSSM_DATA* public_key,
                                               const CSSM_DATA* message, const CSSM_DATA* signature);
MORVANE_API int32_t MORVANE_CALL K_ECKCDSASign(K_CONTEXT* context, int32_t curve, const CSSM_DATA* private_key,
                                               const CSSM_DATA* public_key, const CSSM_DATA* message, CSSM_DATA* signature);
MORVANE_API int32_t MORVANE_CALL K_ECKCDSAVerify(K_CONTEXT* context, int32_t curve, const CSSM_DATA* public_key,
                                                 const CSSM_DATA* message, const CSSM_DATA* signature);

/* The shared x-coordinate, 20 or 21 bytes: hash it before it is used as a key. Code: KERR_AGREE. Of the own private key
 * and the other side's public key:
 *
 *     CSSM_DATA secret = {0, NULL}, session_key = {0, NULL};
 *     int32_t code = K_ECDH(context, 7, &private_key, &public_key, &secret);
 *     if (code == 0) code = K_GenHash(context, K_HASH_SHA1, &secret, &session_key);
 */
MORVANE_API int32_t MORVANE_CALL K_ECDH(K_CONTEXT* context, int32_t curve, const CSSM_DATA* private_key,
                                        const CSSM_DATA* public_key, CSSM_DATA* secret);

/* E_ECC_Encryption of at least one byte, and E_ECC_Decryption, which notices every change. Codes: KERR_ENCRYPT,
 * KERR_DECRYPT.
 *
 *     CSSM_DATA sealed = {0, NULL}, opened = {0, NULL};
 *     int32_t code = K_ECC_Encryption(context, 7, &public_key, &text, &sealed);
 *     if (code == 0) code = K_ECC_Decryption(context, 7, &private_key, &sealed, &opened);
 */
MORVANE_API int32_t MORVANE_CALL K_ECC_Encryption(K_CONTEXT* context, int32_t curve, const CSSM_DATA* public_key,
                                                  const CSSM_DATA* input, CSSM_DATA* output);
MORVANE_API int32_t MORVANE_CALL K_ECC_Decryption(K_CONTEXT* context, int32_t curve, const CSSM_DATA* private_key,
                                                  const CSSM_DATA* input, CSSM_DATA* output);

/* ---- WTLS keys ---- */

/* Takes a public RSA key in DER (morvane/asn1.h) apart into the two fields of a WTLS key: exponent and modulus, big-endian
 * in their fewest octets, of 0 octets for zero. The 16-bit lengths that stand before them on the wire are not part of them.
 *   exponent, modulus   become the addresses of zero-filled blocks of 400 bytes, or more for moduli above 3200 bits
 * Returns 1 and stores nothing, also for a key that does not decode: then the fields are those that precede the fault, and
 * the rest is empty. Otherwise stores and returns KERR_NOT_READY (an address is null) or KERR_MEMORY; if it is the modulus
 * for which there is no memory, the exponent has been handed out and is the caller's. -1 for a null context. Does not need
 * K_KCCInit.
 *
 *     uint8_t *exponent = NULL, *modulus = NULL, *der = NULL;
 *     uint16_t exponent_length = 0, modulus_length = 0;
 *     uint32_t der_length = 0;
 *     if (K_RSAPublicKey2WTLS(context, public_key.Data, public_key.Length, &exponent, &exponent_length, &modulus,
 *                             &modulus_length) == 1 &&
 *         K_WTLSPublicKey2RSA(context, exponent, exponent_length, modulus, modulus_length, &der, &der_length) == 1)
 *         fwrite(der, 1, der_length, stdout);
 */
MORVANE_API uint32_t MORVANE_CALL K_RSAPublicKey2WTLS(K_CONTEXT* context, const uint8_t* der, uint32_t der_length,
                                                      uint8_t** exponent, uint16_t* exponent_length, uint8_t** modulus,
                                                      uint16_t* modulus_length);

/* Makes a public RSA key in DER of the two fields of a WTLS key; leading zero octets are accepted, and an empty field is 0.
 *   der   becomes the address of a zero-filled block of 200 bytes, or more where the key needs it
 * Returns 1 and stores nothing; -1 and stores nothing for a null context, an exponent of 2^32 or more, and a modulus of
 * 2^4800 or more, which no key can have. Otherwise stores and returns KERR_NOT_READY (an address is null) or KERR_MEMORY.
 * Does not need K_KCCInit. */
MORVANE_API uint32_t MORVANE_CALL K_WTLSPublicKey2RSA(K_CONTEXT* context, const uint8_t* exponent, uint16_t exponent_length,
                                                      const uint8_t* modulus, uint16_t modulus_length, uint8_t** der,
                                                      uint32_t* der_length);

#ifdef __cplusplus
}
#endif

#endif
