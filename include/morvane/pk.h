/* RSA: keys, key generation, and the encryption and signature schemes of PKCS #1 and ANSI X9.31.
 *
 * The record. A key is one record of eight integers (see morvane/bignum.h), each with a storage of its own inside the
 * record: n 150 words, e 1, d 150, p 75, q 75, dP 75, dQ 75, qInv 75; so moduli have up to 4800 bits, primes up to
 * 2400, and e is a single word. E_RSA_Init attaches the storages and must come first; it leaves the lengths alone, so that
 * a record copied as bytes becomes usable by another E_RSA_Init. Start from a record filled with zeros. A public key uses n
 * and e only. A private operation uses n and, by its own rule, either d or p, q, dP, dQ and qInv (Chinese remainders); e,
 * where the record has it, serves to check the result. Nothing is stored beyond a member's words. The caller owns the
 * record and wipes it.
 *
 * Lengths are bytes, octet strings are big-endian. k is the length of the modulus: (bits of n + 7) / 8. Outputs have room
 * for k bytes unless their function says otherwise, and may overlap the inputs. A negative length is refused like one that
 * is too long; where a function only takes k, and in all openings and verifications, like one that is not k. So is a
 * modulus of zero, or one that does not fit its member.
 *
 * Hashes of the newer schemes, hashId and mgfHashId:
 *     1 MD5, 5 HAS-160, 6 SHA-256, 7 SHA-384, 8 SHA-512, any other value SHA-1.
 * Every field for a hash has 20, 20, 32, 48, 64, 20 bytes.
 *
 * Departs from PKCS #1 v2.1: the field of MD5 has 20 bytes too, its 16 and four zeros, in masks as well. Blocks made with
 * MD5 have always had that layout.
 *
 * Messages. Some failures print a line to standard output; the texts are part of the behaviour. They tell an attacker who
 * can read them which check failed: a service that deciphers for others keeps its standard output to itself.
 *
 * Time. Private operations take a time that does not depend on the key's values, the modulus' own length apart, nor on the
 * message; block type 2 and OAEP are unpadded without telling through time which check failed, but the result tells.
 *
 * Threads. Distinct records may be used on distinct threads, except by what draws random bytes (generation, encryption,
 * signing with a salt): the sources are shared and not locked. */
#ifndef MORVANE_PK_H
#define MORVANE_PK_H

#include <morvane/types.h>

