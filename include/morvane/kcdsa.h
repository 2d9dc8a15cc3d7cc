/* KCDSA, the Korean certificate-based signature algorithm (TTAS.KO-12.0001), in two generations of interface.
 *
 * The record is that of DSA, and so are its rules, the number k and what is said of time and threads: see morvane/dsa.h.
 * The public key is y = g^(1/x mod q) mod p.
 *
 * The newer pair, E_KCDSA_Sign_New and E_KCDSA_Verify_New, hashes the message itself, together with z, the low 512 bits of
 * y.
 *
 * Departs from TTAS.KO-12.0001: where the standard has strings of fixed length, z and the commitment W = g^k mod p are
 * hashed without leading zeros; one key in 256 and one signature in 256 differ.
 *
 * The older functions take a hash value that the caller has formed.
 *
 * Departs from TTAS.KO-12.0001: the older functions always hash W with HAS-160, as many bytes as the words of W have, first
 * those of W without leading zeros, then zeros. They sign again until (r XOR hash) mod q has no divisor in common with p -
 * 1; every other signature at best passes, so they take twice as long and more.
 *
 * Signatures of
 * the two generations are not interchangeable. */
#ifndef MORVANE_KCDSA_H
#define MORVANE_KCDSA_H

#include <morvane/dsa.h>

