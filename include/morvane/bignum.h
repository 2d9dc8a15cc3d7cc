/* Integers of any size: the EN_ functions on ENUM records.
 *
 * The record. An ENUM is a sign, a count of words and a pointer to the words of the magnitude, least significant first
 * (word 0 has bits 0 to 31). The magnitude is never a two's complement. A value is normalised when its top word is not 0.
 * Zero has two forms, and both are zero everywhere: length 1 with word 0 equal to 0, and length 0; each function says
 * which one it gives. A negative length counts as 0.
 *
 * Room. There is no member for the size of the array, and nothing here checks one: the caller makes every result record
 * large enough for the result, whose room in words stands with each function. No function reads or writes beyond the
 * operands and that room. "x words" below are words of the array, however the value turns out.
 *
 * Who owns what. A record comes from EN_Create or EN_Clone, as two blocks of the general heap (record and array), and
 * goes with EN_Destroy. It may as well be the caller's own, on the stack, with an array of the caller's; no function but
 * EN_Expand and EN_Destroy touches the address of the array. Records never share an array.
 *
 * Arguments. The result comes first, then the operands. The result may be the same record as an operand, except in
 * EN_Mul and EN_Sqr; two results of one call are two records. Operands are expected to be normalised; functions that do
 * not need it say so. There are no error codes: a null pointer is the caller's fault.
 *
 * Work space. Intermediate values live on the stack up to 160 words, enough for moduli of 75 words (2400 bits); longer
 * operands take heap memory for the time of the call. Where there is none, the result is left as it was and a function
 * with a status answers 0.
 *
 * Time. The functions take a time that depends on their operands, except the exponentiations modulo an odd number, whose
 * time tells only the lengths in words, the modulus, and whether the exponent has at most one word.
 *
 * Threads. Nothing is shared: distinct records may be used on distinct threads at once. */
#ifndef MORVANE_BIGNUM_H
#define MORVANE_BIGNUM_H

#include <morvane/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Life of a record ---- */

/* A new record with an array of n words, all 0, sign 0 and length n: a zero that is not normalised. n of 0 gives a record
 * of length 0 that has room for one word. Null when there is no memory, or n is above 2^31 - 1. */
MORVANE_API ENUM* MORVANE_CALL EN_Create(uint32_t n);

/* Releases the array and the record. Null does nothing. The words are cleared before. */
MORVANE_API void MORVANE_CALL EN_Destroy(ENUM* x);

/* Gives the array of x, made by EN_Create or EN_Clone, room for n words. The words from the length on are 0 afterwards;
 * the length stays as it is, the array may have moved.
 * Returns n if the length is n or more already and nothing was done, 0 when done, 0xffffffff if there is no memory. */
MORVANE_API uint32_t MORVANE_CALL EN_Expand(ENUM* x, uint32_t n);

/* A new record with the sign, the length and the words of a, and room for exactly these (one word if there are none).
 * Null when there is no memory. */
MORVANE_API ENUM* MORVANE_CALL EN_Clone(const ENUM* a);

/* r = a: sign, length and words as they are. Room: the words of a. */
MORVANE_API void MORVANE_CALL EN_Copy(ENUM* r, const ENUM* a);

/* ---- Comparison and bits ---- */

/* Compares magnitudes. If the lengths differ, the difference a.length - b.length itself; else 1, 0 or -1 for a greater,
 * equal or smaller. Only the sign of the answer has a meaning. Zero words at the top count as length. */
MORVANE_API int32_t MORVANE_CALL EN_UComp(const ENUM* a, const ENUM* b);

/* Compares values: 1, 0 or -1 for a greater, equal or smaller. The signs are looked at first, so that +0 is greater than
 * a zero marked negative; zero words at the top count as length. */
MORVANE_API int32_t MORVANE_CALL EN_Comp(const ENUM* a, const ENUM* b);

/* Bits of the magnitude: the position of the highest set bit plus one. The top word is taken as it is, so that a value
 * of k words that is not normalised has 32 (k - 1) bits; a fresh EN_Create(4) has 96. 0 for both forms of zero. */
MORVANE_API uint32_t MORVANE_CALL EN_GetFilledBitNum(const ENUM* x);

/* Bit i of the magnitude: 0 or 1. 0 for a negative i and beyond the length. */
MORVANE_API int32_t MORVANE_CALL EN_IsBitSet(const ENUM* x, int32_t i);

