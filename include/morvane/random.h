/* Random octets, integers and scalars.
 *
 * Sources. There are several, each with a state of its own, and every caller picks one by name:
 *
 *   general pool     RAND_Bytes, EN_Random          seeded by the system's generator
 *   key pool         E_GenerateRandom_RSA           the same, and what E_GenerateSeed_RSA adds
 *
 * Seeding. A source seeds itself when it is first drawn from. The pools take 88 octets from the operating system's
 * generator and the time in seconds; should the system have none to give, the time alone.
 *
 * Threads. Nothing is locked, and the states belong to the process: callers that draw on several threads take turns. That
 * holds also for calls that draw from a source on their way.
 *
 * Nothing is checked and nothing fails: a null pointer is the caller's fault. */
#ifndef MORVANE_RANDOM_H
#define MORVANE_RANDOM_H

#include <morvane/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/* ---- The pools ---- */

/* Fills count octets from the general pool. What they held before is mixed in, so they must be initialised. A negative
 * count is 0, which still changes the pool. */
MORVANE_API void MORVANE_CALL RAND_Bytes(uint8_t* octets, int32_t count);

/* As RAND_Bytes, from the key pool. */
MORVANE_API void MORVANE_CALL E_GenerateRandom_RSA(uint8_t* octets, int32_t count);

/* Stirs count octets into the key pool. Nothing is taken away by it: it may be done at any time, with anything. A count
 * below 1 does nothing. */
MORVANE_API void MORVANE_CALL E_GenerateSeed_RSA(const uint8_t* octets, int32_t count);

/* x = a random integer of exactly `bits` bits from the general pool: the highest bit is set, with a top other than 0 the
 * two highest are, with a bottom other than 0 it is odd. Of one bit it is 1. Sign 0, normalised; for bits of 0 and less
 * zero of length 0. Before, the time is stirred into the general pool. Room: the words of so many bits. */
MORVANE_API void MORVANE_CALL EN_Random(ENUM* x, int32_t bits, int32_t top, int32_t bottom);

#ifdef __cplusplus
}
#endif

#endif
