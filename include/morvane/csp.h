/* The service-provider layer: digests, encryption, MACs, random bytes and size queries by algorithm identifier (CDSA 1.2
 * CSP interface).
 *
 * Every CSP_ function returns 0 on success and -1 on failure. On failure the reason, one of the CSP_ERR_ codes, is in the
 * library's one error cell, which GetError reads. A successful call does not clear the cell.
 *
 * Session records and handles. An operation that takes several calls lives in a session record, CspSession. The caller
 * makes it, zero-filled, sets its first four fields and passes its address as the context handle (CspHandle); every call
 * with that handle continues the operation. The caller frees the record after the last call. What Init allocates for the
 * operation, Final releases.
 *
 *     CspSession session = {0};
 *     session.context_type = CSP_CONTEXT_DIGEST;
 *     session.algorithm = CSP_ALG_SHA1;
 *
 *     uint8_t digest[20];
 *     CSSM_DATA piece = {length, bytes}, out = {sizeof digest, digest};
 *     CspHandle handle = (CspHandle)&session;
 *     if (CSP_DigestDataInit(100, handle, NULL) != 0 || CSP_DigestDataUpdate(100, handle, &piece, 1) != 0 ||
 *         CSP_DigestDataFinal(100, handle, &out) != 0)
 *         fprintf(stderr, "digest failed: %u\n", GetError());
 *
 * Context records. A function that takes a context record besides the handle ignores the handle when the record is not
 * null: it makes a fresh session record from it, uses that for this one call and neither hands it back nor frees it. That
 * suits the calls that are complete in themselves (CSP_GenerateRandom, CSP_QuerySize), at the price of one record of
 * heap per call. A CSP_DigestDataInit given a context record begins an operation that nobody can continue: no later call
 * can name it. Whoever wants a digest passes a session record as the handle and a null context record.
 *
 * Handles are not validated beyond the null test. The first argument of every function, the provider handle, is never
 * read; any value will do.
 *
 * Attributes. A context carries an array of typed attributes, owned by its maker and only read. Of two attributes of one
 * type the first counts; a null array is an empty one. A look-up that finds nothing leaves CSP_ERR_NO_ATTRIBUTE in the
 * error cell; where the attribute is required, the service then stores its own code over it.
 *
 * Threads. Distinct sessions may be used on distinct threads at once, one session on one thread at a time. The error cell
 * is one word for the whole process: the last failure on any thread wins. The Diffie-Hellman parameters that
 * CSP_GenerateAlgorithmParams made last are the process's too and not locked: it and CSP_DeriveKey take turns, as does what
 * draws random numbers (see morvane/random.h). */
#ifndef MORVANE_CSP_H
#define MORVANE_CSP_H

#include <morvane/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Context types. */
enum {
    CSP_CONTEXT_SYMMETRIC = 4,
    CSP_CONTEXT_DIGEST = 5,
    CSP_CONTEXT_RANDOM = 6,
    CSP_CONTEXT_MAC = 8,
    CSP_CONTEXT_CIPHER_ALT = 9,
    CSP_CONTEXT_KEYGEN = 10
};

/* Attribute types; in brackets the member of CSSM_CONTEXT_ATTRIBUTE.Attribute that holds the value. */
#define CSP_ATTR_OUTPUT_SIZE    0x1000000du /* bytes to produce [Uint32] */
#define CSP_ATTR_KEY            0x40000003u /* key record [Key] */
#define CSP_ATTR_PADDING        0x10000006u /* padding option [Uint32] */
#define CSP_ATTR_MODE           0x10000013u /* cipher mode, a CSP_MODE_ value [Uint32] */
#define CSP_ATTR_INIT_VECTOR    0x20000004u /* initialisation vector [Data] */
#define CSP_ATTR_KEY_LENGTH     0x1000000au /* bytes of the expanded key [Uint32] */
#define CSP_ATTR_BLOCK_SIZE     0x1000000cu /* bytes of the key before its expansion [Uint32] */
#define CSP_ATTR_ROUNDS         0x1000000eu /* of RC5 [Uint32] */
#define CSP_ATTR_EFFECTIVE_BITS 0x10000014u /* of an RC2 key [Uint32] */
#define CSP_ATTR_START_DATE     0x60000015u /* from when a key is valid [Date] */
#define CSP_ATTR_END_DATE       0x60000016u /* and until when [Date] */

/* Algorithm identifiers. */
enum {
    CSP_ALG_NULL_CIPHER = 1,
    CSP_ALG_DH = 2,
    CSP_ALG_MD2 = 5,
    CSP_ALG_MD4 = 6,
    CSP_ALG_MD5 = 7,
    CSP_ALG_SHA1 = 8,
    CSP_ALG_RIPEMD160 = 11,
    CSP_ALG_DES = 14,
    CSP_ALG_DES3 = 18, /* two-key triple DES */
    CSP_ALG_IDEA = 20,
    CSP_ALG_RC2 = 21,
    CSP_ALG_RC5 = 22,
    CSP_ALG_RC4 = 23,
    CSP_ALG_BLOWFISH = 26,
    CSP_ALG_RSA = 40,
    CSP_ALG_DSA = 41,
    CSP_ALG_MD5_WITH_RSA = 42,
    CSP_ALG_MD2_WITH_RSA = 43,
    CSP_ALG_RANDOM = 46,
    CSP_ALG_RANDOM_ALT = 48,
    CSP_ALG_SHA1_WITH_RSA = 49,
    CSP_ALG_SHA1_WITH_DSA = 81,
    CSP_ALG_SEED = 88,
    CSP_ALG_HAS160 = 89,
    CSP_ALG_HAS160_WITH_KCDSA = 90
};

