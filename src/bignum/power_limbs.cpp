// Powers with residues in limbs: by Montgomery's method for odd moduli, by division for the others.
#include "bignum/odd_modulus.h"
#include "bignum/power_in.h"
#include "bignum/rows.h"

namespace morvane::bignum {
namespace {

// What the two rings share: residues of size() limbs, products of twice as many.
class LimbRing {
public:
    using Item = Limb;
    static constexpr std::size_t kStreams = 1;

    explicit LimbRing(std::span<const Word> modulus) noexcept
        : modulus_(modulus), size_(limbs_for(modulus.size())), product_(2 * size_ + 1) {}

    std::size_t size() const noexcept { return size_; }
    void select(Limb* r, const Limb* table, std::size_t entries, const std::size_t* indices) const noexcept {
        select_masked(r, table, entries, size_, size_, indices[0]);
    }

protected:
    std::span<const Word> modulus_;
    std::size_t size_;
    mutable WorkLimbs product_;  // work space of each operation
};

class MontgomeryRing : public LimbRing {
public:
    MontgomeryRing(std::span<const Word> modulus, bool is_secret) noexcept
        : LimbRing(modulus), m_(modulus, size_), one_(size_), square_(size_) {
        ready_ = product_ && m_ && one_ && square_ && m_.set_entry(square_.get(), product_.get(), is_secret);
        if (ready_) convert_from(one_.get(), square_.get());
    }

    explicit operator bool() const noexcept { return ready_; }
    void set_one(Limb* r) const noexcept { std::copy_n(one_.get(), size_, r); }
    void multiply(Limb* r, const Limb* a, const Limb* b) const noexcept { m_.multiply(r, product_.get(), a, b); }
    void square(Limb* r, const Limb* a) const noexcept { m_.multiply(r, product_.get(), a, a); }
    void enter(Limb* r, std::span<const Word> base) const noexcept {
        std::fill_n(r, size_, 0);
        load_limbs(r, base.data(), base.size());
        multiply(r, r, square_.get());
    }
    bool leave(Word* words, Limb* a) const noexcept {
        convert_from(a, a);
        store_limbs(words, a, modulus_.size());
        return true;
    }

private:
    // r = a / B^size mod m.
    void convert_from(Limb* r, const Limb* a) const noexcept {
        std::copy_n(a, size_, product_.get());
        std::fill_n(product_.get() + size_, size_, 0);
        m_.reduce(r, product_.get());
    }

    OddModulus m_;
    WorkLimbs one_;     // 1 in Montgomery's form
    WorkLimbs square_;  // the factor into it
    bool ready_ = false;
};

class DivisionRing : public LimbRing {
public:
    DivisionRing(std::span<const Word> modulus, bool /*is_secret*/) noexcept : LimbRing(modulus), divisor_(size_) {
        if (!*this) return;
        load_limbs(divisor_.get(), modulus.data(), modulus.size());
        shift_ = static_cast<unsigned>(std::countl_zero(divisor_[size_ - 1]));
        shift_left(divisor_.get(), divisor_.get(), size_, shift_);
    }

    explicit operator bool() const noexcept { return product_ && divisor_; }
    void set_one(Limb* r) const noexcept {
        std::fill_n(r, size_, 0);
        r[0] = 1;
    }
    void multiply(Limb* r, const Limb* a, const Limb* b) const noexcept {
        bignum::multiply(product_.get(), a, size_, b, size_);
        reduce(r);
    }
    void square(Limb* r, const Limb* a) const noexcept {
        bignum::square(product_.get(), a, size_);
        reduce(r);
    }
    void enter(Limb* r, std::span<const Word> base) const noexcept {
        std::fill_n(product_.get(), 2 * size_, 0);
        load_limbs(product_.get(), base.data(), base.size());
        reduce(r);
    }
    bool leave(Word* words, const Limb* a) const noexcept {
        store_limbs(words, a, modulus_.size());
        return true;
    }

private:
    // r = the product modulo m; both shifted, so that the top bit of m is set.
    void reduce(Limb* r) const noexcept {
        Limb* const u = product_.get();
        u[2 * size_] = shift_left(u, u, 2 * size_, shift_);
        divide(nullptr, u, 2 * size_ + 1, divisor_.get(), size_);
        shift_right(r, u, size_, shift_);
    }

    mutable WorkLimbs divisor_;
    unsigned shift_ = 0;
};

}  // namespace

bool power_division(const Power& power) noexcept { return power_in<DivisionRing>(power); }

bool power_limbs(const Power& power) noexcept { return power_in<MontgomeryRing>(power); }

bool power_product_limbs(const Power& a, const Power& b) noexcept { return power_product_in<MontgomeryRing>(a, b); }

}  // namespace morvane::bignum