#ifdef __cplusplus
extern "C" {
#endif

#define E_RSA_MODULUS_WORDS 150
#define E_RSA_PRIME_WORDS   75

/* An RSA key: 2800 bytes in the 32-bit builds. */
typedef struct E_RSA_KEY {
    ENUM n;    /* modulus */
    ENUM e;    /* public exponent */
    ENUM d;    /* private exponent */
    ENUM p;    /* first prime, of generated keys the larger one */
    ENUM q;    /* second prime */
    ENUM dP;   /* d mod (p - 1) */
    ENUM dQ;   /* d mod (q - 1) */
    ENUM qInv; /* 1 / q mod p */
    uint32_t n_words[E_RSA_MODULUS_WORDS];
    uint32_t e_words[1];
    uint32_t d_words[E_RSA_MODULUS_WORDS];
    uint32_t p_words[E_RSA_PRIME_WORDS];
    uint32_t q_words[E_RSA_PRIME_WORDS];
    uint32_t dP_words[E_RSA_PRIME_WORDS];
    uint32_t dQ_words[E_RSA_PRIME_WORDS];
    uint32_t qInv_words[E_RSA_PRIME_WORDS];
} E_RSA_KEY;

/* Attaches the storages and makes every sign non-negative. The lengths and the words stay as they are. */
MORVANE_API void MORVANE_CALL E_RSA_Init(E_RSA_KEY* key);

/* ---- Key generation ----
 *
 * One prime has bits / 2 bits, the other one the rest; p is the larger one in the end. d is the inverse of e modulo
 * lcm(p - 1, q - 1), not modulo (p - 1)(q - 1). The record must have been through E_RSA_Init; what it held does not matter.
 *
 * Where there cannot be such a key, or no memory, the record is left as it was: bits below 32 (below 200 for the X9
 * functions) or above 4800, an exponent of 0 or 1, and an even one but for the X9 functions. With any other arguments a key
 * is found, if only after long: primes of 16 bits are the shortest of which no e of 32 bits excludes all but one. */

/* Plain primes, of EN_GeneratePrimeRSA. */
MORVANE_API void MORVANE_CALL E_RSA_GenerateKey(E_RSA_KEY* key, int32_t bits, uint32_t e);

/* Safe primes, of EN_GeneratePrimeStrongRSA: some fifty times the work. Of 4096 bits that is many seconds to minutes. */
MORVANE_API void MORVANE_CALL E_RSA_GenerateStrongKey(E_RSA_KEY* key, int32_t bits, uint32_t e);

/* Primes in the manner of ANSI X9.31: p1 divides p - 1, p2 divides p + 1, and so q1 and q2 for q. Each is the first one
 * that suits e from a random number on; these two numbers are drawn until they differ in the whole word that has bit
 * bits / 2 - 100. The four auxiliary primes of 101 bits are written big-endian, 13 octets each.
 *
 * Checks the result and prints "p1 OK" or "p1 Fail", and so for p2, q1 and q2, a line each, then "len = " and the words of
 * gcd(p - 1, q - 1). Returns the count of characters of the last line; 0 where there is no key: nothing is written or
 * printed then.
 *
 * An even e follows X9.31's rule: one prime is 3 and the other one 7 modulo 8, gcd((p - 1) / 2, e) = gcd((q - 1) / 2, e) =
 * 1, and d is the inverse modulo lcm(p - 1, q - 1) / 2. Such a key does not invert m^e for every m: (m^e)^d is m or n - m
 * where the Jacobi symbol of m is 1, and neither where it is -1. It is for schemes that know of this; those below do not.
 *
 * Primes like that have about 202 bits at least. Of fewer than some 420 bits asked for, the modulus has more; from 512 on
 * it has as many as asked for, but for one chance in 2^40. */
MORVANE_API int32_t MORVANE_CALL E_RSA_GenerateX9Key(E_RSA_KEY* key, int32_t bits, uint32_t e, uint8_t* p1, uint8_t* p2,
                                                     uint8_t* q1, uint8_t* q2);

/* The same with safe auxiliary primes, and nothing is printed. Returns the bytes written to q2, 0 where nothing was
 * generated. */
MORVANE_API int32_t MORVANE_CALL E_RSA_GenerateStrongX9Key(E_RSA_KEY* key, int32_t bits, uint32_t e, uint8_t* p1,
                                                           uint8_t* p2, uint8_t* q1, uint8_t* q2);

/* From p, q and e computes d, dP, dQ and qInv; for an even e as above. n is not touched. Values for which there is no d or
 * no qInv, and members that do not fit their storage, leave the record alone. Whether p and q are prime is not looked at,
 * nor which one is larger. */
MORVANE_API void MORVANE_CALL E_RSA_GenerateD(E_RSA_KEY* key);

/* ---- PKCS #1 v1.5 blocks ----
 *
 * The private operations use Chinese remainders when qInv has 16 words or more, after testing that q qInv mod p is 1; else
 * they use d. They return 0, and write nothing, if that test fails or the result does not stand up to the public exponent.
 */

/* Enciphers len bytes, at most k - 11, under random non-zero padding (block type 2, RFC 2313). Returns k, or -1. */
MORVANE_API int32_t MORVANE_CALL E_RSA_Public_Encrypt(uint8_t* out, const uint8_t* in, int32_t len, const E_RSA_KEY* key);

/* Signs len bytes, at most k - 11, padded with 0xff (block type 1). Returns k, -1, or 0. */
MORVANE_API int32_t MORVANE_CALL E_RSA_Private_Encrypt(uint8_t* out, const uint8_t* in, int32_t len, const E_RSA_KEY* key);

/* Opens a block of type 1: len is k. Returns the bytes written to out, up to k - 11, or -1 for a wrong length or padding.
 */
MORVANE_API int32_t MORVANE_CALL E_RSA_Public_Decrypt(uint8_t* out, const uint8_t* in, int32_t len, const E_RSA_KEY* key);

/* Deciphers a block of type 2: len is k. Returns the bytes written to out, up to k - 11, -1 for a wrong length or padding,
 * or 0, which is also the length of an empty message. */
MORVANE_API int32_t MORVANE_CALL E_RSA_Private_Decrypt(uint8_t* out, const uint8_t* in, int32_t len, const E_RSA_KEY* key);

/* Signs data, a digest or DigestInfo that the caller has made, by E_RSA_Private_Encrypt, whose answer (k, -1 or 0) goes to
 * *sig_len. Always returns 1. */
MORVANE_API int32_t MORVANE_CALL E_RSA_Sign(const uint8_t* data, int32_t data_len, uint8_t* sig, int32_t* sig_len,
                                            const E_RSA_KEY* key);

/* Returns 1 if the first expected_len bytes that the signature holds are those expected, else 0. Bytes beyond them are not
 * looked at: pass a whole DigestInfo. An expected_len of 0 is always equal; one above 100 never, nor is a negative one, nor
 * any but 0 where the signature cannot be opened. A content shorter than expected_len counts as if zeros followed. */
MORVANE_API int32_t MORVANE_CALL E_RSA_Verify(const uint8_t* expected, int32_t expected_len, const uint8_t* sig,
                                              int32_t sig_len, const E_RSA_KEY* key);

/* ---- Newer schemes ----
 *
 * Their private operations use Chinese remainders whenever qInv is not zero, untested before, checked with e after.
 *
 * Seeds and salts come from E_GenerateRandom with mode 1, which is not fit for secrets (see morvane/random.h). A signature
 * is none the worse; a ciphertext lets whoever can compute the seed test a guess of its message. So encipher keys and other
 * random values with it, not what can be guessed. */

/* RSAES-OAEP of PKCS #1 v2.0 with SHA-1. Returns k; -1 with the line "encrypt part : message too long. encoding error" if
 * len is above k - 22. The encoder takes no more than k - 42 bytes: for the lengths in between it prints "Input message too
 * long. Fail to oaep encoding!", and a block of zeros is enciphered all the same, for k. Keep to k - 42. */
MORVANE_API int32_t MORVANE_CALL E_RSA_Public_Encrypt_OAEP(uint8_t* out, const uint8_t* msg, int32_t len,
                                                           const uint8_t* label, int32_t label_len, const E_RSA_KEY* key);

/* Opens what E_RSA_Public_Encrypt_OAEP made. Returns the bytes written to out, or -1: len is not k, silently; the block
 * does not have exactly k - 1 octets, "decrypt part : EM byte Length too long , decryption error"; it has fewer than 41,
 * "EM length too small. Fail to oaep decoding!"; another label, "pHash' does mot equal pHash"; no 0x01 before the message,
 * silently.
 *
 * Departs from PKCS #1 v2.0: one of 256 blocks begins with a zero octet and has fewer than k - 1; it is refused here, and
 * E_RSAES_OAEP_Decrypt with SHA-1 opens it. Whatever stands between the label's hash and the first 0x01 is skipped, where
 * the standard has zeros. */
MORVANE_API int32_t MORVANE_CALL E_RSA_Private_Decrypt_OAEP(uint8_t* out, const uint8_t* in, int32_t len,
                                                            const uint8_t* label, int32_t label_len, const E_RSA_KEY* key);

/* RSAES-OAEP of PKCS #1 v2.1: hLen is the field of hashId. Returns k; -1 with "encrypt part : message too long." if len is
 * above k - 2 hLen - 2. */
MORVANE_API int32_t MORVANE_CALL E_RSAES_OAEP_Encrypt(int32_t hashId, int32_t mgfHashId, uint8_t* out, const uint8_t* msg,
                                                      int32_t len, const uint8_t* label, int32_t label_len,
                                                      const E_RSA_KEY* key);

/* Returns the bytes written to out, or -1 as E_RSA_Private_Decrypt_OAEP, but that a block of fewer octets is taken with
 * zeros in front, and that another label prints "lHash' does not equal lHash". */
MORVANE_API int32_t MORVANE_CALL E_RSAES_OAEP_Decrypt(int32_t hashId, int32_t mgfHashId, uint8_t* out, const uint8_t* in,
                                                      int32_t len, const uint8_t* label, int32_t label_len,
                                                      const E_RSA_KEY* key);

/* RSASSA-PSS of PKCS #1 v2.1: hashes msg and signs it with salt_len random bytes. Writes k bytes and k to *sig_len and
 * returns 1; or returns 0, and *sig_len is left alone: the modulus is too short for hash and salt ("EMSA_PSS_ENCODE ERROR :
 * intended encoded message length too short(emLen < hLen+sLen+2)"), or the private operation failed.
 *
 * Departs from PKCS #1 v2.1: whatever the modulus, one bit of the encoded message is cleared, the topmost of its first
 * byte. That is PSS when the modulus has a multiple of 8 bits, as nearly all have. If it has one bit more, the encoded
 * message has k - 1 bytes and PSS clears none: half the signatures made here are not those of PSS, and half of PSS's do not
 * verify here. With other moduli the message is often above the modulus; the signature then does not verify. */
MORVANE_API int32_t MORVANE_CALL E_RSASSA_PSS_Sign(int32_t hashId, int32_t mgfHashId, uint8_t* sig, int32_t* sig_len,
                                                   const uint8_t* msg, int32_t msg_len, int32_t salt_len,
                                                   const E_RSA_KEY* key);

/* Returns 1 for a valid signature with exactly salt_len bytes of salt, 0 if sig_len is not k, silently, else -1 after the
 * reason: "\nverify part : EM byte Length too long , invalid signature!", "\nEMSA_PSS_VERIFY ERROR : encoded message too
 * short", and after the lengths, in this order, "\nEMSA_PSS_VERIFY ERROR : rightmost octet of EM does not hex value 0xbc",
 * "\nEMSA_PSS_VERIFY ERROR : leftmost bit of maskedDB is not zero bit", or nothing for wrong padding or hash; any failure
 * after the lengths prints "\npss verify error : invalid signature" at last. */
MORVANE_API int32_t MORVANE_CALL E_RSASSA_PSS_Verify(int32_t hashId, int32_t mgfHashId, const uint8_t* msg, int32_t msg_len,
                                                     const uint8_t* sig, int32_t sig_len, int32_t salt_len,
                                                     const E_RSA_KEY* key);

#ifdef __cplusplus
}
#endif

#endif
