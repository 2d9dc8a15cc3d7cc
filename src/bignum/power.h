// Modular exponentiation on words, for records and for the schemes above.
#pragma once

#include "bignum/limb.h"

#include <array>
#include <span>

namespace morvane::bignum {

// base^exponent mod modulus.
struct Power {
    std::span<const Word> base;      // of no more words than the modulus
    std::span<const Word> exponent;  // not empty; of one word, it is taken for public and is not 0
    std::span<const Word> modulus;   // the top word is not 0
    Word* result;                    // as many words as the modulus has; may be any of the operands
    bool is_modulus_secret = false;  // then its length in bits is all that may be known of it
    bool is_base_lasting = false;    // with this modulus it is used again and again, and everybody may know both

    bool has_known_exponent() const noexcept { return exponent.size() == 1; }
};

// False if there is no memory for the work; nothing is written then. Modulo an odd number, the time tells only the lengths,
// an exponent of one word, and a modulus that is not secret.
bool power_mod(const Power& power) noexcept;

// Two powers modulo odd numbers. Quicker than one after the other where the moduli have the same length and the exponents
// have the same length, of more than one word.
bool power_mod_pair(const std::array<Power, 2>& powers) noexcept;

// a.result = the product of two powers modulo the same odd number, that of `a`, whose length both results have. The
// exponents may be empty; everybody may know them. Variable time.
bool power_product_vt(const Power& a, const Power& b) noexcept;

}  // namespace morvane::bignum