/* Cipher modes. */
enum { CSP_MODE_ECB = 2, CSP_MODE_CBC = 4, CSP_MODE_CFB = 7, CSP_MODE_OFB = 10 };

/* What GetError returns after a failure. */
enum {
    CSP_ERR_MEMORY = 1010,                /* no memory for an output buffer or a working state */
    CSP_ERR_OUTPUT_TOO_SHORT = 1011,      /* an output buffer is shorter than what the operation must write */
    CSP_ERR_UNKNOWN_ALGORITHM = 1023,     /* the family asked for does not know the algorithm identifier */
    CSP_ERR_WRONG_CONTEXT_TYPE = 1026,    /* the session is of another type than the service needs */
    CSP_ERR_NO_CONTEXT = 1027,            /* handle and context record resolve to nothing */
    CSP_ERR_NULL_POINTER = 1029,          /* a required output or input record is null */
    CSP_ERR_NO_BUFFERS = 1030,            /* an Update was given no buffers */
    CSP_ERR_MAC_KEY_TOO_SHORT = 1031,     /* the key data is shorter than the MAC algorithm's expanded key */
    CSP_ERR_BAD_KEY = 1032,               /* the key record has no key data, or is unfit for the operation */
    CSP_ERR_NO_KEY = 1033,                /* neither a key argument nor a key attribute */
    CSP_ERR_UNKNOWN_MODE = 1034,          /* the cipher has no such mode, or the mode attribute is missing */
    CSP_ERR_KEY_ATTRIBUTE_MISSING = 1036, /* encryption, decryption and MAC need a key attribute */
    CSP_ERR_KEY_CLASS = 1041,             /* a MAC key must be of class 2 */
    CSP_ERR_INIT_VECTOR = 1045,           /* the initialisation vector is missing or too short */
    CSP_ERR_BAD_DATA = 1046,              /* a data buffer without data, or of inconsistent length */
    CSP_ERR_NO_OUTPUT_SIZE = 1047,        /* the output-size attribute is missing */
    CSP_ERR_DERIVE_KEY = 1048,            /* key derivation failed */
    CSP_ERR_DH_COMPUTATION = 1094,        /* the Diffie-Hellman key computation failed */
    CSP_ERR_PRIMITIVE_FAILED = 1095,      /* the underlying primitive failed */
    CSP_ERR_NO_ATTRIBUTE = 10304          /* an attribute look-up found nothing */
};

/* A context handle: the address of a session record. Pointer-sized. */
typedef uintptr_t CspHandle;

#define CSP_CHAIN_BYTES   16   /* room for the chaining value of every cipher */
#define CSP_CARRIED_BYTES 1024 /* room for a partial block */

/* A session record: 1076 bytes in the 32-bit builds. The maker zero-fills it and sets the first four fields; the others
 * belong to the library until the maker frees the record. */
typedef struct CspSession {
    uint32_t context_type;         /* a CSP_CONTEXT_ value */
    uint32_t algorithm;            /* a CSP_ALG_ value */
    uint32_t number_of_attributes; /* of attributes, 0 and more */
    const CSSM_CONTEXT_ATTRIBUTE* attributes;
    const struct CspCipherTable* cipher_table; /* chosen by encryption and decryption Init */
    const struct CspDigestTable* digest_table; /* chosen by digest Init */
    void* state;                               /* of a digest or MAC: made by Init, released by Final, then stale */
    const struct CspMacTable* mac_table;       /* chosen by MAC Init */
    uint8_t chain[CSP_CHAIN_BYTES];            /* chaining value */
    uint8_t carried[CSP_CARRIED_BYTES];        /* bytes that did not fill a block yet */
    uint32_t carried_bytes;
} CspSession;

/* The two sizes that the size queries write. */
typedef struct CspSizePair {
    uint32_t first;
    uint32_t second;
} CspSizePair;

/* The error cell: the code of the last failure in the process, 0 before the first. Codes below 1000 are stored with 2000
 * added to them (no service of this layer raises such a code). */
MORVANE_API uint32_t MORVANE_CALL GetError(void);

/* ---- Digests: Init, any number of Updates, Final ----
 *
 * Algorithms: CSP_ALG_MD2, CSP_ALG_MD4, CSP_ALG_MD5 (16 bytes), CSP_ALG_SHA1, CSP_ALG_RIPEMD160, CSP_ALG_HAS160 (20 bytes).
 *
 * Departs from CDSA 1.2: the signature identifiers are accepted too, and a digest begun under one of them succeeds at every
 * call, hashes nothing and writes no digest; only the plain identifiers hash.
 *
 * These identifiers are CSP_ALG_MD5_WITH_RSA, CSP_ALG_MD2_WITH_RSA, CSP_ALG_SHA1_WITH_RSA, CSP_ALG_SHA1_WITH_DSA and
 * CSP_ALG_HAS160_WITH_KCDSA. Final still applies the buffer rules to its output. */

