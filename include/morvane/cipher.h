/* Block ciphers in their modes, and the stream cipher RC4.
 *
 * Life of a schedule. The caller owns every key schedule; the library keeps no pointer to it and allocates none. A
 * KeySchedule function fills it once, everything else but RC4 only reads it, so one schedule serves many threads. It may be
 * copied with memcpy and needs 4-byte alignment. Nothing is wiped: the caller clears it when the key is done with.
 *
 * Nothing is checked, unless a comment names a limit. Only the three schedules of the DES family return anything; a null
 * pointer is the caller's fault. A len of 0 is good and touches no buffer.
 *
 * Buffers. out may equal in; other overlaps are not supported. No buffer needs any alignment. B is the length of the block:
 * 16 bytes for SEED, 8 for all others.
 *
 * Single blocks. E_<Cipher>_Encrypt and _Decrypt work in place on a block held as 32-bit words, two of them, four for SEED.
 * The words of Blowfish and IDEA are the block's bytes read big-endian, those of all others read little-endian.
 *
 * ECB. Each whole block is enciphered by itself (FIPS 81).
 *
 * Departs from FIPS 81: in ECB and CBC a last partial block of r bytes is zero-extended, enciphered and written whole, so
 * out takes len rounded up to a multiple of B. Deciphering with the same len reads that many bytes again and writes len: of
 * the last block, r bytes.
 *
 * There is no other padding here: whoever needs one that carries the length adds and checks it.
 *
 * CBC. Each block is XORed with the ciphertext block before it, the first with iv, B bytes. iv is only read: a caller that
 * streams passes the last ciphertext block as the next iv. (FIPS 81)
 *
 * Departs from FIPS 81: CBC with Blowfish and IDEA takes iv with the bytes of each half reversed, in the order 3 2 1 0 7 6
 * 5 4; data that was enciphered so must stay readable. Whoever exchanges data with other libraries reorders the iv.
 *
 * CBC with _NO_PAD (DES, two-key triple DES, SEED). Whole blocks as in CBC. The r bytes of a partial block are XORed with
 * the encryption, in both directions, of the ciphertext block before them (iv when there is none), so that r bytes of
 * ciphertext stand for them. Enciphering writes the whole block all the same: out takes len rounded up to a multiple of B,
 * and the bytes beyond len mean nothing. Deciphering needs in to be readable to the end of the block as well, and writes
 * len bytes.
 *
 * CFB and OFB with a feedback of numbits bits, from 1 to 8 * B; any other value, also a negative one, does nothing at all.
 * A step takes n = (numbits + 7) / 8 bytes of in and gives as many of out; a remainder shorter than n is neither read nor
 * written and does not count as a step. iv is the shift register, B bytes, and holds its new content after the call: the
 * next call continues the stream. Each step enciphers the register to T, then shifts it by numbits:
 *
 *   CFB  out = in ^ T; the ciphertext is shifted in       OFB  out = in ^ T; T is shifted in
 *
 * With a numbits that is a multiple of 8, the first n bytes leave the register and n bytes are appended (FIPS 81).
 *
 * Departs from FIPS 81: CFB and OFB with a feedback of other widths are kept as they have always been. Bytes are read as
 * one little-endian number, of which a step uses the low numbits bits and the register loses the low ones, the new ones
 * entering at the top. The surplus bits of a step's last byte are lost: out has them zero. For Blowfish and IDEA the same
 * is done in big-endian order: a step uses the first numbits bits, the register moves towards its first bit, the surplus is
 * the low bits of the last byte.
 *
 * OFB has one entry point for both directions.
 *
 * Speed. The functions work on many blocks at a time where the mode allows it: ECB, deciphering CBC and deciphering CFB.
 *
 * Strength. DES has 56 key bits and RC2 and RC5 possibly fewer; RC4's output is biased; blocks of 8 bytes leak after some
 * gigabytes under one key. No mode here notices a changed message. All but IDEA and RC5 look up tables at addresses that
 * depend on key and data, at least in short messages and in the modes that chain. They are here for data that exists. */
#ifndef MORVANE_CIPHER_H
#define MORVANE_CIPHER_H

#include <morvane/types.h>