/* x modulo 2^i, in place. Returns 0 if i / 32 is the length or more, or i is negative, and x is left alone; else 1. With i
 * a multiple of 32 the length becomes i / 32 and zero words at the top stay; with any other i they are dropped. */
MORVANE_API int32_t MORVANE_CALL EN_MaskBit(ENUM* x, int32_t i);

/* ---- Conversion ---- */

/* x = u: sign 0, length 1, also for 0. Room: 1 word. */
MORVANE_API void MORVANE_CALL EN_U32ToENUM(ENUM* x, uint32_t u);

/* x = the n octets, most significant first; sign 0, normalised; an empty or all-zero string gives length 0. Leading zero
 * octets are accepted. Room: the words of the value. */
MORVANE_API void MORVANE_CALL EN_U8ToENUM(ENUM* x, const uint8_t* octets, uint32_t n);

/* Writes the magnitude of x in the fewest octets, most significant first: (EN_GetFilledBitNum(x) + 7) / 8 of them, which
 * it returns. Zero is the empty string: nothing is written. */
MORVANE_API int32_t MORVANE_CALL EN_ENUMToU8(uint8_t* octets, const ENUM* x);

/* ---- Sums and shifts ---- */

/* r = a + b. Room: the words of the longer operand, and one more where the magnitudes are added and carry. A sum of
 * magnitudes has the words of the longer operand, a difference is normalised; 5 + -5 gives length 0. A zero has sign 0. */
MORVANE_API void MORVANE_CALL EN_Add(ENUM* r, const ENUM* a, const ENUM* b);

/* r = a - b, by the rules of EN_Add for a and -b. */
MORVANE_API void MORVANE_CALL EN_Sub(ENUM* r, const ENUM* a, const ENUM* b);

/* r = a - u on the magnitude, normalised, with the sign of a; exact for u = 1, and for any u that word 0 of a is not
 * below. Otherwise u is subtracted from each following word too, up to the first that does not wrap: callers pass 1, and
 * the answers for other values are kept as they have always been. Room: the words of a. */
MORVANE_API void MORVANE_CALL EN_SubU32(ENUM* r, const ENUM* a, uint32_t u);

/* r = 2 a. The sign is copied. Room: the words of a, and one more if the top bit is set. */
MORVANE_API void MORVANE_CALL EN_LShift1(ENUM* r, const ENUM* a);

/* r = a / 2 on the magnitude, rounded down, normalised. The sign is copied. Room: the words of a. */
MORVANE_API void MORVANE_CALL EN_RShift1(ENUM* r, const ENUM* a);

/* r = a 2^n, normalised. The sign is copied. Room: the words of a plus n / 32 plus 1. A negative n counts as 0. */
MORVANE_API void MORVANE_CALL EN_LShift(ENUM* r, const ENUM* a, int32_t n);

/* r = a / 2^n on the magnitude, rounded down, normalised. The sign is copied. Where n / 32 is above the length, the result
 * is zero of length 1 and sign 0; where it equals the length, of length 0. Room: the words of a minus n / 32, at least 1.
 * A negative n counts as 0. */
MORVANE_API void MORVANE_CALL EN_RShift(ENUM* r, const ENUM* a, int32_t n);

/* ---- Products and quotients ---- */

/* r = a b. r is neither a nor b; they may be the same. The sign is the exclusive or of the signs, whatever the value. If
 * either length is 0, so is the result's; else it is the sum of the lengths, less 1 if the top word is 0. Room: the sum of
 * the lengths. */
MORVANE_API void MORVANE_CALL EN_Mul(ENUM* r, const ENUM* a, const ENUM* b);

/* r = a^2, sign 0. r is not a. Length 0 of 0, else twice the length, less 1 if the top word is 0. Room: twice the length.
 * The sign is left as it was where the length is 0. */
MORVANE_API void MORVANE_CALL EN_Sqr(ENUM* r, const ENUM* a);

/* a = q d + r, rounded toward zero: the quotient has the sign of a d, the remainder the sign of a. Either result may be
 * null. Returns 0 for a zero divisor, and nothing is written, else 1.
 * If the magnitude of d is greater, r is a copy of a, normalised but for a zero of length 1, and q is zero of length 1;
 * else q and r are normalised, and a zero remainder has length 0 and sign 0. Room: for q the words of a less those of d
 * plus 1, at least 1; for r the words of d, or those of a where these are fewer. Results may be operands. */
MORVANE_API int32_t MORVANE_CALL EN_Div(ENUM* q, ENUM* r, const ENUM* a, const ENUM* d);

