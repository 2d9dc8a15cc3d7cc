/* DSA, and the key record that it shares with KCDSA (kcdsa.h).
 *
 * The record. Five integers (see morvane/bignum.h), each with a storage of 150 words inside the record, so that numbers
 * have up to 4800 bits. The domain is p, a prime, q, a prime that divides p - 1, and g, of order q modulo p. E_DSA_Init
 * attaches the storages and must come first; it leaves the lengths alone, so that a record copied as bytes becomes usable
 * by another E_DSA_Init. Start from a record filled with zeros. Signing needs x and the domain, verifying y and the domain.
 * The caller owns the record and wipes it.
 *
 * What is refused. p and q must be odd and above 1, q no longer than p, x no longer than q, and no member longer than its
 * storage: with others, nothing is generated, signed or accepted. That p and q are prime and g of order q is not checked.
 *
 * Time. What x and the number k of a signature enter takes a time that depends on lengths only. y, the domain, hash values
 * and signatures count as public. With p of up to 2048 bits, the process keeps powers of g, and of a y that signatures are
 * verified with, from their second use on, for the four of them used last: everything takes about a third of the time then.
 * Nothing has to be freed.
 *
 * Departs from FIPS 186-2: the number k of a signature is EN_Random of as many words as q has, with its two highest bits
 * set, modulo q, which is not quite uniform (see SECURITY.md).
 *
 * Before each draw, SHA-1 of x and what is signed is stirred into the general pool, so that a pool in a state
 * it was in before still gives another k for another message.
 *
 * Lengths are bytes, octet strings are big-endian.
 *
 * Threads. Distinct records may be used on distinct threads for verifying. Generation and signing draw random numbers,
 * whose source is shared and not locked. */
#ifndef MORVANE_DSA_H
#define MORVANE_DSA_H

#include <morvane/types.h>

#ifdef __cplusplus
extern "C" {
#endif

#define E_DSA_WORDS 150

/* A key of DSA or KCDSA: 3060 bytes in the 32-bit builds. */
typedef struct E_DSA_KEY {
    ENUM x; /* private key, from 1 to q - 1 */
    ENUM y; /* public key: of DSA g^x mod p, of KCDSA g^(1/x mod q) mod p */
    ENUM p; /* prime modulus */
    ENUM q; /* prime order, divides p - 1 */
    ENUM g; /* generator of order q */
    uint32_t x_words[E_DSA_WORDS];
    uint32_t y_words[E_DSA_WORDS];
    uint32_t p_words[E_DSA_WORDS];
    uint32_t q_words[E_DSA_WORDS];
    uint32_t g_words[E_DSA_WORDS];
} E_DSA_KEY;

/* Attaches the storages and makes every sign non-negative. The lengths and the words stay as they are. The same function
 * under two names. */
MORVANE_API void MORVANE_CALL E_DSA_Init(E_DSA_KEY* key);

/* A domain and a key pair. q is a prime of EN_GeneratePrimeRSA, p the first prime X - (X mod 2 q) + 1 of exactly pBits bits
 * for random X, g = h^((p - 1) / q) mod p for a random h; x is a random number of qBits bits modulo q, not 0, and y = g^x
 * mod p. Where p is hardly longer than q and none is found, q is drawn again. The record is left as it was if qBits is
 * below 2, pBits not above qBits or above 4800, or where there is no memory. 1024 and 160 take some ten milliseconds.
 */
MORVANE_API void MORVANE_CALL E_DSA_GenerateKey(E_DSA_KEY* key, int32_t pBits, int32_t qBits);

/* Signs a hash value.
 *
 * Departs from FIPS 186-3: a hash value is taken as an integer of all its bytes; one that is longer than q is not cut but
 * refused.
 *
 *   hash     hashLen bytes: up to the bytes of q, and up to 50
 *   sig      the signature: a DER SEQUENCE of the INTEGERs r and s. Room: twice the bytes of q, and 16
 *   sigLen   its length
 * Returns 1; 0, with nothing written, for another hashLen, for a record that cannot sign (one from which no r and s come
 * that are not 0) and where there is no memory. */
MORVANE_API int32_t MORVANE_CALL E_DSA_Sign(const uint8_t* hash, int32_t hashLen, uint8_t* sig, int32_t* sigLen,
                                            const E_DSA_KEY* key);

/* Returns 1 if ((g^u1 y^u2) mod p) mod q is r, where u1 = hash/s and u2 = r/s mod q, else 0: also for a signature that is
 * not exactly the SEQUENCE of two INTEGERs in DER.
 *
 * Departs from FIPS 186: it does not ask for r and s from 1 to q - 1; it never has. So a signature of r = 1 and s = 0 fits
 * every message under every key: whoever takes signatures from others checks the ranges first, as the morvane tool does. */
MORVANE_API int32_t MORVANE_CALL E_DSA_Verify(const uint8_t* hash, int32_t hashLen, const uint8_t* sig, int32_t sigLen,
                                              const E_DSA_KEY* key);

#ifdef __cplusplus
}
#endif

#endif
