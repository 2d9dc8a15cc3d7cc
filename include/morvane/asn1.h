/* DER: keys and integers as octets, and back.
 *
 * The forms. Nearly every one is a SEQUENCE of INTEGERs, and the version is 0:
 *     RSA public key    n, e                                           (RSAPublicKey of PKCS #1)
 *     RSA private key   version, n, e, d, p, q, dP, dQ, qInv           (RSAPrivateKey of PKCS #1)
 *     DSA, KCDSA params           p, q, g
 *     DSA, KCDSA public key       y, p, q, g
 *     DSA, KCDSA private key      version, p, q, g, y, x
 *     Diffie-Hellman params       p, g                                 (DHParameter of PKCS #3, without a length)
 *     KCDSA signature             BIT STRING of r, s
 *     ENUM              any number of integers, from an array of records
 *     U32               one unsigned 32-bit value
 * Lengths are definite and all encodings the shortest. Zero is 02 01 00. A negative integer is a two's complement.
 *
 * Writers, E_ASN1_Put... They return the bytes of the encoding and write it to out; where out is null they only count.
 * Where the record, or the array, is null they return 0, and -1 where a member of a key is longer than its storage or the
 * encoding has 2^31 bytes or more; then nothing is written. They take no memory. E_ASN1_Get...Bytes is the count alone.
 *
 * Readers, E_ASN1_Get... They take a record, the address of a position in the input, and the bytes that are there. They
 * return nothing: on success the position is moved to what follows the SEQUENCE, on failure it stays. A caller compares.
 * No more than `length` bytes are read; what follows the SEQUENCE within them is left to the caller. A key's record needs
 * its E_RSA_Init, E_DSA_Init or E_DH_Init before. After a failure it holds the members up to the one that was refused.
 *
 * What is refused. Anything but a SEQUENCE of exactly these INTEGERs, ending where its length says; lengths that are
 * indefinite or not in their shortest form; INTEGERs that are negative, empty, or longer than need be by leading zeros; a
 * version other than 0; a value longer than its member's storage, of which nothing is stored (an e of RSA or a g of
 * Diffie-Hellman of 2^32 or more, an n of 2^4800 or more). So every encoding that is read is the one that the writer gives
 * for the record. That the members belong together is not checked. A null pointer is refused like bad input.
 *
 * Threads. Nothing is shared: distinct records may be used on distinct threads at once. */
#ifndef MORVANE_ASN1_H
#define MORVANE_ASN1_H

#include <morvane/dh.h>
#include <morvane/dsa.h>
#include <morvane/kcdsa.h>
#include <morvane/pk.h>
#include <morvane/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/* ---- RSA keys ---- */

MORVANE_API int32_t MORVANE_CALL E_ASN1_PutRSAPublicKey(const E_RSA_KEY* key, uint8_t* out);
MORVANE_API int32_t MORVANE_CALL E_ASN1_GetRSAPublicKeyBytes(const E_RSA_KEY* key);
MORVANE_API void MORVANE_CALL E_ASN1_GetRSAPublicKey(E_RSA_KEY* key, const uint8_t** input, uint32_t length);

/* The encoding of a private key is as secret as the key. */
MORVANE_API int32_t MORVANE_CALL E_ASN1_PutRSAPrivateKey(const E_RSA_KEY* key, uint8_t* out);
MORVANE_API int32_t MORVANE_CALL E_ASN1_GetRSAPrivateKeyBytes(const E_RSA_KEY* key);
MORVANE_API void MORVANE_CALL E_ASN1_GetRSAPrivateKey(E_RSA_KEY* key, const uint8_t** input, uint32_t length);

/* ---- DSA keys ---- */

MORVANE_API int32_t MORVANE_CALL E_ASN1_PutDSAParams(const E_DSA_KEY* key, uint8_t* out);
MORVANE_API int32_t MORVANE_CALL E_ASN1_GetDSAParamsBytes(const E_DSA_KEY* key);
MORVANE_API void MORVANE_CALL E_ASN1_GetDSAParams(E_DSA_KEY* key, const uint8_t** input, uint32_t length);

MORVANE_API int32_t MORVANE_CALL E_ASN1_PutDSAPublicKey(const E_DSA_KEY* key, uint8_t* out);
MORVANE_API int32_t MORVANE_CALL E_ASN1_GetDSAPublicKeyBytes(const E_DSA_KEY* key);
MORVANE_API void MORVANE_CALL E_ASN1_GetDSAPublicKey(E_DSA_KEY* key, const uint8_t** input, uint32_t length);

MORVANE_API int32_t MORVANE_CALL E_ASN1_PutDSAPrivateKey(const E_DSA_KEY* key, uint8_t* out);
MORVANE_API int32_t MORVANE_CALL E_ASN1_GetDSAPrivateKeyBytes(const E_DSA_KEY* key);
MORVANE_API void MORVANE_CALL E_ASN1_GetDSAPrivateKey(E_DSA_KEY* key, const uint8_t** input, uint32_t length);

