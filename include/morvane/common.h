/* MorvaneCommon, the companion library: contexts, and the memory that belongs to them.
 *
 * A context is made first and ended last. Everything that the toolkit (morvane/toolkit.h) hands out is a block of the
 * context it was called with, to be released with K_free on the same context. Blocks are wiped before they go back, for
 * they may have held keys. What is still there when the context ends goes with it.
 *
 * The memory comes from the C library, or from a pair of functions of the caller's own.
 *
 * Threads. A context is used by one thread at a time; different contexts do not know of one another. */
#ifndef MORVANE_COMMON_H
#define MORVANE_COMMON_H

#include <morvane/types.h>

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

/* What programs see of a context: 20 bytes in the 32-bit builds. It is the beginning of a longer record: a context is only
 * ever made by K_NewContext. */
typedef struct K_CONTEXT {
    uintptr_t companion[2];         /* the companion's own words */
    uint32_t companion_initialised; /* not 0 from K_KCOInit on; cleared by the toolkit */
    void* crypto;                   /* the toolkit's part, null when there is none */
    uint32_t last_error;            /* the code of the toolkit's last call that stores one */
} K_CONTEXT;

/* Where a context's memory comes from. */
typedef struct K_ALLOCATOR {
    void*(MORVANE_CALL* allocate)(void* user, size_t bytes); /* as malloc, aligned as it is; null when memory is short */
    void(MORVANE_CALL* release)(void* user, void* block);    /* given what allocate returned, never null */
    void* user;
} K_ALLOCATOR;

/* Makes a context, the words of K_CONTEXT all zero. `allocator` is copied; null stands for the C library.
 * Null when memory is short or a function of the allocator is missing. */
MORVANE_API K_CONTEXT* MORVANE_CALL K_NewContext(const K_ALLOCATOR* allocator);

/* Ends a context and releases all its blocks. Returns how many there still were: of a program that frees what it is given,
 * 0. In debug builds of the library a number other than 0 is reported on standard error. A null context has none. The
 * toolkit's part must be gone (K_KCCTerm); otherwise it counts as a block. */
MORVANE_API uint32_t MORVANE_CALL K_EndContext(K_CONTEXT* context);

/* A zero-filled block of count * size bytes at a multiple of 8 in the 32-bit builds, of 16 in the 64-bit ones. With a count
 * or size of 0 a block of no bytes, which is to be freed like any other. Null when memory is short, when the product passes
 * 2^32 - 1, or for a null context. */
MORVANE_API void* MORVANE_CALL K_calloc(K_CONTEXT* context, uint32_t count, uint32_t size);

/* Wipes a block of this context and gives it back. Null, of either argument, is good and does nothing. A pointer that is
 * not a block of this context is the caller's fault: the words in front of it are read, and where they show it, the
 * pointer is left alone; debug builds of the library stop the program. */
MORVANE_API void MORVANE_CALL K_free(K_CONTEXT* context, void* block);

/* Reads hexadecimal text, an even number of digits of either case and nothing else up to its terminating zero, into a block
 * of the context: *data becomes its address, *length the number of bytes. Of an empty text these are a block of no bytes
 * and 0. Returns 0, or -1 for any other text, short memory or a null argument; then *data becomes null and *length 0. */
MORVANE_API int32_t MORVANE_CALL K_str2bin(K_CONTEXT* context, const char* text, uint8_t** data, uint32_t* length);

/* Makes the companion's part of a context ready and sets companion_initialised. Returns 0, also when called again; -1 for a
 * null context. The toolkit calls it. */
MORVANE_API int32_t MORVANE_CALL K_KCOInit(K_CONTEXT* context);

/* Takes back what K_KCOInit made; the flag is the caller's to clear. Blocks stay. In debug builds of the library, blocks
 * that K_KCOInit did not find and that are still there are reported on standard error. The toolkit calls it. */
MORVANE_API void MORVANE_CALL K_KCOTerm(K_CONTEXT* context);

#ifdef __cplusplus
}
#endif

#endif
