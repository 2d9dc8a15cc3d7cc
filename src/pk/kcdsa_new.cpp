// KCDSA signatures of messages.
#include "asn1/kcdsa_signature.h"
#include "bignum/record.h"
#include "bignum/work_record.h"
#include "pk/hash_select.h"
#include "pk/kcdsa.h"
#include "pk/signature.h"

#include <algorithm>

using namespace morvane;
using namespace morvane::bignum;

namespace morvane::pk {
namespace {

constexpr std::size_t kZWords = 16;  // a block of the hash
constexpr std::size_t kLeastYWords = 32;
constexpr std::size_t kMaxQBytes = 101;  // the signature's lengths have one octet each

bool is_hash(std::int32_t hash_sel) noexcept { return hash_sel == E_KCDSA_SHA1 || hash_sel == E_KCDSA_HAS160; }

// The digest of two strings by a hash that is one.
void hash_parts(RBytes& digest_bytes, std::int32_t hash_sel, std::span<const std::uint8_t> first,
                std::span<const std::uint8_t> second) noexcept {
    digest(hash_sel == E_KCDSA_HAS160 ? E_KCDSA_HAS160 : kSha1, digest_bytes, {first, second});
}

void hash_commitment(RBytes& r, std::int32_t hash_sel, std::span<const Word> w) noexcept {
    const Commitment commitment(w);
    hash_parts(r, hash_sel, {commitment.octets, commitment.minimal}, {});
}

// y as the record has it or, if that is short, as it belongs to x. Empty if there is no memory.
std::span<const Word> public_key(SecretArray<Word, kGroupWords>& computed, const E_KCDSA_KEY& key,
                                 KcdsaSigner& signer) noexcept {
    const std::span<const Word> y = group_member(key.y);
    if (y.size() >= kLeastYWords) return y;
    const std::size_t words = signer.group().p().size();
    return signer.set_public_key(computed.items.data()) ? std::span<const Word>(computed.items.data(), words)
                                                        : std::span<const Word>{};
}

}  // namespace

bool kcdsa_hash_message(RBytes& hash, std::int32_t hash_sel, std::span<const Word> y,
                        std::span<const std::uint8_t> message) noexcept {
    if (!is_hash(hash_sel)) return false;
    const Commitment z(y.first(std::min(y.size(), kZWords)));
    hash_parts(hash, hash_sel, {z.octets, z.minimal}, message);
    return true;
}

Signing kcdsa_sign_hash(RBytes& r, Scalar& s, std::int32_t hash_sel, KcdsaSigner& signer, const RBytes& hash) noexcept {
    SecretArray<Word, kGroupWords> w;
    if (!signer.commit(w.items.data())) return Signing::kNoMemory;
    hash_commitment(r, hash_sel, {w.items.data(), signer.group().p().size()});
    Scalar e;
    load_e(e, signer.scalars(), r, hash);
    return signer.respond(s, e) ? Signing::kDone : Signing::kTryAgain;
}

}  // namespace morvane::pk

using namespace morvane::pk;

std::int32_t E_KCDSA_Sign_New(std::int32_t hash_sel, const std::uint8_t* msg, std::int32_t msg_len, std::uint8_t* sig,
                              std::int32_t* sig_len, const E_KCDSA_KEY* key) {
    if (!is_hash(hash_sel) || msg_len < 0) return 0;
    KcdsaSigner signer(*key);
    if (!signer || signer.group().q_bytes() > kMaxQBytes) return 0;
    SecretArray<Word, kGroupWords> y_words;
    const std::span<const Word> y = public_key(y_words, *key, signer);
    if (y.empty()) return 0;
    RBytes hash, r;
    kcdsa_hash_message(hash, hash_sel, y, {msg, static_cast<std::size_t>(msg_len)});
    Scalar s;
    for (int i = 0; i < kAttempts; ++i) {
        if (!signer.draw(hash)) continue;
        const Signing signing = kcdsa_sign_hash(r, s, hash_sel, signer, hash);
        if (signing == Signing::kNoMemory) return 0;
        if (signing == Signing::kTryAgain) continue;
        *sig_len = asn1::put_kcdsa_signature(sig, r, *ScalarNumber(signer.scalars(), s));
        return 1;
    }
    return 0;
}

std::int32_t E_KCDSA_Verify_New(std::int32_t hash_sel, const std::uint8_t* msg, std::int32_t msg_len,
                                const std::uint8_t* sig, std::int32_t sig_len, const E_KCDSA_KEY* key) {
    if (!is_hash(hash_sel) || msg_len < 0 || sig_len < 0) return 0;
    const Group group(*key);
    Scalars scalars(group);
    WorkRecord s(kGroupWords);
    RBytes r, hash, expected;
    asn1::Reader input(sig, static_cast<std::size_t>(sig_len));
    if (!scalars || !asn1::get_kcdsa_signature(r, *s, input) || !input.at_end()) return 0;
    kcdsa_hash_message(hash, hash_sel, group_member(key->y), {msg, static_cast<std::size_t>(msg_len)});
    Scalar e;
    load_e(e, scalars, r, hash);
    Word w[kGroupWords];
    if (!kcdsa_commitment(w, group, key->y, *s, *ScalarNumber(scalars, e))) return 0;
    hash_commitment(expected, hash_sel, {w, group.p().size()});
    return std::ranges::equal(expected, r) ? 1 : 0;
}
