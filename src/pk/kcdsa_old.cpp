// KCDSA signatures of hash values.
#include "bignum/octets.h"
#include "bignum/record.h"
#include "bignum/work_record.h"
#include "pk/domain.h"
#include "pk/kcdsa.h"
#include "pk/signature.h"

#include <morvane/hash.h>

#include <algorithm>

using namespace morvane;
using namespace morvane::bignum;
using namespace morvane::pk;

namespace {

struct Signature {
    RBytes r;
    Scalar s;
    SecretArray<Word, kGroupWords> w;
};

// r, of as many octets as the words of W have.
void hash_commitment(RBytes& r, const Commitment& commitment) noexcept {
    E_HAS160(r, commitment.octets, static_cast<std::int32_t>(commitment.padded));
}

// e = (r XOR hash) mod q of the hash's length, and whether it has no divisor in common with p - 1. False also if there is
// no memory.
class Challenge {
public:
    explicit Challenge(const E_KCDSA_KEY& key) noexcept : below_p_(kGroupWords), e_(kGroupWords), divisor_(kGroupWords) {
        EN_SubU32(below_p_.get(), &key.p, 1);
    }

    const ENUM& e() const noexcept { return *e_; }
    void set(Scalar& e, Scalars& scalars, const RBytes& r, std::span<const std::uint8_t> hash) noexcept {
        load_e(e, scalars, r, hash);
        EN_Copy(e_.get(), &*ScalarNumber(scalars, e));
    }
    bool is_coprime() noexcept {
        if (is_zero(*e_) || (e_->words[0] & 1) == 0) return false;  // p - 1 is even
        EN_GCD(divisor_.get(), below_p_.get(), e_.get());
        return significant_words(*divisor_) == 1 && divisor_->words[0] == 1;
    }

private:
    WorkRecord below_p_;
    WorkRecord e_;
    WorkRecord divisor_;
};

bool sign(Signature& signature, KcdsaSigner& signer, std::span<const std::uint8_t> hash, const E_KCDSA_KEY& key) noexcept {
    Challenge challenge(key);
    Scalar e;
    for (int i = 0; i < kAttempts; ++i) {
        if (!signer.draw(hash)) continue;
        if (!signer.commit(signature.w.items.data())) return false;
        hash_commitment(signature.r, Commitment({signature.w.items.data(), signer.group().p().size()}));
        challenge.set(e, signer.scalars(), signature.r, hash);
        if (challenge.is_coprime() && signer.respond(signature.s, e)) return true;
    }
    return false;
}

// Signs, and lets `write` have the signature.
template <typename Write>
std::int32_t sign_and(const std::uint8_t* hash, std::int32_t hash_len, const E_KCDSA_KEY& key,
                      const Write& write) noexcept {
    KcdsaSigner signer(key);
    if (!signer || hash_len == 0 || !fits_hash(hash_len, signer.group())) return 0;
    Signature signature;
    if (!sign(signature, signer, {hash, static_cast<std::size_t>(hash_len)}, key)) return 0;
    write(signature, signer);
    return 1;
}

std::int32_t put(std::uint8_t* sig, Signature& signature, KcdsaSigner& signer) noexcept {
    Word r_words[kRBytes / 4];
    ENUM r{0, 0, r_words};
    EN_U8ToENUM(&r, signature.r, kRBytes);
    return put_integers(sig, r, *ScalarNumber(signer.scalars(), signature.s));
}

}  // namespace

std::int32_t E_KCDSA_Sign(const std::uint8_t* hash, std::int32_t hash_len, std::uint8_t* sig, std::int32_t* sig_len,
                          const E_KCDSA_KEY* key) {
    return sign_and(hash, hash_len, *key,
                    [=](Signature& signature, KcdsaSigner& signer) { *sig_len = put(sig, signature, signer); });
}

std::int32_t E_KCDSA_Sign2(const std::uint8_t* hash, std::int32_t hash_len, std::uint8_t* sig, std::int32_t* sig_len,
                           std::uint8_t* w, std::int32_t* w_len, const E_KCDSA_KEY* key) {
    return sign_and(hash, hash_len, *key, [=](Signature& signature, KcdsaSigner& signer) {
        *sig_len = put(sig, signature, signer);
        const Commitment commitment({signature.w.items.data(), signer.group().p().size()});
        std::copy_n(commitment.octets, commitment.padded, w);
        *w_len = static_cast<std::int32_t>(commitment.padded);
    });
}

std::int32_t E_KCDSA_Sign2RS(const std::uint8_t* hash, std::int32_t hash_len, std::uint8_t* r, std::int32_t* r_len,
                             std::uint8_t* s, std::int32_t* s_len, const E_KCDSA_KEY* key) {
    return sign_and(hash, hash_len, *key, [=](Signature& signature, KcdsaSigner& signer) {
        std::copy_n(signature.r, kRBytes, r);
        *r_len = kRBytes;
        const std::size_t size = signer.group().q_bytes();
        SecretArray<Word, kGroupWords> words;
        const std::span<const Word> number = signer.scalars().words(words, signature.s);
        words_to_octets(s, size, number.data(), number.size());
        *s_len = static_cast<std::int32_t>(size);
    });
}

std::int32_t E_KCDSA_Verify(const std::uint8_t* hash, std::int32_t hash_len, const std::uint8_t* sig, std::int32_t sig_len,
                            const E_KCDSA_KEY* key) {
    const Group group(*key);
    Scalars scalars(group);
    WorkRecord r_number(kGroupWords), s(kGroupWords);
    if (!scalars || hash_len == 0 || !fits_hash(hash_len, group) || !get_integers(*r_number, *s, sig, sig_len)) return 0;
    if (EN_GetFilledBitNum(r_number.get()) > 8 * kRBytes) return 0;
    RBytes r, expected;
    words_to_octets(r, kRBytes, r_number->words, words_in(*r_number));
    Scalar e;
    load_e(e, scalars, r, {hash, static_cast<std::size_t>(hash_len)});
    Word w[kGroupWords];
    if (!kcdsa_commitment(w, group, key->y, *s, *ScalarNumber(scalars, e))) return 0;
    hash_commitment(expected, Commitment({w, group.p().size()}));
    return std::ranges::equal(expected, r) ? 1 : 0;
}

std::int32_t E_KCDSA_Verify_withParams(const std::uint8_t* hash, std::int32_t hash_len, const std::uint8_t* sig,
                                       std::int32_t sig_len, const std::uint8_t* y, std::int32_t y_len,
                                       const E_KCDSA_KEY* params) {
    WorkKey key;
    key.take_domain(*params);
    return load_octets(key.key.y, y, y_len) ? E_KCDSA_Verify(hash, hash_len, sig, sig_len, &key.key) : 0;
}
