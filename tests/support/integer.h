// Integers as a test writes them: with operators, and room for whatever comes.
#pragma once

#include <morvane/bignum.h>

#include "support/bytes.h"

#include <memory>

namespace morvane::test {

class Integer {
public:
    static constexpr std::uint32_t kWords = 128;

    Integer(std::uint32_t value = 0) { EN_U32ToENUM(*this, value); }
    Integer(const char* hex) { *this = Integer(from_hex(std::string(std::string_view(hex).size() % 2, '0') + hex)); }
    explicit Integer(const Bytes& octets) { EN_U8ToENUM(*this, octets.data(), size32(octets)); }
    explicit Integer(const ENUM& number) { EN_Copy(*this, &number); }
    Integer(const Integer& other) { EN_Copy(*this, other); }
    Integer& operator=(const Integer& other) {
        EN_Copy(*this, other);
        return *this;
    }

    operator ENUM*() { return record_.get(); }
    operator const ENUM*() const { return record_.get(); }
    ENUM* operator->() { return record_.get(); }

    std::uint32_t bits() const { return EN_GetFilledBitNum(*this); }
    // Without zeros in front.
    Bytes octets() const {
        Bytes bytes(4 * kWords);
        bytes.resize(static_cast<std::size_t>(EN_ENUMToU8(bytes.data(), *this)));
        return bytes;
    }
    std::string hex() const { return to_hex(octets()); }

private:
    std::unique_ptr<ENUM, void (*)(ENUM*)> record_{EN_Create(kWords), [](ENUM* x) { EN_Destroy(x); }};
};

template <auto Run, typename Second>
Integer result_of(const Integer& a, Second b) {
    Integer result;
    Run(result, a, b);
    return result;
}
inline Integer operator+(const Integer& a, const Integer& b) { return result_of<EN_Add, const ENUM*>(a, b); }
inline Integer operator-(const Integer& a, const Integer& b) { return result_of<EN_Sub, const ENUM*>(a, b); }
inline Integer operator*(const Integer& a, const Integer& b) { return result_of<EN_Mul, const ENUM*>(a, b); }
inline Integer operator%(const Integer& a, const Integer& b) { return result_of<EN_Mod, const ENUM*>(a, b); }
inline Integer operator>>(const Integer& a, int bits) { return result_of<EN_RShift>(a, bits); }
inline Integer operator<<(const Integer& a, int bits) { return result_of<EN_LShift>(a, bits); }
inline Integer power(const Integer& base, const Integer& exponent, const Integer& modulus) {
    Integer result;
    EN_Mod_Exp(result, base, exponent, modulus);
    return result;
}
inline Integer inverse(const Integer& a, const Integer& modulus) { return result_of<EN_Mod_Inv, const ENUM*>(a, modulus); }
inline bool operator==(const Integer& a, const Integer& b) { return a.hex() == b.hex(); }

}  // namespace morvane::test
