"""Constants, records and functions of the library. Made by scripts/python_bindings.py from the headers; do not edit.

Pointers to octets and to words are plain addresses here: bytes (for input), buffers of ctypes and None will do.
"""

from ctypes import (CFUNCTYPE, POINTER, Structure, Union, c_char_p, c_int32, c_size_t, c_uint8, c_uint16, c_uint32,
                    c_void_p)

MORVANE_VERSION_MAJOR = 0
MORVANE_VERSION_MINOR = 1
MORVANE_VERSION_PATCH = 0
MORVANE_VERSION = "0.1.0"
K_OPTION_CBC_PKCS5 = 1
KERR_MEMORY = 65542
KERR_EMPTY_KEY = 65543
KERR_NOT_READY = 131072
KERR_OUTPUT_ALLOC = 131073
KERR_KEY_SETUP = 131074
KERR_KEYGEN = 131075
KERR_CIPHER_OPTION = 131076
KERR_CIPHER_INIT = 131077
KERR_ENCRYPT_UPDATE = 131078
KERR_ENCRYPT_FINAL = 131079
KERR_DECRYPT_UPDATE = 131082
KERR_DECRYPT_FINAL = 131083
KERR_DIGEST_INIT = 131087
KERR_DIGEST_UPDATE = 131088
KERR_DIGEST_FINAL = 131089
KERR_MAC_INIT = 131091
KERR_MAC_FINAL = 131093
KERR_MAC_VERIFY = 131094
KERR_ENCRYPT_IV = 131095
KERR_DECRYPT_IV = 131096
KERR_ENCRYPT_STREAM = 131097
KERR_DECRYPT_STREAM = 131098
KERR_CIPHER_HELPER = 131099
KERR_RSA_PUBLIC_ENCRYPT = 131100
KERR_RSA_PRIVATE_DECRYPT = 131101
KERR_RSA_PRIVATE_ENCRYPT = 131102
KERR_RSA_PUBLIC_DECRYPT = 131103
KERR_ENCRYPT = 131104
KERR_DECRYPT = 131105
KERR_SIGN = 131106
KERR_VERIFY = 131107
KERR_AGREE = 131108
KERR_KEY_SHARE = 131109
K_CIPHER_DES = 0
K_CIPHER_DES3 = 1
K_CIPHER_RC2 = 2
K_CIPHER_RC4 = 3
K_CIPHER_RC5 = 4
K_CIPHER_IDEA = 5
K_CIPHER_BLOWFISH = 6
K_CIPHER_RC2_40 = 11
K_CIPHER_SEED = 12
K_PAIR_RSA = 7
K_PAIR_DSA = 8
K_PAIR_KCDSA = 9
K_HASH_MD2 = 0
K_HASH_MD5 = 1
K_HASH_SHA1 = 2
K_HASH_MD4 = 3
K_HASH_RIPEMD160 = 4
K_HASH_HAS160 = 5
K_SIGN_SHA256 = 6
K_SIGN_SHA384 = 7
K_SIGN_SHA512 = 8
K_MAC_DES = 0
K_MAC_DES3 = 1
K_MAC_MD5 = 2
CSP_ATTR_OUTPUT_SIZE = 268435469
CSP_ATTR_KEY = 1073741827
CSP_ATTR_PADDING = 268435462
CSP_ATTR_MODE = 268435475
CSP_ATTR_INIT_VECTOR = 536870916
CSP_ATTR_KEY_LENGTH = 268435466
CSP_ATTR_BLOCK_SIZE = 268435468
CSP_ATTR_ROUNDS = 268435470
CSP_ATTR_EFFECTIVE_BITS = 268435476
CSP_ATTR_START_DATE = 1610612757
CSP_ATTR_END_DATE = 1610612758
CSP_CHAIN_BYTES = 16
CSP_CARRIED_BYTES = 1024
CSP_CONTEXT_SYMMETRIC = 4
CSP_CONTEXT_DIGEST = 5
CSP_CONTEXT_RANDOM = 6
CSP_CONTEXT_MAC = 8
CSP_CONTEXT_CIPHER_ALT = 9
CSP_CONTEXT_KEYGEN = 10
CSP_ALG_NULL_CIPHER = 1
CSP_ALG_DH = 2
CSP_ALG_MD2 = 5
CSP_ALG_MD4 = 6
CSP_ALG_MD5 = 7
CSP_ALG_SHA1 = 8
CSP_ALG_RIPEMD160 = 11
CSP_ALG_DES = 14
CSP_ALG_DES3 = 18
CSP_ALG_IDEA = 20
CSP_ALG_RC2 = 21
CSP_ALG_RC5 = 22
CSP_ALG_RC4 = 23
CSP_ALG_BLOWFISH = 26
CSP_ALG_RSA = 40
CSP_ALG_DSA = 41
CSP_ALG_MD5_WITH_RSA = 42
CSP_ALG_MD2_WITH_RSA = 43
CSP_ALG_RANDOM = 46
CSP_ALG_RANDOM_ALT = 48
CSP_ALG_SHA1_WITH_RSA = 49
CSP_ALG_SHA1_WITH_DSA = 81
CSP_ALG_SEED = 88
CSP_ALG_HAS160 = 89
CSP_ALG_HAS160_WITH_KCDSA = 90
CSP_MODE_ECB = 2
CSP_MODE_CBC = 4
CSP_MODE_CFB = 7
CSP_MODE_OFB = 10
CSP_ERR_MEMORY = 1010
CSP_ERR_OUTPUT_TOO_SHORT = 1011
CSP_ERR_UNKNOWN_ALGORITHM = 1023
CSP_ERR_WRONG_CONTEXT_TYPE = 1026
CSP_ERR_NO_CONTEXT = 1027
CSP_ERR_NULL_POINTER = 1029
CSP_ERR_NO_BUFFERS = 1030
CSP_ERR_MAC_KEY_TOO_SHORT = 1031
CSP_ERR_BAD_KEY = 1032
CSP_ERR_NO_KEY = 1033
CSP_ERR_UNKNOWN_MODE = 1034
CSP_ERR_KEY_ATTRIBUTE_MISSING = 1036
CSP_ERR_KEY_CLASS = 1041
CSP_ERR_INIT_VECTOR = 1045
CSP_ERR_BAD_DATA = 1046
CSP_ERR_NO_OUTPUT_SIZE = 1047
CSP_ERR_DERIVE_KEY = 1048
CSP_ERR_DH_COMPUTATION = 1094
CSP_ERR_PRIMITIVE_FAILED = 1095
CSP_ERR_NO_ATTRIBUTE = 10304
EN_PRIME_SAFE = 16
EN_PRIME_STEPPED = 32
E_MD2_DIGEST_BYTES = 16
E_MD4_DIGEST_BYTES = 16
E_HAS160_DIGEST_BYTES = 20
E_RIPEMD160_DIGEST_BYTES = 20
E_SHA256_DIGEST_BYTES = 32
E_SHA384_DIGEST_BYTES = 48
E_SHA512_DIGEST_BYTES = 64
E_SHA1_DIGEST_BYTES = 20
E_SHA1_BLOCK_BYTES = 64
E_DES_BLOCK_BYTES = 8
E_SEED_BLOCK_BYTES = 16
E_IDEA_BLOCK_BYTES = 8
E_BF_BLOCK_BYTES = 8
E_RC2_BLOCK_BYTES = 8
E_RC5_BLOCK_BYTES = 8
E_BF_MAX_KEY_BYTES = 72
E_RC2_MAX_KEY_BYTES = 128
E_RC2_MAX_BITS = 1024
E_RC5_MAX_ROUNDS = 16
E_RSA_MODULUS_WORDS = 150
E_RSA_PRIME_WORDS = 75
E_DSA_WORDS = 150
E_KCDSA_WORDS = 150
E_KCDSA_R_BYTES = 20
E_KCDSA_SHA1 = 2
E_KCDSA_HAS160 = 5
E_DH_WORDS = 150
E_EC_WORDS = 6
E_EC_POINT_OCTETS = 43
TORVA_V1_COMB_POINTS = 16
E_EC_PRIVATE_KEY_OCTETS = 23
E_EC_SCALAR_OCTETS = 21
E_EC_SHARED_OCTETS = 21
E_ECDSA_SIGNATURE_OCTETS = 48
E_ECKCDSA_SIGNATURE_OCTETS = 47
E_ECKCDSA_HASH_OCTETS = 20


class ENUM(Structure):
    _fields_ = [
        ("sign", c_uint32),
        ("length", c_int32),
        ("words", POINTER(c_uint32)),
    ]


class CSSM_DATA(Structure):
    _fields_ = [
        ("Length", c_uint32),
        ("Data", POINTER(c_uint8)),
    ]


class CSSM_GUID(Structure):
    _fields_ = [
        ("Data", (c_uint32 * 4)),
    ]


class CSSM_DATE(Structure):
    _fields_ = [
        ("Data", (c_uint32 * 2)),
    ]


class CSSM_KEYHEADER(Structure):
    _fields_ = [
        ("HeaderVersion", c_uint32),
        ("CspId", CSSM_GUID),
        ("BlobType", c_uint32),
        ("Format", c_uint32),
        ("AlgorithmId", c_uint32),
        ("KeyClass", c_uint32),
        ("LogicalKeySizeInBits", c_uint32),
        ("KeyAttr", c_uint32),
        ("KeyUsage", c_uint32),
        ("StartDate", CSSM_DATE),
        ("EndDate", CSSM_DATE),
        ("WrapAlgorithmId", c_uint32),
        ("WrapMode", c_uint32),
        ("Reserved", c_uint32),
    ]


class CSSM_KEY(Structure):
    _fields_ = [
        ("KeyHeader", CSSM_KEYHEADER),
        ("KeyData", CSSM_DATA),
    ]


class CSSM_CONTEXT_ATTRIBUTE_Attribute(Union):
    _fields_ = [
        ("Uint32", c_uint32),
        ("Key", POINTER(CSSM_KEY)),
        ("Data", POINTER(CSSM_DATA)),
        ("Date", POINTER(CSSM_DATE)),
        ("Word", c_size_t),
    ]


class CSSM_CONTEXT_ATTRIBUTE(Structure):
    _fields_ = [
        ("AttributeType", c_uint32),
        ("AttributeLength", c_uint32),
        ("Attribute", CSSM_CONTEXT_ATTRIBUTE_Attribute),
    ]


class CSSM_CONTEXT(Structure):
    _fields_ = [
        ("ContextType", c_uint32),
        ("AlgorithmType", c_uint32),
        ("Reserve", c_uint32),
        ("NumberOfAttributes", c_uint32),
        ("ContextAttributes", POINTER(CSSM_CONTEXT_ATTRIBUTE)),
    ]


class K_CONTEXT(Structure):
    _fields_ = [
        ("companion", (c_size_t * 2)),
        ("companion_initialised", c_uint32),
        ("crypto", c_void_p),
        ("last_error", c_uint32),
    ]


class K_ALLOCATOR(Structure):
    _fields_ = [
        ("allocate", CFUNCTYPE(c_void_p, c_void_p, c_size_t)),
        ("release", CFUNCTYPE(None, c_void_p, c_void_p)),
        ("user", c_void_p),
    ]


class KccContext(Structure):
    _fields_ = [
        ("context", POINTER(K_CONTEXT)),
        ("error", c_uint32),
    ]


class CspSession(Structure):
    _fields_ = [
        ("context_type", c_uint32),
        ("algorithm", c_uint32),
        ("number_of_attributes", c_uint32),
        ("attributes", POINTER(CSSM_CONTEXT_ATTRIBUTE)),
        ("cipher_table", c_void_p),
        ("digest_table", c_void_p),
        ("state", c_void_p),
        ("mac_table", c_void_p),
        ("chain", (c_uint8 * 16)),
        ("carried", (c_uint8 * 1024)),
        ("carried_bytes", c_uint32),
    ]


