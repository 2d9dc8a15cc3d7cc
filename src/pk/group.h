// The subgroup of prime order in which DSA and KCDSA compute, and numbers modulo its order.
#pragma once

#include "base/wipe.h"
#include "bignum/residues.h"

#include <morvane/dsa.h>

#include <span>

namespace morvane::pk {

using bignum::Limb;
using bignum::Word;

constexpr std::size_t kGroupWords = E_DSA_WORDS;

// The words of a member's value; none if its length does not fit its storage.
std::span<const Word> group_member(const ENUM& member) noexcept;

// The domain of a record, as far as its words tell fit for one.
class Group {
public:
    explicit Group(const E_DSA_KEY& key) noexcept;

    explicit operator bool() const noexcept { return valid_; }
    std::span<const Word> p() const noexcept { return p_; }
    std::span<const Word> q() const noexcept { return q_; }
    std::span<const Word> g() const noexcept { return g_; }
    std::size_t q_bytes() const noexcept;

    // r = g^exponent mod p, of the words of p. The exponent has as many words as q; the time does not depend on it.
    // False if there is no memory, here and below.
    bool raise_g(Word* r, std::span<const Word> exponent) const noexcept;

    // r = a^e b^f mod p for public exponents of up to kGroupWords words, and bases that come again: y and g.
    bool raise_two(Word* r, std::span<const Word> a, std::span<const Word> e, std::span<const Word> b,
                   std::span<const Word> f) const noexcept;

private:
    bool reduce(Word* r, std::span<const Word>& base) const noexcept;

    std::span<const Word> p_, q_, g_;
    bool valid_;
};

constexpr std::size_t kGroupLimbs = bignum::limbs_for(kGroupWords) + 1;

// A number below q.
struct Scalar : SecretArray<Limb, kGroupLimbs> {
    Limb* get() noexcept { return items.data(); }
    const Limb* get() const noexcept { return items.data(); }
};

// Numbers modulo q, in a time that tells only lengths.
class Scalars {
public:
    explicit Scalars(const Group& group) noexcept : group_(group), residues_(group ? group.q() : kNone, false) {}
    explicit operator bool() const noexcept { return group_ && residues_; }

    // r = value mod q; the value has no more words than q.
    void load(Scalar& r, std::span<const Word> value) noexcept;
    void load_octets(Scalar& r, std::span<const std::uint8_t> octets) noexcept;
    // The same for values of up to kGroupWords words that everybody may know.
    void load_public(Scalar& r, std::span<const Word> value) const noexcept;
    void load_public_octets(Scalar& r, std::span<const std::uint8_t> octets) const noexcept;

    void multiply(Scalar& r, const Scalar& a, const Scalar& b) noexcept { residues_.multiply(r.get(), a.get(), b.get()); }
    void subtract(Scalar& r, const Scalar& a, const Scalar& b) noexcept { residues_.subtract(r.get(), a.get(), b.get()); }
    void add(Scalar& r, const Scalar& a, const Scalar& b) noexcept {
        Scalar minus_b;
        subtract(minus_b, minus_b, b);
        subtract(r, a, minus_b);
    }
    // r = 1 / a. False also if a has no inverse. The inverse itself is computed of a random multiple, in variable time.
    bool invert(Scalar& r, const Scalar& a) noexcept;

    // The words of a scalar, as many as q has.
    std::span<const Word> words(SecretArray<Word, kGroupWords>& words, const Scalar& a) const noexcept;
    bool is_zero(const Scalar& a) const noexcept;

    // r = a random number of as many words as q has, its two highest bits set, modulo q.
    void draw(Scalar& r) noexcept;

private:
    static constexpr Word kNone[1] = {3};

    const Group& group_;
    bignum::Residues residues_;
};

// Attempts after which a record counts as one that cannot sign: of a sound one, more than a few do not happen.
inline constexpr int kAttempts = 1000;

}  // namespace morvane::pk