/* ---- Modular arithmetic ----
 *
 * m is the modulus. The remainders are those of EN_Div, with its signs and lengths, and room as for its remainder. With a
 * zero modulus nothing is written. Where a status is returned, it is the one of the last division: 1, or 0 for a zero
 * modulus. Residues are values from 0 to m - 1. */

/* r = a mod m, always normalised. */
MORVANE_API int32_t MORVANE_CALL EN_Mod(ENUM* r, const ENUM* a, const ENUM* m);

/* r = (a + b) mod m. */
MORVANE_API int32_t MORVANE_CALL EN_Mod_Add(ENUM* r, const ENUM* a, const ENUM* b, const ENUM* m);

/* r = a - b if a is at least b, which is not reduced; else r = m - (b - a). Room: that of EN_Sub of the three. */
MORVANE_API void MORVANE_CALL EN_Mod_Sub(ENUM* r, const ENUM* a, const ENUM* b, const ENUM* m);

/* r = (a b) mod m. The operands may be of any size. Where a and b are the same record, the product is a square, whose
 * sign is 0. */
MORVANE_API int32_t MORVANE_CALL EN_Mod_Mul(ENUM* r, const ENUM* a, const ENUM* b, const ENUM* m);

/* As EN_Mod_Mul, with a, with b or with both reduced modulo m before the product. Of one and the same record the reduced
 * value is squared. */
MORVANE_API int32_t MORVANE_CALL EN_Mod_MulA(ENUM* r, const ENUM* a, const ENUM* b, const ENUM* m);
MORVANE_API int32_t MORVANE_CALL EN_Mod_MulB(ENUM* r, const ENUM* a, const ENUM* b, const ENUM* m);
MORVANE_API int32_t MORVANE_CALL EN_Mod_MulAB(ENUM* r, const ENUM* a, const ENUM* b, const ENUM* m);

/* r = a^2 mod m; in EN_Mod_SqrA a is reduced modulo m before. */
MORVANE_API int32_t MORVANE_CALL EN_Mod_Sqr(ENUM* r, const ENUM* a, const ENUM* m);
MORVANE_API int32_t MORVANE_CALL EN_Mod_SqrA(ENUM* r, const ENUM* a, const ENUM* m);

/* r = 1 / a modulo m, from 0 to m - 1, normalised (modulo 1 that is zero of length 0); zero of length 1 if a and m have a
 * common divisor. If a or m is negative, nothing is written; so also for a = 1 modulo 0. Room: the words of m, at least
 * 1. */
MORVANE_API void MORVANE_CALL EN_Mod_Inv(ENUM* r, const ENUM* a, const ENUM* m);

/* r = the greatest common divisor of the magnitudes, sign 0; that of a and 0 is a. Of two zeros it is zero, of length 0 if
 * both have that length, else 1. Room: the words of the smaller operand, of the other if that one is zero, at least 1. */
MORVANE_API void MORVANE_CALL EN_GCD(ENUM* r, const ENUM* a, const ENUM* b);

/* r = (a b) / gcd(a, b), with the sign of the product. Of two zeros nothing is written and 0 returned, else 1. Room: the
 * sum of the words of a and b. */
MORVANE_API int32_t MORVANE_CALL EN_LCM(ENUM* r, const ENUM* a, const ENUM* b);

/* The magnitude of a modulo d, for any d; 0 if d is 0. */
MORVANE_API uint32_t MORVANE_CALL EN_ModU32(const ENUM* a, uint32_t d);

/* ---- Exponentiation ---- */

/* r = a^e mod m, sign 0, normalised, 0 has length 0. a may be of any size: EN_Mod_Exp and EN_Mod_ExpA give the same. Signs
 * are not looked at. An exponent of zero gives 1 of length 1, modulo 1 zero of length 1. With a zero modulus and another
 * exponent nothing is written. Room: the words of m.
 * Modulo an odd number, whose products need no division (Montgomery), the time does not tell the values of a and e, but
 * for an exponent of one word, which is taken for public; modulo an even number it does tell them. */
MORVANE_API void MORVANE_CALL EN_Mod_Exp(ENUM* r, const ENUM* a, const ENUM* e, const ENUM* m);
MORVANE_API void MORVANE_CALL EN_Mod_ExpA(ENUM* r, const ENUM* a, const ENUM* e, const ENUM* m);

#ifdef __cplusplus
}
#endif

#endif