/* Begins a digest.
 *   csp      never read
 *   handle   address of a CspSession of type CSP_CONTEXT_DIGEST; not used if context is given
 *   context  null; see "Context records" above for what happens otherwise
 * Returns 0, or -1 with, in this order of checks: CSP_ERR_NO_CONTEXT (both null, or no memory for a session record),
 * CSP_ERR_WRONG_CONTEXT_TYPE, CSP_ERR_UNKNOWN_ALGORITHM, CSP_ERR_PRIMITIVE_FAILED (no memory for the state).
 * Init on a session whose digest was never finished abandons the old state without releasing it. */
MORVANE_API int32_t MORVANE_STDCALL CSP_DigestDataInit(uint32_t csp, CspHandle handle, const CSSM_CONTEXT* context);

/* Absorbs count data buffers in order. They belong to the caller and are only read.
 * Returns 0, or -1 with, in this order: CSP_ERR_NO_CONTEXT (null handle), CSP_ERR_NULL_POINTER (buffers is null),
 * CSP_ERR_NO_BUFFERS (count is 0); then for each buffer CSP_ERR_BAD_DATA (its Data is null, even when its Length is 0) and
 * CSP_ERR_PRIMITIVE_FAILED (the session holds no digest in progress). The buffers before a failing one have been absorbed.
 * A buffer of Length 0 with non-null Data is good and changes nothing. */
MORVANE_API int32_t MORVANE_STDCALL CSP_DigestDataUpdate(uint32_t csp, CspHandle handle, const CSSM_DATA* buffers,
                                                         uint32_t count);

/* Finishes the digest, writes it to output->Data, sets output->Length to its length, and releases the working state. The
 * session record stays with its owner; another Update or Final before the next Init is outside the contract.
 *
 * The output buffer is either the caller's (Length at least the digest's length) or the library's: with Length 0 and Data
 * null a zero-filled buffer of the digest's length is allocated, and Data set to it. The caller releases it with free():
 * the one of the process on POSIX systems, the one of msvcrt.dll on Windows. A program built against another C runtime
 * finds that function with GetProcAddress(GetModuleHandleA("msvcrt.dll"), "free"), or passes a buffer of its own.
 *
 * Returns 0, or -1 with, in this order: CSP_ERR_NO_CONTEXT (null handle), CSP_ERR_NULL_POINTER (output is null),
 * CSP_ERR_PRIMITIVE_FAILED (no digest was begun on this session), CSP_ERR_BAD_DATA (exactly one of Length and Data is
 * zero), CSP_ERR_MEMORY, CSP_ERR_OUTPUT_TOO_SHORT, CSP_ERR_PRIMITIVE_FAILED. A failed Final leaves the state as it was:
 * it can be repeated with a better buffer.
 *
 * Under a signature identifier Data and Length are left as they are, but for the buffer that Length 0 and Data null ask
 * for: it is allocated, zero-filled, and Length stays 0. */
MORVANE_API int32_t MORVANE_STDCALL CSP_DigestDataFinal(uint32_t csp, CspHandle handle, CSSM_DATA* output);

/* ---- Encryption and decryption: Init, any number of Updates, Final ----
 *
 * Ciphers: CSP_ALG_DES, CSP_ALG_DES3 (two keys), CSP_ALG_IDEA, CSP_ALG_RC2, CSP_ALG_RC5, CSP_ALG_BLOWFISH and CSP_ALG_SEED
 * in the modes CSP_MODE_ECB, CSP_MODE_CBC, CSP_MODE_CFB and CSP_MODE_OFB, the latter two with feedback of a whole block;
 * CSP_ALG_RC4, which takes any mode; and CSP_ALG_NULL_CIPHER, which takes any mode, succeeds and writes nothing.
 * morvane/cipher.h has the modes and what they do with partial blocks.
 *
 * Attributes of the context: CSP_ATTR_KEY, CSP_ATTR_MODE, CSP_ATTR_INIT_VECTOR (not for ECB, RC4 and the null cipher),
 * CSP_ATTR_PADDING (optional, read at Final). Key and attributes must stay in place until Final: every step looks the key
 * up again.
 *
 * Keys. The data of the key record is the expanded key, the schedule record of morvane/cipher.h (E_DES_KEY_SCHEDULE and so
 * on), all of it: a step that finds less of it fails with CSP_ERR_PRIMITIVE_FAILED. RC4 keeps its state there, so the data
 * of an RC4 key changes with every byte; those of all others are only read.
 *
 * Pieces. Update writes what fills whole blocks and keeps the rest, fewer bytes than a block, for the next Update or for
 * Final. RC4 keeps nothing. The pieces of a stream may be cut anywhere, with one exception.
 *
 * Departs from FIPS 81: Update works in chunks of 1000 bytes, kept and new bytes together, and 1000 is no multiple of
 * SEED's block, so that its streams of longer pieces are not those of the mode. Streams exist that were made so. Feed SEED
 * so that a chunk never fills: at most 992 bytes at a time, kept ones included, gives the stream of the mode itself.
 *
 * The last 8 bytes of a full chunk are to SEED a partial block: ECB and CBC encryption extend it with zeros and drop the
 * last 8 of the 1008 bytes that makes; decryption reads zeros where the block goes on; CFB and OFB leave those 8 bytes out,
 * and zeros stand in their place. The chaining value goes on with that block, in CFB and OFB with the block before it.
 *
 * Padding options. Final fills the kept bytes up to a block, in decryption as well as in encryption; it does so even when
 * none are kept, with a whole block:
 *
 *   0     nothing is added             5     bytes 0xFF
 *   2     bytes 0x00                   6, 7  bytes of the number of bytes added (PKCS #5)
 *   3     bytes 0x01                   9     the first of a block of bytes of E_GenerateRandom, mode 0
 *   4     bytes 0x55                   any other value counts as 2
 *
 * Decryption removes no padding: a decryption that ends on a block boundary is finished with option 0, and whoever expects
 * padding checks and removes it. */

