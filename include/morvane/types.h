/* Words, linkage and the records that more than one family shares.
 *
 * Plain C, usable from C and C++. Every header of the library includes this one.
 *
 * Linkage. On 32-bit Windows two calling conventions are in use: the CSP_ family is stdcall and exported under decorated
 * names (_CSP_DigestDataInit@12), everything else is cdecl and exported under its plain name. On every other system both
 * macros are empty. A program that links the static library instead of the shared one defines MORVANE_STATIC.
 *
 * Words. "Word" is an unsigned 32-bit integer. Lengths are bytes unless a name ends in _bits or _words. Where a record
 * holds a handle or a pointer, it is as wide as a pointer of the build: 4 bytes in the 32-bit builds, whose record sizes
 * are given beside each record, 8 in the 64-bit ones. */
#ifndef MORVANE_TYPES_H
#define MORVANE_TYPES_H

#include <morvane/version.h>

#include <stdint.h>

#if defined(_WIN32) && !defined(MORVANE_STATIC)
#define MORVANE_API __declspec(dllimport)
#elif defined(_WIN32)
#define MORVANE_API
#else
#define MORVANE_API __attribute__((visibility("default")))
#endif

#if defined(_WIN32) && defined(_MSC_VER)
#define MORVANE_CALL    __cdecl
#define MORVANE_STDCALL __stdcall
#elif defined(_WIN32) && defined(__i386__)
#define MORVANE_CALL    __attribute__((cdecl))
#define MORVANE_STDCALL __attribute__((stdcall))
#else
#define MORVANE_CALL
#define MORVANE_STDCALL
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* An integer of any size: 12 bytes in the 32-bit builds. bignum.h has its rules. */
typedef struct ENUM {
    uint32_t sign;   /* 0 zero or positive, 1 negative */
    int32_t length;  /* words in use */
    uint32_t* words; /* the magnitude, least significant word first */
} ENUM;

/* A data buffer: 8 bytes in the 32-bit builds. */
typedef struct cssm_data {
    uint32_t Length; /* bytes */
    uint8_t* Data;   /* owned by whoever the function in question names */
} CSSM_DATA;

/* The identifier of a service provider; carried in key headers, never read. */
typedef struct cssm_guid {
    uint32_t Data[4];
} CSSM_GUID;

/* A date in a key header, two words. */
typedef struct cssm_date {
    uint32_t Data[2];
} CSSM_DATE;

/* The header of a key record, nineteen words (76 bytes). The numbers follow CDSA 1.2. */
typedef struct cssm_keyheader {
    uint32_t HeaderVersion;
    CSSM_GUID CspId;
    uint32_t BlobType; /* 0 raw, 1 raw DER, 2 reference, 3 wrapped */
    uint32_t Format;
    uint32_t AlgorithmId; /* a CSP_ALG_ value */
    uint32_t KeyClass;    /* 0 public, 1 private, 2 session (secret) key */
    uint32_t LogicalKeySizeInBits;
    uint32_t KeyAttr;
    uint32_t KeyUsage;
    CSSM_DATE StartDate;
    CSSM_DATE EndDate;
    uint32_t WrapAlgorithmId;
    uint32_t WrapMode;
    uint32_t Reserved;
} CSSM_KEYHEADER;

/* A key record: 84 bytes in the 32-bit builds. */
typedef struct cssm_key {
    CSSM_KEYHEADER KeyHeader;
    CSSM_DATA KeyData;
} CSSM_KEY;

/* One attribute of a context: 12 bytes in the 32-bit builds, 16 in the 64-bit ones. The type says which member holds the
 * value (a CSP_ATTR_ constant names it). */
typedef struct cssm_context_attribute {
    uint32_t AttributeType;
    uint32_t AttributeLength; /* never read */
    union {
        uint32_t Uint32;
        CSSM_KEY* Key;
        CSSM_DATA* Data;
        const CSSM_DATE* Date;
        uintptr_t Word; /* the whole value */
    } Attribute;
} CSSM_CONTEXT_ATTRIBUTE;

/* A context record: what an operation is to be done with. 20 bytes in the 32-bit builds. */
typedef struct cssm_context {
    uint32_t ContextType;   /* a CSP_CONTEXT_ value */
    uint32_t AlgorithmType; /* a CSP_ALG_ value */
    uint32_t Reserve;       /* never read */
    uint32_t NumberOfAttributes;
    const CSSM_CONTEXT_ATTRIBUTE* ContextAttributes; /* NumberOfAttributes of them, owned by the maker of the context */
} CSSM_CONTEXT;

#ifdef __cplusplus
}
#endif

#endif
