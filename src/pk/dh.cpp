#include <morvane/dh.h>

#include "base/wipe.h"
#include "bignum/octets.h"
#include "bignum/power.h"
#include "bignum/product.h"
#include "bignum/record.h"
#include "bignum/work_record.h"

#include <morvane/prime.h>
#include <morvane/random.h>

#include <algorithm>

using namespace morvane;
using namespace morvane::bignum;

namespace {

constexpr std::size_t kWords = E_DH_WORDS;
constexpr std::int32_t kMaxBits = 32 * E_DH_WORDS;

struct Congruence {
    std::uint32_t generator, step, remainder;
};
constexpr Congruence kCongruences[] = {{2, 24, 11}, {3, 12, 11}, {5, 10, 3}};
constexpr Congruence kAnySafePrime = {0, 4, 3};

std::span<const Word> value_of(const ENUM& member) noexcept {
    return member.words != nullptr && words_in(member) <= kWords ? magnitude(member).first(significant_words(member))
                                                                 : std::span<const Word>{};
}

// r = base^x mod p, of the words of p. x is secret: one of a single word is extended, lest it count as public. False if p
// is 0 or 1, or if there is no memory.
bool raise(Word* r, std::span<const Word> base, std::span<const Word> x, std::span<const Word> p,
           bool is_lasting) noexcept {
    if (p.empty() || (p.size() == 1 && p[0] == 1)) return false;
    SecretArray<Word, kWords + 1> exponent;
    WorkWords reduced(std::max(base.size(), p.size()));
    if (!reduced) return false;
    std::copy(x.begin(), x.end(), exponent.items.begin());
    if (base.size() > p.size()) {
        if (!divide_words(nullptr, reduced.get(), base, p)) return false;
        base = {reduced.get(), p.size()};
    }
    return power_mod({.base = base,
                      .exponent = {exponent.items.data(), std::max<std::size_t>(x.size(), 2)},
                      .modulus = p,
                      .result = r,
                      .is_base_lasting = is_lasting});
}

}  // namespace

void E_DH_Init(E_DH_KEY* key) {
    key->p.words = key->p_words;
    key->g.words = key->g_words;
    key->y.words = key->y_words;
    key->x.words = key->x_words;
}

void E_DH_GenerateParameters(E_DH_KEY* key, std::int32_t p_bits, std::uint32_t generator) {
    if (p_bits < 2 || p_bits > kMaxBits) return;
    const auto* const found = std::ranges::find(kCongruences, generator, &Congruence::generator);
    const Congruence& congruence = found != std::end(kCongruences) ? *found : kAnySafePrime;
    WorkRecord p(kWords + 1);
    WorkRecord step(1);
    WorkRecord remainder(1);
    EN_U32ToENUM(step.get(), congruence.step);
    EN_U32ToENUM(remainder.get(), congruence.remainder);
    do {
        if (EN_GeneratePrimeStrongDH(p.get(), p_bits, step.get(), remainder.get()) == 0) return;
    } while (words_in(*p) > kWords);
    EN_Copy(&key->p, p.get());
    EN_U32ToENUM(&key->g, generator);
}

void E_DH_GenerateKey(E_DH_KEY* key, std::int32_t bits) {
    const std::span<const Word> p = value_of(key->p);
    const std::span<const Word> g = value_of(key->g);
    if (p.empty() || words_in(key->g) > 1 || bits < 0 || bits > kMaxBits) return;
    if (bits == 0) bits = static_cast<std::int32_t>(EN_GetFilledBitNum(&key->p)) - 1;
    const bool draws = key->x.words == nullptr;
    WorkRecord drawn(kWords);
    if (draws) EN_Random(drawn.get(), bits, 0, 0);
    WorkWords y(p.size());
    if (!raise(y.get(), g, draws ? value_of(*drawn) : value_of(key->x), p, true)) return;
    if (draws) {
        key->x.words = key->x_words;
        EN_Copy(&key->x, drawn.get());
    }
    if (key->y.words == nullptr) key->y.words = key->y_words;
    std::copy_n(y.get(), p.size(), key->y.words);
    key->y.sign = 0;
    set_normalised_length(key->y, p.size());
}

std::int32_t E_DH_ComputeKey(std::uint8_t* out, const ENUM* peer, const E_DH_KEY* key) {
    const std::span<const Word> p = value_of(key->p);
    WorkRecord secret(kWords);
    if (key->x.words == nullptr ||
        !raise(secret->words, magnitude(*peer).first(significant_words(*peer)), value_of(key->x), p, false)) {
        return -1;
    }
    // How many octets the secret has is told by the result.
    const std::size_t words = significant(secret->words, p.size());
    const std::size_t octets = words == 0 ? 0 : 4 * words - known(leading_zeros(secret->words[words - 1])) / 8;
    words_to_octets(out, octets, secret->words, words);
    return static_cast<std::int32_t>(octets);
}
