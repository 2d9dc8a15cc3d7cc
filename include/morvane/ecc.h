/* Elliptic curves: parameters, octet conversions, points and their multiples. The schemes are in morvane/ecc_schemes.h.
 *
 * Curves. An integer names the curve, the first argument of nearly every call:
 *      3   sect163k1 over GF(2^163), x^163 + x^7 + x^6 + x^3 + 1
 *      5   c2pnb163v1 over GF(2^163), x^163 + x^8 + x^2 + x + 1
 *      7   secp160r1 over GF(p), p = 2^160 - 2^31 - 1
 *     11, 21, 22   curves over GF(2^163) whose parameters somebody else fills into the record
 * The first three are built in: what is computed on them uses constants of the library, whatever the parameter record
 * says, and the record may be null unless a call says otherwise. For the other three the record is used.
 *
 * Elements of the field are six words, least significant word first. Over GF(2^163), bit i is the coefficient of x^i. What
 * comes out is below 2^163 or below p; what goes in may be any value of six words and counts modulo the polynomial or p.
 * Scalars are such words too, at most six.
 *
 * Time. On built-in curves TORVA_V1_ScalarMultiplicationOnEllipticCurves and TORVA_V1_psmul take a time that does not
 * depend on the scalar. All other calls are for public values.
 *
 * Records and arrays belong to the caller; none holds a pointer to another but the parameter record to itself. Results may
 * be operands. Unless a call says otherwise, a null pointer is the caller's fault.
 *
 * Threads. Nothing is shared but standard output: distinct records may be used on distinct threads at once. */
#ifndef MORVANE_ECC_H
#define MORVANE_ECC_H

#include <morvane/types.h>

