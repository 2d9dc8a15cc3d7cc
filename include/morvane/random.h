/* Random octets, integers and scalars.
 *
 * Sources. There are several, each with a state of its own, and every caller picks one by name:
 *
 *   general pool    RAND_Bytes, EN_Random                            for keys and for everything else
 *   key pool        E_GenerateRandom_RSA                             for keys and for everything else
 *   X9.31           EN_X9_31Random, E_X9_31RandomBytes (prime.h)     for keys and for everything else
 *   X9.62           E_GenerateRandom_X962                            for scalars that sign and agree on keys
 *   EC-KCDSA        E_GenerateRandom_ECKCDSA                         the same
 *   digest chain    E_GenerateRandom_MD5, E_GenerateRandom mode 0    never for secrets
 *   DES generator   E_GenerateRandom_DES, E_GenerateRandom mode 1    never for secrets
 *
 * E_X9_62RandomBytes and E_ECKCDSA_RandomBytes are arithmetic: what they give is as good as the seed they are given.
 *
 * Seeding. Each source seeds itself when it is first drawn from. The pools take 88 octets from the operating system's
 * generator and the time in seconds; should the system have nothing to give, the time alone, which anybody guesses. The
 * generators of scalars take what they start from out of the general pool.
 *
 * What is not fit for secrets. The digest chain starts from 32 bits made of process id, screen size and time since the
 * system's start, and each of its outputs is the MD5 of the one before: whoever sees 16 octets computes all that follow.
 * The DES generator starts from the time, the process id and the process clock and has two keys that stand in the library:
 * whoever guesses those few values computes everything. They stay as they are because programs rely on them for values that
 * only have to differ, such as padding and initialisation vectors that are sent along.
 *
 * Threads. Nothing is locked, and the states belong to the process: callers that draw on several threads take turns, also
 * with calls that draw on their way. E_X9_62RandomBytes and E_ECKCDSA_RandomBytes alone have no state.
 *
 * Nothing is checked: a null pointer is the caller's fault. Nothing fails unless a comment says so. */
#ifndef MORVANE_RANDOM_H
#define MORVANE_RANDOM_H

#include <morvane/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/* ---- The pools ----
 *
 * 1023 octets that MD5 stirs: 8 octets of output for each digest over the last one, 8 octets of the pool and what the
 * output buffer held. */

/* Fills count octets from the general pool. What they held before is mixed in, so they must be initialised; it takes
 * nothing away. A negative count is 0, which changes the pool all the same. */
MORVANE_API void MORVANE_CALL RAND_Bytes(uint8_t* octets, int32_t count);

/* As RAND_Bytes, from the key pool. */
MORVANE_API void MORVANE_CALL E_GenerateRandom_RSA(uint8_t* octets, int32_t count);

/* Stirs count octets into the key pool. It may be done at any time, with anything: what is in the pool is not lost. A count
 * below 1 does nothing. */
MORVANE_API void MORVANE_CALL E_GenerateSeed_RSA(const uint8_t* octets, int32_t count);

/* x = a random integer of exactly `bits` bits from the general pool: the highest bit is set; with a top other than 0 the
 * two highest are; with a bottom other than 0 it is odd. Of one bit it is 1, whatever top says. Sign 0, normalised; for
 * bits of 0 and less it is zero of length 0. Before, the time is stirred into the general pool. Room: the words of so many
 * bits. */
MORVANE_API void MORVANE_CALL EN_Random(ENUM* x, int32_t bits, int32_t top, int32_t bottom);

/* ---- Octets that are not for secrets ---- */

/* Fills count octets from the digest chain. A count that is no multiple of 16 drops what is left of the last digest. */
MORVANE_API void MORVANE_CALL E_GenerateRandom_MD5(uint8_t* octets, uint32_t count);

/* Fills count octets from the DES generator. A count of 0 changes nothing. */
MORVANE_API void MORVANE_CALL E_GenerateRandom_DES(uint8_t* octets, uint32_t count);

/* E_GenerateRandom_MD5 with a mode of 0, E_GenerateRandom_DES with any other. */
MORVANE_API void MORVANE_CALL E_GenerateRandom(uint8_t* octets, uint32_t count, uint32_t mode);

