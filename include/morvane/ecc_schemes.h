/* Elliptic curve schemes: key pairs, ECDSA and EC-KCDSA signatures, Diffie-Hellman, key agreement and encryption.
 *
 * Curves. Every function but the derivation and the two lengths takes a curve's identifier and the record that
 * E_ECParams_Init made for it (see morvane/ecc.h). The schemes work on curves 3, 5 and 7, with the constants that are
 * compiled in: the record's own values are not read, and another identifier is refused like a bad key. L is the octets of a
 * coordinate, 20 for curve 7 and 21 for the others; n is the order of the base point G; h() is the digest of a scheme.
 *
 * Octet strings. Messages, keys, points, signatures and secrets travel as TORVA_V1_OPAQUE8. Of an input both members are
 * read. Of an output the octets must point to as much room as the function says; only the count is written, whatever it was
 * before, and after a failure neither count nor octets mean anything unless the function says more. An output must not
 * overlap an input. A null record, a null pointer to octets and a negative count are refused. Numbers are big-endian.
 *
 *   private key   the block that E_ECC_GenerateKeyPair makes: 0x02, L, the scalar d in L octets. Wherever a private key is
 *                 taken, its bare octets, from 1 to 21 of them, will do as well. d is from 1 to n - 1.
 *   public key    the point in the form of TORVA_V1_ECPointsToopaque8: 0x04, x, y, exactly 2 L + 1 octets. Every function
 *                 that computes with somebody's point validates it as TORVA_V1_IsValidPoint does before.
 *
 * Random scalars come from E_GenerateRandom_X962 or E_GenerateRandom_ECKCDSA. Before one is drawn for a signature, a hash
 * of private key and message is stirred into the general pool: a state that comes a second time, say of a process that
 * forked, does not sign two messages with one k, which would give the key away.
 *
 * Time. What is done with private keys and secret scalars takes a time that does not depend on their values, but for the
 * generators' own division and conversion, which tell a little about how long a drawn number is. Verification and
 * validation of points do not keep to that. Secrets are wiped from the stack; outputs are the caller's to wipe.
 *
 * Strength. 160-bit curves resist some 2^80 operations, and SHA-1 less than that: for what exists, not for new formats.
 *
 * Threads. What draws random scalars takes turns (see morvane/random.h); everything else has no state. */
#ifndef MORVANE_ECC_SCHEMES_H
#define MORVANE_ECC_SCHEMES_H

#include <morvane/ecc.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Room that suffices for any curve; that of a point is E_EC_POINT_OCTETS. */
#define E_EC_PRIVATE_KEY_OCTETS    23 /* a private key block: L + 2 */
#define E_EC_SCALAR_OCTETS         21 /* a bare private key, r or s */
#define E_EC_SHARED_OCTETS         21 /* a shared x-coordinate: L */
#define E_ECDSA_SIGNATURE_OCTETS   48 /* an ECDSA signature block at its longest */
#define E_ECKCDSA_SIGNATURE_OCTETS 47 /* an EC-KCDSA signature block: L + 26 */
#define E_ECKCDSA_HASH_OCTETS      20 /* r of EC-KCDSA, a digest of HAS-160 */

/* ---- Key pairs ----
 *
 * Room: E_EC_PRIVATE_KEY_OCTETS and E_EC_POINT_OCTETS. Return 0; -1 if an output is missing, the curve is refused, or
 * the multiplication failed.
 *
 * On curve 7 n has 161 bits and the block 20 octets: of scalars that need 21, one in 2^79, another is drawn. */

/* A key pair of ANSI X9.62, for ECDSA, agreement and encryption: d from E_GenerateRandom_X962, Q = d G. */
MORVANE_API int32_t MORVANE_CALL E_ECC_GenerateKeyPair(int32_t curveId, const E_EC_PARAMS* params,
                                                       TORVA_V1_OPAQUE8* privateOut, TORVA_V1_OPAQUE8* publicOut);

/* A key pair of EC-KCDSA: d from E_GenerateRandom_ECKCDSA, Q = (1 / d) G. */
MORVANE_API int32_t MORVANE_CALL E_ECC_GenerateKeyPair_ECKCDSA(int32_t curveId, const E_EC_PARAMS* params,
                                                               TORVA_V1_OPAQUE8* privateOut, TORVA_V1_OPAQUE8* publicOut);

/* The EC-KCDSA key pair of one private key that stands in the library, for tests: everybody knows it. Prints
 * "\nd = ", "\ndInv = ", "\nQx = " and "\nQy = ", each followed by a number in hexadecimal, and a newline. */
