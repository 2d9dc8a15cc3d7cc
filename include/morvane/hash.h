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
 * Strength. MD2, MD4, MD5, SHA-0 and SHA-1 are broken as collision-resistant digests. They are here for data that already
 * carries them. */
#ifndef MORVANE_HASH_H
#define MORVANE_HASH_H

#include <morvane/types.h>

#ifdef __cplusplus
extern "C" {
#endif

#define E_MD2_DIGEST_BYTES       16
#define E_MD4_DIGEST_BYTES       16
#define E_HAS160_DIGEST_BYTES    20
#define E_RIPEMD160_DIGEST_BYTES 20
#define E_SHA256_DIGEST_BYTES    32
#define E_SHA384_DIGEST_BYTES    48
#define E_SHA512_DIGEST_BYTES    64
#define E_SHA1_DIGEST_BYTES      20
#define E_SHA1_BLOCK_BYTES       64

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
 * Departs from FIPS 180: the digest is the standard's when every call finds the block empty, in one call, or when all calls
 * but the last carry multiples of 64 bytes. Other splittings give other digests, deterministic and kept so, because stored
 * digests depend on them.
 *
 * The block is turned into host-order words while it fills, and a call that brings n bytes to a block
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

/* ---- SHA-256 (FIPS 180-2) ---- */

/* The context, 104 bytes. The number of bytes waiting in block is (count_lo >> 3) & 63. */
typedef struct E_SHA256_CTX {
    uint32_t state[8]; /* chaining value H0..H7, host-order words */
    uint32_t count_lo; /* low word of the number of message bits absorbed */
    uint32_t count_hi; /* high word of it; there is no carry into it, see E_SHA256_Update */
    uint8_t block[64]; /* partial block, bytes in arrival order */
} E_SHA256_CTX;

/* Makes ctx ready: the initial value of FIPS 180-2, count 0. */
MORVANE_API void MORVANE_CALL E_SHA256_Init(E_SHA256_CTX* ctx);

/* Absorbs len bytes of data.
 *
 * Departs from FIPS 180-2: of 512 MiB and more in several calls the digest is another one, and kept so. The bit count is
 * kept in two words without a carry from the low into the high one; only the len >> 29 of each call enters the high word.
 * When the count passes 2^32 from one call to the next, the length in the padding is short by 2^32 bits. */
MORVANE_API void MORVANE_CALL E_SHA256_Update(E_SHA256_CTX* ctx, const uint8_t* data, uint32_t len);

/* Finishes and writes the 32-byte digest, H0 first, each word big-endian. */
MORVANE_API void MORVANE_CALL E_SHA256_Final(E_SHA256_CTX* ctx, uint8_t* digest);

/* SHA-256 of len bytes at once: digest takes 32 bytes, *digest_len becomes 32. */
MORVANE_API void MORVANE_CALL E_SHA256(uint8_t* digest, uint32_t* digest_len, const uint8_t* data, uint32_t len);

/* ---- SHA-384 and SHA-512 (FIPS 180-2) ---- */

/* The context of both, 208 bytes. The number of bytes waiting in block is (count[0] >> 3) & 127. */
typedef struct E_SHA512_CTX {
    uint32_t state[16]; /* chaining value H0..H7, each 64-bit value as two host-order words, the low one first */
    uint32_t count[4];  /* the number of message bits absorbed, least significant word first */
    uint8_t block[128]; /* partial block, bytes in arrival order */
} E_SHA512_CTX;

/* Makes ctx ready for SHA-384: its initial value of FIPS 180-2, count 0. */
MORVANE_API void MORVANE_CALL E_SHA384_Init(E_SHA512_CTX* ctx);

/* Absorbs len bytes of data into a SHA-384 computation. */
MORVANE_API void MORVANE_CALL E_SHA384_Update(E_SHA512_CTX* ctx, const uint8_t* data, uint32_t len);

/* Finishes and writes the 48-byte digest, H0..H5, each big-endian. */
MORVANE_API void MORVANE_CALL E_SHA384_Final(E_SHA512_CTX* ctx, uint8_t* digest);

/* SHA-384 of len bytes at once: digest takes 48 bytes, *digest_len becomes 48. */
MORVANE_API void MORVANE_CALL E_SHA384(uint8_t* digest, uint32_t* digest_len, const uint8_t* data, uint32_t len);

/* Makes ctx ready for SHA-512: its initial value of FIPS 180-2, count 0. */
MORVANE_API void MORVANE_CALL E_SHA512_Init(E_SHA512_CTX* ctx);

/* Absorbs len bytes of data into a SHA-512 computation. */
MORVANE_API void MORVANE_CALL E_SHA512_Update(E_SHA512_CTX* ctx, const uint8_t* data, uint32_t len);

/* Finishes and writes the 64-byte digest, H0..H7, each big-endian. */
MORVANE_API void MORVANE_CALL E_SHA512_Final(E_SHA512_CTX* ctx, uint8_t* digest);

/* SHA-512 of len bytes at once: digest takes 64 bytes, *digest_len becomes 64. */
MORVANE_API void MORVANE_CALL E_SHA512(uint8_t* digest, uint32_t* digest_len, const uint8_t* data, uint32_t len);

/* ---- MD2 (RFC 1319) ---- */

/* The context, 52 bytes. */
typedef struct E_MD2_CTX {
    uint8_t state[16];
    uint8_t checksum[16];
    uint8_t block[16]; /* partial block */
    uint32_t count;    /* bytes waiting in block, 0..15 */
} E_MD2_CTX;

/* Makes ctx ready: state, checksum and count become 0. */
MORVANE_API void MORVANE_CALL E_MD2_Init(E_MD2_CTX* ctx);

/* Absorbs len bytes of data. */
MORVANE_API void MORVANE_CALL E_MD2_Update(E_MD2_CTX* ctx, const uint8_t* data, uint32_t len);

/* Finishes and writes the 16-byte digest. */
MORVANE_API void MORVANE_CALL E_MD2_Final(E_MD2_CTX* ctx, uint8_t* digest);

/* MD2 of len bytes at once: digest takes 16 bytes. */
MORVANE_API void MORVANE_CALL E_MD2(uint8_t* digest, const uint8_t* data, uint32_t len);

/* ---- MD4 (RFC 1320) ---- */

/* The context of MD4, and of the MD5 that the service-provider layer offers: 88 bytes. The number of bytes waiting in block
 * is (count_lo >> 3) & 63. */
typedef struct E_MD5_CTX {
    uint32_t count_lo; /* low word of the number of message bits absorbed; after Final the padding is counted too */
    uint32_t count_hi; /* high word of it */
    uint32_t state[4]; /* chaining value A..D, host-order words */
    uint8_t block[64]; /* partial block, bytes in arrival order */
} E_MD5_CTX;

/* Makes ctx ready: count 0, the initial value of RFC 1320. */
MORVANE_API void MORVANE_CALL E_MD4_Init(E_MD5_CTX* ctx);

/* Absorbs len bytes of data. */
MORVANE_API void MORVANE_CALL E_MD4_Update(E_MD5_CTX* ctx, const uint8_t* data, uint32_t len);

/* Finishes and writes the 16-byte digest, A first, each word little-endian. */
MORVANE_API void MORVANE_CALL E_MD4_Final(E_MD5_CTX* ctx, uint8_t* digest);

/* MD4 of len bytes at once: digest takes 16 bytes. */
MORVANE_API void MORVANE_CALL E_MD4(uint8_t* digest, const uint8_t* data, uint32_t len);

/* ---- HAS-160 (TTAS.KO-12.0011) ---- */

/* The context, 92 bytes. The number of bytes waiting in block is (count_lo >> 3) & 63. */
typedef struct E_HAS160_CTX {
    uint32_t count_lo; /* low word of the number of message bits absorbed */
    uint32_t count_hi; /* high word of it */
    uint32_t state[5]; /* chaining value, host-order words */
    uint8_t block[64]; /* partial block, bytes in arrival order; after Final it ends with count_lo and count_hi */
} E_HAS160_CTX;

/* Makes ctx ready: count 0, the standard's initial value. */
MORVANE_API void MORVANE_CALL E_HAS160_Init(E_HAS160_CTX* ctx);

/* Absorbs len bytes of data. The length is signed; a negative one changes nothing. */
MORVANE_API void MORVANE_CALL E_HAS160_Update(E_HAS160_CTX* ctx, const uint8_t* data, int32_t len);

/* Finishes and writes the 20-byte digest, each word little-endian. */
MORVANE_API void MORVANE_CALL E_HAS160_Final(E_HAS160_CTX* ctx, uint8_t* digest);

/* HAS-160 of len bytes at once: digest takes 20 bytes. A negative length counts as 0. */
MORVANE_API void MORVANE_CALL E_HAS160(uint8_t* digest, const uint8_t* data, int32_t len);

/* ---- RIPEMD-160 (ISO/IEC 10118-3) ---- */

/* The context, 96 bytes. */
typedef struct E_RIPEMD160_CTX {
    uint32_t count_lo;  /* low word of the number of message bits absorbed */
    uint32_t count_hi;  /* high word of it */
    uint32_t state[5];  /* chaining value, host-order words */
    uint32_t block[16]; /* partial block, little-endian words */
    uint32_t num;       /* bytes waiting in block, 0..63 */
} E_RIPEMD160_CTX;

/* Makes ctx ready: count and num 0, the standard's initial value. */
MORVANE_API void MORVANE_CALL E_RIPEMD160_Init(E_RIPEMD160_CTX* ctx);

/* Absorbs len bytes of data. */
MORVANE_API void MORVANE_CALL E_RIPEMD160_Update(E_RIPEMD160_CTX* ctx, const uint8_t* data, uint32_t len);

/* Finishes and writes the 20-byte digest, each word little-endian. */
MORVANE_API void MORVANE_CALL E_RIPEMD160_Final(E_RIPEMD160_CTX* ctx, uint8_t* digest);

/* RIPEMD-160 of len bytes at once: digest takes 20 bytes. */
MORVANE_API void MORVANE_CALL E_RIPEMD160(uint8_t* digest, const uint8_t* data, uint32_t len);

/* ---- HMAC-SHA1, this library's own form ----
 *
 * Departs from RFC 2104: only the first 16 of the inner digest's 20 bytes enter the outer hash; and a key longer than 64
 * bytes is replaced by the first 16 bytes of its SHA-1 digest for the outer pad, while the inner pad is made from the first
 * 64 bytes of the key as passed in. Every peer that exchanges MACs with this library shares both; the vectors of RFC 2202
 * are not met.
 *
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
