#include "pk/kcdsa.h"

#include "bignum/octets.h"
#include "bignum/product.h"
#include "bignum/record.h"
#include "pk/signature.h"
#include "random/hedge.h"

#include <algorithm>
#include <bit>

using namespace morvane::bignum;

namespace morvane::pk {

Commitment::Commitment(std::span<const Word> w) noexcept : octets{} {
    declare_known(w.data(), w.size());  // whoever verifies computes it, or has it as y
    w = w.first(significant(w.data(), w.size()));
    padded = 4 * w.size();
    minimal = w.empty() ? 0 : padded - static_cast<std::size_t>(std::countl_zero(w.back())) / 8;
    words_to_octets(octets, minimal, w.data(), w.size());
}

KcdsaSigner::KcdsaSigner(const E_KCDSA_KEY& key) noexcept : x_words_(group_member(key.x)), group_(key), scalars_(group_) {
    ready_ = group_ && scalars_ && !x_words_.empty() && x_words_.size() <= group_.q().size();
    if (ready_) scalars_.load(x_, x_words_);
}

bool KcdsaSigner::draw(std::span<const std::uint8_t> hash) noexcept {
    random::hedge(x_words_, hash);
    scalars_.draw(k_);
    return !scalars_.is_zero(k_);
}

bool KcdsaSigner::commit(Word* w) noexcept {
    SecretArray<Word, kGroupWords> words;
    return group_.raise_g(w, scalars_.words(words, k_));
}

bool KcdsaSigner::respond(Scalar& s, const Scalar& e) noexcept {
    scalars_.subtract(s, k_, e);
    scalars_.multiply(s, s, x_);
    return !scalars_.is_zero(s);
}

bool KcdsaSigner::set_public_key(Word* y) noexcept {
    SecretArray<Word, kGroupWords> words;
    Scalar inverse;
    return scalars_.invert(inverse, x_) && group_.raise_g(y, scalars_.words(words, inverse));
}

void load_e(Scalar& e, Scalars& scalars, const RBytes& r, std::span<const std::uint8_t> hash) noexcept {
    std::uint8_t mixed[std::max<std::size_t>(kRBytes, kMaxHashBytes)];
    std::copy(hash.begin(), hash.end(), mixed);
    // At the end of a longer hash value: e has to change with r in its lowest bit, or half of them could never be signed.
    const std::size_t at = hash.size() > kRBytes ? hash.size() - kRBytes : 0;
    for (std::size_t i = at; i < hash.size(); ++i) mixed[i] ^= r[i - at];
    scalars.load_public_octets(e, {mixed, hash.size()});
}

bool kcdsa_commitment(Word* w, const Group& group, const ENUM& y, const ENUM& s, const ENUM& e) noexcept {
    const std::span<const Word> base = group_member(y);
    const std::span<const Word> exponent = group_member(s);
    if (base.empty() || exponent.empty() || !is_below(exponent, group.q())) return false;
    return group.raise_two(w, base, exponent, group.g(), magnitude(e).first(significant_words(e)));
}

}  // namespace morvane::pk