MORVANE_API int32_t MORVANE_CALL E_ECC_GenerateKeyPair_ECKCDSA_TEST(int32_t curveId, const E_EC_PARAMS* params,
                                                                    TORVA_V1_OPAQUE8* privateOut,
                                                                    TORVA_V1_OPAQUE8* publicOut);

/* The same three with the private key as its bare L octets, without the two before them. */
MORVANE_API int32_t MORVANE_CALL TORVA_V1_ECC_KeyPairGeneration_X962(int32_t curveId, const E_EC_PARAMS* params,
                                                                     TORVA_V1_OPAQUE8* privateOut,
                                                                     TORVA_V1_OPAQUE8* publicOut);
MORVANE_API int32_t MORVANE_CALL TORVA_V1_ECC_KeyPairGeneration_ECKCDSA(int32_t curveId, const E_EC_PARAMS* params,
                                                                        TORVA_V1_OPAQUE8* privateOut,
                                                                        TORVA_V1_OPAQUE8* publicOut);
MORVANE_API int32_t MORVANE_CALL TORVA_V1_ECC_KeyPairGeneration_ECKCDSA_TEST(int32_t curveId, const E_EC_PARAMS* params,
                                                                             TORVA_V1_OPAQUE8* privateOut,
                                                                             TORVA_V1_OPAQUE8* publicOut);

/* ---- ECDSA (ANSI X9.62) with SHA-1 ----
 *
 * The block is DER: SEQUENCE { INTEGER r, INTEGER s }, each in its shortest form, so with a zero octet in front where the
 * first one is 0x80 or more. */

/* Signs message. signatureOut has E_ECDSA_SIGNATURE_OCTETS of room. Returns 0, or -4: nothing can be signed with these
 * arguments, or a multiplication failed. */
MORVANE_API int32_t MORVANE_CALL E_ECDSA_Sign(int32_t curveId, const E_EC_PARAMS* params, const TORVA_V1_OPAQUE8* message,
                                              TORVA_V1_OPAQUE8* signatureOut, const TORVA_V1_OPAQUE8* privateKey);

/* Returns 1 for a valid signature; -1 for a public key that is none; otherwise 0, also for a block that is not DER, has
 * anything behind it, or whose r or s is 0 or not below n. */
MORVANE_API int32_t MORVANE_CALL E_ECDSA_Verify(int32_t curveId, const E_EC_PARAMS* params, const TORVA_V1_OPAQUE8* message,
                                                const TORVA_V1_OPAQUE8* signature, const TORVA_V1_OPAQUE8* publicKey);

/* The same with r and s apart, as numbers: written without leading zeros, E_EC_SCALAR_OCTETS of room each; read with up to
 * E_EC_SCALAR_OCTETS octets. */
MORVANE_API int32_t MORVANE_CALL TORVA_V1_ECC_SignatureGeneration_X917(int32_t curveId, const E_EC_PARAMS* params,
                                                                       const TORVA_V1_OPAQUE8* message,
                                                                       TORVA_V1_OPAQUE8* rOut, TORVA_V1_OPAQUE8* sOut,
                                                                       const TORVA_V1_OPAQUE8* privateKey);
MORVANE_API int32_t MORVANE_CALL TORVA_V1_ECC_SignatureVerification(int32_t curveId, const E_EC_PARAMS* params,
                                                                    const TORVA_V1_OPAQUE8* message,
                                                                    const TORVA_V1_OPAQUE8* r, const TORVA_V1_OPAQUE8* s,
                                                                    const TORVA_V1_OPAQUE8* publicKey);

/* ---- EC-KCDSA with HAS-160 ----
 *
 * z is the public key without its first octet, cut or filled with zeros to 64 octets. H = h(z || message), r = h(the L
 * octets of x of k G), e = (r XOR H) mod n, s = d (k - e) mod n. A signature is valid if 0 < s < n and r is the digest of x
 * of s Q + e G.
 *
 * The block is 0x30, L + 24, 0x04, 20, r, 0x04, L, s with s in L octets: both are OCTET STRINGs, not INTEGERs.
 *
 * Departs from TTAS.KO-12.0015: on curve 7, whose order has 161 bits, the private key and s have 20 octets; of scalars that
 * need 21, one in 2^79, others are drawn. */

