/* Primes: tests, generators, and the random generator that needs one.
 *
 * Records are those of bignum.h, sources those of random.h. Every generator draws a random odd number, moves it on by small
 * steps until none of the 2047 primes from 3 to 17863 divides it or it minus 1, and runs rounds of Miller and Rabin's test
 * with random bases on what is found; a composite number makes it start again. It searches until it succeeds.
 *
 *   name     source of numbers and bases   what it finds
 *   RSA      EN_Random                     a prime
 *   DH       EN_Random                     a prime of a given remainder
 *   X9       EN_X9_31Random                a prime
 *   Strong                                 a safe prime instead: p = 2 q + 1 with q prime
 *
 * Arguments. The result comes first; it may be the same record as an operand. Numbers may be unnormalised; signs are not
 * looked at, except those of remainders. Results have sign 0 and are normalised.
 *
 * Short primes. Below 16 bits every prime is one of those that the search keeps away from. Such primes are found by trial
 * division instead, and what minus 1 divides them does not count. A number of bits below 2 counts as 2.
 *
 * How sure. A composite number passes a round for less than a quarter of the bases, mostly for far fewer. Five rounds are
 * plenty for random numbers as the generators make them; a number that somebody chose to deceive passes them once in a
 * thousand times at worst. Numbers below 319730161, and numbers with a divisor up to 17863, are always told right.
 *
 * Memory. Beyond 2400 bits the work takes heap memory; where there is none, a test or a generator answers 0 and writes
 * nothing.
 *
 * Time. The exponentiations do not tell their operands by their time; the search does tell something of how far the prime
 * is from where it began, and a test tells its answer.
 *
 * Threads. All draw on the random sources, which are not locked, and EN_PrimeUpdate on the run time's generator: callers on
 * several threads take turns. */
#ifndef MORVANE_PRIME_H
#define MORVANE_PRIME_H

#include <morvane/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Tests ---- */

/* 1 if n is prime, by trial division and five rounds with bases from EN_Random of one bit less than n has; else 0. */
MORVANE_API int32_t MORVANE_CALL EN_IsPrime(const ENUM* n);

/* 1 if p and p / 2, rounded down, are prime, by trial division and five times a round on p and one on p / 2; else 0. So 5,
 * whose half is 2, counts, and so does 23. */
MORVANE_API int32_t MORVANE_CALL EN_IsStrongPrime(const ENUM* p);

/* As EN_IsStrongPrime, with bases from EN_X9_31Random. */
MORVANE_API int32_t MORVANE_CALL EN_IsStrongX9Prime(const ENUM* p);

/* ---- Primes of a number of bits ----
 *
 * p = a prime of exactly `bits` bits whose two highest bits are set, so that the product of two has twice as many; p - 1
 * has no odd divisor up to 17863 either. A search that runs past the last number of so many bits begins again.
 *
 * Of fewer than 16 bits: a prime with its two highest bits set, without the condition on p - 1. Safe primes like that there
 * are none of 2, 4 and 5 bits: the answers are then 5, 23 and 47.
 *
 * Room: the words of so many bits, at least 1. Return 1. */

MORVANE_API int32_t MORVANE_CALL EN_GeneratePrimeRSA(ENUM* p, int32_t bits);
MORVANE_API int32_t MORVANE_CALL EN_GeneratePrimeStrongRSA(ENUM* p, int32_t bits);
MORVANE_API int32_t MORVANE_CALL EN_GenerateX9Prime(ENUM* p, int32_t bits);
MORVANE_API int32_t MORVANE_CALL EN_GenerateStrongX9Prime(ENUM* p, int32_t bits);

