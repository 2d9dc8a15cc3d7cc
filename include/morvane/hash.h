/* Message digests and the keyed digest HMAC-SHA1.
 *
 * Life of a record. The caller owns every context record, on the stack or inside a record of its own; the library never
 * allocates one and keeps no pointer to it. Init makes it ready, Update absorbs bytes as often as needed, Final pads and
 * writes the digest. After Final the record holds the last padded block and the final chaining value; Init makes it
 * usable again. A record may be copied with memcpy at any time, which forks the computation. A record holds no pointer
 * and needs the alignment of its words only.
 *
 * Nothing is checked. No function here returns anything, and a null pointer is the caller's fault; only where a comment
 * names a limit is it enforced. A length of 0 is always good and changes nothing; the data pointer is not read then.
 * Nothing is wiped: the caller clears a record that held a secret.
 *
 * Buffers. A digest buffer has exactly the stated number of bytes; it may overlap the data, because it is written last.
 *
 * Threads. There is no global state: distinct records may be used on distinct threads at once.
 *
 * Strength. SHA-1 and SHA-0 are broken as collision-resistant digests. They are here for data that already carries them. */
#ifndef MORVANE_HASH_H
#define MORVANE_HASH_H

#include <morvane/types.h>

#ifdef __cplusplus
extern "C" {
#endif

#define E_SHA1_DIGEST_BYTES 20
#define E_SHA1_BLOCK_BYTES  64

/* ---- SHA-1 (FIPS 180-1) and SHA-0 (FIPS 180) ---- */

/* The context of SHA-1 and of SHA-0, 92 bytes. The number of bytes waiting in block is (count_lo >> 3) & 63. */
typedef struct E_SHA1_CTX {
    uint32_t count_lo;  /* low word of the number of message bits absorbed */
    uint32_t count_hi;  /* high word of it */
    uint32_t block[16]; /* partial block: bytes in arrival order; after Final the last padded block as host-order words,
                           words 14 and 15 being count_hi and count_lo */
    uint32_t state[5];  /* chaining value H0..H4, host-order words */
} E_SHA1_CTX;

/* Makes ctx ready for SHA-1 or SHA-0: count 0, state the initial value of FIPS 180-1. block is left as it stands. */
MORVANE_API void MORVANE_CALL E_SHA1_Init(E_SHA1_CTX* ctx);

/* The same entry point as E_SHA1_Init under a second name. */
MORVANE_API void MORVANE_CALL E_SHA_Init(E_SHA1_CTX* ctx);

/* Absorbs len bytes of data. The message may be up to 2^64 - 1 bits long, after which the count starts over. */
MORVANE_API void MORVANE_CALL E_SHA1_Update(E_SHA1_CTX* ctx, const uint8_t* data, uint32_t len);

/* Finishes and writes the 20-byte digest, H0 first, each word big-endian. */
MORVANE_API void MORVANE_CALL E_SHA1_Final(E_SHA1_CTX* ctx, uint8_t* digest);

/* SHA-1 of len bytes at once: digest takes 20 bytes. */
MORVANE_API void MORVANE_CALL E_SHA1(uint8_t* digest, const uint8_t* data, uint32_t len);

/* Absorbs len bytes into a SHA-0 computation that E_SHA_Init began.
 *
 * The digest is the one of FIPS 180 when every call finds the block empty: in one call, or when all calls but the last
 * carry multiples of 64 bytes. Other splittings give other digests, deterministic and kept so, because stored digests
 * depend on them: the block is turned into host-order words while it fills, and a call that brings n bytes to a block
 * already holding some converts the first n >> 2 words of the block, wherever the new bytes landed. Pieces of fewer than
 * four bytes therefore convert nothing. */
MORVANE_API void MORVANE_CALL E_SHA_Update(E_SHA1_CTX* ctx, const uint8_t* data, uint32_t len);

/* Finishes a SHA-0 computation: 20 bytes, H0 first, each word big-endian. */
MORVANE_API void MORVANE_CALL E_SHA_Final(E_SHA1_CTX* ctx, uint8_t* digest);

/* SHA-0 of len bytes at once, always the digest of FIPS 180: digest takes 20 bytes. */
MORVANE_API void MORVANE_CALL E_SHA(uint8_t* digest, const uint8_t* data, uint32_t len);

/* One SHA-1 compression of the 64 bytes at block from the initial value, without padding or length: the function G of the
 * random generators of FIPS 186, ANSI X9.31 and X9.62. Writes the five words big-endian, 20 bytes. A shorter seed is
 * extended with zero bytes by the caller. */
MORVANE_API void MORVANE_CALL E_MySHA1(uint8_t* digest, const uint8_t* block);

/* ---- HMAC-SHA1, this library's own form ----
 *
 * After RFC 2104 with two departures, which every peer that exchanges MACs with this library shares; the vectors of
 * RFC 2202 are therefore not met:
 *   1. Only the first 16 of the inner digest's 20 bytes enter the outer hash.
 *   2. A key longer than 64 bytes is replaced by the first 16 bytes of its SHA-1 digest for the outer pad, while the
 *      inner pad is made from the first 64 bytes of the key as passed in.
 * So for keys of at most 64 bytes the MAC is SHA1((K ^ opad) || first16(SHA1((K ^ ipad) || message))), K zero-extended. */

/* The context, 252 bytes. */
typedef struct E_HMAC_SHA1_CTX {
    uint8_t key[64];  /* the key, or the 20-byte digest of a key longer than 64 bytes */
    uint32_t key_len; /* valid bytes in key: the given length, or 16 for a digested key; Final reads at most 64 */
    E_SHA1_CTX inner;
    E_SHA1_CTX outer; /* used inside E_HMAC_SHA1_Final only */
} E_HMAC_SHA1_CTX;

/* Begins a MAC under key_len bytes of key. key_len is compared with 64 as a signed number; a negative one (2^31 bytes and
 * more) counts as an empty key, and key is not read. */
MORVANE_API void MORVANE_CALL E_HMAC_SHA1_Init(E_HMAC_SHA1_CTX* ctx, const uint8_t* key, int32_t key_len);

/* Absorbs len bytes of the message. */
MORVANE_API void MORVANE_CALL E_HMAC_SHA1_Update(E_HMAC_SHA1_CTX* ctx, const uint8_t* data, uint32_t len);

/* Finishes and writes the MAC. mac needs room for 20 bytes; it holds the inner digest for a moment in between. */
MORVANE_API void MORVANE_CALL E_HMAC_SHA1_Final(E_HMAC_SHA1_CTX* ctx, uint8_t* mac);

/* The MAC of data_len bytes at once. Mind the order: data before key. mac takes 20 bytes and may overlap data
 * and key. */
MORVANE_API void MORVANE_CALL E_HMAC_SHA1(const uint8_t* data, uint32_t data_len, const uint8_t* key, int32_t key_len,
                                          uint8_t* mac);

#ifdef __cplusplus
}
#endif

#endif