/* Puts count octets of E_GenerateRandom into the words of x as they lie in memory, sign 0, length (count + 3) / 4. Of the
 * last word, octets that were not drawn stay as they were. Not normalised: the top word may be 0, and EN_ functions that
 * compare need it dropped. Room: so many words. */
MORVANE_API void MORVANE_CALL EN_GenerateRandom(ENUM* x, uint32_t count, uint32_t mode);

/* ---- Scalars ----
 *
 * k is a number below the order n of a group. Numbers are octets, most significant first; k is written without leading
 * zeros, *k_len becomes the number of its octets and is returned as well. Both are 0 when there is no such k, or no memory,
 * which is needed for orders above 255 octets or bits above 5000 only. */

/* ANSI X9.62, FIPS 186-2 appendix 3.1: k from 1 to n - 1.
 *   k         20 octets for each 160 bits begun, also where n is shorter, because the generator works in it: wipe all of it
 *             when k is done with
 *   bits      how many to draw, rounded up to a multiple of 160, before they are reduced modulo n - 1, then increased by 1;
 *             at least 64 more than n has, or k is biased
 *   xkey      the secret state, 20 octets of room: read, of more than 20 octets the last, and written without leading zeros
 *   xkey_len  its length, in and out
 *   n         n_len octets, above 1; otherwise 0 is returned and xkey stays as it was */
MORVANE_API uint32_t MORVANE_CALL E_X9_62RandomBytes(uint8_t* k, uint32_t* k_len, uint32_t bits, uint8_t* xkey,
                                                     uint32_t* xkey_len, const uint8_t* n, uint32_t n_len);

/* The same entry point under a second name. It once printed what it computed on standard output; secrets do not belong
 * there. */
MORVANE_API uint32_t MORVANE_CALL E_X9_62RandomBytes_Original(uint8_t* k, uint32_t* k_len, uint32_t bits, uint8_t* xkey,
                                                              uint32_t* xkey_len, const uint8_t* n, uint32_t n_len);

/* E_X9_62RandomBytes with 320 bits, from an xkey of 160 bits of EN_Random that is then forgotten.
 *   curve  never read
 *   k      40 octets; wipe all of them when k is done with */
MORVANE_API uint32_t MORVANE_CALL E_GenerateRandom_X962(uint32_t curve, uint8_t* k, uint32_t* k_len, const uint8_t* n,
                                                        uint8_t n_len);

/* The generator of KCDSA's standard (TTAS.KO-12.0001) with HAS-160 and b, the bits of n: XSEED = PPGF(seed),
 * k = PPGF(XKEY + XSEED) mod n, then XKEY + PPGF(k + XSEED) is the next XKEY; sums and PPGF are modulo 2^b, and what enters
 * PPGF has the octets of b bits. k is from 0 to n - 1; whoever needs one above 0 calls again when it has no octets.
 *   k         as many octets as n
 *   seed      seed_len octets, below 2^31, the user's input
 *   xkey      the secret state, of which the last b bits count; room for as many octets as n. Null stands for 0.
 *   xkey_len  its length, in and out; not used if xkey is null
 *   n         n_len octets, above 0; otherwise 0 is returned */
MORVANE_API uint32_t MORVANE_CALL E_ECKCDSA_RandomBytes(uint8_t* k, uint32_t* k_len, const uint8_t* seed, uint32_t seed_len,
                                                        uint8_t* xkey, uint32_t* xkey_len, const uint8_t* n,
                                                        uint32_t n_len);

/* E_ECKCDSA_RandomBytes from a seed of 160 bits and an xkey of the octets of n, both from EN_Random: k from 1 to n - 1, or
 * 0 octets if n is below 2.
 *   curve  never read
 *   k      as many octets as n */
MORVANE_API uint32_t MORVANE_CALL E_GenerateRandom_ECKCDSA(uint32_t curve, uint8_t* k, uint32_t* k_len, const uint8_t* n,
                                                           uint8_t n_len);

#ifdef __cplusplus
}
#endif

#endif
