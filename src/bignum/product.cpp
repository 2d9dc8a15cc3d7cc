// EN_Mul, EN_Sqr and EN_Div: records to limbs and back.
#include "bignum/product.h"

#include "bignum/kernels.h"
#include "bignum/record.h"
#include "bignum/rows.h"
#include "bignum/work.h"

#include <bit>

namespace morvane::bignum {
namespace {

// The words of a record as limbs: where they lie if they pair up, else in a copy.
class Operand {
public:
    explicit Operand(const ENUM& x) noexcept
        : copy_(in_place(x) ? 0 : limbs_for(words_in(x))), size_(limbs_for(words_in(x))), limbs_(copy_.get()) {
        if (in_place(x)) {
            limbs_ = reinterpret_cast<const LimbInWords*>(x.words);
        } else if (copy_) {
            load_limbs(copy_.get(), x.words, words_in(x));
        }
    }
    explicit operator bool() const noexcept { return limbs_ != nullptr; }
    const LimbInWords* get() const noexcept { return limbs_; }
    std::size_t size() const noexcept { return size_; }

private:
    static bool in_place(const ENUM& x) noexcept { return words_in(x) % kWordsPerLimb == 0; }

    WorkLimbs copy_;
    std::size_t size_;
    const LimbInWords* limbs_;
};

// Lets `write` fill the limbs of a product and takes from them the `words` that the operands' lengths allow.
template <typename Write>
void store_product(ENUM& r, std::uint32_t sign, std::size_t words, std::size_t limbs, Write write) noexcept {
    if (limbs * kWordsPerLimb == words) {
        write(reinterpret_cast<LimbInWords*>(r.words));
    } else {
        WorkLimbs product(limbs);
        if (!product) return;
        write(product.get());
        store_limbs(r.words, product.get(), words);
    }
    r.sign = sign;
    set_length(r, words - static_cast<std::size_t>(r.words[words - 1] == 0));
}

}  // namespace

bool divide_words(Word* q, Word* r, std::span<const Word> a, std::span<const Word> d) noexcept {
    const std::size_t d_size = limbs_for(d.size());
    const std::size_t u_size = limbs_for(a.size()) + 1;
    WorkNumbers<3> space(u_size + d_size + (q != nullptr ? u_size - d_size : 0));
    if (!space) return false;
    Limb* const divisor = space.get();
    Limb* const u = divisor + d_size;
    Limb* const quotient = q != nullptr ? u + u_size : nullptr;

    load_limbs(divisor, d.data(), d.size());
    load_limbs(u, a.data(), a.size());
    const auto bits = static_cast<unsigned>(std::countl_zero(divisor[d_size - 1]));
    shift_left(divisor, divisor, d_size, bits);
    u[u_size - 1] = shift_left(u, u, u_size - 1, bits);
    divide(quotient, u, u_size, divisor, d_size);
    if (q != nullptr) store_limbs(q, quotient, a.size() - d.size() + 1);
    if (r != nullptr) {
        shift_right(u, u, d_size, bits);
        store_limbs(r, u, d.size());
    }
    return true;
}

}  // namespace morvane::bignum

using namespace morvane::bignum;

void EN_Mul(ENUM* r, const ENUM* a, const ENUM* b) {
    const std::uint32_t sign = (a->sign != 0) != (b->sign != 0) ? 1 : 0;
    if (words_in(*a) == 0 || words_in(*b) == 0) return set(*r, sign, {});
    const Operand x(*a);
    const Operand y(*b);
    if (!x || !y) return;
    store_product(*r, sign, words_in(*a) + words_in(*b), x.size() + y.size(),
                  [&](LimbInWords* product) { multiply(product, x.get(), x.size(), y.get(), y.size()); });
}

void EN_Sqr(ENUM* r, const ENUM* a) {
    const std::size_t words = 2 * words_in(*a);
    if (words == 0) return set_length(*r, 0);
    const Operand x(*a);
    if (!x) return;
    store_product(*r, 0, words, 2 * x.size(), [&](LimbInWords* product) { square(product, x.get(), x.size()); });
}

std::int32_t EN_Div(ENUM* q, ENUM* r, const ENUM* a, const ENUM* d) {
    const std::size_t a_words = significant_words(*a);
    const std::size_t d_words = significant_words(*d);
    if (d_words == 0) return 0;
    const std::span<const Word> dividend = magnitude(*a).first(a_words);
    const std::span<const Word> divisor = magnitude(*d).first(d_words);
    const std::uint32_t sign = a->sign != 0 ? 1 : 0;
    const std::uint32_t q_sign = (d->sign != 0 ? 1 : 0) ^ sign;

    if (is_below(dividend, divisor)) {
        if (r != nullptr) set(*r, sign, magnitude(*a).first(a_words != 0 || a->length > 1 ? a_words : words_in(*a)));
        if (q != nullptr) EN_U32ToENUM(q, 0);
        return 1;
    }
    // The results may be the operands: nothing of these is needed any more when divide_words() writes.
    if (!divide_words(q != nullptr ? q->words : nullptr, r != nullptr ? r->words : nullptr, dividend, divisor)) return 0;
    if (q != nullptr) {
        q->sign = q_sign;
        set_normalised_length(*q, a_words - d_words + 1);
    }
    if (r != nullptr) {
        set_normalised_length(*r, d_words);
        r->sign = r->length == 0 ? 0 : sign;
    }
    return 1;
}