#ifdef __cplusplus
extern "C" {
#endif

#define E_KCDSA_WORDS   E_DSA_WORDS
#define E_KCDSA_R_BYTES 20

typedef E_DSA_KEY E_KCDSA_KEY;

/* E_DSA_Init under another name. */
MORVANE_API void MORVANE_CALL E_KCDSA_Init(E_KCDSA_KEY* key);

/* ---- Domains and keys ----
 *
 * x is a random number of qBits bits modulo q, not 0. The record must have been through E_KCDSA_Init. It is left as it was
 * for sizes that E_DSA_GenerateKey refuses, where the members that a function keeps are no domain, and where there is no
 * memory. */

/* The domain as E_DSA_GenerateKey makes it, and a key pair. */
MORVANE_API void MORVANE_CALL E_KCDSA_GenerateKey(E_KCDSA_KEY* key, int32_t pBits, int32_t qBits);

/* The same with x from E_X9_31RandomBytes2 (prime.h), reporting what makes it repeatable: the first XKEY, 20 bytes, and the
 * XSEED of each round, 20 bytes each. There is a round for each 160 bits of qBits, and a part of them; xseed has room for
 * all. Both lengths become 20, whatever the rounds. The report is as secret as x. */
MORVANE_API void MORVANE_CALL E_KCDSA_GenerateKey2(E_KCDSA_KEY* key, int32_t pBits, int32_t qBits, uint8_t* xkey,
                                                   uint32_t* xkeyLen, uint8_t* xseed, uint32_t* xseedLen);

/* The same for the domain that is in the record; pBits is not used. */
MORVANE_API void MORVANE_CALL E_KCDSA_GenerateKey3(E_KCDSA_KEY* key, int32_t pBits, int32_t qBits, uint8_t* xkey,
                                                   uint32_t* xkeyLen, uint8_t* xseed, uint32_t* xseedLen);

/* A domain that can be verified to be random: J, q and p = 2 J q + 1 come from a random seed and a count by HAS-160, as the
 * standard says; g = h^(2 J) mod p for a random h. Then a key pair. pBits of 1024 and more, qBits from 16 to pBits - 32.
 *   seed    20 bytes, the seed
 *   count   the count, from 1 to 2^24
 * 1024 and 160 bits take some tenths of a second. */
MORVANE_API void MORVANE_CALL E_KCDSA_GenerateX9Key(E_KCDSA_KEY* key, int32_t pBits, int32_t qBits, uint8_t* seed,
                                                    uint32_t* count);

/* Loads the built-in domain of 1024 and 160 bits, which is the example of the standard, and makes a key pair. */
MORVANE_API void MORVANE_CALL E_KCDSA_GenerateKey_fixParam(E_KCDSA_KEY* key, int32_t unused, int32_t qBits);

/* A key pair for the domain in the record. */
MORVANE_API void MORVANE_CALL E_KCDSA_GenerateXY(E_KCDSA_KEY* key, int32_t unused, int32_t qBits);

/* ---- The newer pair ---- */

#define E_KCDSA_SHA1   2
#define E_KCDSA_HAS160 5

/* Signs a message of msgLen bytes.
 *   hashSel  E_KCDSA_SHA1 or E_KCDSA_HAS160
 *   sig      the signature: SEQUENCE { BIT STRING of r, INTEGER s }. Room: the bytes of q, and 28
 *   sigLen   its length
 * z is of y where the record has one of at least 32 words, otherwise of the y that belongs to x. Returns 1; 0, with
 * nothing written, for another hashSel, a negative msgLen, a q of more than 101 bytes (whose signature would not have the
 * short lengths that these have), a record that cannot sign, and where there is no memory. */
MORVANE_API int32_t MORVANE_CALL E_KCDSA_Sign_New(int32_t hashSel, const uint8_t* msg, int32_t msgLen, uint8_t* sig,
                                                  int32_t* sigLen, const E_KCDSA_KEY* key);

/* Returns 1 if the signature is valid, else 0: so for another hashSel, a structure that is not exactly that of
 * E_KCDSA_Sign_New, an r of other than 20 bytes, and an s that is not from 1 to q - 1. z is always that of the y in the
 * record. */
MORVANE_API int32_t MORVANE_CALL E_KCDSA_Verify_New(int32_t hashSel, const uint8_t* msg, int32_t msgLen, const uint8_t* sig,
                                                    int32_t sigLen, const E_KCDSA_KEY* key);

/* ---- The older functions ----
 *
 * The hash value has from 1 byte to the bytes of q, and at most 50. One of up to 20 bytes is XORed with the first bytes of
 * r, a longer one has its last 20 bytes XORed with r. Signing returns 1; 0, with nothing written, for another length, for a
 * record that cannot sign, and where there is no memory. */

/* The signature is a DER SEQUENCE of the INTEGERs r and s. Room: the bytes of q, and 36. */
MORVANE_API int32_t MORVANE_CALL E_KCDSA_Sign(const uint8_t* hash, int32_t hashLen, uint8_t* sig, int32_t* sigLen,
                                              const E_KCDSA_KEY* key);

/* The same, and W as it was hashed: four bytes for each of its words. Room for W: four bytes for each word of p. */
MORVANE_API int32_t MORVANE_CALL E_KCDSA_Sign2(const uint8_t* hash, int32_t hashLen, uint8_t* sig, int32_t* sigLen,
                                               uint8_t* w, int32_t* wLen, const E_KCDSA_KEY* key);

/* The signature as r, 20 bytes, and s, as many bytes as q has, each with its length. */
MORVANE_API int32_t MORVANE_CALL E_KCDSA_Sign2RS(const uint8_t* hash, int32_t hashLen, uint8_t* r, int32_t* rLen,
                                                 uint8_t* s, int32_t* sLen, const E_KCDSA_KEY* key);

/* Returns 1 if the signature of E_KCDSA_Sign is valid, else 0: so for another structure, an r of more than 20 bytes, and an
 * s that is not from 1 to q - 1. */
MORVANE_API int32_t MORVANE_CALL E_KCDSA_Verify(const uint8_t* hash, int32_t hashLen, const uint8_t* sig, int32_t sigLen,
                                                const E_KCDSA_KEY* key);

/* The same with y as yLen bytes, most significant first, and the domain of another record, whose x and y are not looked at.
 */
MORVANE_API int32_t MORVANE_CALL E_KCDSA_Verify_withParams(const uint8_t* hash, int32_t hashLen, const uint8_t* sig,
                                                           int32_t sigLen, const uint8_t* y, int32_t yLen,
                                                           const E_KCDSA_KEY* params);

#ifdef __cplusplus
}
#endif

#endif
