/* The toolkit: whole operations in one call, on a context of the companion library MorvaneCommon.
 *
 *     K_CONTEXT* context = K_NewContext(NULL);
 *     CSSM_DATA message = {3, (uint8_t*)"abc"}, digest = {0, NULL};
 *     if (context == NULL || K_KCCInit(context) != 0) ...
 *     if (K_GenHash(context, K_HASH_SHA1, &message, &digest) == 0) {
 *         ... digest.Length bytes at digest.Data ...
 *         K_free(context, digest.Data);
 *     }
 *     K_KCCTerm(context);
 *     K_EndContext(context);
 *
 * Results. A call returns 0, or the code of its failure, a KERR_ value, which it also stores in the context's last_error; a
 * null context is answered with -1. Where a call returns -1 otherwise, or stores nothing, its comment says so. When the
 * provider layer failed beneath, GetError (morvane/csp.h) has its code.
 *
 * Memory. What a call hands out comes from the context's allocator and is the caller's, to be released with K_free on the
 * same context. A call that fails hands out nothing and leaves no block behind. Keys and copies of messages are wiped.
 *
 * Threads. A context is used by one thread at a time; different contexts do not know of one another. */
#ifndef MORVANE_TOOLKIT_H
#define MORVANE_TOOLKIT_H

#include <morvane/common.h>
#include <morvane/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Codes of failures. */
enum {
    KERR_MEMORY = 0x10006,       /* no memory on the context's allocator */
    KERR_NOT_READY = 0x20000,    /* no K_KCCInit, or a required input is null */
    KERR_OUTPUT_ALLOC = 0x20001, /* K_GenHash: no memory for the digest */
    KERR_KEY_SETUP = 0x20002,    /* the secret key could not be made: too short, absent, or of no known type */
    KERR_DIGEST_INIT = 0x2000f,  /* the provider's digest steps */
    KERR_DIGEST_UPDATE = 0x20010,
    KERR_DIGEST_FINAL = 0x20011,
    KERR_MAC_INIT = 0x20013,  /* the provider's MAC steps */
    KERR_MAC_FINAL = 0x20015, /* also its update */
    KERR_MAC_VERIFY = 0x20016 /* the MAC is not the expected one */
};

/* Hash selectors. */
enum { K_HASH_MD2 = 0, K_HASH_MD5 = 1, K_HASH_SHA1 = 2, K_HASH_MD4 = 3, K_HASH_RIPEMD160 = 4, K_HASH_HAS160 = 5 };

/* MAC selectors: which key is made and which MAC is made with it.
 *   K_MAC_DES   a DES key of 8 bytes, CBC-MAC with DES, 8 bytes
 *   K_MAC_DES3  a two-key triple DES key of 16 bytes; the MAC is CBC-MAC with DES under its first half, 8 bytes
 *   K_MAC_MD5   an RC2 key of 8 bytes; the MAC is HMAC-MD5 under the 128 bytes of its expansion, 16 bytes
 * morvane/csp.h says what is particular about these MACs. */
enum { K_MAC_DES = 0, K_MAC_DES3 = 1, K_MAC_MD5 = 2 };

/* The toolkit's part of a context, in the context's word `crypto`. */
typedef struct KccContext {
    K_CONTEXT* context;
    uint32_t error; /* of the symmetric operations */
} KccContext;

/* Makes the context ready for the toolkit; runs K_KCOInit if nobody has. Another call changes nothing.
 * Returns 0, or -1 for a null context (nothing stored), a failing K_KCOInit (nothing stored) and short memory (KERR_MEMORY
 * is stored). */
MORVANE_API int32_t MORVANE_CALL K_KCCInit(K_CONTEXT* context);

/* Takes the toolkit's part away again, and with K_KCOTerm what K_KCOInit made. A null context, or one that is not ready, is
 * left alone. Blocks that calls have handed out stay the caller's. */
MORVANE_API void MORVANE_CALL K_KCCTerm(K_CONTEXT* context);

/* Hashes input, a buffer of any length, and hands the digest out in output, 16 or 20 bytes.
 *   selector   a K_HASH_ value
 * Stores and returns 0, or: KERR_NOT_READY (no K_KCCInit; input, its Data or output is null), KERR_MEMORY,
 * KERR_OUTPUT_ALLOC, KERR_DIGEST_INIT (no such selector, or short memory in the provider), KERR_DIGEST_UPDATE,
 * KERR_DIGEST_FINAL; then output is as it was. */
MORVANE_API int32_t MORVANE_CALL K_GenHash(K_CONTEXT* context, uint32_t selector, const CSSM_DATA* input,
                                           CSSM_DATA* output);

/* Hands out `count` random bytes through `bytes`.
 *   selector   0 the generator of CSP_ALG_RANDOM_ALT, 1 that of CSP_ALG_RANDOM; neither is fit for keys
 * Returns 0 and stores nothing; -1, stores nothing and sets *bytes to null when the provider refuses, as it does any other
 * selector. Otherwise stores and returns KERR_NOT_READY (bytes is null) or KERR_MEMORY,
 * which also answers a count of 2^32 - 1. Does not need K_KCCInit. */
MORVANE_API int32_t MORVANE_CALL K_GenRandom(K_CONTEXT* context, uint32_t selector, uint32_t count, uint8_t** bytes);

/* Hands out the MAC of message in output.
 *   selector   a K_MAC_ value
 *   key        the first 8 or 16 bytes are used
 * Stores and returns 0, or: KERR_NOT_READY (message, its Data or output is null), KERR_MEMORY, KERR_KEY_SETUP (key is null
 * or too short, or there is no such selector), KERR_MAC_INIT (the selector is one for other calls), KERR_MAC_FINAL; then
 * output is empty: Length 0, Data null. Does not need K_KCCInit. */
MORVANE_API int32_t MORVANE_CALL K_GenMac(K_CONTEXT* context, uint32_t selector, const CSSM_DATA* key,
                                          const CSSM_DATA* message, CSSM_DATA* output);

/* Compares the MAC of message with the expected one, in a time that does not depend on the bytes.
 * Stores and returns 0 when they agree, KERR_MAC_VERIFY when not; KERR_NOT_READY (message, expected or the Data of one is
 * null), KERR_MEMORY and KERR_KEY_SETUP as K_GenMac. When the provider refuses the MAC it stores and returns -1. Of a DES
 * MAC the first 8 bytes are compared, and an expected MAC that is shorter counts as extended with zeros. Does not need
 * K_KCCInit. */
MORVANE_API int32_t MORVANE_CALL K_VerifyMac(K_CONTEXT* context, uint32_t selector, const CSSM_DATA* key,
                                             const CSSM_DATA* message, const CSSM_DATA* expected);

/* Takes a public RSA key in DER (morvane/asn1.h) apart into the two fields of a WTLS key: exponent and modulus, big-endian
 * in their fewest octets, of 0 octets for zero. The 16-bit lengths that stand before them on the wire are not part of them.
 *   exponent, modulus   become the addresses of zero-filled blocks of 400 bytes, or more for moduli above 3200 bits
 * Returns 1 and stores nothing, also for a key that does not decode: then the fields are those that precede the fault, and
 * the rest is empty. Otherwise stores and returns KERR_NOT_READY (an address is null) or KERR_MEMORY; if it is the modulus
 * for which there is no memory, the exponent has been handed out and is the caller's. -1 for a null context. Does not need
 * K_KCCInit. */
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
