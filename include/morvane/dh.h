/* Diffie-Hellman key agreement modulo a prime.
 *
 * The record. Four integers (see morvane/bignum.h) with storages inside the record: p, y and x of 150 words, g of one.
 * E_DH_Init attaches the storages; lengths and signs stay as they are, so start from a record filled with zeros. The caller
 * owns the record and wipes it.
 *
 * Parameters of others. That p is prime is not checked, nor is a peer's value: with a p whose (p - 1) / 2 is not prime, or
 * with 0, 1 or p - 1 from a peer, the secret can be guessed or tells bits of x. Check what comes from strangers
 * (EN_IsStrongPrime, and 1 < value < p - 1), as the morvane tool does.
 *
 * Time. What x enters takes a time that depends on lengths only, if p is odd. Powers of g are kept as for DSA (see
 * morvane/dsa.h). */
#ifndef MORVANE_DH_H
#define MORVANE_DH_H

#include <morvane/types.h>

#ifdef __cplusplus
extern "C" {
#endif

#define E_DH_WORDS 150

/* Parameters, a key pair: 1852 bytes in the 32-bit builds. */
typedef struct E_DH_KEY {
    ENUM p; /* prime modulus */
    ENUM g; /* generator */
    ENUM y; /* own public value */
    ENUM x; /* own private value */
    uint32_t p_words[E_DH_WORDS];
    uint32_t g_words[1];
    uint32_t y_words[E_DH_WORDS];
    uint32_t x_words[E_DH_WORDS];
} E_DH_KEY;

/* Attaches the four storages. */
MORVANE_API void MORVANE_CALL E_DH_Init(E_DH_KEY* key);

/* p = a safe prime of EN_GeneratePrimeStrongDH with pBits bits, g = generator. With generator 2, p is 11 modulo 24, with 3
 * it is 11 modulo 12, with 5 it is 3 modulo 10; with any other one p is any safe prime. (5 modulo 12, which one would
 * expect for 3, has no safe prime.) The record is left as it was if pBits is below 2 or above 4800, or where there is no
 * memory. With AVX-512, 1024 bits take some tenths of a second, 2048 some seconds. */
MORVANE_API void MORVANE_CALL E_DH_GenerateParameters(E_DH_KEY* key, int32_t pBits, uint32_t generator);

/* y = g^x mod p. A record that E_DH_Init has prepared has storage for x, and its x is taken as it stands. Only where
 * x.words is null, the storage is attached and x is drawn: EN_Random of `bits` bits, or one less than p has if bits is 0.
 * Where y.words is null, its storage is attached. The record is left as it was if p is 0 or 1, if p or g does not fit its
 * member, if bits is negative or above 4800, and where there is no memory. */
MORVANE_API void MORVANE_CALL E_DH_GenerateKey(E_DH_KEY* key, int32_t bits);

/* Writes the secret peer^x mod p without leading zeros: it may be shorter than p. Room for the bytes of p. Returns its
 * length, -1 with nothing written if x.words is null, p is 0 or too long for its member, or there is no memory. */
MORVANE_API int32_t MORVANE_CALL E_DH_ComputeKey(uint8_t* out, const ENUM* peer, const E_DH_KEY* key);

#ifdef __cplusplus
}
#endif

#endif