/* ---- KCDSA keys and signatures: the forms of DSA ---- */

MORVANE_API int32_t MORVANE_CALL E_ASN1_PutKCDSAParams(const E_KCDSA_KEY* key, uint8_t* out);
MORVANE_API int32_t MORVANE_CALL E_ASN1_GetKCDSAParamsBytes(const E_KCDSA_KEY* key);
MORVANE_API void MORVANE_CALL E_ASN1_GetKCDSAParams(E_KCDSA_KEY* key, const uint8_t** input, uint32_t length);

MORVANE_API int32_t MORVANE_CALL E_ASN1_PutKCDSAPublicKey(const E_KCDSA_KEY* key, uint8_t* out);
MORVANE_API int32_t MORVANE_CALL E_ASN1_GetKCDSAPublicKeyBytes(const E_KCDSA_KEY* key);
MORVANE_API void MORVANE_CALL E_ASN1_GetKCDSAPublicKey(E_KCDSA_KEY* key, const uint8_t** input, uint32_t length);

MORVANE_API int32_t MORVANE_CALL E_ASN1_PutKCDSAPrivateKey(const E_KCDSA_KEY* key, uint8_t* out);
MORVANE_API int32_t MORVANE_CALL E_ASN1_GetKCDSAPrivateKeyBytes(const E_KCDSA_KEY* key);
MORVANE_API void MORVANE_CALL E_ASN1_GetKCDSAPrivateKey(E_KCDSA_KEY* key, const uint8_t** input, uint32_t length);

/* The params under a second name. */
MORVANE_API int32_t MORVANE_CALL E_ASN1_PutParameters_KCDSA(const E_KCDSA_KEY* key, uint8_t* out);
MORVANE_API void MORVANE_CALL E_ASN1_GetParameters_KCDSA(E_KCDSA_KEY* key, const uint8_t** input, uint32_t length);

/* Reads a private key or a public one, whichever is there. */
MORVANE_API void MORVANE_CALL E_ASN1_GetKey_KCDSA(E_KCDSA_KEY* key, const uint8_t** input, uint32_t length);

/* Keys as certificates and PKCS #8 carry them, apart from the params: the bare INTEGER y or x, into that member alone. */
MORVANE_API void MORVANE_CALL E_ASN1_GetEncPublicKey_KCDSA(E_KCDSA_KEY* key, const uint8_t** input, uint32_t length);
MORVANE_API void MORVANE_CALL E_ASN1_GetEncPrivateKey_KCDSA(E_KCDSA_KEY* key, const uint8_t** input, uint32_t length);

/* A signature of E_KCDSA_Sign_New: 640 bytes in the 32-bit builds. */
typedef struct E_KCDSA_SIGNATURE {
    uint8_t r[E_KCDSA_R_BYTES];
    ENUM s;
    uint32_t s_words[E_KCDSA_WORDS];
} E_KCDSA_SIGNATURE;

/* Reads a signature; the r must have 20 bytes. It attaches the storage of s itself. After a failure r is what it was. */
MORVANE_API void MORVANE_CALL E_ASN1_GetSignRS_KCDSA(E_KCDSA_SIGNATURE* signature, const uint8_t** input, uint32_t length);

/* ---- Diffie-Hellman parameters ---- */

MORVANE_API int32_t MORVANE_CALL E_ASN1_PutDHParams(const E_DH_KEY* key, uint8_t* out);
MORVANE_API int32_t MORVANE_CALL E_ASN1_GetDHParamsBytes(const E_DH_KEY* key);
MORVANE_API void MORVANE_CALL E_ASN1_GetDHParams(E_DH_KEY* key, const uint8_t** input, uint32_t length);

/* ---- Integers ---- */

/* `count` records, one beside the other. They need not be normalised; a zero is never negative. */
MORVANE_API int32_t MORVANE_CALL E_ASN1_PutENUM(const ENUM* values, uint32_t count, uint8_t* out);
MORVANE_API int32_t MORVANE_CALL E_ASN1_GetENUMBytes(const ENUM* values, uint32_t count);

/* 5 to 9 bytes: 30 03 02 01 00 for 0. A failing reader leaves *value alone. */
MORVANE_API int32_t MORVANE_CALL E_ASN1_PutU32(uint32_t value, uint8_t* out);
MORVANE_API int32_t MORVANE_CALL E_ASN1_GetU32Bytes(uint32_t value);
MORVANE_API void MORVANE_CALL E_ASN1_GetU32(uint32_t* value, const uint8_t** input, uint32_t length);

#ifdef __cplusplus
}
#endif

#endif
