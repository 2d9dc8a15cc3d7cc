// The two built-in curves over GF(2^163), and the routines on them for each way to multiply polynomials.
#pragma once

#include "cpu/cpu.h"
#include "ecc/comb.h"
#include "ecc/words.h"

namespace morvane::ecc {

// A polynomial of degree below 192, three words of 64 bits. Elements are not kept below degree 163 but modulo
// x^29 (x^163 + ... + 1), so that a product is cut at a word's end.
struct Polynomial {
    std::uint64_t v[3];
};

constexpr Polynomial polynomial_of(const Word* words) noexcept {
    Polynomial r{};
    for (std::size_t i = 0; i < kWords; ++i) r.v[i / 2] |= std::uint64_t{words[i]} << 32 * (i % 2);
    return r;
}

constexpr void words_of(Word* words, const Polynomial& a) noexcept {
    for (std::size_t i = 0; i < kWords; ++i) words[i] = static_cast<Word>(a.v[i / 2] >> 32 * (i % 2));
}

constexpr bool is_zero(const Polynomial& a) noexcept { return (a.v[0] | a.v[1] | a.v[2]) == 0; }

struct BinaryPoint {
    Polynomial x, y;
};

// x^163 = x^E3 + x^E2 + x^E1 + 1.
template <unsigned E3, unsigned E2, unsigned E1>
struct Reduction {
    static constexpr std::uint64_t kLow = std::uint64_t{1} << E3 | 1U << E2 | 1U << E1 | 1U;  // x^163
    static constexpr std::uint64_t kFold = kLow << 29;                                        // x^192

    // w x^192, in two words.
    static constexpr void fold(std::uint64_t w, std::uint64_t& low, std::uint64_t& high) noexcept {
        low ^= w << 29 ^ w << (29 + E1) ^ w << (29 + E2) ^ w << (29 + E3);
        high ^= w >> 35 ^ w >> (35 - E1) ^ w >> (35 - E2) ^ w >> (35 - E3);
    }

    // Of degree below 163.
    static constexpr Polynomial canonical(const Polynomial& a) noexcept {
        constexpr unsigned kTopBits = 163 - 128;
        const std::uint64_t over = a.v[2] >> kTopBits;
        const std::uint64_t low = over ^ over << E1 ^ over << E2 ^ over << E3;
        return {{a.v[0] ^ low, a.v[1], a.v[2] & ((std::uint64_t{1} << kTopBits) - 1)}};
    }
};

struct Sect163k1 {
    static constexpr std::int32_t kId = kSect163k1;
    static constexpr bool kHasOnes = true;  // a = b = 1
    using Field = Reduction<7, 6, 3>;
    static constexpr Constant kField{8, 0, 0, 0, 0, 0xc9};
    static constexpr Constant kA{0, 0, 0, 0, 0, 1};
    static constexpr Constant kB{0, 0, 0, 0, 0, 1};
    static constexpr Constant kBaseX{2, 0xfe13c053, 0x7bbc11ac, 0xaa07d793, 0xde4e6d5e, 0x5c94eee8};
    static constexpr Constant kBaseY{2, 0x89070fb0, 0x5d38ff58, 0x321f2e80, 0x0536d538, 0xccdaa3d9};
    static constexpr Constant kOrder{4, 0, 0, 0x00020108, 0xa2e0cc0d, 0x99f8a5ef};
};

struct C2pnb163v1 {
    static constexpr std::int32_t kId = kC2pnb163v1;
    static constexpr bool kHasOnes = false;
    using Field = Reduction<8, 2, 1>;
    static constexpr Constant kField{8, 0, 0, 0, 0, 0x107};
    static constexpr Constant kA{7, 0x2546b543, 0x5234a422, 0xe0789675, 0xf432c894, 0x35de5242};
    static constexpr Constant kB{0, 0xc9517d06, 0xd5240d3c, 0xff38c74b, 0x20b6cd4d, 0x6f9dd4d9};
    static constexpr Constant kRootOfB{0, 0x2f09c5ea, 0x52d399cd, 0xfe988a76, 0x10c3ddd0, 0xca5d48a1};
    static constexpr Constant kBaseX{7, 0xaf699895, 0x46103d79, 0x329fcc3d, 0x74880f33, 0xbbe803cb};
    static constexpr Constant kBaseY{1, 0xec23211b, 0x5966adea, 0x1d3f87f7, 0xea5848ae, 0xf0b7ca9f};
    static constexpr Constant kOrder{4, 0, 0, 0x0001e60f, 0xc8821cc7, 0x4daeafc1};
};

// The table over the base point, or null while another thread makes it.
template <typename Curve>
const Comb<BinaryPoint>* binary_comb() noexcept;

// r = u G + v p, where u or v may be null for 0; six words each. False if that is the point at infinity. The time depends
// on the scalars where there are both.
using BinaryMultiplyFn = bool(TORVA_V1_POINT& r, std::int32_t curve, const Word* u, const Word* v, const TORVA_V1_POINT* p);
BinaryMultiplyFn binary_multiply_portable;
BinaryMultiplyFn binary_multiply_clmul;  // needs PCLMULQDQ and SSE4.1
extern cpu::Dispatch<BinaryMultiplyFn, 2> binary_multiply;

// Whether the equation of a built-in curve over GF(2^163) holds, and whether a point of it has an order that divides n.
bool is_on_binary_curve(std::int32_t curve, const BinaryPoint& p) noexcept;
bool is_in_binary_subgroup(std::int32_t curve, const BinaryPoint& p) noexcept;

}  // namespace morvane::ecc