/* Begins an encryption or a decryption; the two names are one entry point.
 *   csp      never read
 *   handle   address of a CspSession of type CSP_CONTEXT_SYMMETRIC or CSP_CONTEXT_CIPHER_ALT; not used if context is given
 *   context  null; see "Context records" above for what happens otherwise
 * Returns 0, or -1 with, in this order of checks: CSP_ERR_NO_CONTEXT, CSP_ERR_KEY_ATTRIBUTE_MISSING,
 * CSP_ERR_WRONG_CONTEXT_TYPE, CSP_ERR_BAD_KEY (the key is null, has no data, or its BlobType is not 2, its Format not 0 or
 * its AlgorithmId not the session's), CSP_ERR_UNKNOWN_MODE (no mode attribute), CSP_ERR_UNKNOWN_ALGORITHM,
 * CSP_ERR_UNKNOWN_MODE (the cipher does not have it), CSP_ERR_INIT_VECTOR (missing, without data, or shorter than a block;
 * of a longer one the first block counts). */
MORVANE_API int32_t MORVANE_STDCALL CSP_EncryptDataInit(uint32_t csp, CspHandle handle, const CSSM_CONTEXT* context);
MORVANE_API int32_t MORVANE_STDCALL CSP_DecryptDataInit(uint32_t csp, CspHandle handle, const CSSM_CONTEXT* context);

/* Enciphers or deciphers the bytes of in_count input buffers, in order, into out_count output buffers, which are filled in
 * order; their Lengths stay as they are. *written becomes the number of bytes written. All buffers are the
 * caller's. An output buffer may be an input buffer if what is written never runs ahead of what has been read: the buffers
 * are the same, in the same order, and nothing is kept from an earlier piece. Returns 0, or -1 with, in this order:
 * CSP_ERR_NO_CONTEXT (null handle), CSP_ERR_NULL_POINTER (in, out or written is null), CSP_ERR_NO_BUFFERS (a count is 0),
 * CSP_ERR_OUTPUT_TOO_SHORT (the output buffers together are shorter than the input buffers); from here on *written counts
 * from 0: CSP_ERR_BAD_DATA (the first input has no Data, or the first output has a Length without Data or Data without a
 * Length), CSP_ERR_PRIMITIVE_FAILED (nothing was begun on this session). Then, where it comes to it: CSP_ERR_BAD_DATA (a
 * further buffer of that kind; an output buffer without both is passed over), CSP_ERR_PRIMITIVE_FAILED (there is no key any
 * more, or its data is too short), CSP_ERR_OUTPUT_TOO_SHORT (kept bytes and new ones make more blocks than there is room
 * for). Then part of the output may be written, *written says nothing exact about it, and the operation cannot go on; the
 * kept bytes are as they were. */
MORVANE_API int32_t MORVANE_STDCALL CSP_EncryptDataUpdate(uint32_t csp, CspHandle handle, const CSSM_DATA* in,
                                                          uint32_t in_count, const CSSM_DATA* out, uint32_t out_count,
                                                          uint32_t* written);
MORVANE_API int32_t MORVANE_STDCALL CSP_DecryptDataUpdate(uint32_t csp, CspHandle handle, const CSSM_DATA* in,
                                                          uint32_t in_count, const CSSM_DATA* out, uint32_t out_count,
                                                          uint32_t* written);