/* Signs message. publicKey is the signer's, for z; it is neither validated nor compared with the private key, and a
 * signature with another one is not valid. signatureOut has E_ECKCDSA_SIGNATURE_OCTETS of room. Returns 0 or -4 as
 * E_ECDSA_Sign. */
MORVANE_API int32_t MORVANE_CALL E_ECKCDSA_Sign(int32_t curveId, const E_EC_PARAMS* params, const TORVA_V1_OPAQUE8* message,
                                                TORVA_V1_OPAQUE8* signatureOut, const TORVA_V1_OPAQUE8* privateKey,
                                                const TORVA_V1_OPAQUE8* publicKey);

/* Signs with the caller's k, from 1 to n - 1 in 1 to 21 octets, for tests: whoever knows k, or sees it used for two
 * messages, computes the private key. -4 also if there is no signature with that k. */
MORVANE_API int32_t MORVANE_CALL E_ECKCDSA_Sign_givenK(int32_t curveId, const E_EC_PARAMS* params,
                                                       const TORVA_V1_OPAQUE8* message, TORVA_V1_OPAQUE8* signatureOut,
                                                       const TORVA_V1_OPAQUE8* privateKey,
                                                       const TORVA_V1_OPAQUE8* publicKey, const TORVA_V1_OPAQUE8* k);

/* Returns 1, 0 or -1 as E_ECDSA_Verify; the lengths in the block must be those above. On curve 7 an s of 21 octets is taken
 * too, which is what the standard makes of an order of 161 bits. */
MORVANE_API int32_t MORVANE_CALL E_ECKCDSA_Verify(int32_t curveId, const E_EC_PARAMS* params,
                                                  const TORVA_V1_OPAQUE8* message, const TORVA_V1_OPAQUE8* signature,
                                                  const TORVA_V1_OPAQUE8* publicKey);

/* The same, and where key and block are good prints "\nH = ", "\ne = " and "\nh(x) = ", each followed by its value in
 * hexadecimal, and a newline; h(x) is what r has to be. */
MORVANE_API int32_t MORVANE_CALL E_ECKCDSA_Verify_TEST(int32_t curveId, const E_EC_PARAMS* params,
                                                       const TORVA_V1_OPAQUE8* message, const TORVA_V1_OPAQUE8* signature,
                                                       const TORVA_V1_OPAQUE8* publicKey);

/* The same with r and s apart: r has E_ECKCDSA_HASH_OCTETS, s is written in L octets and read with up to
 * E_EC_SCALAR_OCTETS. */
MORVANE_API int32_t MORVANE_CALL TORVA_V1_ECC_SignatureGeneration_ECKCDSA(int32_t curveId, const E_EC_PARAMS* params,
                                                                          const TORVA_V1_OPAQUE8* message,
                                                                          TORVA_V1_OPAQUE8* rOut, TORVA_V1_OPAQUE8* sOut,
                                                                          const TORVA_V1_OPAQUE8* privateKey,
                                                                          const TORVA_V1_OPAQUE8* publicKey);
MORVANE_API int32_t MORVANE_CALL TORVA_V1_ECC_SignatureVerification_ECKCDSA(int32_t curveId, const E_EC_PARAMS* params,
                                                                            const TORVA_V1_OPAQUE8* message,
                                                                            const TORVA_V1_OPAQUE8* r,
                                                                            const TORVA_V1_OPAQUE8* s,
                                                                            const TORVA_V1_OPAQUE8* publicKey);

/* ---- Agreement ---- */

/* Diffie-Hellman: the x-coordinate of d Q, L octets; E_EC_SHARED_OCTETS of room. Returns 0; -4 for keys that are none, or
 * if the multiplication fails. The two names are one entry point. */
MORVANE_API int32_t MORVANE_CALL TORVA_V1_ECDHPrimitive(int32_t curveId, const E_EC_PARAMS* params,
                                                        const TORVA_V1_OPAQUE8* privateKey,
                                                        const TORVA_V1_OPAQUE8* publicPoint, TORVA_V1_OPAQUE8* sharedOut);
MORVANE_API int32_t MORVANE_CALL E_ECC_ECDH_Primitive(int32_t curveId, const E_EC_PARAMS* params,
                                                      const TORVA_V1_OPAQUE8* privateKey,
                                                      const TORVA_V1_OPAQUE8* publicPoint, TORVA_V1_OPAQUE8* sharedOut);

/* The key derivation of ANSI X9.63 with SHA-1: h(Z || 1 || SharedInfo) || h(Z || 2 || SharedInfo) || ..., the counter in
 * four octets, cut to length octets, which is the room that keyOut must have. sharedInfo may be null for none. Returns 0;
 * -1 for a bad argument, a length below 1 or an empty secret among them. */