class CspSizePair(Structure):
    _fields_ = [
        ("first", c_uint32),
        ("second", c_uint32),
    ]


class EN_PRIME_CONTEXT(Structure):
    _fields_ = [
        ("flags", c_uint32),
        ("remainder", POINTER(ENUM)),
        ("step", POINTER(ENUM)),
    ]


class E_SHA1_CTX(Structure):
    _fields_ = [
        ("count_lo", c_uint32),
        ("count_hi", c_uint32),
        ("block", (c_uint32 * 16)),
        ("state", (c_uint32 * 5)),
    ]


class E_SHA256_CTX(Structure):
    _fields_ = [
        ("state", (c_uint32 * 8)),
        ("count_lo", c_uint32),
        ("count_hi", c_uint32),
        ("block", (c_uint8 * 64)),
    ]


class E_SHA512_CTX(Structure):
    _fields_ = [
        ("state", (c_uint32 * 16)),
        ("count", (c_uint32 * 4)),
        ("block", (c_uint8 * 128)),
    ]


class E_MD2_CTX(Structure):
    _fields_ = [
        ("state", (c_uint8 * 16)),
        ("checksum", (c_uint8 * 16)),
        ("block", (c_uint8 * 16)),
        ("count", c_uint32),
    ]


class E_MD5_CTX(Structure):
    _fields_ = [
        ("count_lo", c_uint32),
        ("count_hi", c_uint32),
        ("state", (c_uint32 * 4)),
        ("block", (c_uint8 * 64)),
    ]


class E_HAS160_CTX(Structure):
    _fields_ = [
        ("count_lo", c_uint32),
        ("count_hi", c_uint32),
        ("state", (c_uint32 * 5)),
        ("block", (c_uint8 * 64)),
    ]


class E_RIPEMD160_CTX(Structure):
    _fields_ = [
        ("count_lo", c_uint32),
        ("count_hi", c_uint32),
        ("state", (c_uint32 * 5)),
        ("block", (c_uint32 * 16)),
        ("num", c_uint32),
    ]


class E_HMAC_SHA1_CTX(Structure):
    _fields_ = [
        ("key", (c_uint8 * 64)),
        ("key_len", c_uint32),
        ("inner", E_SHA1_CTX),
        ("outer", E_SHA1_CTX),
    ]


class E_DES_KEY_SCHEDULE(Structure):
    _fields_ = [
        ("round_keys", (c_uint32 * 32)),
    ]


class E_DES3_KEY_SCHEDULE(Structure):
    _fields_ = [
        ("keys", (E_DES_KEY_SCHEDULE * 2)),
    ]


class E_DES3_3KEY_SCHEDULE(Structure):
    _fields_ = [
        ("keys", (E_DES_KEY_SCHEDULE * 3)),
    ]


class E_SEED_KEY_SCHEDULE(Structure):
    _fields_ = [
        ("round_keys", (c_uint32 * 32)),
    ]


class E_IDEA_KEY_SCHEDULE(Structure):
    _fields_ = [
        ("encrypt", (c_uint16 * 52)),
        ("decrypt", (c_uint16 * 52)),
    ]


class E_BF_KEY_SCHEDULE(Structure):
    _fields_ = [
        ("p", (c_uint32 * 18)),
        ("s", ((c_uint32 * 256) * 4)),
    ]


class E_RC2_KEY_SCHEDULE(Structure):
    _fields_ = [
        ("k", (c_uint16 * 64)),
    ]


class E_RC5_KEY_SCHEDULE(Structure):
    _fields_ = [
        ("s", (c_uint32 * 34)),
        ("rounds", c_uint32),
    ]


class E_RC4_STATE(Structure):
    _fields_ = [
        ("x", c_uint32),
        ("y", c_uint32),
        ("s", (c_uint32 * 256)),
    ]


class E_RSA_KEY(Structure):
    _fields_ = [
        ("n", ENUM),
        ("e", ENUM),
        ("d", ENUM),
        ("p", ENUM),
        ("q", ENUM),
        ("dP", ENUM),
        ("dQ", ENUM),
        ("qInv", ENUM),
        ("n_words", (c_uint32 * 150)),
        ("e_words", (c_uint32 * 1)),
        ("d_words", (c_uint32 * 150)),
        ("p_words", (c_uint32 * 75)),
        ("q_words", (c_uint32 * 75)),
        ("dP_words", (c_uint32 * 75)),
        ("dQ_words", (c_uint32 * 75)),
        ("qInv_words", (c_uint32 * 75)),
    ]


class E_DSA_KEY(Structure):
    _fields_ = [
        ("x", ENUM),
        ("y", ENUM),
        ("p", ENUM),
        ("q", ENUM),
        ("g", ENUM),
        ("x_words", (c_uint32 * 150)),
        ("y_words", (c_uint32 * 150)),
        ("p_words", (c_uint32 * 150)),
        ("q_words", (c_uint32 * 150)),
        ("g_words", (c_uint32 * 150)),
    ]


class E_DH_KEY(Structure):
    _fields_ = [
        ("p", ENUM),
        ("g", ENUM),
        ("y", ENUM),
        ("x", ENUM),
        ("p_words", (c_uint32 * 150)),
        ("g_words", (c_uint32 * 1)),
        ("y_words", (c_uint32 * 150)),
        ("x_words", (c_uint32 * 150)),
    ]


class E_KCDSA_SIGNATURE(Structure):
    _fields_ = [
        ("r", (c_uint8 * 20)),
        ("s", ENUM),
        ("s_words", (c_uint32 * 150)),
    ]


class TORVA_V1_OPAQUE8(Structure):
    _fields_ = [
        ("count", c_int32),
        ("octets", POINTER(c_uint8)),
    ]


class TORVA_V1_POINT(Structure):
    _fields_ = [
        ("x", (c_uint32 * 6)),
        ("y", (c_uint32 * 6)),
    ]


class TORVA_V1_PROJECTIVE(Structure):
    _fields_ = [
        ("x", (c_uint32 * 6)),
        ("y", (c_uint32 * 6)),
        ("z", (c_uint32 * 6)),
    ]


class E_EC_PARAMS(Structure):
    _fields_ = [
        ("field", ENUM),
        ("a", ENUM),
        ("b", ENUM),
        ("x", ENUM),
        ("y", ENUM),
        ("n", ENUM),
        ("overhead", c_int32),
        ("field_words", (c_uint32 * 6)),
        ("a_words", (c_uint32 * 6)),
        ("b_words", (c_uint32 * 6)),
        ("x_words", (c_uint32 * 6)),
        ("y_words", (c_uint32 * 6)),
        ("n_words", (c_uint32 * 6)),
    ]


E_KCDSA_KEY = E_DSA_KEY