/* Pads the kept bytes and enciphers or deciphers them into remainder->Data; remainder->Length becomes the number of bytes
 * written. That is a block after padding. Without padding, c kept bytes give in ECB and CBC a whole block when enciphering
 * and c bytes when deciphering, and 0 bytes in CFB and OFB, which have no partial steps; none kept give 0.
 *
 * The buffer is the caller's, at least a block long, or the library's: with Length 0 and Data null a block is allocated, to
 * be released as CSP_DigestDataFinal says. RC4 and the null cipher need and allocate none.
 *
 * Final does not end the session's operation: kept bytes (after padding, a block of them) and chaining value stay until the
 * next Init. Returns 0, or -1 with, in this order: CSP_ERR_NO_CONTEXT (null handle), CSP_ERR_NULL_POINTER (remainder is
 * null), CSP_ERR_PRIMITIVE_FAILED (nothing was begun), CSP_ERR_BAD_DATA (exactly one of Length and Data is zero),
 * CSP_ERR_MEMORY, CSP_ERR_OUTPUT_TOO_SHORT, CSP_ERR_PRIMITIVE_FAILED (the key is gone); then
 * *remainder and the kept bytes are as they were. */
MORVANE_API int32_t MORVANE_STDCALL CSP_EncryptDataFinal(uint32_t csp, CspHandle handle, CSSM_DATA* remainder);
MORVANE_API int32_t MORVANE_STDCALL CSP_DecryptDataFinal(uint32_t csp, CspHandle handle, CSSM_DATA* remainder);

/* Init with the context record, Update, Final, one after the other; the first failure is returned. Update and Final go by
 * the handle: with a context record and no handle, Update fails with CSP_ERR_NO_CONTEXT. Pass a session and a null context.
 */
MORVANE_API int32_t MORVANE_STDCALL CSP_EncryptData(uint32_t csp, CspHandle handle, const CSSM_CONTEXT* context,
                                                    const CSSM_DATA* in, uint32_t in_count, const CSSM_DATA* out,
                                                    uint32_t out_count, uint32_t* written, CSSM_DATA* remainder);
MORVANE_API int32_t MORVANE_STDCALL CSP_DecryptData(uint32_t csp, CspHandle handle, const CSSM_CONTEXT* context,
                                                    const CSSM_DATA* in, uint32_t in_count, const CSSM_DATA* out,
                                                    uint32_t out_count, uint32_t* written, CSSM_DATA* remainder);

/* ---- Message authentication codes: Init, any number of Updates, Final ----
 *
 * CSP_ALG_DES and CSP_ALG_DES3 are CBC-MAC with DES (FIPS 113) from a zero block, 8 bytes. CSP_ALG_MD5 is HMAC-MD5 (RFC
 * 2104) under the key's data, of any length, 16 bytes.
 *
 * Departs from FIPS 113: the message is extended with zeros to the next multiple of 8, and by a whole block of zeros when
 * it is one already; an empty message is one block of zeros. MACs in the field are made so.
 *
 * Departs from ANSI X9.52: CSP_ALG_DES3 as a MAC works under the first of the two DES schedules in the key. It is single
 * DES, though the key is that of triple DES.
 *
 * The context has one attribute, CSP_ATTR_KEY. For DES the key's data is the expanded key, an E_DES_KEY_SCHEDULE or
 * E_DES3_KEY_SCHEDULE, and it must stay in place until Final. DES MACs are 8 bytes under a 56-bit key: only for data that
 * has them. */

/* Begins a MAC; to generate and to verify, the steps are the same.
 *   handle   address of a CspSession of type CSP_CONTEXT_MAC; not used if context is given
 *   context  null; see "Context records" above for what happens otherwise
 * Returns 0, or -1 with, in this order: CSP_ERR_NO_CONTEXT, CSP_ERR_WRONG_CONTEXT_TYPE, CSP_ERR_KEY_ATTRIBUTE_MISSING,
 * CSP_ERR_BAD_KEY (the key is null; except with CSP_ALG_MD5 also: no data, BlobType not 2, Format not 0, AlgorithmId not
 * the session's), CSP_ERR_KEY_CLASS (not with CSP_ALG_MD5: KeyClass is not 2), CSP_ERR_UNKNOWN_ALGORITHM,
 * CSP_ERR_MAC_KEY_TOO_SHORT (key data below 128 bytes for DES, 256 for triple DES), CSP_ERR_BAD_KEY (CSP_ALG_MD5: a Length
 * without data), CSP_ERR_MEMORY (CSP_ALG_MD5). The working state of CSP_ALG_MD5 is released by Final. */
MORVANE_API int32_t MORVANE_STDCALL CSP_GenerateMacInit(uint32_t csp, CspHandle handle, const CSSM_CONTEXT* context);
MORVANE_API int32_t MORVANE_STDCALL CSP_VerifyMacInit(uint32_t csp, CspHandle handle, const CSSM_CONTEXT* context);

/* Absorbs count data buffers in order; they are only read. The two names are one entry point.
 * Returns 0, or -1 with, in this order: CSP_ERR_NO_CONTEXT (null handle), CSP_ERR_NULL_POINTER (buffers is null),
 * CSP_ERR_NO_BUFFERS (count is 0), CSP_ERR_BAD_DATA (the first buffer has no Data, or a further one has a Length without
 * Data), CSP_ERR_PRIMITIVE_FAILED (nothing was begun, or the key is gone). What came before the failure has been absorbed.
 */
MORVANE_API int32_t MORVANE_STDCALL CSP_GenerateMacUpdate(uint32_t csp, CspHandle handle, const CSSM_DATA* buffers,
                                                          uint32_t count);