#ifdef __cplusplus
extern "C" {
#endif

#define E_DES_BLOCK_BYTES  8
#define E_SEED_BLOCK_BYTES 16
#define E_IDEA_BLOCK_BYTES 8
#define E_BF_BLOCK_BYTES   8
#define E_RC2_BLOCK_BYTES  8
#define E_RC5_BLOCK_BYTES  8

#define E_BF_MAX_KEY_BYTES  72   /* further bytes of a key are not used */
#define E_RC2_MAX_KEY_BYTES 128  /* further bytes of a key are not used */
#define E_RC2_MAX_BITS      1024 /* of effective key */
#define E_RC5_MAX_ROUNDS    16

/* ---- DES (FIPS 46-3) ---- */

/* A key schedule, 128 bytes: two words for each of the 16 rounds, in the order of encryption. */
typedef struct E_DES_KEY_SCHEDULE {
    uint32_t round_keys[32]; /* each byte six bits of a round key, for one S-box: first word S2 S4 S6 S8, second S1 S3 S5
                                S7, from the high byte down */
} E_DES_KEY_SCHEDULE;

/* Fills ks from the 8 bytes at key. The parity bits, the lowest of each byte, are ignored. No key is refused, weak ones
 * included. Returns 1, always. */
MORVANE_API uint32_t MORVANE_CALL E_DES_KeySchedule(E_DES_KEY_SCHEDULE* ks, const uint8_t* key);

/* Enciphers or deciphers one block of 2 words in place. */
MORVANE_API void MORVANE_CALL E_DES_Encrypt(uint32_t* block, const E_DES_KEY_SCHEDULE* ks);
MORVANE_API void MORVANE_CALL E_DES_Decrypt(uint32_t* block, const E_DES_KEY_SCHEDULE* ks);

/* ECB. Enciphering writes, and deciphering reads, len rounded up to a multiple of 8 bytes. */
MORVANE_API void MORVANE_CALL E_DES_ECB_Encrypt(const uint8_t* in, uint8_t* out, const E_DES_KEY_SCHEDULE* ks,
                                                uint32_t len);
MORVANE_API void MORVANE_CALL E_DES_ECB_Decrypt(const uint8_t* in, uint8_t* out, const E_DES_KEY_SCHEDULE* ks,
                                                uint32_t len);

/* CBC. Enciphering writes, and deciphering reads, len rounded up to a multiple of 8 bytes; iv has 8 and is only read. */
MORVANE_API void MORVANE_CALL E_DES_CBC_Encrypt(const uint8_t* in, uint8_t* out, const E_DES_KEY_SCHEDULE* ks, uint32_t len,
                                                const uint8_t* iv);
MORVANE_API void MORVANE_CALL E_DES_CBC_Decrypt(const uint8_t* in, uint8_t* out, const E_DES_KEY_SCHEDULE* ks, uint32_t len,
                                                const uint8_t* iv);

/* CBC with the residual block by XOR. Enciphering writes, and deciphering reads, len rounded up to a multiple of 8 bytes.
 */
MORVANE_API void MORVANE_CALL E_DES_CBC_Encrypt_NO_PAD(const uint8_t* in, uint8_t* out, const E_DES_KEY_SCHEDULE* ks,
                                                       uint32_t len, const uint8_t* iv);
MORVANE_API void MORVANE_CALL E_DES_CBC_Decrypt_NO_PAD(const uint8_t* in, uint8_t* out, const E_DES_KEY_SCHEDULE* ks,
                                                       uint32_t len, const uint8_t* iv);

/* CFB and OFB, numbits from 1 to 64. in and out have len bytes; iv has 8 and holds the register afterwards. The two OFB
 * names are one entry point. */
MORVANE_API void MORVANE_CALL E_DES_CFB_Encrypt(const uint8_t* in, uint8_t* out, const E_DES_KEY_SCHEDULE* ks,
                                                int32_t numbits, uint32_t len, uint8_t* iv);
MORVANE_API void MORVANE_CALL E_DES_CFB_Decrypt(const uint8_t* in, uint8_t* out, const E_DES_KEY_SCHEDULE* ks,
                                                int32_t numbits, uint32_t len, uint8_t* iv);
MORVANE_API void MORVANE_CALL E_DES_OFB_Encrypt(const uint8_t* in, uint8_t* out, const E_DES_KEY_SCHEDULE* ks,
                                                int32_t numbits, uint32_t len, uint8_t* iv);
MORVANE_API void MORVANE_CALL E_DES_OFB_Decrypt(const uint8_t* in, uint8_t* out, const E_DES_KEY_SCHEDULE* ks,
                                                int32_t numbits, uint32_t len, uint8_t* iv);

/* ---- Triple DES with two keys (ANSI X9.52, keying option 2) ---- */

/* A key schedule, 256 bytes: those of K1 and K2. */
typedef struct E_DES3_KEY_SCHEDULE {
    E_DES_KEY_SCHEDULE keys[2];
} E_DES3_KEY_SCHEDULE;

/* Fills ks from the 16 bytes at key, K1 then K2, each as E_DES_KeySchedule does. Returns 1, always. Encryption enciphers
 * with K1, deciphers with K2 and enciphers with K1. */
MORVANE_API uint32_t MORVANE_CALL E_DES3_KeySchedule(E_DES3_KEY_SCHEDULE* ks, const uint8_t* key);

/* Enciphers or deciphers one block of 2 words in place. */
MORVANE_API void MORVANE_CALL E_DES3_Encrypt(uint32_t* block, const E_DES3_KEY_SCHEDULE* ks);
MORVANE_API void MORVANE_CALL E_DES3_Decrypt(uint32_t* block, const E_DES3_KEY_SCHEDULE* ks);

/* ECB. Enciphering writes, and deciphering reads, len rounded up to a multiple of 8 bytes. */
MORVANE_API void MORVANE_CALL E_DES3_ECB_Encrypt(const uint8_t* in, uint8_t* out, const E_DES3_KEY_SCHEDULE* ks,
                                                 uint32_t len);
MORVANE_API void MORVANE_CALL E_DES3_ECB_Decrypt(const uint8_t* in, uint8_t* out, const E_DES3_KEY_SCHEDULE* ks,
                                                 uint32_t len);

/* CBC. Enciphering writes, and deciphering reads, len rounded up to a multiple of 8 bytes; iv has 8 and is only read. */
MORVANE_API void MORVANE_CALL E_DES3_CBC_Encrypt(const uint8_t* in, uint8_t* out, const E_DES3_KEY_SCHEDULE* ks,
                                                 uint32_t len, const uint8_t* iv);
MORVANE_API void MORVANE_CALL E_DES3_CBC_Decrypt(const uint8_t* in, uint8_t* out, const E_DES3_KEY_SCHEDULE* ks,
                                                 uint32_t len, const uint8_t* iv);

/* CBC with the residual block by XOR. Enciphering writes, and deciphering reads, len rounded up to a multiple of 8 bytes.
 */
MORVANE_API void MORVANE_CALL E_DES3_CBC_Encrypt_NO_PAD(const uint8_t* in, uint8_t* out, const E_DES3_KEY_SCHEDULE* ks,
                                                        uint32_t len, const uint8_t* iv);
MORVANE_API void MORVANE_CALL E_DES3_CBC_Decrypt_NO_PAD(const uint8_t* in, uint8_t* out, const E_DES3_KEY_SCHEDULE* ks,
                                                        uint32_t len, const uint8_t* iv);

/* CFB and OFB, numbits from 1 to 64. in and out have len bytes; iv has 8 and holds the register afterwards. The two OFB
 * names are one entry point. */
MORVANE_API void MORVANE_CALL E_DES3_CFB_Encrypt(const uint8_t* in, uint8_t* out, const E_DES3_KEY_SCHEDULE* ks,
                                                 int32_t numbits, uint32_t len, uint8_t* iv);
MORVANE_API void MORVANE_CALL E_DES3_CFB_Decrypt(const uint8_t* in, uint8_t* out, const E_DES3_KEY_SCHEDULE* ks,
                                                 int32_t numbits, uint32_t len, uint8_t* iv);
MORVANE_API void MORVANE_CALL E_DES3_OFB_Encrypt(const uint8_t* in, uint8_t* out, const E_DES3_KEY_SCHEDULE* ks,
                                                 int32_t numbits, uint32_t len, uint8_t* iv);
MORVANE_API void MORVANE_CALL E_DES3_OFB_Decrypt(const uint8_t* in, uint8_t* out, const E_DES3_KEY_SCHEDULE* ks,
                                                 int32_t numbits, uint32_t len, uint8_t* iv);

/* ---- Triple DES with three keys (ANSI X9.52, keying option 1) ---- */

/* A key schedule, 384 bytes: those of K1, K2 and K3. */
typedef struct E_DES3_3KEY_SCHEDULE {
    E_DES_KEY_SCHEDULE keys[3];
} E_DES3_3KEY_SCHEDULE;

/* Fills ks from the 24 bytes at key, K1, K2 and K3, each as E_DES_KeySchedule does. Returns 1, always. Encryption enciphers
 * with K1, deciphers with K2 and enciphers with K3. */
MORVANE_API uint32_t MORVANE_CALL E_DES3_3Key_Schedule(E_DES3_3KEY_SCHEDULE* ks, const uint8_t* key);

/* Enciphers or deciphers one block of 2 words in place. */
MORVANE_API void MORVANE_CALL E_DES3_3Key_Encrypt(uint32_t* block, const E_DES3_3KEY_SCHEDULE* ks);
MORVANE_API void MORVANE_CALL E_DES3_3Key_Decrypt(uint32_t* block, const E_DES3_3KEY_SCHEDULE* ks);

/* CBC. Enciphering writes, and deciphering reads, len rounded up to a multiple of 8 bytes; iv has 8 and is only read. */
MORVANE_API void MORVANE_CALL E_DES3_3Key_CBC_Encrypt(const uint8_t* in, uint8_t* out, const E_DES3_3KEY_SCHEDULE* ks,
                                                      uint32_t len, const uint8_t* iv);
MORVANE_API void MORVANE_CALL E_DES3_3Key_CBC_Decrypt(const uint8_t* in, uint8_t* out, const E_DES3_3KEY_SCHEDULE* ks,
                                                      uint32_t len, const uint8_t* iv);

/* ---- SEED (RFC 4269) ---- */

/* A key schedule, 128 bytes. It serves both directions. */
typedef struct E_SEED_KEY_SCHEDULE {
    uint32_t round_keys[32]; /* K_1,0 K_1,1 K_2,0 ... K_16,1 as the standard names them, host-order words */
} E_SEED_KEY_SCHEDULE;

/* Fills ks from the 16 bytes at key. */
MORVANE_API void MORVANE_CALL E_SEED_KeySchedule(E_SEED_KEY_SCHEDULE* ks, const uint8_t* key);

/* Enciphers or deciphers one block of 4 words in place. */
MORVANE_API void MORVANE_CALL E_SEED_Encrypt(uint32_t* block, const E_SEED_KEY_SCHEDULE* ks);
MORVANE_API void MORVANE_CALL E_SEED_Decrypt(uint32_t* block, const E_SEED_KEY_SCHEDULE* ks);

/* ECB. Enciphering writes, and deciphering reads, len rounded up to a multiple of 16 bytes. */
MORVANE_API void MORVANE_CALL E_SEED_ECB_Encrypt(const uint8_t* in, uint8_t* out, const E_SEED_KEY_SCHEDULE* ks,
                                                 uint32_t len);
MORVANE_API void MORVANE_CALL E_SEED_ECB_Decrypt(const uint8_t* in, uint8_t* out, const E_SEED_KEY_SCHEDULE* ks,
                                                 uint32_t len);

/* CBC. Enciphering writes, and deciphering reads, len rounded up to a multiple of 16 bytes; iv has 16 and is only read. */
MORVANE_API void MORVANE_CALL E_SEED_CBC_Encrypt(const uint8_t* in, uint8_t* out, const E_SEED_KEY_SCHEDULE* ks,
                                                 uint32_t len, const uint8_t* iv);
MORVANE_API void MORVANE_CALL E_SEED_CBC_Decrypt(const uint8_t* in, uint8_t* out, const E_SEED_KEY_SCHEDULE* ks,
                                                 uint32_t len, const uint8_t* iv);

/* CBC with the residual block by XOR. Enciphering writes, and deciphering reads, len rounded up to a multiple of 16 bytes.
 */
MORVANE_API void MORVANE_CALL E_SEED_CBC_Encrypt_NO_PAD(const uint8_t* in, uint8_t* out, const E_SEED_KEY_SCHEDULE* ks,
                                                        uint32_t len, const uint8_t* iv);
MORVANE_API void MORVANE_CALL E_SEED_CBC_Decrypt_NO_PAD(const uint8_t* in, uint8_t* out, const E_SEED_KEY_SCHEDULE* ks,
                                                        uint32_t len, const uint8_t* iv);

/* CFB and OFB, numbits from 1 to 128. in and out have len bytes; iv has 16 and holds the register afterwards. The two OFB
 * names are one entry point. */
MORVANE_API void MORVANE_CALL E_SEED_CFB_Encrypt(const uint8_t* in, uint8_t* out, const E_SEED_KEY_SCHEDULE* ks,
                                                 int32_t numbits, uint32_t len, uint8_t* iv);
MORVANE_API void MORVANE_CALL E_SEED_CFB_Decrypt(const uint8_t* in, uint8_t* out, const E_SEED_KEY_SCHEDULE* ks,
                                                 int32_t numbits, uint32_t len, uint8_t* iv);
MORVANE_API void MORVANE_CALL E_SEED_OFB_Encrypt(const uint8_t* in, uint8_t* out, const E_SEED_KEY_SCHEDULE* ks,
                                                 int32_t numbits, uint32_t len, uint8_t* iv);
MORVANE_API void MORVANE_CALL E_SEED_OFB_Decrypt(const uint8_t* in, uint8_t* out, const E_SEED_KEY_SCHEDULE* ks,
                                                 int32_t numbits, uint32_t len, uint8_t* iv);

/* ---- IDEA ---- */

/* A key schedule, 208 bytes. The key services keep room for 432 bytes where they hold one. */
typedef struct E_IDEA_KEY_SCHEDULE {
    uint16_t encrypt[52]; /* the subkeys in the order in which encryption uses them */
    uint16_t decrypt[52]; /* their inverses, in the order in which decryption uses them */
} E_IDEA_KEY_SCHEDULE;

/* Fills ks, both halves, from the 16 bytes at key. (X. Lai, On the Design and Security of Block Ciphers, 1992) */
MORVANE_API void MORVANE_CALL E_IDEA_KeySchedule(E_IDEA_KEY_SCHEDULE* ks, const uint8_t* key);

/* Enciphers or deciphers one block of 2 words in place. */
MORVANE_API void MORVANE_CALL E_IDEA_Encrypt(uint32_t* block, const E_IDEA_KEY_SCHEDULE* ks);
MORVANE_API void MORVANE_CALL E_IDEA_Decrypt(uint32_t* block, const E_IDEA_KEY_SCHEDULE* ks);

/* ECB. Enciphering writes, and deciphering reads, len rounded up to a multiple of 8 bytes. */
MORVANE_API void MORVANE_CALL E_IDEA_ECB_Encrypt(const uint8_t* in, uint8_t* out, const E_IDEA_KEY_SCHEDULE* ks,
                                                 uint32_t len);
MORVANE_API void MORVANE_CALL E_IDEA_ECB_Decrypt(const uint8_t* in, uint8_t* out, const E_IDEA_KEY_SCHEDULE* ks,
                                                 uint32_t len);

/* CBC. Enciphering writes, and deciphering reads, len rounded up to a multiple of 8 bytes; iv has 8 and is only read.
 * The bytes of each half of iv are taken in reverse, as said above. */
MORVANE_API void MORVANE_CALL E_IDEA_CBC_Encrypt(const uint8_t* in, uint8_t* out, const E_IDEA_KEY_SCHEDULE* ks,
                                                 uint32_t len, const uint8_t* iv);
MORVANE_API void MORVANE_CALL E_IDEA_CBC_Decrypt(const uint8_t* in, uint8_t* out, const E_IDEA_KEY_SCHEDULE* ks,
                                                 uint32_t len, const uint8_t* iv);

/* CFB and OFB, numbits from 1 to 64. in and out have len bytes; iv has 8 and holds the register afterwards. The two OFB
 * names are one entry point. */
MORVANE_API void MORVANE_CALL E_IDEA_CFB_Encrypt(const uint8_t* in, uint8_t* out, const E_IDEA_KEY_SCHEDULE* ks,
                                                 int32_t numbits, uint32_t len, uint8_t* iv);
MORVANE_API void MORVANE_CALL E_IDEA_CFB_Decrypt(const uint8_t* in, uint8_t* out, const E_IDEA_KEY_SCHEDULE* ks,
                                                 int32_t numbits, uint32_t len, uint8_t* iv);
MORVANE_API void MORVANE_CALL E_IDEA_OFB_Encrypt(const uint8_t* in, uint8_t* out, const E_IDEA_KEY_SCHEDULE* ks,
                                                 int32_t numbits, uint32_t len, uint8_t* iv);
MORVANE_API void MORVANE_CALL E_IDEA_OFB_Decrypt(const uint8_t* in, uint8_t* out, const E_IDEA_KEY_SCHEDULE* ks,
                                                 int32_t numbits, uint32_t len, uint8_t* iv);

/* ---- Blowfish ---- */

/* A key schedule, 4168 bytes. */
typedef struct E_BF_KEY_SCHEDULE {
    uint32_t p[18];
    uint32_t s[4][256];
} E_BF_KEY_SCHEDULE;

/* Fills ks from the key_len bytes at key, of which the first 72 count. With a key_len of 0 or less there is no key: ks
 * becomes all zero bytes, which gives no secrecy. (B. Schneier, Description of a New Variable-Length Key, 64-Bit Block
 * Cipher, 1993) */
MORVANE_API void MORVANE_CALL E_BF_KeySchedule(E_BF_KEY_SCHEDULE* ks, const uint8_t* key, int32_t key_len);

/* Enciphers or deciphers one block of 2 words in place. */
MORVANE_API void MORVANE_CALL E_BF_Encrypt(uint32_t* block, const E_BF_KEY_SCHEDULE* ks);
MORVANE_API void MORVANE_CALL E_BF_Decrypt(uint32_t* block, const E_BF_KEY_SCHEDULE* ks);

/* ECB. Enciphering writes, and deciphering reads, len rounded up to a multiple of 8 bytes. */
MORVANE_API void MORVANE_CALL E_BF_ECB_Encrypt(const uint8_t* in, uint8_t* out, const E_BF_KEY_SCHEDULE* ks, uint32_t len);
MORVANE_API void MORVANE_CALL E_BF_ECB_Decrypt(const uint8_t* in, uint8_t* out, const E_BF_KEY_SCHEDULE* ks, uint32_t len);

/* CBC. Enciphering writes, and deciphering reads, len rounded up to a multiple of 8 bytes; iv has 8 and is only read.
 * The bytes of each half of iv are taken in reverse, as said above. */
MORVANE_API void MORVANE_CALL E_BF_CBC_Encrypt(const uint8_t* in, uint8_t* out, const E_BF_KEY_SCHEDULE* ks, uint32_t len,
                                               const uint8_t* iv);
MORVANE_API void MORVANE_CALL E_BF_CBC_Decrypt(const uint8_t* in, uint8_t* out, const E_BF_KEY_SCHEDULE* ks, uint32_t len,
                                               const uint8_t* iv);

/* CFB and OFB, numbits from 1 to 64. in and out have len bytes; iv has 8 and holds the register afterwards. The two OFB
 * names are one entry point. */
MORVANE_API void MORVANE_CALL E_BF_CFB_Encrypt(const uint8_t* in, uint8_t* out, const E_BF_KEY_SCHEDULE* ks,
                                               int32_t numbits, uint32_t len, uint8_t* iv);
MORVANE_API void MORVANE_CALL E_BF_CFB_Decrypt(const uint8_t* in, uint8_t* out, const E_BF_KEY_SCHEDULE* ks,
                                               int32_t numbits, uint32_t len, uint8_t* iv);
MORVANE_API void MORVANE_CALL E_BF_OFB_Encrypt(const uint8_t* in, uint8_t* out, const E_BF_KEY_SCHEDULE* ks,
                                               int32_t numbits, uint32_t len, uint8_t* iv);
MORVANE_API void MORVANE_CALL E_BF_OFB_Decrypt(const uint8_t* in, uint8_t* out, const E_BF_KEY_SCHEDULE* ks,
                                               int32_t numbits, uint32_t len, uint8_t* iv);

/* ---- RC2 (RFC 2268) ---- */

/* A key schedule, 128 bytes. */
typedef struct E_RC2_KEY_SCHEDULE {
    uint16_t k[64]; /* the expanded key */
} E_RC2_KEY_SCHEDULE;

/* Fills ks from the key_len bytes at key, of which the first 128 count, reduced to effective_bits bits. effective_bits
 * outside 1..1024 counts as 1024. With a key_len of 0 or less there is no key: ks becomes all zero bytes, which gives no
 * secrecy. */
MORVANE_API void MORVANE_CALL E_RC2_KeySchedule(E_RC2_KEY_SCHEDULE* ks, const uint8_t* key, int32_t key_len,
                                                int32_t effective_bits);

/* Enciphers or deciphers one block of 2 words in place. */
MORVANE_API void MORVANE_CALL E_RC2_Encrypt(uint32_t* block, const E_RC2_KEY_SCHEDULE* ks);
MORVANE_API void MORVANE_CALL E_RC2_Decrypt(uint32_t* block, const E_RC2_KEY_SCHEDULE* ks);

/* ECB. Enciphering writes, and deciphering reads, len rounded up to a multiple of 8 bytes. */
MORVANE_API void MORVANE_CALL E_RC2_ECB_Encrypt(const uint8_t* in, uint8_t* out, const E_RC2_KEY_SCHEDULE* ks,
                                                uint32_t len);
MORVANE_API void MORVANE_CALL E_RC2_ECB_Decrypt(const uint8_t* in, uint8_t* out, const E_RC2_KEY_SCHEDULE* ks,
                                                uint32_t len);

/* CBC. Enciphering writes, and deciphering reads, len rounded up to a multiple of 8 bytes; iv has 8 and is only read. */
MORVANE_API void MORVANE_CALL E_RC2_CBC_Encrypt(const uint8_t* in, uint8_t* out, const E_RC2_KEY_SCHEDULE* ks, uint32_t len,
                                                const uint8_t* iv);
MORVANE_API void MORVANE_CALL E_RC2_CBC_Decrypt(const uint8_t* in, uint8_t* out, const E_RC2_KEY_SCHEDULE* ks, uint32_t len,
                                                const uint8_t* iv);

/* CFB and OFB, numbits from 1 to 64. in and out have len bytes; iv has 8 and holds the register afterwards. The two OFB
 * names are one entry point. */
MORVANE_API void MORVANE_CALL E_RC2_CFB_Encrypt(const uint8_t* in, uint8_t* out, const E_RC2_KEY_SCHEDULE* ks,
                                                int32_t numbits, uint32_t len, uint8_t* iv);
MORVANE_API void MORVANE_CALL E_RC2_CFB_Decrypt(const uint8_t* in, uint8_t* out, const E_RC2_KEY_SCHEDULE* ks,
                                                int32_t numbits, uint32_t len, uint8_t* iv);
MORVANE_API void MORVANE_CALL E_RC2_OFB_Encrypt(const uint8_t* in, uint8_t* out, const E_RC2_KEY_SCHEDULE* ks,
                                                int32_t numbits, uint32_t len, uint8_t* iv);
MORVANE_API void MORVANE_CALL E_RC2_OFB_Decrypt(const uint8_t* in, uint8_t* out, const E_RC2_KEY_SCHEDULE* ks,
                                                int32_t numbits, uint32_t len, uint8_t* iv);

/* ---- RC5 with 32-bit words (RFC 2040) ---- */

/* A key schedule, 140 bytes. The key services know 136 of them, the table without the number of rounds: whoever holds a
 * schedule in a buffer of its own makes it as long as this record. */
typedef struct E_RC5_KEY_SCHEDULE {
    uint32_t s[34];  /* the expanded key table, of which 2 * rounds + 2 words are used; the others are 0 */
    uint32_t rounds; /* 0 to 16; a greater number in a record counts as 16 */
} E_RC5_KEY_SCHEDULE;

/* Fills ks from the key_len bytes at key for the given number of rounds; rounds above 16 or below 0 count as 16, and 0
 * rounds are 0 rounds: two additions. Keys above 255 bytes, beyond RFC 2040, are mixed in by the same rule; above 256 bytes
 * this needs key_len bytes from the heap during the call. With a key_len of 0 or less, or without that memory, there is no
 * key: ks becomes all zero bytes, which leaves data as it is. */
MORVANE_API void MORVANE_CALL E_RC5_KeySchedule(E_RC5_KEY_SCHEDULE* ks, const uint8_t* key, int32_t key_len,
                                                int32_t rounds);

/* Enciphers or deciphers one block of 2 words in place. */
MORVANE_API void MORVANE_CALL E_RC5_Encrypt(uint32_t* block, const E_RC5_KEY_SCHEDULE* ks);
MORVANE_API void MORVANE_CALL E_RC5_Decrypt(uint32_t* block, const E_RC5_KEY_SCHEDULE* ks);

/* ECB. Enciphering writes, and deciphering reads, len rounded up to a multiple of 8 bytes. */
MORVANE_API void MORVANE_CALL E_RC5_ECB_Encrypt(const uint8_t* in, uint8_t* out, const E_RC5_KEY_SCHEDULE* ks,
                                                uint32_t len);
MORVANE_API void MORVANE_CALL E_RC5_ECB_Decrypt(const uint8_t* in, uint8_t* out, const E_RC5_KEY_SCHEDULE* ks,
                                                uint32_t len);

/* CBC. Enciphering writes, and deciphering reads, len rounded up to a multiple of 8 bytes; iv has 8 and is only read. */
MORVANE_API void MORVANE_CALL E_RC5_CBC_Encrypt(const uint8_t* in, uint8_t* out, const E_RC5_KEY_SCHEDULE* ks, uint32_t len,
                                                const uint8_t* iv);
MORVANE_API void MORVANE_CALL E_RC5_CBC_Decrypt(const uint8_t* in, uint8_t* out, const E_RC5_KEY_SCHEDULE* ks, uint32_t len,
                                                const uint8_t* iv);

/* CFB and OFB, numbits from 1 to 64. in and out have len bytes; iv has 8 and holds the register afterwards. The two OFB
 * names are one entry point. */
MORVANE_API void MORVANE_CALL E_RC5_CFB_Encrypt(const uint8_t* in, uint8_t* out, const E_RC5_KEY_SCHEDULE* ks,
                                                int32_t numbits, uint32_t len, uint8_t* iv);
MORVANE_API void MORVANE_CALL E_RC5_CFB_Decrypt(const uint8_t* in, uint8_t* out, const E_RC5_KEY_SCHEDULE* ks,
                                                int32_t numbits, uint32_t len, uint8_t* iv);
MORVANE_API void MORVANE_CALL E_RC5_OFB_Encrypt(const uint8_t* in, uint8_t* out, const E_RC5_KEY_SCHEDULE* ks,
                                                int32_t numbits, uint32_t len, uint8_t* iv);
MORVANE_API void MORVANE_CALL E_RC5_OFB_Decrypt(const uint8_t* in, uint8_t* out, const E_RC5_KEY_SCHEDULE* ks,
                                                int32_t numbits, uint32_t len, uint8_t* iv);

/* ---- RC4 ---- */

/* The state of the generator, 1032 bytes: key schedule and position in the key stream. It changes with every byte, so a
 * state belongs to one stream and one thread at a time. */
typedef struct E_RC4_STATE {
    uint32_t x;      /* the index i, 0..255 */
    uint32_t y;      /* the index j, 0..255 */
    uint32_t s[256]; /* the permutation of 0..255 */
} E_RC4_STATE;

/* Fills state from the key_len bytes at key, of which the first 256 count. Returns the last j of the schedule, of no use to
 * callers. With a key_len of 0 there is no key: state becomes all zero bytes, with which data passes unchanged, and the
 * result is 0. */
MORVANE_API uint32_t MORVANE_CALL E_RC4_KeySchedule(E_RC4_STATE* state, const uint8_t* key, uint32_t key_len);

/* XORs len bytes with the key stream and advances state by as many; a stream may be cut into calls anywhere. The two names
 * are one entry point. */
MORVANE_API void MORVANE_CALL E_RC4_Encrypt(const uint8_t* in, uint8_t* out, E_RC4_STATE* state, uint32_t len);
MORVANE_API void MORVANE_CALL E_RC4_Decrypt(const uint8_t* in, uint8_t* out, E_RC4_STATE* state, uint32_t len);

#ifdef __cplusplus
}
#endif

#endif