/* ---- Primes of a remainder ----
 *
 * p = a prime that leaves `remainder` modulo `step`; remainder may be null, and is then 1, in the Strong function 3 (which
 * is q = 1 modulo half the step). It may be negative, or above the step. A step of 0 counts as 1.
 *
 * Where only divisors of the step could be such primes (8 modulo 12), or such safe primes (5 modulo 12, as p is 3 modulo 4,
 * and neither 0 nor 1 modulo 3), p has the nearest remainder that has others; of two it has the greater. From 5 modulo 12
 * that is 11.
 *
 * The search begins below a random number of exactly `bits` bits, at the remainder. With a step of fewer bits by some, p
 * has so many bits and the two highest are not forced; with a step as long as that or longer p may have more bits, as it
 * may where p - 1 without the divisors of the step is too short to have none of the 2047 primes. The divisors of the step
 * may divide p - 1, the other odd primes up to 17863 do not; in the Strong function q - 1 has none of these either.
 *
 * Of fewer than 16 bits, with a step below 65536 (below 16384 in the Strong function): the first prime (or safe prime)
 * from a random number on; if that has too many bits, the least of so many bits; if there is none, the first one above.
 *
 * Room: the words of so many bits, or those of the step where these are more, and 1. Return 1. */

MORVANE_API int32_t MORVANE_CALL EN_GeneratePrimeDH(ENUM* p, int32_t bits, const ENUM* step, const ENUM* remainder);
MORVANE_API int32_t MORVANE_CALL EN_GeneratePrimeStrongDH(ENUM* p, int32_t bits, const ENUM* step, const ENUM* remainder);

/* ---- A search described by a record ---- */

#define EN_PRIME_SAFE    16u /* a safe prime; with EN_PRIME_STEPPED only */
#define EN_PRIME_STEPPED 32u /* of a remainder */

/* 12 bytes in the 32-bit builds. The records it points to stay the caller's. */
typedef struct EN_PRIME_CONTEXT {
    uint32_t flags;  /* 0, or EN_PRIME_STEPPED, or both of the above */
    ENUM* remainder; /* may be null */
    ENUM* step;
} EN_PRIME_CONTEXT;

/* Fills a context: where `present` is not null, for a prime of a remainder, with a `safe` other than 0 for a safe prime,
 * and returns the context; where it is null, for a prime as of EN_GeneratePrimeRSA: only the flags are written then, and
 * null is returned. `unused` is not looked at. */
MORVANE_API EN_PRIME_CONTEXT* MORVANE_CALL EN_PrimeInit(EN_PRIME_CONTEXT* context, const void* unused, int32_t safe,
                                                        const void* present, ENUM* step, ENUM* remainder);

/* p = a prime as the context says, found as by the generators above, with their room; a null context is one without flags.
 * Returns 1.
 * The test is another one: the run time's rand() is seeded with the time in seconds plus 100 for each candidate, and gives
 * the bases of 20 rounds (on p and, for safe primes, on p / 2 in turn), two draws of 15 bits to a word. They are as
 * guessable as the time: for numbers that others chose, call EN_IsPrime too. Each round prints "\nb=%d\n" to standard
 * output, with the exponent of 2 in the tested number minus 1. */
MORVANE_API int32_t MORVANE_CALL EN_PrimeUpdate(ENUM* p, int32_t bits, const EN_PRIME_CONTEXT* context);

/* ---- The generator named after X9.31 ---- */

/* Fills n octets, in rounds of 20. XKEY is a random number of 160 bits and q a random prime of 160 bits, both new for each
 * call; in each round XSEED is another such number, x = G(XKEY + XSEED) mod q with the SHA-1 compression for G (E_MySHA1),
 * and XKEY + x + 1 modulo 2^160 is the new XKEY. All randomness comes from EN_Random, 20 octets for 20.
 *
 * Departs from FIPS 186-2: the output is the new XKEY, where appendix 3 has x. A sum or an XKEY of fewer than 20 octets
 * stands at the start of its 20 (by its words: leading zero words shorten it by four each); octets of `out` behind it keep
 * what they were. */
MORVANE_API void MORVANE_CALL E_X9_31RandomBytes(uint8_t* out, int32_t n);

/* The same, reporting what makes the output repeatable: the first XKEY and q, 20 octets each, and the XSEED of each round,
 * 20 octets, one after the other; all most significant octet first. Any of these may be null. They are as secret as the
 * output. */
MORVANE_API void MORVANE_CALL E_X9_31RandomBytes2(uint8_t* out, int32_t n, uint8_t* xkey, uint8_t* xseeds, uint8_t* q);

/* As EN_Random (random.h), from octets of E_X9_31RandomBytes. */
MORVANE_API void MORVANE_CALL EN_X9_31Random(ENUM* x, int32_t bits, int32_t top, int32_t bottom);

#ifdef __cplusplus
}
#endif

#endif