MORVANE_API int32_t MORVANE_STDCALL CSP_VerifyMacUpdate(uint32_t csp, CspHandle handle, const CSSM_DATA* buffers,
                                                        uint32_t count);

/* Finishes the MAC, writes it to mac->Data and sets mac->Length to its length. With Length 0 and Data null the library
 * allocates the buffer, to be released as CSP_DigestDataFinal says.
 * Returns 0, or -1 with, in this order: CSP_ERR_NO_CONTEXT (null handle), CSP_ERR_NULL_POINTER (mac is null),
 * CSP_ERR_BAD_DATA (exactly one of Length and Data is zero), CSP_ERR_PRIMITIVE_FAILED (nothing was begun, or the key is
 * gone), CSP_ERR_MEMORY, CSP_ERR_OUTPUT_TOO_SHORT: for DES and triple DES Length must be at least 128, though the MAC has 8
 * bytes; for CSP_ALG_MD5 16. With DES and triple DES the last step is taken before the output is looked at, so such a
 * failure cannot be made good by another call. CSP_ALG_MD5 can be finished with a better buffer. */
MORVANE_API int32_t MORVANE_STDCALL CSP_GenerateMacFinal(uint32_t csp, CspHandle handle, CSSM_DATA* mac);

/* Finishes the MAC and compares it with expected->Data, in a time that does not depend on the bytes. With DES and triple
 * DES the first 8 bytes are compared, whatever the Length; with CSP_ALG_MD5 16, and a shorter Length is a mismatch. Returns
 * 0 when they agree. On a mismatch -1, and the error cell keeps what it holds. Otherwise -1 with, in this order:
 * CSP_ERR_NO_CONTEXT (null handle), CSP_ERR_NULL_POINTER (expected is null), CSP_ERR_BAD_DATA (no Data),
 * CSP_ERR_PRIMITIVE_FAILED (nothing was begun, or the key is gone). */
MORVANE_API int32_t MORVANE_STDCALL CSP_VerifyMacFinal(uint32_t csp, CspHandle handle, const CSSM_DATA* expected);

/* Init with the context record, Update, Final; the first failure is returned. Update and Final go by the handle: pass a
 * session and a null context, as with CSP_EncryptData. */
MORVANE_API int32_t MORVANE_STDCALL CSP_GenerateMac(uint32_t csp, CspHandle handle, const CSSM_CONTEXT* context,
                                                    const CSSM_DATA* buffers, uint32_t count, CSSM_DATA* mac);
MORVANE_API int32_t MORVANE_STDCALL CSP_VerifyMac(uint32_t csp, CspHandle handle, const CSSM_CONTEXT* context,
                                                  const CSSM_DATA* buffers, uint32_t count, const CSSM_DATA* expected);

/* ---- Keys ---- */

/* Makes a secret key as encryption and MACs take it: its data is the expanded key of the session's cipher.
 *   handle, context   a session or context record of type CSP_CONTEXT_KEYGEN; the context record wins
 *   usage, attributes go into the header's KeyUsage and KeyAttr
 *   label             the key before its expansion; only read. Null, or with Length and Data both zero: a random key from
 * RAND_Bytes (morvane/random.h), as long as CSP_ATTR_BLOCK_SIZE says; it is seen expanded only
 *   key               what is there is overwritten, but for KeyData: with Length and Data both zero the expanded key is
 * allocated, to be released by CSP_FreeKey; otherwise it goes into the caller's buffer, and Length becomes its length
 *
 * Attributes of the context: CSP_ATTR_BLOCK_SIZE, how many bytes of label are the key (absent: as many as the cipher takes,
 * or where it takes any number, all); CSP_ATTR_EFFECTIVE_BITS for RC2 (absent: 1024, nothing is reduced); CSP_ATTR_ROUNDS
 * for RC5 (absent: 16); CSP_ATTR_START_DATE and CSP_ATTR_END_DATE for the header. CSP_ATTR_KEY_LENGTH is not needed: the
 * length of the data is the cipher's, 128 bytes for DES, RC2 and SEED, 256 for triple DES, 432 for IDEA, 140 for RC5, 1032
 * for RC4, 4168 for Blowfish. The header's BlobType becomes 2, KeyClass 2, AlgorithmId the session's algorithm and
 * LogicalKeySizeInBits eight times the bytes of the key; words not named here become 0.
 *
 * Returns 0, or -1 with, in this order: CSP_ERR_NO_CONTEXT, CSP_ERR_WRONG_CONTEXT_TYPE, CSP_ERR_NULL_POINTER (key is null),
 * CSP_ERR_UNKNOWN_ALGORITHM (not a cipher of this layer), CSP_ERR_BAD_KEY (label is shorter than the key, or has a Length
 * but no Data, or a random key of more than 256 bytes is wanted), CSP_ERR_BAD_DATA (exactly one of Length and Data of the
 * key is zero), CSP_ERR_OUTPUT_TOO_SHORT, CSP_ERR_MEMORY, CSP_ERR_BAD_KEY (the cipher has no key of that length). A failure
 * leaves *key as it was. */
