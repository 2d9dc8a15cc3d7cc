// Products, squares and reductions in blocks of four or eight limbs with MULX, ADCX and ADOX.
#include "bignum/adx_rows.h"
#include "bignum/kernel_variants.h"
#include "bignum/rows.h"

#include <algorithm>

namespace morvane::bignum {
namespace {

using adx::Block;

// Calls f with each of the numbers below N as a template argument, in straight code: a block whose limbs are all named by
// constants stays in registers.
template <std::size_t N, typename F>
[[gnu::always_inline]] inline void for_each_limb(F f) noexcept {
    [&]<std::size_t... I>(std::index_sequence<I...>) __attribute__((always_inline)) {
        (f(std::integral_constant<std::size_t, I>()), ...);
    }
    (std::make_index_sequence<N>());
}

template <std::size_t N>
[[gnu::always_inline]] inline Block<N> load(const LimbInWords* from) noexcept {
    Block<N> x;
    for_each_limb<N>([&](auto i) __attribute__((always_inline)) { x.v[i] = from[i]; });
    return x;
}

template <std::size_t N>
[[gnu::always_inline]] inline void store(LimbInWords* to, const Block<N>& x) noexcept {
    for_each_limb<N>([&](auto i) __attribute__((always_inline)) { to[i] = x.v[i]; });
}

// t += a b + carry for `blocks` blocks of a and the one block b. t has as many blocks as a; what belongs above them is
// returned.
template <std::size_t N>
[[gnu::always_inline]] inline Block<N> multiply_add_blocks(LimbInWords* t, Block<N> x, const LimbInWords* a,
                                                           std::size_t blocks, const LimbInWords* b) noexcept {
    for (; blocks != 0; --blocks, a += N, t += N) {
        [&]<std::size_t... I>(std::index_sequence<I...>) __attribute__((always_inline)) {
            (adx::add_row<I>(x, t[I], a, b[I]), ...);
        }
        (std::make_index_sequence<N>());
    }
    return x;
}

// t += f m for `blocks` blocks of m, at least one, and the one block f that makes the lowest block of t 0; what belongs
// above is returned. The lowest block of t is not written.
template <std::size_t N>
[[gnu::always_inline]] inline Block<N> reduce_blocks(Limb* t, const Limb* m, std::size_t blocks,
                                                     Limb minus_inverse) noexcept {
    Block<N> x = load<N>(t);
    Limb factors[N];
    [&]<std::size_t... I>(std::index_sequence<I...>) __attribute__((always_inline)) {
        ((factors[I] = x.template at<I>() * minus_inverse, adx::reduce_row<I>(x, m, factors[I])), ...);
    }
    (std::make_index_sequence<N>());
    return multiply_add_blocks<N>(t + N, x, m + N, blocks - 1, factors);
}

template <std::size_t N>
[[gnu::always_inline]] inline void multiply_blocks(LimbInWords* r, const LimbInWords* a, const LimbInWords* b,
                                                   std::size_t blocks) noexcept {
    for (std::size_t i = 0; i < blocks * N; ++i) r[i] = 0;
    for (std::size_t j = 0; j < blocks * N; j += N) {
        store<N>(r + j + blocks * N, multiply_add_blocks<N>(r + j, {}, a, blocks, b + j));
    }
}

template <std::size_t N>
[[gnu::always_inline]] inline void square_blocks(LimbInWords* r, const LimbInWords* a, std::size_t blocks) noexcept {
    for (std::size_t i = 0; i < blocks; ++i) adx::cross_products<N>(r + 2 * N * i, a + N * i);
    Limb carry = 0;
    for (std::size_t i = 0; i + 1 < blocks; ++i) {
        Block<N> x = multiply_add_blocks<N>(r + N * (2 * i + 1), {}, a + N * (i + 1), blocks - 1 - i, a + N * i);
        LimbInWords* const above = r + N * (blocks + i);
        adx::add<N>(x, above, carry);
        store<N>(above, x);
    }
    for (std::size_t i = (2 * blocks - 1) * N; i < 2 * blocks * N; ++i) {
        r[i] += carry;
        carry = static_cast<Limb>(r[i] < carry);
    }
    adx::double_and_add_squares(r, a, blocks * N / 4);
}

// t = t / B^(blocks N), in its upper half; what is above that.
template <std::size_t N>
[[gnu::always_inline]] inline Limb reduce_in_place(Limb* t, const Limb* m, std::size_t blocks,
                                                   Limb minus_inverse) noexcept {
    Limb top = 0;
    for (std::size_t i = 0; i < blocks * N; i += N) {
        Block<N> x = reduce_blocks<N>(t + i, m, blocks, minus_inverse);
        adx::add<N>(x, t + i + blocks * N, top);
        store<N>(t + i + blocks * N, x);
    }
    return top;
}

template <std::size_t N>
void reduce(Limb* r, Limb* t, const Limb* m, std::size_t n, Limb minus_inverse) noexcept {
    const Limb top = reduce_in_place<N>(t, m, n / N, minus_inverse);
    Limb borrow = 0;
    for (std::size_t i = 0; i < n; i += N) {
        Block<N> x = load<N>(t + n + i);
        adx::subtract<N>(x, m + i, borrow);
        store<N>(r + i, x);
    }
    const Limb keep_sum = Limb{0} - (borrow & ~top & 1);
    for (std::size_t i = 0; i < n; ++i) r[i] ^= (r[i] ^ t[i + n]) & keep_sum;
}

// r = the upper half of t, from which the modulus is subtracted where there is a limb on top: then r is below B^n.
template <std::size_t N>
[[gnu::always_inline]] inline void subtract_where(Limb top, Limb* r, const Limb* t, const Limb* m,
                                                  std::size_t blocks) noexcept {
    Limb borrow = 0;
    if (blocks == 1) {
        Block<N> x = load<N>(t + N);
        adx::subtract<N>(x, m, borrow);
        adx::choose<N>(x, top, t + N);
        return store<N>(r, x);
    }
    Limb mask = Limb{0} - top;
    asm("" : "+r"(mask));  // or the compiler may branch on it
    for (std::size_t i = 0; i < blocks * N; i += N) {
        Limb subtrahend[N];
        for_each_limb<N>([&](auto k) __attribute__((always_inline)) { subtrahend[k] = m[i + k] & mask; });
        Block<N> x = load<N>(t + blocks * N + i);
        adx::subtract<N>(x, subtrahend, borrow);
        store<N>(r + i, x);
    }
}

template <std::size_t N>
[[gnu::always_inline]] inline void montgomery(Limb* r, Limb* t, const Limb* a, const Limb* b, const Limb* m,
                                              std::size_t blocks, Limb minus_inverse) noexcept {
    if (a == b) {
        square_blocks<N>(t, a, blocks);
    } else {
        multiply_blocks<N>(t, a, b, blocks);
    }
    subtract_where<N>(reduce_in_place<N>(t, m, blocks, minus_inverse), r, t, m, blocks);
}

// Blocks whose number the compiler knows make straight code.
template <std::size_t N, std::size_t Blocks>
void montgomery_of(Limb* r, Limb* t, const Limb* a, const Limb* b, const Limb* m, std::size_t /*n*/,
                   Limb minus_inverse) noexcept {
    montgomery<N>(r, t, a, b, m, Blocks, minus_inverse);
}

template <std::size_t N>
void montgomery_of_any(Limb* r, Limb* t, const Limb* a, const Limb* b, const Limb* m, std::size_t n,
                       Limb minus_inverse) noexcept {
    montgomery<N>(r, t, a, b, m, n / N, minus_inverse);
}

}  // namespace

void multiply_adx(LimbInWords* r, const LimbInWords* a, std::size_t a_size, const LimbInWords* b,
                  std::size_t b_size) noexcept {
    constexpr std::size_t kBlock = 8;
    const std::size_t a_blocks = a_size / kBlock;
    for (std::size_t i = 0; i < a_size + b_size; ++i) r[i] = 0;  // std::fill_n would take limbs in words for plain limbs
    std::size_t j = 0;
    if (a_blocks != 0) {
        for (; j + kBlock <= b_size; j += kBlock) {
            store<kBlock>(r + j + a_blocks * kBlock, multiply_add_blocks<kBlock>(r + j, {}, a, a_blocks, b + j));
        }
    }
    // What is left of a by the blocks of b, then what is left of b by all of a.
    const std::size_t whole = j;
    for (std::size_t i = whole == 0 ? a_size : a_blocks * kBlock; i < a_size; ++i) {
        r[i + whole] = adx::multiply_add_row(r + i, b, whole, a[i]);
    }
    for (; j < b_size; ++j) r[j + a_size] = adx::multiply_add_row(r + j, a, a_size, b[j]);
}

void square_adx(LimbInWords* r, const LimbInWords* a, std::size_t n) noexcept {
    if (n % 8 == 0) return square_blocks<8>(r, a, n / 8);
    if (n % 4 == 0) return square_blocks<4>(r, a, n / 4);
    multiply_adx(r, a, n, a, n);
}

void montgomery_reduce_adx(Limb* r, Limb* t, const Limb* m, std::size_t n, Limb minus_inverse) noexcept {
    if (n % 8 == 0) return reduce<8>(r, t, m, n, minus_inverse);
    if (n % 4 == 0) return reduce<4>(r, t, m, n, minus_inverse);
    montgomery_reduce_plain(r, t, m, n, minus_inverse);
}

void montgomery_multiply_adx(Limb* r, Limb* t, const Limb* a, const Limb* b, const Limb* m, std::size_t n,
                             Limb minus_inverse) noexcept {
    MontgomeryFn* const run = n == 4       ? montgomery_of<4, 1>
                              : n == 8     ? montgomery_of<8, 1>
                              : n % 8 == 0 ? montgomery_of_any<8>
                              : n % 4 == 0 ? montgomery_of_any<4>
                                           : montgomery_multiply_apart;
    run(r, t, a, b, m, n, minus_inverse);
}

Limb multiply_subtract_row_adx(LimbInWords* r, const LimbInWords* a, std::size_t n, Limb w) noexcept {
    return adx::multiply_subtract_row(r, a, n, w);
}

}  // namespace morvane::bignum