#ifdef __cplusplus
extern "C" {
#endif

#define E_EC_WORDS        6  /* of a field element */
#define E_EC_POINT_OCTETS 43 /* of the longest encoded point */

/* A string of octets. */
typedef struct TORVA_V1_OPAQUE8 {
    int32_t count;
    uint8_t* octets; /* owned by the caller; of a result, with the room that its call states: the count is only written */
} TORVA_V1_OPAQUE8;

/* A point in affine coordinates: 48 bytes. (0, 0) is the point at infinity. */
typedef struct TORVA_V1_POINT {
    uint32_t x[E_EC_WORDS];
    uint32_t y[E_EC_WORDS];
} TORVA_V1_POINT;

/* A point in projective coordinates: (x / z^2, y / z^3) on curve 7, (x / z, y / z^2) on the others. With z = 0 it is the
 * point at infinity. */
typedef struct TORVA_V1_PROJECTIVE {
    uint32_t x[E_EC_WORDS];
    uint32_t y[E_EC_WORDS];
    uint32_t z[E_EC_WORDS];
} TORVA_V1_PROJECTIVE;

/* The parameters of a curve, y^2 = x^3 + a x + b on curve 7, y^2 + x y = x^3 + a x^2 + b on the others. The integers have
 * their words inside the record: copied as bytes it needs another E_ECParams_Init. 232 bytes in the 32-bit builds. */
typedef struct E_EC_PARAMS {
    ENUM field;       /* the prime, or the reduction polynomial with the coefficient of x^i in bit i */
    ENUM a, b;        /* coefficients */
    ENUM x, y;        /* base point */
    ENUM n;           /* its order, a prime */
    int32_t overhead; /* octets that encryption adds: encoded point + 20 */
    uint32_t field_words[E_EC_WORDS];
    uint32_t a_words[E_EC_WORDS];
    uint32_t b_words[E_EC_WORDS];
    uint32_t x_words[E_EC_WORDS];
    uint32_t y_words[E_EC_WORDS];
    uint32_t n_words[E_EC_WORDS];
} E_EC_PARAMS;

/* Attaches the storage and fills the record for a built-in curve. Returns 0; -1 for any other identifier, and the record is
 * left alone. */
MORVANE_API int32_t MORVANE_CALL E_ECParams_Init(int32_t curve, E_EC_PARAMS* params);

/* ---- Octets ---- */

/* Words from octets, most significant octet first; the last word takes the 1 to 4 octets that are left.
 * With fixed 0, words has room for (count + 3) / 4 words, and their number is returned. With any other, all six words are
 * written, zeros above the value, and 6 is returned; -2, and nothing is written, if there are more than 24 octets.
 * -1, and nothing is written, for an empty string or a negative count. */
MORVANE_API int32_t MORVANE_CALL TORVA_V1_opaque8ToLongs(int32_t fixed, const TORVA_V1_OPAQUE8* octets, uint32_t* words);

/* Octets from `count` words, most significant octet first: 4 count of them. If these are more than 20 and the top word is
 * below 2^24, its leading zero octets are dropped, but never all four: six words give 21 to 24 octets, a 163-bit element
 * 21. Returns the count of octets, which is written to the record too; room: 4 count. -1 for a count below 1, and nothing
 * is written. */
MORVANE_API int32_t MORVANE_CALL TORVA_V1_LongsToopaque8(int32_t count, const uint32_t* words, TORVA_V1_OPAQUE8* octets);

/* Encodes a point: 0x04, x and y with L octets each, most significant first; L is 20 on curve 7, 21 on the others. Octets
 * of the words above these are dropped. Room: 2 L + 1, the count that is written.
 *   form  1 uncompressed
 * Returns 1; -1 for form 2 (compressed), -2 for form 3 (hybrid), -3 for any other, and nothing is written. Of a curve that
 * is none of the six it returns 1 and writes nothing: check the identifier before. */
MORVANE_API int32_t MORVANE_CALL TORVA_V1_ECPointsToopaque8(int32_t curve, int32_t form, const TORVA_V1_POINT* point,
                                                            TORVA_V1_OPAQUE8* octets);

/* Decodes a point of 2 L + 1 octets. The count is not looked at: whoever has octets from outside checks it before, and
 * the point after. Returns 1; by the first octet -1 for 0x02, -2 for 0x06, -3 for any other but 0x04, and nothing is
 * written. Of a curve that is none of the six it returns 1 and writes nothing. */
MORVANE_API int32_t MORVANE_CALL TORVA_V1_opaque8ToECPoints(int32_t curve, const TORVA_V1_OPAQUE8* octets,
                                                            TORVA_V1_POINT* point);

/* Whether encoded octets are a point that may be multiplied with a secret. The first octet is not looked at. In this order:
 *   -1  the curve is none of the six, the string is empty, or all octets after the first (the last 2 L of 2 L + 1 at most)
 *       are 0
 *   -2  there are not 2 L + 1 octets; or a coordinate is above 2^163 - 1, on curve 7 above p (p itself passes)
 *   -3  the point is not on the curve; not tested on curves 11, 21 and 22
 *   -4  n times the point is not the point at infinity; on curves 11, 21 and 22 also where the record is no record of such
 *       a curve
 *    1  it is */
MORVANE_API int32_t MORVANE_CALL TORVA_V1_IsValidPoint(int32_t curve, const E_EC_PARAMS* params,
                                                       const TORVA_V1_OPAQUE8* octets);

/* ---- Points ----
 *
 * Calls that take a curve and its parameters return 0, or -1, and nothing is written, for a curve that is none of the six
 * and, on curves 11, 21 and 22, where the record does not have a polynomial of degree 163 with constant term 1,
 * coefficients below 2^163 and b other than 0. Points are not checked: what is not on the curve gives another such point,
 * but no harm beyond. */

/* r = k p. The point at infinity is (0, 0), here and there.
 *   k      k_words words, from 0 to 6, otherwise -1 */
MORVANE_API int32_t MORVANE_CALL TORVA_V1_ScalarMultiplicationOnEllipticCurves(int32_t curve, const E_EC_PARAMS* params,
                                                                               const uint32_t* k, int32_t k_words,
                                                                               const TORVA_V1_POINT* p, TORVA_V1_POINT* r);

/* The same in projective coordinates; z of the result is 1 or 0. */
MORVANE_API int32_t MORVANE_CALL TORVA_V1_psmul(int32_t curve, const E_EC_PARAMS* params, const uint32_t* k,
                                                int32_t k_words, const TORVA_V1_PROJECTIVE* p, TORVA_V1_PROJECTIVE* r);

/* r = 2 p, r = p + q for any p and q. */
MORVANE_API int32_t MORVANE_CALL TORVA_V1_pdouble(int32_t curve, const E_EC_PARAMS* params, const TORVA_V1_PROJECTIVE* p,
                                                  TORVA_V1_PROJECTIVE* r);
MORVANE_API int32_t MORVANE_CALL TORVA_V1_padd(int32_t curve, const E_EC_PARAMS* params, const TORVA_V1_PROJECTIVE* p,
                                               const TORVA_V1_PROJECTIVE* q, TORVA_V1_PROJECTIVE* r);

/* Into projective coordinates, with z = 1 or 0, and back. */
MORVANE_API int32_t MORVANE_CALL TORVA_V1_toProjective(int32_t curve, const E_EC_PARAMS* params, const TORVA_V1_POINT* p,
                                                       TORVA_V1_PROJECTIVE* r);
MORVANE_API int32_t MORVANE_CALL TORVA_V1_toAffine(int32_t curve, const E_EC_PARAMS* params, const TORVA_V1_PROJECTIVE* p,
                                                   TORVA_V1_POINT* r);

/* A comb over one point p, for many public scalars: entry i of the table is the sum of 2^(48 j) p over the bits j of i. */
#define TORVA_V1_COMB_POINTS 16

/* Makes the table, TORVA_V1_COMB_POINTS points; p is none of them. */
MORVANE_API int32_t MORVANE_CALL TORVA_V1_combPrecompute(int32_t curve, const E_EC_PARAMS* params, const TORVA_V1_POINT* p,
                                                         TORVA_V1_POINT* table);

/* r = k p with the table of p, for k as above, in 48 doublings and as many additions. The time tells k. */
MORVANE_API int32_t MORVANE_CALL TORVA_V1_combMultiply(int32_t curve, const E_EC_PARAMS* params, const uint32_t* k,
                                                       int32_t k_words, const TORVA_V1_POINT* table, TORVA_V1_POINT* r);

/* ---- Diagnostics, on standard output ---- */

/* A number of five words, the top one first, each in hexadecimal without leading zeros ("%X%X%X%X%X\n"): not a number that
 * can be read back, but the form in which it was always printed. */
MORVANE_API void MORVANE_CALL PrintBigNumber(const uint32_t* words);

/* The coordinates of a point of curve 7 after "x : ", "y : " and "z : ", a line of PrintBigNumber each. */
MORVANE_API void MORVANE_CALL PrintECPointProjective(const TORVA_V1_PROJECTIVE* point);

/* Multiplies the base point of curve 7 by its order less 1 with TORVA_V1_psmul and prints "result:\n" and the affine
 * coordinates of the product, a line of PrintBigNumber each: x of the base point, and p less its y. Returns 0. */
MORVANE_API int32_t MORVANE_CALL ECC_BaseOrderExpTest(void);

#ifdef __cplusplus
}
#endif

#endif
