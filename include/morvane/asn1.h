/* DER: keys and integers as octets, and back.
 *
 * The forms. Every one is a SEQUENCE of INTEGERs, and the version is 0:
 *     RSA public key    n, e                                           (RSAPublicKey of PKCS #1)
 *     RSA private key   version, n, e, d, p, q, dP, dQ, qInv           (RSAPrivateKey of PKCS #1)
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
 * its E_RSA_Init before. After a failure it holds the members up to the one that was refused.
 *
 * What is refused. Anything but a SEQUENCE of exactly these INTEGERs, ending where its length says; lengths that are
 * indefinite or not in their shortest form; INTEGERs that are negative, empty, or longer than need be by leading zeros; a
 * version other than 0; a value longer than its member's storage, of which nothing is stored (an e of 2^32 or more, an n of
 * 2^4800 or more). So every encoding that is read is the one that the writer gives for the record. That the members belong
 * together is not checked. A null pointer is refused like bad input.
 *
 * Threads. Nothing is shared: distinct records may be used on distinct threads at once. */
#ifndef MORVANE_ASN1_H
#define MORVANE_ASN1_H

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
