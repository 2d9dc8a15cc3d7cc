/* The primitive algorithms: every E_ function of the library. */
#ifndef MORVANE_PRIMITIVES_H
#define MORVANE_PRIMITIVES_H

#include <morvane/asn1.h>
#include <morvane/cipher.h>
#include <morvane/dh.h>
#include <morvane/dsa.h>
#include <morvane/ecc.h>
#include <morvane/ecc_schemes.h>
#include <morvane/hash.h>
#include <morvane/kcdsa.h>
#include <morvane/pk.h>
#include <morvane/prime.h>
#include <morvane/random.h>

#endif