MORVANE_API int32_t MORVANE_STDCALL CSP_GenerateKey(uint32_t csp, CspHandle handle, const CSSM_CONTEXT* context,
                                                    uint32_t usage, uint32_t attributes, const CSSM_DATA* label,
                                                    CSSM_KEY* key);

/* Wipes and releases the data of a key that this layer allocated, and leaves Length 0 and Data null. A key without data is
 * left alone. A caller's own buffer must not be passed here.
 *   pass_phrase   never read; may be null
 * Returns 0, or -1 with CSP_ERR_NULL_POINTER (key is null). */
MORVANE_API int32_t MORVANE_STDCALL CSP_FreeKey(uint32_t csp, const CSSM_DATA* pass_phrase, CSSM_KEY* key);

/* ---- Key pairs, parameters, wrapping, derivation ----
 *
 * Here too, an output with Length and Data both zero is allocated (a key's data for CSP_FreeKey, parameters for free()),
 * and one with both goes into the caller's buffer, whose Length becomes what was written. A failure leaves outputs as they
 * were. Of the codes, CSP_ERR_NO_CONTEXT, CSP_ERR_WRONG_CONTEXT_TYPE and CSP_ERR_NULL_POINTER (a record that is not said to
 * be optional is null) come first, in this order, and for outputs CSP_ERR_BAD_DATA, CSP_ERR_OUTPUT_TOO_SHORT and
 * CSP_ERR_MEMORY last. The context is of type CSP_CONTEXT_KEYGEN where nothing else is said; labels and pass phrases are
 * never read and may be null. */

/* Makes a key pair: CSP_ALG_RSA, CSP_ALG_MD5_WITH_RSA, CSP_ALG_MD2_WITH_RSA and CSP_ALG_SHA1_WITH_RSA by E_RSA_GenerateKey
 * with the exponent 65537; CSP_ALG_DSA and CSP_ALG_SHA1_WITH_DSA by E_DSA_GenerateKey, CSP_ALG_HAS160_WITH_KCDSA by
 * E_KCDSA_GenerateKey, with an order of 160 bits below 2048 bits and of 256 from there on. CSP_ATTR_BLOCK_SIZE is the size
 * in bits. The data are the DER of morvane/asn1.h. Headers: BlobType 1, KeyClass 0 and 1, LogicalKeySizeInBits the size,
 * AlgorithmId the session's, usage and attributes as given, dates as for CSP_GenerateKey.
 *
 * Returns 0, or -1 with CSP_ERR_UNKNOWN_ALGORITHM, CSP_ERR_NO_ATTRIBUTE (no size), CSP_ERR_PRIMITIVE_FAILED (a size that
 * the generator refuses). */
MORVANE_API int32_t MORVANE_STDCALL CSP_GenerateKeyPair(uint32_t csp, CspHandle handle, const CSSM_CONTEXT* context,
                                                        uint32_t public_usage, uint32_t public_attributes,
                                                        const CSSM_DATA* public_label, CSSM_KEY* public_key,
                                                        uint32_t private_usage, uint32_t private_attributes,
                                                        const CSSM_DATA* private_label, CSSM_KEY* private_key);

/* Makes parameters of so many bits, as DER: for CSP_ALG_DH a safe prime and the generator 2, which CSP_DeriveKey uses from
 * then on; for CSP_ALG_DSA, CSP_ALG_SHA1_WITH_DSA and CSP_ALG_HAS160_WITH_KCDSA p, q and g, sized as key pairs are. Returns
 * 0, or -1 with CSP_ERR_UNKNOWN_ALGORITHM, CSP_ERR_PRIMITIVE_FAILED (bits that the generator refuses). */
MORVANE_API int32_t MORVANE_STDCALL CSP_GenerateAlgorithmParams(uint32_t csp, CspHandle handle, const CSSM_CONTEXT* context,
                                                                uint32_t bits, CSSM_DATA* params);

/* Enciphers a key's data under the key of a context of type CSP_CONTEXT_SYMMETRIC or CSP_CONTEXT_CIPHER_ALT. With a cipher
 * it takes that key, CSP_ATTR_MODE and CSP_ATTR_INIT_VECTOR as encryption does and adds PKCS #5 padding in every mode; RC4
 * has none, and its state moves on. With CSP_ALG_RSA the key is the DER of a public key (BlobType 1), and the block that of
 * E_RSA_Public_Encrypt. The data of a secret key is its expansion, too long for RSA keys of few bits.
 *   wrapped   the header of the key, with BlobType 3, in Format what its BlobType was, and algorithm and mode of wrapping
 * Returns 0, or -1 with CSP_ERR_BAD_KEY (the key has no data), CSP_ERR_KEY_ATTRIBUTE_MISSING, CSP_ERR_BAD_KEY (the wrapping
 * key is none for this), CSP_ERR_UNKNOWN_MODE, CSP_ERR_UNKNOWN_ALGORITHM, CSP_ERR_INIT_VECTOR, CSP_ERR_PRIMITIVE_FAILED
 * (too long for RSA). */