MORVANE_API int32_t MORVANE_CALL TORVA_V1_DeriveKeyData(const TORVA_V1_OPAQUE8* secret, const TORVA_V1_OPAQUE8* sharedInfo,
                                                        int32_t length, TORVA_V1_OPAQUE8* keyOut);

/* One-pass Diffie-Hellman of ANSI X9.63: TORVA_V1_DeriveKeyData of the shared x-coordinate. The side that begins passes an
 * ephemeral private key and the other side's static public key, and sends its ephemeral public key; the other side passes
 * its static private key and the ephemeral public key it got. Returns 0; -1 as the derivation does, -4 as
 * TORVA_V1_ECDHPrimitive does. */
MORVANE_API int32_t MORVANE_CALL E_ECC_X9_63_KAS_OPDHS(int32_t curveId, const E_EC_PARAMS* params,
                                                       const TORVA_V1_OPAQUE8* privateKey,
                                                       const TORVA_V1_OPAQUE8* publicKey,
                                                       const TORVA_V1_OPAQUE8* sharedInfo, int32_t length,
                                                       TORVA_V1_OPAQUE8* keyOut);

/* The full unified model of ANSI X9.63: both sides have a static and an ephemeral key pair and know the other side's two
 * public keys; Z is the x-coordinate that the ephemeral keys share, followed by the one of the static keys. Returns as
 * E_ECC_X9_63_KAS_OPDHS. */
MORVANE_API int32_t MORVANE_CALL E_ECC_X9_63_FUMS(int32_t curveId, const E_EC_PARAMS* params,
                                                  const TORVA_V1_OPAQUE8* staticPrivateKey,
                                                  const TORVA_V1_OPAQUE8* ephemeralPrivateKey,
                                                  const TORVA_V1_OPAQUE8* staticPublicKey,
                                                  const TORVA_V1_OPAQUE8* ephemeralPublicKey,
                                                  const TORVA_V1_OPAQUE8* sharedInfo, int32_t length,
                                                  TORVA_V1_OPAQUE8* keyOut);

/* ---- Encryption ----
 *
 * The scheme of ANSI X9.63 with SHA-1. A ciphertext is an ephemeral point in 2 L + 1 octets, the message XORed with the
 * first octets of the key that TORVA_V1_DeriveKeyData makes of the shared x-coordinate without SharedInfo, and a tag of 20
 * octets: HMAC with SHA-1 over the XORed message, keyed with the next 20 octets of the derived key. It is the HMAC of RFC
 * 2104 and ANSI X9.71, which E_HMAC_SHA1 is not. */

/* The octets of the ciphertext of so many: length plus the overhead of params. -1 if that is too much for the result. */
MORVANE_API int32_t MORVANE_CALL TORVA_V1_ECC_getLengthOfMessageToBeEncrypted(const E_EC_PARAMS* params, int32_t length);

/* The octets of the message in a ciphertext: its own less the overhead of params; -1 if that is below 1. Only the count of
 * the ciphertext is read. */
MORVANE_API int32_t MORVANE_CALL TORVA_V1_ECC_getLengthOfOriginalMessage(const E_EC_PARAMS* params,
                                                                         const TORVA_V1_OPAQUE8* ciphertext);

/* Enciphers a message of at least one octet. Room: what TORVA_V1_ECC_getLengthOfMessageToBeEncrypted says. Returns 0; -1
 * for a bad argument, or if a multiplication failed. */
MORVANE_API int32_t MORVANE_CALL E_ECC_Encryption(int32_t curveId, const E_EC_PARAMS* params,
                                                  const TORVA_V1_OPAQUE8* message, TORVA_V1_OPAQUE8* ciphertextOut,
                                                  const TORVA_V1_OPAQUE8* publicKey);

/* Deciphers. Room: what TORVA_V1_ECC_getLengthOfOriginalMessage says. Returns 0; -1 for a bad argument, an ephemeral point
 * that is none, or a wrong tag: messageOut is left alone then. */
MORVANE_API int32_t MORVANE_CALL E_ECC_Decryption(int32_t curveId, const E_EC_PARAMS* params,
                                                  const TORVA_V1_OPAQUE8* ciphertext, TORVA_V1_OPAQUE8* messageOut,
                                                  const TORVA_V1_OPAQUE8* privateKey);

#ifdef __cplusplus
}
#endif

#endif
