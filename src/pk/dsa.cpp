#include "pk/dsa.h"

#include "bignum/record.h"
#include "bignum/work_record.h"
#include "pk/domain.h"
#include "pk/signature.h"
#include "random/hedge.h"

#include <morvane/bignum.h>
#include <morvane/kcdsa.h>

using namespace morvane::bignum;

namespace morvane::pk {

bool dsa_signature(Scalar& r, Scalar& s, const Group& group, Scalars& scalars, const Scalar& x, const Scalar& m,
                   const Scalar& k) noexcept {
    SecretArray<Word, kGroupWords> words;
    SecretArray<Word, kGroupWords> power;
    if (!group.raise_g(power.items.data(), scalars.words(words, k))) return false;
    declare_known(power.items.data(), group.p().size());  // whoever verifies computes it, too
    scalars.load_public(r, {power.items.data(), group.p().size()});
    Scalar inverse;
    if (!scalars.invert(inverse, k)) return false;
    scalars.multiply(s, x, r);
    scalars.add(s, s, m);
    scalars.multiply(s, s, inverse);
    return true;
}

}  // namespace morvane::pk

using namespace morvane::pk;

void E_DSA_Init(E_DSA_KEY* key) {
    key->x = {0, key->x.length, key->x_words};
    key->y = {0, key->y.length, key->y_words};
    key->p = {0, key->p.length, key->p_words};
    key->q = {0, key->q.length, key->q_words};
    key->g = {0, key->g.length, key->g_words};
}

void E_DSA_GenerateKey(E_DSA_KEY* key, std::int32_t p_bits, std::int32_t q_bits) {
    WorkKey made;
    if (are_sizes(p_bits, q_bits) && generate_domain(made.key, p_bits, q_bits) &&
        generate_pair(made.key, q_bits, PublicKey::kOfX)) {
        made.give(*key);
    }
}

std::int32_t E_DSA_Sign(const std::uint8_t* hash, std::int32_t hash_len, std::uint8_t* sig, std::int32_t* sig_len,
                        const E_DSA_KEY* key) {
    const Group group(*key);
    const std::span<const Word> x_words = group_member(key->x);
    if (!group || !fits_hash(hash_len, group) || x_words.empty() || x_words.size() > group.q().size()) return 0;
    Scalars scalars(group);
    if (!scalars) return 0;
    const std::span<const std::uint8_t> hash_bytes(hash, static_cast<std::size_t>(hash_len));
    Scalar x, m, k, r, s;
    scalars.load(x, x_words);
    scalars.load_octets(m, hash_bytes);
    for (int i = 0; i < kAttempts; ++i) {
        morvane::random::hedge(x_words, hash_bytes);
        scalars.draw(k);
        if (scalars.is_zero(k)) continue;
        if (!dsa_signature(r, s, group, scalars, x, m, k)) return 0;
        if (scalars.is_zero(r) || scalars.is_zero(s)) continue;
        *sig_len = put_integers(sig, *ScalarNumber(scalars, r), *ScalarNumber(scalars, s));
        return 1;
    }
    return 0;
}

std::int32_t E_DSA_Verify(const std::uint8_t* hash, std::int32_t hash_len, const std::uint8_t* sig, std::int32_t sig_len,
                          const E_DSA_KEY* key) {
    const Group group(*key);
    const std::span<const Word> y = group_member(key->y);
    WorkRecord r(kGroupWords), s(kGroupWords), m(kGroupWords), w(kGroupWords), u1(kGroupWords), u2(kGroupWords);
    if (!group || y.empty() || !load_octets(*m, hash, hash_len) || !get_integers(*r, *s, sig, sig_len)) return 0;
    EN_Mod_Inv(w.get(), s.get(), &key->q);
    if (EN_Mod_MulA(u1.get(), m.get(), w.get(), &key->q) == 0 || EN_Mod_MulA(u2.get(), r.get(), w.get(), &key->q) == 0) {
        return 0;
    }
    WorkRecord v(kGroupWords);
    if (!group.raise_two(v->words, group.g(), magnitude(*u1), y, magnitude(*u2))) return 0;
    set_normalised_length(*v, group.p().size());
    return EN_Mod(v.get(), v.get(), &key->q) != 0 && EN_UComp(v.get(), r.get()) == 0 ? 1 : 0;
}