MORVANE_API int32_t MORVANE_STDCALL CSP_WrapKey(uint32_t csp, CspHandle handle, const CSSM_CONTEXT* context,
                                                const CSSM_DATA* pass_phrase, const CSSM_KEY* key, CSSM_KEY* wrapped);

/* The way back, for RSA with the DER of a private key. Returns 0, or -1 with the codes of CSP_WrapKey, CSP_ERR_BAD_KEY also
 * for a key that is not wrapped, or by another algorithm, and CSP_ERR_PRIMITIVE_FAILED where the padding is wrong. */
MORVANE_API int32_t MORVANE_STDCALL CSP_UnwrapKey(uint32_t csp, CspHandle handle, const CSSM_CONTEXT* context,
                                                  const CSSM_DATA* pass_phrase, const CSSM_KEY* wrapped, CSSM_KEY* key);

/* Makes a secret key from a Diffie-Hellman secret: CSP_ALG_DH, with the parameters that CSP_GenerateAlgorithmParams made
 * last.
 *   base_key   its data is the own private value, most significant byte first, as is
 *   param      the peer's public value
 *   derived    its header's AlgorithmId says for which cipher. The first bytes of the secret, without its leading zeros,
 * are the key: as many as CSP_ATTR_BLOCK_SIZE says, or the cipher takes; it becomes what CSP_GenerateKey makes of them
 * Returns 0, or -1 with CSP_ERR_UNKNOWN_ALGORITHM, CSP_ERR_DERIVE_KEY (no such cipher, no parameters yet, no value, or one
 * of more than 600 bytes), CSP_ERR_DH_COMPUTATION (no secret, or one of fewer bytes than the key), CSP_ERR_BAD_KEY (the
 * cipher has no key of that length). */
MORVANE_API int32_t MORVANE_STDCALL CSP_DeriveKey(uint32_t csp, CspHandle handle, const CSSM_CONTEXT* context,
                                                  const CSSM_KEY* base_key, const CSSM_DATA* param, uint32_t usage,
                                                  uint32_t attributes, const CSSM_DATA* label, CSSM_KEY* derived);

/* ---- Random bytes ---- */

/* Fills output->Data with as many random bytes as the attribute CSP_ATTR_OUTPUT_SIZE asks for and sets output->Length to
 * that number. Data is the caller's, is not tested for null and never allocated here.
 *   handle, context   a session or context record of type CSP_CONTEXT_RANDOM; the context record wins
 * Algorithms: CSP_ALG_RANDOM, E_GenerateRandom with mode 0, and CSP_ALG_RANDOM_ALT, the same with mode 1. Neither is fit
 * for keys: see morvane/random.h. Returns 0, or -1 with, in this order: CSP_ERR_NO_CONTEXT, CSP_ERR_WRONG_CONTEXT_TYPE,
 * CSP_ERR_NO_OUTPUT_SIZE, CSP_ERR_NULL_POINTER (output is null), CSP_ERR_BAD_DATA (output->Length is below the number
 * wanted; deliberately not CSP_ERR_OUTPUT_TOO_SHORT), CSP_ERR_UNKNOWN_ALGORITHM. */
MORVANE_API int32_t MORVANE_STDCALL CSP_GenerateRandom(uint32_t csp, CspHandle handle, const CSSM_CONTEXT* context,
                                                       CSSM_DATA* output);

/* ---- Sizes ---- */

/* Writes the block length in bytes of the session's cipher to both words of *sizes (input block, output block). It is the
 * one of ECB mode, whatever mode the context names; stream ciphers have 0. The type of the context is not tested.
 *   handle, context   a session or context record; the context record wins
 *   encrypt, count    never read
 * Ciphers: those of encryption, see there: 16 for SEED, 8 for the other block ciphers, 0 for RC4 and the null cipher.
 * Returns 0, or -1 with, in this order: CSP_ERR_NO_CONTEXT, CSP_ERR_NULL_POINTER (sizes is null),
 * CSP_ERR_UNKNOWN_ALGORITHM, CSP_ERR_UNKNOWN_MODE (the cipher has no ECB mode). */
MORVANE_API int32_t MORVANE_STDCALL CSP_QuerySize(uint32_t csp, CspHandle handle, const CSSM_CONTEXT* context,
                                                  uint32_t encrypt, uint32_t count, CspSizePair* sizes);

/* Writes the sizes of a key in bits to *sizes: first the LogicalKeySizeInBits of its header, then the length of its data
 * times 8 (modulo 2^32).
 *   key   the key, or null for the session's attribute CSP_ATTR_KEY
 * Returns 0, or -1 with, in this order: CSP_ERR_NO_CONTEXT (null handle), CSP_ERR_NO_KEY (no key argument, and no key
 * attribute or a null one), CSP_ERR_BAD_KEY (the key has no data), CSP_ERR_NULL_POINTER (sizes is null). */
MORVANE_API int32_t MORVANE_STDCALL CSP_QuerySizeInBits(uint32_t csp, CspHandle handle, const CSSM_KEY* key,
                                                        CspSizePair* sizes);

#ifdef __cplusplus
}
#endif

#endif