# Name in the DLL of 32-bit Windows, result, arguments.
MorvaneCrypto = {
    "K_KCCInit": ("K_KCCInit", c_int32, [POINTER(K_CONTEXT)]),
    "K_KCCTerm": ("K_KCCTerm", None, [POINTER(K_CONTEXT)]),
    "K_GenHash": ("K_GenHash", c_int32, [POINTER(K_CONTEXT), c_uint32, POINTER(CSSM_DATA), POINTER(CSSM_DATA)]),
    "K_GenRandom": ("K_GenRandom", c_int32, [POINTER(K_CONTEXT), c_uint32, c_uint32, c_void_p]),
    "K_GenMac": ("K_GenMac", c_int32, [POINTER(K_CONTEXT), c_uint32, POINTER(CSSM_DATA), POINTER(CSSM_DATA), POINTER(CSSM_DATA)]),
    "K_VerifyMac": ("K_VerifyMac", c_int32, [POINTER(K_CONTEXT), c_uint32, POINTER(CSSM_DATA), POINTER(CSSM_DATA), POINTER(CSSM_DATA)]),
    "K_Encryption": ("K_Encryption", c_int32, [POINTER(K_CONTEXT), c_uint32, c_uint32, POINTER(CSSM_DATA), POINTER(CSSM_DATA), POINTER(CSSM_DATA)]),
    "K_Decryption": ("K_Decryption", c_int32, [POINTER(K_CONTEXT), c_uint32, c_uint32, POINTER(CSSM_DATA), POINTER(CSSM_DATA), POINTER(CSSM_DATA)]),
    "K_Encryption_IV_Fix": ("K_Encryption_IV_Fix", c_int32, [POINTER(K_CONTEXT), c_uint32, c_uint32, POINTER(CSSM_DATA), POINTER(CSSM_DATA), POINTER(CSSM_DATA), POINTER(CSSM_DATA)]),
    "K_Decryption_IV_Fix": ("K_Decryption_IV_Fix", c_int32, [POINTER(K_CONTEXT), c_uint32, c_uint32, POINTER(CSSM_DATA), POINTER(CSSM_DATA), POINTER(CSSM_DATA), POINTER(CSSM_DATA)]),
    "K_KeyEncryption": ("K_KeyEncryption", c_int32, [POINTER(K_CONTEXT), c_uint32, POINTER(CSSM_DATA), POINTER(CSSM_DATA), POINTER(CSSM_DATA)]),
    "K_KeyDecryption": ("K_KeyDecryption", c_int32, [POINTER(K_CONTEXT), c_uint32, POINTER(CSSM_DATA), POINTER(CSSM_DATA), POINTER(CSSM_DATA)]),
    "K_KeyShareEncode": ("K_KeyShareEncode", c_int32, [POINTER(K_CONTEXT), POINTER(CSSM_DATA), c_uint32, c_uint32, POINTER(CSSM_DATA)]),
    "K_KeyShareDecode": ("K_KeyShareDecode", c_int32, [POINTER(K_CONTEXT), POINTER(CSSM_DATA), c_uint32, POINTER(CSSM_DATA)]),
    "K_GenAssymetricKey": ("K_GenAssymetricKey", c_int32, [POINTER(K_CONTEXT), c_uint32, c_uint32, POINTER(CSSM_DATA), POINTER(CSSM_DATA)]),
    "K_GenerateRSAKey": ("K_GenerateRSAKey", c_int32, [POINTER(K_CONTEXT), c_uint32, POINTER(CSSM_DATA), POINTER(CSSM_DATA)]),
    "K_GenerateKCDSAKeyPair": ("K_GenerateKCDSAKeyPair", c_int32, [POINTER(K_CONTEXT), c_uint32, POINTER(CSSM_DATA), POINTER(CSSM_DATA)]),
    "K_GenerateKCDSAKeyPair_Params": ("K_GenerateKCDSAKeyPair_Params", c_int32, [POINTER(K_CONTEXT), POINTER(CSSM_DATA), POINTER(CSSM_DATA), POINTER(CSSM_DATA)]),
    "K_RSAPublicEncrypt": ("K_RSAPublicEncrypt", c_int32, [POINTER(K_CONTEXT), POINTER(CSSM_DATA), POINTER(CSSM_DATA), POINTER(CSSM_DATA)]),
    "K_RSAPrivateDecrypt": ("K_RSAPrivateDecrypt", c_int32, [POINTER(K_CONTEXT), POINTER(CSSM_DATA), POINTER(CSSM_DATA), POINTER(CSSM_DATA)]),
    "K_RSAPublicEncryptOAEP": ("K_RSAPublicEncryptOAEP", c_int32, [POINTER(K_CONTEXT), POINTER(CSSM_DATA), POINTER(CSSM_DATA), POINTER(CSSM_DATA), POINTER(CSSM_DATA)]),
    "K_RSAPrivateDecryptOAEP": ("K_RSAPrivateDecryptOAEP", c_int32, [POINTER(K_CONTEXT), POINTER(CSSM_DATA), POINTER(CSSM_DATA), POINTER(CSSM_DATA), POINTER(CSSM_DATA)]),
    "K_RSAPrivateEncrypt": ("K_RSAPrivateEncrypt", c_int32, [POINTER(K_CONTEXT), POINTER(CSSM_DATA), POINTER(CSSM_DATA), POINTER(CSSM_DATA)]),
    "K_RSAPublicDecrypt": ("K_RSAPublicDecrypt", c_int32, [POINTER(K_CONTEXT), POINTER(CSSM_DATA), POINTER(CSSM_DATA), POINTER(CSSM_DATA)]),
    "K_RSASign": ("K_RSASign", c_int32, [POINTER(K_CONTEXT), c_uint32, POINTER(CSSM_DATA), POINTER(CSSM_DATA), POINTER(CSSM_DATA)]),
    "K_RSAVerify": ("K_RSAVerify", c_int32, [POINTER(K_CONTEXT), c_uint32, POINTER(CSSM_DATA), POINTER(CSSM_DATA), POINTER(CSSM_DATA)]),
    "K_RSASignPSS": ("K_RSASignPSS", c_int32, [POINTER(K_CONTEXT), c_int32, c_int32, POINTER(CSSM_DATA), POINTER(CSSM_DATA), POINTER(CSSM_DATA)]),
    "K_RSAVerifyPSS": ("K_RSAVerifyPSS", c_int32, [POINTER(K_CONTEXT), c_int32, c_int32, POINTER(CSSM_DATA), POINTER(CSSM_DATA), POINTER(CSSM_DATA)]),
    "K_KCDSASign": ("K_KCDSASign", c_int32, [POINTER(K_CONTEXT), c_int32, POINTER(CSSM_DATA), POINTER(CSSM_DATA), POINTER(CSSM_DATA)]),
    "K_KCDSAVerify": ("K_KCDSAVerify", c_int32, [POINTER(K_CONTEXT), c_int32, POINTER(CSSM_DATA), POINTER(CSSM_DATA), POINTER(CSSM_DATA)]),
    "K_KCDSASignHash": ("K_KCDSASignHash", c_int32, [POINTER(K_CONTEXT), POINTER(CSSM_DATA), POINTER(CSSM_DATA), POINTER(CSSM_DATA)]),
    "K_KCDSAVerifyHash": ("K_KCDSAVerifyHash", c_int32, [POINTER(K_CONTEXT), POINTER(CSSM_DATA), POINTER(CSSM_DATA), POINTER(CSSM_DATA)]),
    "K_GenerateECCKeyPair": ("K_GenerateECCKeyPair", c_int32, [POINTER(K_CONTEXT), c_int32, POINTER(CSSM_DATA), POINTER(CSSM_DATA)]),
    "K_GenerateECKCDSAKeyPair": ("K_GenerateECKCDSAKeyPair", c_int32, [POINTER(K_CONTEXT), c_int32, POINTER(CSSM_DATA), POINTER(CSSM_DATA)]),
    "K_ECDSASign": ("K_ECDSASign", c_int32, [POINTER(K_CONTEXT), c_int32, POINTER(CSSM_DATA), POINTER(CSSM_DATA), POINTER(CSSM_DATA)]),
    "K_ECDSAVerify": ("K_ECDSAVerify", c_int32, [POINTER(K_CONTEXT), c_int32, POINTER(CSSM_DATA), POINTER(CSSM_DATA), POINTER(CSSM_DATA)]),
    "K_ECKCDSASign": ("K_ECKCDSASign", c_int32, [POINTER(K_CONTEXT), c_int32, POINTER(CSSM_DATA), POINTER(CSSM_DATA), POINTER(CSSM_DATA), POINTER(CSSM_DATA)]),
    "K_ECKCDSAVerify": ("K_ECKCDSAVerify", c_int32, [POINTER(K_CONTEXT), c_int32, POINTER(CSSM_DATA), POINTER(CSSM_DATA), POINTER(CSSM_DATA)]),
    "K_ECDH": ("K_ECDH", c_int32, [POINTER(K_CONTEXT), c_int32, POINTER(CSSM_DATA), POINTER(CSSM_DATA), POINTER(CSSM_DATA)]),
    "K_ECC_Encryption": ("K_ECC_Encryption", c_int32, [POINTER(K_CONTEXT), c_int32, POINTER(CSSM_DATA), POINTER(CSSM_DATA), POINTER(CSSM_DATA)]),
    "K_ECC_Decryption": ("K_ECC_Decryption", c_int32, [POINTER(K_CONTEXT), c_int32, POINTER(CSSM_DATA), POINTER(CSSM_DATA), POINTER(CSSM_DATA)]),
    "K_RSAPublicKey2WTLS": ("K_RSAPublicKey2WTLS", c_uint32, [POINTER(K_CONTEXT), c_void_p, c_uint32, c_void_p, c_void_p, c_void_p, c_void_p]),
    "K_WTLSPublicKey2RSA": ("K_WTLSPublicKey2RSA", c_uint32, [POINTER(K_CONTEXT), c_void_p, c_uint16, c_void_p, c_uint16, c_void_p, c_void_p]),
    "GetError": ("GetError", c_uint32, []),
    "CSP_DigestDataInit": ("_CSP_DigestDataInit@12", c_int32, [c_uint32, c_size_t, POINTER(CSSM_CONTEXT)]),
    "CSP_DigestDataUpdate": ("_CSP_DigestDataUpdate@16", c_int32, [c_uint32, c_size_t, POINTER(CSSM_DATA), c_uint32]),
    "CSP_DigestDataFinal": ("_CSP_DigestDataFinal@12", c_int32, [c_uint32, c_size_t, POINTER(CSSM_DATA)]),
    "CSP_EncryptDataInit": ("_CSP_EncryptDataInit@12", c_int32, [c_uint32, c_size_t, POINTER(CSSM_CONTEXT)]),
    "CSP_DecryptDataInit": ("_CSP_DecryptDataInit@12", c_int32, [c_uint32, c_size_t, POINTER(CSSM_CONTEXT)]),
    "CSP_EncryptDataUpdate": ("_CSP_EncryptDataUpdate@28", c_int32, [c_uint32, c_size_t, POINTER(CSSM_DATA), c_uint32, POINTER(CSSM_DATA), c_uint32, c_void_p]),
    "CSP_DecryptDataUpdate": ("_CSP_DecryptDataUpdate@28", c_int32, [c_uint32, c_size_t, POINTER(CSSM_DATA), c_uint32, POINTER(CSSM_DATA), c_uint32, c_void_p]),
    "CSP_EncryptDataFinal": ("_CSP_EncryptDataFinal@12", c_int32, [c_uint32, c_size_t, POINTER(CSSM_DATA)]),
    "CSP_DecryptDataFinal": ("_CSP_DecryptDataFinal@12", c_int32, [c_uint32, c_size_t, POINTER(CSSM_DATA)]),
    "CSP_EncryptData": ("_CSP_EncryptData@36", c_int32, [c_uint32, c_size_t, POINTER(CSSM_CONTEXT), POINTER(CSSM_DATA), c_uint32, POINTER(CSSM_DATA), c_uint32, c_void_p, POINTER(CSSM_DATA)]),
    "CSP_DecryptData": ("_CSP_DecryptData@36", c_int32, [c_uint32, c_size_t, POINTER(CSSM_CONTEXT), POINTER(CSSM_DATA), c_uint32, POINTER(CSSM_DATA), c_uint32, c_void_p, POINTER(CSSM_DATA)]),
    "CSP_GenerateMacInit": ("_CSP_GenerateMacInit@12", c_int32, [c_uint32, c_size_t, POINTER(CSSM_CONTEXT)]),
    "CSP_VerifyMacInit": ("_CSP_VerifyMacInit@12", c_int32, [c_uint32, c_size_t, POINTER(CSSM_CONTEXT)]),
    "CSP_GenerateMacUpdate": ("_CSP_GenerateMacUpdate@16", c_int32, [c_uint32, c_size_t, POINTER(CSSM_DATA), c_uint32]),
    "CSP_VerifyMacUpdate": ("_CSP_VerifyMacUpdate@16", c_int32, [c_uint32, c_size_t, POINTER(CSSM_DATA), c_uint32]),
    "CSP_GenerateMacFinal": ("_CSP_GenerateMacFinal@12", c_int32, [c_uint32, c_size_t, POINTER(CSSM_DATA)]),
    "CSP_VerifyMacFinal": ("_CSP_VerifyMacFinal@12", c_int32, [c_uint32, c_size_t, POINTER(CSSM_DATA)]),
    "CSP_GenerateMac": ("_CSP_GenerateMac@24", c_int32, [c_uint32, c_size_t, POINTER(CSSM_CONTEXT), POINTER(CSSM_DATA), c_uint32, POINTER(CSSM_DATA)]),
    "CSP_VerifyMac": ("_CSP_VerifyMac@24", c_int32, [c_uint32, c_size_t, POINTER(CSSM_CONTEXT), POINTER(CSSM_DATA), c_uint32, POINTER(CSSM_DATA)]),
    "CSP_GenerateKey": ("_CSP_GenerateKey@28", c_int32, [c_uint32, c_size_t, POINTER(CSSM_CONTEXT), c_uint32, c_uint32, POINTER(CSSM_DATA), POINTER(CSSM_KEY)]),
    "CSP_FreeKey": ("_CSP_FreeKey@12", c_int32, [c_uint32, POINTER(CSSM_DATA), POINTER(CSSM_KEY)]),
    "CSP_GenerateKeyPair": ("_CSP_GenerateKeyPair@44", c_int32, [c_uint32, c_size_t, POINTER(CSSM_CONTEXT), c_uint32, c_uint32, POINTER(CSSM_DATA), POINTER(CSSM_KEY), c_uint32, c_uint32, POINTER(CSSM_DATA), POINTER(CSSM_KEY)]),
    "CSP_GenerateAlgorithmParams": ("_CSP_GenerateAlgorithmParams@20", c_int32, [c_uint32, c_size_t, POINTER(CSSM_CONTEXT), c_uint32, POINTER(CSSM_DATA)]),
    "CSP_WrapKey": ("_CSP_WrapKey@24", c_int32, [c_uint32, c_size_t, POINTER(CSSM_CONTEXT), POINTER(CSSM_DATA), POINTER(CSSM_KEY), POINTER(CSSM_KEY)]),
    "CSP_UnwrapKey": ("_CSP_UnwrapKey@24", c_int32, [c_uint32, c_size_t, POINTER(CSSM_CONTEXT), POINTER(CSSM_DATA), POINTER(CSSM_KEY), POINTER(CSSM_KEY)]),
    "CSP_DeriveKey": ("_CSP_DeriveKey@36", c_int32, [c_uint32, c_size_t, POINTER(CSSM_CONTEXT), POINTER(CSSM_KEY), POINTER(CSSM_DATA), c_uint32, c_uint32, POINTER(CSSM_DATA), POINTER(CSSM_KEY)]),
    "CSP_GenerateRandom": ("_CSP_GenerateRandom@16", c_int32, [c_uint32, c_size_t, POINTER(CSSM_CONTEXT), POINTER(CSSM_DATA)]),
    "CSP_QuerySize": ("_CSP_QuerySize@24", c_int32, [c_uint32, c_size_t, POINTER(CSSM_CONTEXT), c_uint32, c_uint32, POINTER(CspSizePair)]),
    "CSP_QuerySizeInBits": ("_CSP_QuerySizeInBits@16", c_int32, [c_uint32, c_size_t, POINTER(CSSM_KEY), POINTER(CspSizePair)]),
    "EN_Create": ("EN_Create", POINTER(ENUM), [c_uint32]),
    "EN_Destroy": ("EN_Destroy", None, [POINTER(ENUM)]),
    "EN_Expand": ("EN_Expand", c_uint32, [POINTER(ENUM), c_uint32]),
    "EN_Clone": ("EN_Clone", POINTER(ENUM), [POINTER(ENUM)]),
    "EN_Copy": ("EN_Copy", None, [POINTER(ENUM), POINTER(ENUM)]),
    "EN_UComp": ("EN_UComp", c_int32, [POINTER(ENUM), POINTER(ENUM)]),
    "EN_Comp": ("EN_Comp", c_int32, [POINTER(ENUM), POINTER(ENUM)]),
    "EN_GetFilledBitNum": ("EN_GetFilledBitNum", c_uint32, [POINTER(ENUM)]),
    "EN_IsBitSet": ("EN_IsBitSet", c_int32, [POINTER(ENUM), c_int32]),
    "EN_MaskBit": ("EN_MaskBit", c_int32, [POINTER(ENUM), c_int32]),
    "EN_U32ToENUM": ("EN_U32ToENUM", None, [POINTER(ENUM), c_uint32]),
    "EN_U8ToENUM": ("EN_U8ToENUM", None, [POINTER(ENUM), c_void_p, c_uint32]),
    "EN_ENUMToU8": ("EN_ENUMToU8", c_int32, [c_void_p, POINTER(ENUM)]),
    "EN_Add": ("EN_Add", None, [POINTER(ENUM), POINTER(ENUM), POINTER(ENUM)]),
    "EN_Sub": ("EN_Sub", None, [POINTER(ENUM), POINTER(ENUM), POINTER(ENUM)]),
    "EN_SubU32": ("EN_SubU32", None, [POINTER(ENUM), POINTER(ENUM), c_uint32]),
    "EN_LShift1": ("EN_LShift1", None, [POINTER(ENUM), POINTER(ENUM)]),
    "EN_RShift1": ("EN_RShift1", None, [POINTER(ENUM), POINTER(ENUM)]),
    "EN_LShift": ("EN_LShift", None, [POINTER(ENUM), POINTER(ENUM), c_int32]),
    "EN_RShift": ("EN_RShift", None, [POINTER(ENUM), POINTER(ENUM), c_int32]),
    "EN_Mul": ("EN_Mul", None, [POINTER(ENUM), POINTER(ENUM), POINTER(ENUM)]),
    "EN_Sqr": ("EN_Sqr", None, [POINTER(ENUM), POINTER(ENUM)]),
    "EN_Div": ("EN_Div", c_int32, [POINTER(ENUM), POINTER(ENUM), POINTER(ENUM), POINTER(ENUM)]),
    "EN_Mod": ("EN_Mod", c_int32, [POINTER(ENUM), POINTER(ENUM), POINTER(ENUM)]),
    "EN_Mod_Add": ("EN_Mod_Add", c_int32, [POINTER(ENUM), POINTER(ENUM), POINTER(ENUM), POINTER(ENUM)]),
    "EN_Mod_Sub": ("EN_Mod_Sub", None, [POINTER(ENUM), POINTER(ENUM), POINTER(ENUM), POINTER(ENUM)]),
    "EN_Mod_Mul": ("EN_Mod_Mul", c_int32, [POINTER(ENUM), POINTER(ENUM), POINTER(ENUM), POINTER(ENUM)]),
    "EN_Mod_MulA": ("EN_Mod_MulA", c_int32, [POINTER(ENUM), POINTER(ENUM), POINTER(ENUM), POINTER(ENUM)]),
    "EN_Mod_MulB": ("EN_Mod_MulB", c_int32, [POINTER(ENUM), POINTER(ENUM), POINTER(ENUM), POINTER(ENUM)]),
    "EN_Mod_MulAB": ("EN_Mod_MulAB", c_int32, [POINTER(ENUM), POINTER(ENUM), POINTER(ENUM), POINTER(ENUM)]),
    "EN_Mod_Sqr": ("EN_Mod_Sqr", c_int32, [POINTER(ENUM), POINTER(ENUM), POINTER(ENUM)]),
    "EN_Mod_SqrA": ("EN_Mod_SqrA", c_int32, [POINTER(ENUM), POINTER(ENUM), POINTER(ENUM)]),
    "EN_Mod_Inv": ("EN_Mod_Inv", None, [POINTER(ENUM), POINTER(ENUM), POINTER(ENUM)]),
    "EN_GCD": ("EN_GCD", None, [POINTER(ENUM), POINTER(ENUM), POINTER(ENUM)]),
    "EN_LCM": ("EN_LCM", c_int32, [POINTER(ENUM), POINTER(ENUM), POINTER(ENUM)]),
    "EN_ModU32": ("EN_ModU32", c_uint32, [POINTER(ENUM), c_uint32]),
    "EN_Mod_Exp": ("EN_Mod_Exp", None, [POINTER(ENUM), POINTER(ENUM), POINTER(ENUM), POINTER(ENUM)]),
    "EN_Mod_ExpA": ("EN_Mod_ExpA", None, [POINTER(ENUM), POINTER(ENUM), POINTER(ENUM), POINTER(ENUM)]),
    "RAND_Bytes": ("RAND_Bytes", None, [c_void_p, c_int32]),
    "E_GenerateRandom_RSA": ("E_GenerateRandom_RSA", None, [c_void_p, c_int32]),
    "E_GenerateSeed_RSA": ("E_GenerateSeed_RSA", None, [c_void_p, c_int32]),
    "EN_Random": ("EN_Random", None, [POINTER(ENUM), c_int32, c_int32, c_int32]),
    "E_GenerateRandom_MD5": ("E_GenerateRandom_MD5", None, [c_void_p, c_uint32]),
    "E_GenerateRandom_DES": ("E_GenerateRandom_DES", None, [c_void_p, c_uint32]),
    "E_GenerateRandom": ("E_GenerateRandom", None, [c_void_p, c_uint32, c_uint32]),
    "EN_GenerateRandom": ("EN_GenerateRandom", None, [POINTER(ENUM), c_uint32, c_uint32]),
    "E_X9_62RandomBytes": ("E_X9_62RandomBytes", c_uint32, [c_void_p, c_void_p, c_uint32, c_void_p, c_void_p, c_void_p, c_uint32]),
    "E_X9_62RandomBytes_Original": ("E_X9_62RandomBytes_Original", c_uint32, [c_void_p, c_void_p, c_uint32, c_void_p, c_void_p, c_void_p, c_uint32]),
    "E_GenerateRandom_X962": ("E_GenerateRandom_X962", c_uint32, [c_uint32, c_void_p, c_void_p, c_void_p, c_uint8]),
    "E_ECKCDSA_RandomBytes": ("E_ECKCDSA_RandomBytes", c_uint32, [c_void_p, c_void_p, c_void_p, c_uint32, c_void_p, c_void_p, c_void_p, c_uint32]),
    "E_GenerateRandom_ECKCDSA": ("E_GenerateRandom_ECKCDSA", c_uint32, [c_uint32, c_void_p, c_void_p, c_void_p, c_uint8]),
    "EN_IsPrime": ("EN_IsPrime", c_int32, [POINTER(ENUM)]),
    "EN_IsStrongPrime": ("EN_IsStrongPrime", c_int32, [POINTER(ENUM)]),
    "EN_IsStrongX9Prime": ("EN_IsStrongX9Prime", c_int32, [POINTER(ENUM)]),
    "EN_GeneratePrimeRSA": ("EN_GeneratePrimeRSA", c_int32, [POINTER(ENUM), c_int32]),
    "EN_GeneratePrimeStrongRSA": ("EN_GeneratePrimeStrongRSA", c_int32, [POINTER(ENUM), c_int32]),
    "EN_GenerateX9Prime": ("EN_GenerateX9Prime", c_int32, [POINTER(ENUM), c_int32]),
    "EN_GenerateStrongX9Prime": ("EN_GenerateStrongX9Prime", c_int32, [POINTER(ENUM), c_int32]),
    "EN_GeneratePrimeDH": ("EN_GeneratePrimeDH", c_int32, [POINTER(ENUM), c_int32, POINTER(ENUM), POINTER(ENUM)]),
    "EN_GeneratePrimeStrongDH": ("EN_GeneratePrimeStrongDH", c_int32, [POINTER(ENUM), c_int32, POINTER(ENUM), POINTER(ENUM)]),
    "EN_PrimeInit": ("EN_PrimeInit", POINTER(EN_PRIME_CONTEXT), [POINTER(EN_PRIME_CONTEXT), c_void_p, c_int32, c_void_p, POINTER(ENUM), POINTER(ENUM)]),
    "EN_PrimeUpdate": ("EN_PrimeUpdate", c_int32, [POINTER(ENUM), c_int32, POINTER(EN_PRIME_CONTEXT)]),
    "E_X9_31RandomBytes": ("E_X9_31RandomBytes", None, [c_void_p, c_int32]),
    "E_X9_31RandomBytes2": ("E_X9_31RandomBytes2", None, [c_void_p, c_int32, c_void_p, c_void_p, c_void_p]),
    "EN_X9_31Random": ("EN_X9_31Random", None, [POINTER(ENUM), c_int32, c_int32, c_int32]),
    "E_SHA1_Init": ("E_SHA1_Init", None, [POINTER(E_SHA1_CTX)]),
    "E_SHA_Init": ("E_SHA_Init", None, [POINTER(E_SHA1_CTX)]),
    "E_SHA1_Update": ("E_SHA1_Update", None, [POINTER(E_SHA1_CTX), c_void_p, c_uint32]),
    "E_SHA1_Final": ("E_SHA1_Final", None, [POINTER(E_SHA1_CTX), c_void_p]),
    "E_SHA1": ("E_SHA1", None, [c_void_p, c_void_p, c_uint32]),
    "E_SHA_Update": ("E_SHA_Update", None, [POINTER(E_SHA1_CTX), c_void_p, c_uint32]),
    "E_SHA_Final": ("E_SHA_Final", None, [POINTER(E_SHA1_CTX), c_void_p]),
    "E_SHA": ("E_SHA", None, [c_void_p, c_void_p, c_uint32]),
    "E_MySHA1": ("E_MySHA1", None, [c_void_p, c_void_p]),
    "E_SHA256_Init": ("E_SHA256_Init", None, [POINTER(E_SHA256_CTX)]),
    "E_SHA256_Update": ("E_SHA256_Update", None, [POINTER(E_SHA256_CTX), c_void_p, c_uint32]),
    "E_SHA256_Final": ("E_SHA256_Final", None, [POINTER(E_SHA256_CTX), c_void_p]),
    "E_SHA256": ("E_SHA256", None, [c_void_p, c_void_p, c_void_p, c_uint32]),
    "E_SHA384_Init": ("E_SHA384_Init", None, [POINTER(E_SHA512_CTX)]),
    "E_SHA384_Update": ("E_SHA384_Update", None, [POINTER(E_SHA512_CTX), c_void_p, c_uint32]),
    "E_SHA384_Final": ("E_SHA384_Final", None, [POINTER(E_SHA512_CTX), c_void_p]),
    "E_SHA384": ("E_SHA384", None, [c_void_p, c_void_p, c_void_p, c_uint32]),
    "E_SHA512_Init": ("E_SHA512_Init", None, [POINTER(E_SHA512_CTX)]),
    "E_SHA512_Update": ("E_SHA512_Update", None, [POINTER(E_SHA512_CTX), c_void_p, c_uint32]),
    "E_SHA512_Final": ("E_SHA512_Final", None, [POINTER(E_SHA512_CTX), c_void_p]),
    "E_SHA512": ("E_SHA512", None, [c_void_p, c_void_p, c_void_p, c_uint32]),
    "E_MD2_Init": ("E_MD2_Init", None, [POINTER(E_MD2_CTX)]),
    "E_MD2_Update": ("E_MD2_Update", None, [POINTER(E_MD2_CTX), c_void_p, c_uint32]),
    "E_MD2_Final": ("E_MD2_Final", None, [POINTER(E_MD2_CTX), c_void_p]),
    "E_MD2": ("E_MD2", None, [c_void_p, c_void_p, c_uint32]),
    "E_MD4_Init": ("E_MD4_Init", None, [POINTER(E_MD5_CTX)]),
    "E_MD4_Update": ("E_MD4_Update", None, [POINTER(E_MD5_CTX), c_void_p, c_uint32]),
    "E_MD4_Final": ("E_MD4_Final", None, [POINTER(E_MD5_CTX), c_void_p]),
    "E_MD4": ("E_MD4", None, [c_void_p, c_void_p, c_uint32]),
    "E_HAS160_Init": ("E_HAS160_Init", None, [POINTER(E_HAS160_CTX)]),
    "E_HAS160_Update": ("E_HAS160_Update", None, [POINTER(E_HAS160_CTX), c_void_p, c_int32]),
    "E_HAS160_Final": ("E_HAS160_Final", None, [POINTER(E_HAS160_CTX), c_void_p]),
    "E_HAS160": ("E_HAS160", None, [c_void_p, c_void_p, c_int32]),
    "E_RIPEMD160_Init": ("E_RIPEMD160_Init", None, [POINTER(E_RIPEMD160_CTX)]),
    "E_RIPEMD160_Update": ("E_RIPEMD160_Update", None, [POINTER(E_RIPEMD160_CTX), c_void_p, c_uint32]),
    "E_RIPEMD160_Final": ("E_RIPEMD160_Final", None, [POINTER(E_RIPEMD160_CTX), c_void_p]),
    "E_RIPEMD160": ("E_RIPEMD160", None, [c_void_p, c_void_p, c_uint32]),
    "E_HMAC_SHA1_Init": ("E_HMAC_SHA1_Init", None, [POINTER(E_HMAC_SHA1_CTX), c_void_p, c_int32]),
    "E_HMAC_SHA1_Update": ("E_HMAC_SHA1_Update", None, [POINTER(E_HMAC_SHA1_CTX), c_void_p, c_uint32]),
    "E_HMAC_SHA1_Final": ("E_HMAC_SHA1_Final", None, [POINTER(E_HMAC_SHA1_CTX), c_void_p]),
    "E_HMAC_SHA1": ("E_HMAC_SHA1", None, [c_void_p, c_uint32, c_void_p, c_int32, c_void_p]),
    "E_DES_KeySchedule": ("E_DES_KeySchedule", c_uint32, [POINTER(E_DES_KEY_SCHEDULE), c_void_p]),
    "E_DES_Encrypt": ("E_DES_Encrypt", None, [c_void_p, POINTER(E_DES_KEY_SCHEDULE)]),
    "E_DES_Decrypt": ("E_DES_Decrypt", None, [c_void_p, POINTER(E_DES_KEY_SCHEDULE)]),
    "E_DES_ECB_Encrypt": ("E_DES_ECB_Encrypt", None, [c_void_p, c_void_p, POINTER(E_DES_KEY_SCHEDULE), c_uint32]),
    "E_DES_ECB_Decrypt": ("E_DES_ECB_Decrypt", None, [c_void_p, c_void_p, POINTER(E_DES_KEY_SCHEDULE), c_uint32]),
    "E_DES_CBC_Encrypt": ("E_DES_CBC_Encrypt", None, [c_void_p, c_void_p, POINTER(E_DES_KEY_SCHEDULE), c_uint32, c_void_p]),
    "E_DES_CBC_Decrypt": ("E_DES_CBC_Decrypt", None, [c_void_p, c_void_p, POINTER(E_DES_KEY_SCHEDULE), c_uint32, c_void_p]),
    "E_DES_CBC_Encrypt_NO_PAD": ("E_DES_CBC_Encrypt_NO_PAD", None, [c_void_p, c_void_p, POINTER(E_DES_KEY_SCHEDULE), c_uint32, c_void_p]),
    "E_DES_CBC_Decrypt_NO_PAD": ("E_DES_CBC_Decrypt_NO_PAD", None, [c_void_p, c_void_p, POINTER(E_DES_KEY_SCHEDULE), c_uint32, c_void_p]),
    "E_DES_CFB_Encrypt": ("E_DES_CFB_Encrypt", None, [c_void_p, c_void_p, POINTER(E_DES_KEY_SCHEDULE), c_int32, c_uint32, c_void_p]),
    "E_DES_CFB_Decrypt": ("E_DES_CFB_Decrypt", None, [c_void_p, c_void_p, POINTER(E_DES_KEY_SCHEDULE), c_int32, c_uint32, c_void_p]),
    "E_DES_OFB_Encrypt": ("E_DES_OFB_Encrypt", None, [c_void_p, c_void_p, POINTER(E_DES_KEY_SCHEDULE), c_int32, c_uint32, c_void_p]),
    "E_DES_OFB_Decrypt": ("E_DES_OFB_Decrypt", None, [c_void_p, c_void_p, POINTER(E_DES_KEY_SCHEDULE), c_int32, c_uint32, c_void_p]),
    "E_DES3_KeySchedule": ("E_DES3_KeySchedule", c_uint32, [POINTER(E_DES3_KEY_SCHEDULE), c_void_p]),
    "E_DES3_Encrypt": ("E_DES3_Encrypt", None, [c_void_p, POINTER(E_DES3_KEY_SCHEDULE)]),
    "E_DES3_Decrypt": ("E_DES3_Decrypt", None, [c_void_p, POINTER(E_DES3_KEY_SCHEDULE)]),
    "E_DES3_ECB_Encrypt": ("E_DES3_ECB_Encrypt", None, [c_void_p, c_void_p, POINTER(E_DES3_KEY_SCHEDULE), c_uint32]),
    "E_DES3_ECB_Decrypt": ("E_DES3_ECB_Decrypt", None, [c_void_p, c_void_p, POINTER(E_DES3_KEY_SCHEDULE), c_uint32]),
    "E_DES3_CBC_Encrypt": ("E_DES3_CBC_Encrypt", None, [c_void_p, c_void_p, POINTER(E_DES3_KEY_SCHEDULE), c_uint32, c_void_p]),
    "E_DES3_CBC_Decrypt": ("E_DES3_CBC_Decrypt", None, [c_void_p, c_void_p, POINTER(E_DES3_KEY_SCHEDULE), c_uint32, c_void_p]),
    "E_DES3_CBC_Encrypt_NO_PAD": ("E_DES3_CBC_Encrypt_NO_PAD", None, [c_void_p, c_void_p, POINTER(E_DES3_KEY_SCHEDULE), c_uint32, c_void_p]),
    "E_DES3_CBC_Decrypt_NO_PAD": ("E_DES3_CBC_Decrypt_NO_PAD", None, [c_void_p, c_void_p, POINTER(E_DES3_KEY_SCHEDULE), c_uint32, c_void_p]),
    "E_DES3_CFB_Encrypt": ("E_DES3_CFB_Encrypt", None, [c_void_p, c_void_p, POINTER(E_DES3_KEY_SCHEDULE), c_int32, c_uint32, c_void_p]),
    "E_DES3_CFB_Decrypt": ("E_DES3_CFB_Decrypt", None, [c_void_p, c_void_p, POINTER(E_DES3_KEY_SCHEDULE), c_int32, c_uint32, c_void_p]),
    "E_DES3_OFB_Encrypt": ("E_DES3_OFB_Encrypt", None, [c_void_p, c_void_p, POINTER(E_DES3_KEY_SCHEDULE), c_int32, c_uint32, c_void_p]),
    "E_DES3_OFB_Decrypt": ("E_DES3_OFB_Decrypt", None, [c_void_p, c_void_p, POINTER(E_DES3_KEY_SCHEDULE), c_int32, c_uint32, c_void_p]),
    "E_DES3_3Key_Schedule": ("E_DES3_3Key_Schedule", c_uint32, [POINTER(E_DES3_3KEY_SCHEDULE), c_void_p]),
    "E_DES3_3Key_Encrypt": ("E_DES3_3Key_Encrypt", None, [c_void_p, POINTER(E_DES3_3KEY_SCHEDULE)]),
    "E_DES3_3Key_Decrypt": ("E_DES3_3Key_Decrypt", None, [c_void_p, POINTER(E_DES3_3KEY_SCHEDULE)]),
    "E_DES3_3Key_CBC_Encrypt": ("E_DES3_3Key_CBC_Encrypt", None, [c_void_p, c_void_p, POINTER(E_DES3_3KEY_SCHEDULE), c_uint32, c_void_p]),
    "E_DES3_3Key_CBC_Decrypt": ("E_DES3_3Key_CBC_Decrypt", None, [c_void_p, c_void_p, POINTER(E_DES3_3KEY_SCHEDULE), c_uint32, c_void_p]),
    "E_SEED_KeySchedule": ("E_SEED_KeySchedule", None, [POINTER(E_SEED_KEY_SCHEDULE), c_void_p]),
    "E_SEED_Encrypt": ("E_SEED_Encrypt", None, [c_void_p, POINTER(E_SEED_KEY_SCHEDULE)]),
    "E_SEED_Decrypt": ("E_SEED_Decrypt", None, [c_void_p, POINTER(E_SEED_KEY_SCHEDULE)]),
    "E_SEED_ECB_Encrypt": ("E_SEED_ECB_Encrypt", None, [c_void_p, c_void_p, POINTER(E_SEED_KEY_SCHEDULE), c_uint32]),
    "E_SEED_ECB_Decrypt": ("E_SEED_ECB_Decrypt", None, [c_void_p, c_void_p, POINTER(E_SEED_KEY_SCHEDULE), c_uint32]),
    "E_SEED_CBC_Encrypt": ("E_SEED_CBC_Encrypt", None, [c_void_p, c_void_p, POINTER(E_SEED_KEY_SCHEDULE), c_uint32, c_void_p]),
    "E_SEED_CBC_Decrypt": ("E_SEED_CBC_Decrypt", None, [c_void_p, c_void_p, POINTER(E_SEED_KEY_SCHEDULE), c_uint32, c_void_p]),
    "E_SEED_CBC_Encrypt_NO_PAD": ("E_SEED_CBC_Encrypt_NO_PAD", None, [c_void_p, c_void_p, POINTER(E_SEED_KEY_SCHEDULE), c_uint32, c_void_p]),
    "E_SEED_CBC_Decrypt_NO_PAD": ("E_SEED_CBC_Decrypt_NO_PAD", None, [c_void_p, c_void_p, POINTER(E_SEED_KEY_SCHEDULE), c_uint32, c_void_p]),
    "E_SEED_CFB_Encrypt": ("E_SEED_CFB_Encrypt", None, [c_void_p, c_void_p, POINTER(E_SEED_KEY_SCHEDULE), c_int32, c_uint32, c_void_p]),
    "E_SEED_CFB_Decrypt": ("E_SEED_CFB_Decrypt", None, [c_void_p, c_void_p, POINTER(E_SEED_KEY_SCHEDULE), c_int32, c_uint32, c_void_p]),
    "E_SEED_OFB_Encrypt": ("E_SEED_OFB_Encrypt", None, [c_void_p, c_void_p, POINTER(E_SEED_KEY_SCHEDULE), c_int32, c_uint32, c_void_p]),
    "E_SEED_OFB_Decrypt": ("E_SEED_OFB_Decrypt", None, [c_void_p, c_void_p, POINTER(E_SEED_KEY_SCHEDULE), c_int32, c_uint32, c_void_p]),
    "E_IDEA_KeySchedule": ("E_IDEA_KeySchedule", None, [POINTER(E_IDEA_KEY_SCHEDULE), c_void_p]),
    "E_IDEA_Encrypt": ("E_IDEA_Encrypt", None, [c_void_p, POINTER(E_IDEA_KEY_SCHEDULE)]),
    "E_IDEA_Decrypt": ("E_IDEA_Decrypt", None, [c_void_p, POINTER(E_IDEA_KEY_SCHEDULE)]),
    "E_IDEA_ECB_Encrypt": ("E_IDEA_ECB_Encrypt", None, [c_void_p, c_void_p, POINTER(E_IDEA_KEY_SCHEDULE), c_uint32]),
    "E_IDEA_ECB_Decrypt": ("E_IDEA_ECB_Decrypt", None, [c_void_p, c_void_p, POINTER(E_IDEA_KEY_SCHEDULE), c_uint32]),
    "E_IDEA_CBC_Encrypt": ("E_IDEA_CBC_Encrypt", None, [c_void_p, c_void_p, POINTER(E_IDEA_KEY_SCHEDULE), c_uint32, c_void_p]),
    "E_IDEA_CBC_Decrypt": ("E_IDEA_CBC_Decrypt", None, [c_void_p, c_void_p, POINTER(E_IDEA_KEY_SCHEDULE), c_uint32, c_void_p]),
    "E_IDEA_CFB_Encrypt": ("E_IDEA_CFB_Encrypt", None, [c_void_p, c_void_p, POINTER(E_IDEA_KEY_SCHEDULE), c_int32, c_uint32, c_void_p]),
    "E_IDEA_CFB_Decrypt": ("E_IDEA_CFB_Decrypt", None, [c_void_p, c_void_p, POINTER(E_IDEA_KEY_SCHEDULE), c_int32, c_uint32, c_void_p]),
    "E_IDEA_OFB_Encrypt": ("E_IDEA_OFB_Encrypt", None, [c_void_p, c_void_p, POINTER(E_IDEA_KEY_SCHEDULE), c_int32, c_uint32, c_void_p]),
    "E_IDEA_OFB_Decrypt": ("E_IDEA_OFB_Decrypt", None, [c_void_p, c_void_p, POINTER(E_IDEA_KEY_SCHEDULE), c_int32, c_uint32, c_void_p]),
    "E_BF_KeySchedule": ("E_BF_KeySchedule", None, [POINTER(E_BF_KEY_SCHEDULE), c_void_p, c_int32]),
    "E_BF_Encrypt": ("E_BF_Encrypt", None, [c_void_p, POINTER(E_BF_KEY_SCHEDULE)]),
    "E_BF_Decrypt": ("E_BF_Decrypt", None, [c_void_p, POINTER(E_BF_KEY_SCHEDULE)]),
    "E_BF_ECB_Encrypt": ("E_BF_ECB_Encrypt", None, [c_void_p, c_void_p, POINTER(E_BF_KEY_SCHEDULE), c_uint32]),
    "E_BF_ECB_Decrypt": ("E_BF_ECB_Decrypt", None, [c_void_p, c_void_p, POINTER(E_BF_KEY_SCHEDULE), c_uint32]),
    "E_BF_CBC_Encrypt": ("E_BF_CBC_Encrypt", None, [c_void_p, c_void_p, POINTER(E_BF_KEY_SCHEDULE), c_uint32, c_void_p]),
    "E_BF_CBC_Decrypt": ("E_BF_CBC_Decrypt", None, [c_void_p, c_void_p, POINTER(E_BF_KEY_SCHEDULE), c_uint32, c_void_p]),
    "E_BF_CFB_Encrypt": ("E_BF_CFB_Encrypt", None, [c_void_p, c_void_p, POINTER(E_BF_KEY_SCHEDULE), c_int32, c_uint32, c_void_p]),
    "E_BF_CFB_Decrypt": ("E_BF_CFB_Decrypt", None, [c_void_p, c_void_p, POINTER(E_BF_KEY_SCHEDULE), c_int32, c_uint32, c_void_p]),
    "E_BF_OFB_Encrypt": ("E_BF_OFB_Encrypt", None, [c_void_p, c_void_p, POINTER(E_BF_KEY_SCHEDULE), c_int32, c_uint32, c_void_p]),
    "E_BF_OFB_Decrypt": ("E_BF_OFB_Decrypt", None, [c_void_p, c_void_p, POINTER(E_BF_KEY_SCHEDULE), c_int32, c_uint32, c_void_p]),
    "E_RC2_KeySchedule": ("E_RC2_KeySchedule", None, [POINTER(E_RC2_KEY_SCHEDULE), c_void_p, c_int32, c_int32]),
    "E_RC2_Encrypt": ("E_RC2_Encrypt", None, [c_void_p, POINTER(E_RC2_KEY_SCHEDULE)]),
    "E_RC2_Decrypt": ("E_RC2_Decrypt", None, [c_void_p, POINTER(E_RC2_KEY_SCHEDULE)]),
    "E_RC2_ECB_Encrypt": ("E_RC2_ECB_Encrypt", None, [c_void_p, c_void_p, POINTER(E_RC2_KEY_SCHEDULE), c_uint32]),
    "E_RC2_ECB_Decrypt": ("E_RC2_ECB_Decrypt", None, [c_void_p, c_void_p, POINTER(E_RC2_KEY_SCHEDULE), c_uint32]),
    "E_RC2_CBC_Encrypt": ("E_RC2_CBC_Encrypt", None, [c_void_p, c_void_p, POINTER(E_RC2_KEY_SCHEDULE), c_uint32, c_void_p]),
    "E_RC2_CBC_Decrypt": ("E_RC2_CBC_Decrypt", None, [c_void_p, c_void_p, POINTER(E_RC2_KEY_SCHEDULE), c_uint32, c_void_p]),
    "E_RC2_CFB_Encrypt": ("E_RC2_CFB_Encrypt", None, [c_void_p, c_void_p, POINTER(E_RC2_KEY_SCHEDULE), c_int32, c_uint32, c_void_p]),
    "E_RC2_CFB_Decrypt": ("E_RC2_CFB_Decrypt", None, [c_void_p, c_void_p, POINTER(E_RC2_KEY_SCHEDULE), c_int32, c_uint32, c_void_p]),
    "E_RC2_OFB_Encrypt": ("E_RC2_OFB_Encrypt", None, [c_void_p, c_void_p, POINTER(E_RC2_KEY_SCHEDULE), c_int32, c_uint32, c_void_p]),
    "E_RC2_OFB_Decrypt": ("E_RC2_OFB_Decrypt", None, [c_void_p, c_void_p, POINTER(E_RC2_KEY_SCHEDULE), c_int32, c_uint32, c_void_p]),
    "E_RC5_KeySchedule": ("E_RC5_KeySchedule", None, [POINTER(E_RC5_KEY_SCHEDULE), c_void_p, c_int32, c_int32]),
    "E_RC5_Encrypt": ("E_RC5_Encrypt", None, [c_void_p, POINTER(E_RC5_KEY_SCHEDULE)]),
    "E_RC5_Decrypt": ("E_RC5_Decrypt", None, [c_void_p, POINTER(E_RC5_KEY_SCHEDULE)]),
    "E_RC5_ECB_Encrypt": ("E_RC5_ECB_Encrypt", None, [c_void_p, c_void_p, POINTER(E_RC5_KEY_SCHEDULE), c_uint32]),
    "E_RC5_ECB_Decrypt": ("E_RC5_ECB_Decrypt", None, [c_void_p, c_void_p, POINTER(E_RC5_KEY_SCHEDULE), c_uint32]),
    "E_RC5_CBC_Encrypt": ("E_RC5_CBC_Encrypt", None, [c_void_p, c_void_p, POINTER(E_RC5_KEY_SCHEDULE), c_uint32, c_void_p]),
    "E_RC5_CBC_Decrypt": ("E_RC5_CBC_Decrypt", None, [c_void_p, c_void_p, POINTER(E_RC5_KEY_SCHEDULE), c_uint32, c_void_p]),
    "E_RC5_CFB_Encrypt": ("E_RC5_CFB_Encrypt", None, [c_void_p, c_void_p, POINTER(E_RC5_KEY_SCHEDULE), c_int32, c_uint32, c_void_p]),
    "E_RC5_CFB_Decrypt": ("E_RC5_CFB_Decrypt", None, [c_void_p, c_void_p, POINTER(E_RC5_KEY_SCHEDULE), c_int32, c_uint32, c_void_p]),
    "E_RC5_OFB_Encrypt": ("E_RC5_OFB_Encrypt", None, [c_void_p, c_void_p, POINTER(E_RC5_KEY_SCHEDULE), c_int32, c_uint32, c_void_p]),
    "E_RC5_OFB_Decrypt": ("E_RC5_OFB_Decrypt", None, [c_void_p, c_void_p, POINTER(E_RC5_KEY_SCHEDULE), c_int32, c_uint32, c_void_p]),
    "E_RC4_KeySchedule": ("E_RC4_KeySchedule", c_uint32, [POINTER(E_RC4_STATE), c_void_p, c_uint32]),
    "E_RC4_Encrypt": ("E_RC4_Encrypt", None, [c_void_p, c_void_p, POINTER(E_RC4_STATE), c_uint32]),
    "E_RC4_Decrypt": ("E_RC4_Decrypt", None, [c_void_p, c_void_p, POINTER(E_RC4_STATE), c_uint32]),
    "E_RSA_Init": ("E_RSA_Init", None, [POINTER(E_RSA_KEY)]),
    "E_RSA_GenerateKey": ("E_RSA_GenerateKey", None, [POINTER(E_RSA_KEY), c_int32, c_uint32]),
    "E_RSA_GenerateStrongKey": ("E_RSA_GenerateStrongKey", None, [POINTER(E_RSA_KEY), c_int32, c_uint32]),
    "E_RSA_GenerateX9Key": ("E_RSA_GenerateX9Key", c_int32, [POINTER(E_RSA_KEY), c_int32, c_uint32, c_void_p, c_void_p, c_void_p, c_void_p]),
    "E_RSA_GenerateStrongX9Key": ("E_RSA_GenerateStrongX9Key", c_int32, [POINTER(E_RSA_KEY), c_int32, c_uint32, c_void_p, c_void_p, c_void_p, c_void_p]),
    "E_RSA_GenerateD": ("E_RSA_GenerateD", None, [POINTER(E_RSA_KEY)]),
    "E_RSA_Public_Encrypt": ("E_RSA_Public_Encrypt", c_int32, [c_void_p, c_void_p, c_int32, POINTER(E_RSA_KEY)]),
    "E_RSA_Private_Encrypt": ("E_RSA_Private_Encrypt", c_int32, [c_void_p, c_void_p, c_int32, POINTER(E_RSA_KEY)]),
    "E_RSA_Public_Decrypt": ("E_RSA_Public_Decrypt", c_int32, [c_void_p, c_void_p, c_int32, POINTER(E_RSA_KEY)]),
    "E_RSA_Private_Decrypt": ("E_RSA_Private_Decrypt", c_int32, [c_void_p, c_void_p, c_int32, POINTER(E_RSA_KEY)]),
    "E_RSA_Sign": ("E_RSA_Sign", c_int32, [c_void_p, c_int32, c_void_p, c_void_p, POINTER(E_RSA_KEY)]),
    "E_RSA_Verify": ("E_RSA_Verify", c_int32, [c_void_p, c_int32, c_void_p, c_int32, POINTER(E_RSA_KEY)]),
    "E_RSA_Public_Encrypt_OAEP": ("E_RSA_Public_Encrypt_OAEP", c_int32, [c_void_p, c_void_p, c_int32, c_void_p, c_int32, POINTER(E_RSA_KEY)]),
    "E_RSA_Private_Decrypt_OAEP": ("E_RSA_Private_Decrypt_OAEP", c_int32, [c_void_p, c_void_p, c_int32, c_void_p, c_int32, POINTER(E_RSA_KEY)]),
    "E_RSAES_OAEP_Encrypt": ("E_RSAES_OAEP_Encrypt", c_int32, [c_int32, c_int32, c_void_p, c_void_p, c_int32, c_void_p, c_int32, POINTER(E_RSA_KEY)]),
    "E_RSAES_OAEP_Decrypt": ("E_RSAES_OAEP_Decrypt", c_int32, [c_int32, c_int32, c_void_p, c_void_p, c_int32, c_void_p, c_int32, POINTER(E_RSA_KEY)]),
    "E_RSASSA_PSS_Sign": ("E_RSASSA_PSS_Sign", c_int32, [c_int32, c_int32, c_void_p, c_void_p, c_void_p, c_int32, c_int32, POINTER(E_RSA_KEY)]),
    "E_RSASSA_PSS_Verify": ("E_RSASSA_PSS_Verify", c_int32, [c_int32, c_int32, c_void_p, c_int32, c_void_p, c_int32, c_int32, POINTER(E_RSA_KEY)]),
    "E_DSA_Init": ("E_DSA_Init", None, [POINTER(E_DSA_KEY)]),
    "E_DSA_GenerateKey": ("E_DSA_GenerateKey", None, [POINTER(E_DSA_KEY), c_int32, c_int32]),
    "E_DSA_Sign": ("E_DSA_Sign", c_int32, [c_void_p, c_int32, c_void_p, c_void_p, POINTER(E_DSA_KEY)]),
    "E_DSA_Verify": ("E_DSA_Verify", c_int32, [c_void_p, c_int32, c_void_p, c_int32, POINTER(E_DSA_KEY)]),
    "E_KCDSA_Init": ("E_KCDSA_Init", None, [POINTER(E_DSA_KEY)]),
    "E_KCDSA_GenerateKey": ("E_KCDSA_GenerateKey", None, [POINTER(E_DSA_KEY), c_int32, c_int32]),
    "E_KCDSA_GenerateKey2": ("E_KCDSA_GenerateKey2", None, [POINTER(E_DSA_KEY), c_int32, c_int32, c_void_p, c_void_p, c_void_p, c_void_p]),
    "E_KCDSA_GenerateKey3": ("E_KCDSA_GenerateKey3", None, [POINTER(E_DSA_KEY), c_int32, c_int32, c_void_p, c_void_p, c_void_p, c_void_p]),
    "E_KCDSA_GenerateX9Key": ("E_KCDSA_GenerateX9Key", None, [POINTER(E_DSA_KEY), c_int32, c_int32, c_void_p, c_void_p]),
    "E_KCDSA_GenerateKey_fixParam": ("E_KCDSA_GenerateKey_fixParam", None, [POINTER(E_DSA_KEY), c_int32, c_int32]),
    "E_KCDSA_GenerateXY": ("E_KCDSA_GenerateXY", None, [POINTER(E_DSA_KEY), c_int32, c_int32]),
    "E_KCDSA_Sign_New": ("E_KCDSA_Sign_New", c_int32, [c_int32, c_void_p, c_int32, c_void_p, c_void_p, POINTER(E_DSA_KEY)]),
    "E_KCDSA_Verify_New": ("E_KCDSA_Verify_New", c_int32, [c_int32, c_void_p, c_int32, c_void_p, c_int32, POINTER(E_DSA_KEY)]),
    "E_KCDSA_Sign": ("E_KCDSA_Sign", c_int32, [c_void_p, c_int32, c_void_p, c_void_p, POINTER(E_DSA_KEY)]),
    "E_KCDSA_Sign2": ("E_KCDSA_Sign2", c_int32, [c_void_p, c_int32, c_void_p, c_void_p, c_void_p, c_void_p, POINTER(E_DSA_KEY)]),
    "E_KCDSA_Sign2RS": ("E_KCDSA_Sign2RS", c_int32, [c_void_p, c_int32, c_void_p, c_void_p, c_void_p, c_void_p, POINTER(E_DSA_KEY)]),
    "E_KCDSA_Verify": ("E_KCDSA_Verify", c_int32, [c_void_p, c_int32, c_void_p, c_int32, POINTER(E_DSA_KEY)]),
    "E_KCDSA_Verify_withParams": ("E_KCDSA_Verify_withParams", c_int32, [c_void_p, c_int32, c_void_p, c_int32, c_void_p, c_int32, POINTER(E_DSA_KEY)]),
    "E_DH_Init": ("E_DH_Init", None, [POINTER(E_DH_KEY)]),
    "E_DH_GenerateParameters": ("E_DH_GenerateParameters", None, [POINTER(E_DH_KEY), c_int32, c_uint32]),
    "E_DH_GenerateKey": ("E_DH_GenerateKey", None, [POINTER(E_DH_KEY), c_int32]),
    "E_DH_ComputeKey": ("E_DH_ComputeKey", c_int32, [c_void_p, POINTER(ENUM), POINTER(E_DH_KEY)]),
    "E_ASN1_PutRSAPublicKey": ("E_ASN1_PutRSAPublicKey", c_int32, [POINTER(E_RSA_KEY), c_void_p]),
    "E_ASN1_GetRSAPublicKeyBytes": ("E_ASN1_GetRSAPublicKeyBytes", c_int32, [POINTER(E_RSA_KEY)]),
    "E_ASN1_GetRSAPublicKey": ("E_ASN1_GetRSAPublicKey", None, [POINTER(E_RSA_KEY), c_void_p, c_uint32]),
    "E_ASN1_PutRSAPrivateKey": ("E_ASN1_PutRSAPrivateKey", c_int32, [POINTER(E_RSA_KEY), c_void_p]),
    "E_ASN1_GetRSAPrivateKeyBytes": ("E_ASN1_GetRSAPrivateKeyBytes", c_int32, [POINTER(E_RSA_KEY)]),
    "E_ASN1_GetRSAPrivateKey": ("E_ASN1_GetRSAPrivateKey", None, [POINTER(E_RSA_KEY), c_void_p, c_uint32]),
    "E_ASN1_PutDSAParams": ("E_ASN1_PutDSAParams", c_int32, [POINTER(E_DSA_KEY), c_void_p]),
    "E_ASN1_GetDSAParamsBytes": ("E_ASN1_GetDSAParamsBytes", c_int32, [POINTER(E_DSA_KEY)]),
    "E_ASN1_GetDSAParams": ("E_ASN1_GetDSAParams", None, [POINTER(E_DSA_KEY), c_void_p, c_uint32]),
    "E_ASN1_PutDSAPublicKey": ("E_ASN1_PutDSAPublicKey", c_int32, [POINTER(E_DSA_KEY), c_void_p]),
    "E_ASN1_GetDSAPublicKeyBytes": ("E_ASN1_GetDSAPublicKeyBytes", c_int32, [POINTER(E_DSA_KEY)]),
    "E_ASN1_GetDSAPublicKey": ("E_ASN1_GetDSAPublicKey", None, [POINTER(E_DSA_KEY), c_void_p, c_uint32]),
    "E_ASN1_PutDSAPrivateKey": ("E_ASN1_PutDSAPrivateKey", c_int32, [POINTER(E_DSA_KEY), c_void_p]),
    "E_ASN1_GetDSAPrivateKeyBytes": ("E_ASN1_GetDSAPrivateKeyBytes", c_int32, [POINTER(E_DSA_KEY)]),
    "E_ASN1_GetDSAPrivateKey": ("E_ASN1_GetDSAPrivateKey", None, [POINTER(E_DSA_KEY), c_void_p, c_uint32]),
    "E_ASN1_PutKCDSAParams": ("E_ASN1_PutKCDSAParams", c_int32, [POINTER(E_DSA_KEY), c_void_p]),
    "E_ASN1_GetKCDSAParamsBytes": ("E_ASN1_GetKCDSAParamsBytes", c_int32, [POINTER(E_DSA_KEY)]),
    "E_ASN1_GetKCDSAParams": ("E_ASN1_GetKCDSAParams", None, [POINTER(E_DSA_KEY), c_void_p, c_uint32]),
    "E_ASN1_PutKCDSAPublicKey": ("E_ASN1_PutKCDSAPublicKey", c_int32, [POINTER(E_DSA_KEY), c_void_p]),
    "E_ASN1_GetKCDSAPublicKeyBytes": ("E_ASN1_GetKCDSAPublicKeyBytes", c_int32, [POINTER(E_DSA_KEY)]),
    "E_ASN1_GetKCDSAPublicKey": ("E_ASN1_GetKCDSAPublicKey", None, [POINTER(E_DSA_KEY), c_void_p, c_uint32]),
    "E_ASN1_PutKCDSAPrivateKey": ("E_ASN1_PutKCDSAPrivateKey", c_int32, [POINTER(E_DSA_KEY), c_void_p]),
    "E_ASN1_GetKCDSAPrivateKeyBytes": ("E_ASN1_GetKCDSAPrivateKeyBytes", c_int32, [POINTER(E_DSA_KEY)]),
    "E_ASN1_GetKCDSAPrivateKey": ("E_ASN1_GetKCDSAPrivateKey", None, [POINTER(E_DSA_KEY), c_void_p, c_uint32]),
    "E_ASN1_PutParameters_KCDSA": ("E_ASN1_PutParameters_KCDSA", c_int32, [POINTER(E_DSA_KEY), c_void_p]),
    "E_ASN1_GetParameters_KCDSA": ("E_ASN1_GetParameters_KCDSA", None, [POINTER(E_DSA_KEY), c_void_p, c_uint32]),
    "E_ASN1_GetKey_KCDSA": ("E_ASN1_GetKey_KCDSA", None, [POINTER(E_DSA_KEY), c_void_p, c_uint32]),
    "E_ASN1_GetEncPublicKey_KCDSA": ("E_ASN1_GetEncPublicKey_KCDSA", None, [POINTER(E_DSA_KEY), c_void_p, c_uint32]),
    "E_ASN1_GetEncPrivateKey_KCDSA": ("E_ASN1_GetEncPrivateKey_KCDSA", None, [POINTER(E_DSA_KEY), c_void_p, c_uint32]),
    "E_ASN1_GetSignRS_KCDSA": ("E_ASN1_GetSignRS_KCDSA", None, [POINTER(E_KCDSA_SIGNATURE), c_void_p, c_uint32]),
    "E_ASN1_PutDHParams": ("E_ASN1_PutDHParams", c_int32, [POINTER(E_DH_KEY), c_void_p]),
    "E_ASN1_GetDHParamsBytes": ("E_ASN1_GetDHParamsBytes", c_int32, [POINTER(E_DH_KEY)]),
    "E_ASN1_GetDHParams": ("E_ASN1_GetDHParams", None, [POINTER(E_DH_KEY), c_void_p, c_uint32]),
    "E_ASN1_PutENUM": ("E_ASN1_PutENUM", c_int32, [POINTER(ENUM), c_uint32, c_void_p]),
    "E_ASN1_GetENUMBytes": ("E_ASN1_GetENUMBytes", c_int32, [POINTER(ENUM), c_uint32]),
    "E_ASN1_PutU32": ("E_ASN1_PutU32", c_int32, [c_uint32, c_void_p]),
    "E_ASN1_GetU32Bytes": ("E_ASN1_GetU32Bytes", c_int32, [c_uint32]),
    "E_ASN1_GetU32": ("E_ASN1_GetU32", None, [c_void_p, c_void_p, c_uint32]),
    "E_ECParams_Init": ("E_ECParams_Init", c_int32, [c_int32, POINTER(E_EC_PARAMS)]),
    "TORVA_V1_opaque8ToLongs": ("TORVA_V1_opaque8ToLongs", c_int32, [c_int32, POINTER(TORVA_V1_OPAQUE8), c_void_p]),
    "TORVA_V1_LongsToopaque8": ("TORVA_V1_LongsToopaque8", c_int32, [c_int32, c_void_p, POINTER(TORVA_V1_OPAQUE8)]),
    "TORVA_V1_ECPointsToopaque8": ("TORVA_V1_ECPointsToopaque8", c_int32, [c_int32, c_int32, POINTER(TORVA_V1_POINT), POINTER(TORVA_V1_OPAQUE8)]),
    "TORVA_V1_opaque8ToECPoints": ("TORVA_V1_opaque8ToECPoints", c_int32, [c_int32, POINTER(TORVA_V1_OPAQUE8), POINTER(TORVA_V1_POINT)]),
    "TORVA_V1_IsValidPoint": ("TORVA_V1_IsValidPoint", c_int32, [c_int32, POINTER(E_EC_PARAMS), POINTER(TORVA_V1_OPAQUE8)]),
    "TORVA_V1_ScalarMultiplicationOnEllipticCurves": ("TORVA_V1_ScalarMultiplicationOnEllipticCurves", c_int32, [c_int32, POINTER(E_EC_PARAMS), c_void_p, c_int32, POINTER(TORVA_V1_POINT), POINTER(TORVA_V1_POINT)]),
    "TORVA_V1_psmul": ("TORVA_V1_psmul", c_int32, [c_int32, POINTER(E_EC_PARAMS), c_void_p, c_int32, POINTER(TORVA_V1_PROJECTIVE), POINTER(TORVA_V1_PROJECTIVE)]),
    "TORVA_V1_pdouble": ("TORVA_V1_pdouble", c_int32, [c_int32, POINTER(E_EC_PARAMS), POINTER(TORVA_V1_PROJECTIVE), POINTER(TORVA_V1_PROJECTIVE)]),
    "TORVA_V1_padd": ("TORVA_V1_padd", c_int32, [c_int32, POINTER(E_EC_PARAMS), POINTER(TORVA_V1_PROJECTIVE), POINTER(TORVA_V1_PROJECTIVE), POINTER(TORVA_V1_PROJECTIVE)]),
    "TORVA_V1_toProjective": ("TORVA_V1_toProjective", c_int32, [c_int32, POINTER(E_EC_PARAMS), POINTER(TORVA_V1_POINT), POINTER(TORVA_V1_PROJECTIVE)]),
    "TORVA_V1_toAffine": ("TORVA_V1_toAffine", c_int32, [c_int32, POINTER(E_EC_PARAMS), POINTER(TORVA_V1_PROJECTIVE), POINTER(TORVA_V1_POINT)]),
    "TORVA_V1_combPrecompute": ("TORVA_V1_combPrecompute", c_int32, [c_int32, POINTER(E_EC_PARAMS), POINTER(TORVA_V1_POINT), POINTER(TORVA_V1_POINT)]),
    "TORVA_V1_combMultiply": ("TORVA_V1_combMultiply", c_int32, [c_int32, POINTER(E_EC_PARAMS), c_void_p, c_int32, POINTER(TORVA_V1_POINT), POINTER(TORVA_V1_POINT)]),
    "PrintBigNumber": ("PrintBigNumber", None, [c_void_p]),
    "PrintECPointProjective": ("PrintECPointProjective", None, [POINTER(TORVA_V1_PROJECTIVE)]),
    "ECC_BaseOrderExpTest": ("ECC_BaseOrderExpTest", c_int32, []),
    "E_ECC_GenerateKeyPair": ("E_ECC_GenerateKeyPair", c_int32, [c_int32, POINTER(E_EC_PARAMS), POINTER(TORVA_V1_OPAQUE8), POINTER(TORVA_V1_OPAQUE8)]),
    "E_ECC_GenerateKeyPair_ECKCDSA": ("E_ECC_GenerateKeyPair_ECKCDSA", c_int32, [c_int32, POINTER(E_EC_PARAMS), POINTER(TORVA_V1_OPAQUE8), POINTER(TORVA_V1_OPAQUE8)]),
    "E_ECC_GenerateKeyPair_ECKCDSA_TEST": ("E_ECC_GenerateKeyPair_ECKCDSA_TEST", c_int32, [c_int32, POINTER(E_EC_PARAMS), POINTER(TORVA_V1_OPAQUE8), POINTER(TORVA_V1_OPAQUE8)]),
    "TORVA_V1_ECC_KeyPairGeneration_X962": ("TORVA_V1_ECC_KeyPairGeneration_X962", c_int32, [c_int32, POINTER(E_EC_PARAMS), POINTER(TORVA_V1_OPAQUE8), POINTER(TORVA_V1_OPAQUE8)]),
    "TORVA_V1_ECC_KeyPairGeneration_ECKCDSA": ("TORVA_V1_ECC_KeyPairGeneration_ECKCDSA", c_int32, [c_int32, POINTER(E_EC_PARAMS), POINTER(TORVA_V1_OPAQUE8), POINTER(TORVA_V1_OPAQUE8)]),
    "TORVA_V1_ECC_KeyPairGeneration_ECKCDSA_TEST": ("TORVA_V1_ECC_KeyPairGeneration_ECKCDSA_TEST", c_int32, [c_int32, POINTER(E_EC_PARAMS), POINTER(TORVA_V1_OPAQUE8), POINTER(TORVA_V1_OPAQUE8)]),
    "E_ECDSA_Sign": ("E_ECDSA_Sign", c_int32, [c_int32, POINTER(E_EC_PARAMS), POINTER(TORVA_V1_OPAQUE8), POINTER(TORVA_V1_OPAQUE8), POINTER(TORVA_V1_OPAQUE8)]),
    "E_ECDSA_Verify": ("E_ECDSA_Verify", c_int32, [c_int32, POINTER(E_EC_PARAMS), POINTER(TORVA_V1_OPAQUE8), POINTER(TORVA_V1_OPAQUE8), POINTER(TORVA_V1_OPAQUE8)]),
    "TORVA_V1_ECC_SignatureGeneration_X917": ("TORVA_V1_ECC_SignatureGeneration_X917", c_int32, [c_int32, POINTER(E_EC_PARAMS), POINTER(TORVA_V1_OPAQUE8), POINTER(TORVA_V1_OPAQUE8), POINTER(TORVA_V1_OPAQUE8), POINTER(TORVA_V1_OPAQUE8)]),
    "TORVA_V1_ECC_SignatureVerification": ("TORVA_V1_ECC_SignatureVerification", c_int32, [c_int32, POINTER(E_EC_PARAMS), POINTER(TORVA_V1_OPAQUE8), POINTER(TORVA_V1_OPAQUE8), POINTER(TORVA_V1_OPAQUE8), POINTER(TORVA_V1_OPAQUE8)]),
    "E_ECKCDSA_Sign": ("E_ECKCDSA_Sign", c_int32, [c_int32, POINTER(E_EC_PARAMS), POINTER(TORVA_V1_OPAQUE8), POINTER(TORVA_V1_OPAQUE8), POINTER(TORVA_V1_OPAQUE8), POINTER(TORVA_V1_OPAQUE8)]),
    "E_ECKCDSA_Sign_givenK": ("E_ECKCDSA_Sign_givenK", c_int32, [c_int32, POINTER(E_EC_PARAMS), POINTER(TORVA_V1_OPAQUE8), POINTER(TORVA_V1_OPAQUE8), POINTER(TORVA_V1_OPAQUE8), POINTER(TORVA_V1_OPAQUE8), POINTER(TORVA_V1_OPAQUE8)]),
    "E_ECKCDSA_Verify": ("E_ECKCDSA_Verify", c_int32, [c_int32, POINTER(E_EC_PARAMS), POINTER(TORVA_V1_OPAQUE8), POINTER(TORVA_V1_OPAQUE8), POINTER(TORVA_V1_OPAQUE8)]),
    "E_ECKCDSA_Verify_TEST": ("E_ECKCDSA_Verify_TEST", c_int32, [c_int32, POINTER(E_EC_PARAMS), POINTER(TORVA_V1_OPAQUE8), POINTER(TORVA_V1_OPAQUE8), POINTER(TORVA_V1_OPAQUE8)]),
    "TORVA_V1_ECC_SignatureGeneration_ECKCDSA": ("TORVA_V1_ECC_SignatureGeneration_ECKCDSA", c_int32, [c_int32, POINTER(E_EC_PARAMS), POINTER(TORVA_V1_OPAQUE8), POINTER(TORVA_V1_OPAQUE8), POINTER(TORVA_V1_OPAQUE8), POINTER(TORVA_V1_OPAQUE8), POINTER(TORVA_V1_OPAQUE8)]),
    "TORVA_V1_ECC_SignatureVerification_ECKCDSA": ("TORVA_V1_ECC_SignatureVerification_ECKCDSA", c_int32, [c_int32, POINTER(E_EC_PARAMS), POINTER(TORVA_V1_OPAQUE8), POINTER(TORVA_V1_OPAQUE8), POINTER(TORVA_V1_OPAQUE8), POINTER(TORVA_V1_OPAQUE8)]),
    "TORVA_V1_ECDHPrimitive": ("TORVA_V1_ECDHPrimitive", c_int32, [c_int32, POINTER(E_EC_PARAMS), POINTER(TORVA_V1_OPAQUE8), POINTER(TORVA_V1_OPAQUE8), POINTER(TORVA_V1_OPAQUE8)]),
    "E_ECC_ECDH_Primitive": ("E_ECC_ECDH_Primitive", c_int32, [c_int32, POINTER(E_EC_PARAMS), POINTER(TORVA_V1_OPAQUE8), POINTER(TORVA_V1_OPAQUE8), POINTER(TORVA_V1_OPAQUE8)]),
    "TORVA_V1_DeriveKeyData": ("TORVA_V1_DeriveKeyData", c_int32, [POINTER(TORVA_V1_OPAQUE8), POINTER(TORVA_V1_OPAQUE8), c_int32, POINTER(TORVA_V1_OPAQUE8)]),
    "E_ECC_X9_63_KAS_OPDHS": ("E_ECC_X9_63_KAS_OPDHS", c_int32, [c_int32, POINTER(E_EC_PARAMS), POINTER(TORVA_V1_OPAQUE8), POINTER(TORVA_V1_OPAQUE8), POINTER(TORVA_V1_OPAQUE8), c_int32, POINTER(TORVA_V1_OPAQUE8)]),
    "E_ECC_X9_63_FUMS": ("E_ECC_X9_63_FUMS", c_int32, [c_int32, POINTER(E_EC_PARAMS), POINTER(TORVA_V1_OPAQUE8), POINTER(TORVA_V1_OPAQUE8), POINTER(TORVA_V1_OPAQUE8), POINTER(TORVA_V1_OPAQUE8), POINTER(TORVA_V1_OPAQUE8), c_int32, POINTER(TORVA_V1_OPAQUE8)]),
    "TORVA_V1_ECC_getLengthOfMessageToBeEncrypted": ("TORVA_V1_ECC_getLengthOfMessageToBeEncrypted", c_int32, [POINTER(E_EC_PARAMS), c_int32]),
    "TORVA_V1_ECC_getLengthOfOriginalMessage": ("TORVA_V1_ECC_getLengthOfOriginalMessage", c_int32, [POINTER(E_EC_PARAMS), POINTER(TORVA_V1_OPAQUE8)]),
    "E_ECC_Encryption": ("E_ECC_Encryption", c_int32, [c_int32, POINTER(E_EC_PARAMS), POINTER(TORVA_V1_OPAQUE8), POINTER(TORVA_V1_OPAQUE8), POINTER(TORVA_V1_OPAQUE8)]),
    "E_ECC_Decryption": ("E_ECC_Decryption", c_int32, [c_int32, POINTER(E_EC_PARAMS), POINTER(TORVA_V1_OPAQUE8), POINTER(TORVA_V1_OPAQUE8), POINTER(TORVA_V1_OPAQUE8)]),
}
MorvaneCommon = {
    "K_NewContext": ("K_NewContext", POINTER(K_CONTEXT), [POINTER(K_ALLOCATOR)]),
    "K_EndContext": ("K_EndContext", c_uint32, [POINTER(K_CONTEXT)]),
    "K_calloc": ("K_calloc", c_void_p, [POINTER(K_CONTEXT), c_uint32, c_uint32]),
    "K_free": ("K_free", None, [POINTER(K_CONTEXT), c_void_p]),
    "K_str2bin": ("K_str2bin", c_int32, [POINTER(K_CONTEXT), c_char_p, c_void_p, c_void_p]),
    "K_KCOInit": ("K_KCOInit", c_int32, [POINTER(K_CONTEXT)]),
    "K_KCOTerm": ("K_KCOTerm", None, [POINTER(K_CONTEXT)]),
}
