#include "pk/group.h"

#include "bignum/octets.h"
#include "bignum/power.h"
#include "bignum/product.h"
#include "bignum/record.h"

#include <morvane/random.h>

#include <algorithm>

using namespace morvane::bignum;

namespace morvane::pk {
namespace {

using MemberWords = SecretArray<Word, kGroupWords>;

// An exponent of one word would count as public.
constexpr std::size_t kLeastExponentWords = 2;
using ExponentWords = SecretArray<Word, kGroupWords + kLeastExponentWords>;

}  // namespace

std::span<const Word> group_member(const ENUM& member) noexcept {
    return words_in(member) <= kGroupWords ? magnitude(member).first(significant_words(member)) : std::span<const Word>{};
}

Group::Group(const E_DSA_KEY& key) noexcept : p_(group_member(key.p)), q_(group_member(key.q)), g_(group_member(key.g)) {
    const auto is_odd_modulus = [](std::span<const Word> m) {
        return !m.empty() && (m[0] & 1) != 0 && (m.size() > 1 || m[0] > 1);
    };
    valid_ = is_odd_modulus(p_) && is_odd_modulus(q_) && q_.size() <= p_.size() && !g_.empty();
}

std::size_t Group::q_bytes() const noexcept {
    return 4 * q_.size() - static_cast<std::size_t>(std::countl_zero(q_.back())) / 8;
}

// A base of more words than p, in r.
bool Group::reduce(Word* r, std::span<const Word>& base) const noexcept {
    if (base.size() <= p_.size()) return true;
    if (!divide_words(nullptr, r, base, p_)) return false;
    base = {r, p_.size()};
    return true;
}

bool Group::raise_g(Word* r, std::span<const Word> exponent) const noexcept {
    ExponentWords padded;
    MemberWords reduced;
    std::span<const Word> base = g_;
    std::copy(exponent.begin(), exponent.end(), padded.items.begin());
    return reduce(reduced.items.data(), base) &&
           power_mod({.base = base,
                      .exponent = {padded.items.data(), std::max(q_.size(), kLeastExponentWords)},
                      .modulus = p_,
                      .result = r,
                      .is_base_lasting = true});
}

bool Group::raise_two(Word* r, std::span<const Word> a, std::span<const Word> e, std::span<const Word> b,
                      std::span<const Word> f) const noexcept {
    MemberWords reduced_a;
    MemberWords reduced_b;
    // As long as the exponents of raise_g(), so that g has the same table.
    ExponentWords padded_e;
    ExponentWords padded_f;
    const std::size_t words = std::max({q_.size(), e.size(), f.size(), kLeastExponentWords});
    std::copy(e.begin(), e.end(), padded_e.items.begin());
    std::copy(f.begin(), f.end(), padded_f.items.begin());
    if (!reduce(reduced_a.items.data(), a) || !reduce(reduced_b.items.data(), b)) return false;
    const auto lasting = [&](std::span<const Word> base, const ExponentWords& exponent, Word* result) {
        return Power{.base = base,
                     .exponent = {exponent.items.data(), words},
                     .modulus = p_,
                     .result = result,
                     .is_base_lasting = true};
    };
    return power_product_vt(lasting(a, padded_e, r), lasting(b, padded_f, nullptr));
}

void Scalars::load(Scalar& r, std::span<const Word> value) noexcept {
    SecretArray<Limb, 2 * kGroupLimbs> limbs;
    load_limbs(limbs.items.data(), value.data(), value.size());
    residues_.reduce(r.get(), limbs.items.data());
}

void Scalars::load_octets(Scalar& r, std::span<const std::uint8_t> octets) noexcept {
    MemberWords words;
    octets_to_words(words.items.data(), group_.q().size(), octets.data(), octets.size());
    load(r, {words.items.data(), group_.q().size()});
}

void Scalars::load_public(Scalar& r, std::span<const Word> value) const noexcept {
    MemberWords rest;
    std::copy(value.begin(), value.end(), rest.items.begin());
    const std::size_t words = std::max(value.size(), group_.q().size());
    divide_words(nullptr, rest.items.data(), {rest.items.data(), words}, group_.q());  // numbers of this size need no heap
    load_limbs(r.get(), rest.items.data(), group_.q().size());
}

void Scalars::load_public_octets(Scalar& r, std::span<const std::uint8_t> octets) const noexcept {
    MemberWords words;
    octets_to_words(words.items.data(), kGroupWords, octets.data(), octets.size());
    load_public(r, {words.items.data(), (octets.size() + 3) / 4});
}

bool Scalars::invert(Scalar& r, const Scalar& a) noexcept {
    Scalar factor;
    Scalar multiple;
    do {
        draw(factor);
    } while (is_zero(factor));
    multiply(multiple, a, factor);
    declare_known(multiple.get(), residues_.size());  // a random number, whatever a is
    if (invert_vt(r.get(), multiple.get(), residues_.modulus(), residues_.size()) != Inversion::kDone) return false;
    multiply(r, r, factor);
    return true;
}

std::span<const Word> Scalars::words(SecretArray<Word, kGroupWords>& words, const Scalar& a) const noexcept {
    store_limbs(words.items.data(), a.get(), group_.q().size());
    return {words.items.data(), group_.q().size()};
}

bool Scalars::is_zero(const Scalar& a) const noexcept {
    Limb ones = 0;
    for (std::size_t i = 0; i < residues_.size(); ++i) ones |= a.get()[i];
    return known(ones == 0);  // then it is thrown away, or there is no key
}

void Scalars::draw(Scalar& r) noexcept {
    MemberWords words;
    ENUM number{0, 0, words.items.data()};
    EN_Random(&number, static_cast<std::int32_t>(32 * group_.q().size()), 1, 0);
    load(r, {words.items.data(), group_.q().size()});
}

}  // namespace morvane::pk
