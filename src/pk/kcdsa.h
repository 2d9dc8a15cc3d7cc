// What both generations of KCDSA signatures are made of.
#pragma once

#include "pk/group.h"

#include <morvane/kcdsa.h>

namespace morvane::pk {

inline constexpr std::size_t kRBytes = E_KCDSA_R_BYTES;
using RBytes = std::uint8_t[kRBytes];

// The commitment W as octets. The first `minimal` ones are the number without leading zeros; up to `padded`, four octets
// for each word of W, zeros follow.
struct Commitment {
    std::uint8_t octets[4 * kGroupWords];
    std::size_t minimal;
    std::size_t padded;

    explicit Commitment(std::span<const Word> w) noexcept;
};

// What signs: a group, a private key below q and what it takes to compute.
class KcdsaSigner {
public:
    explicit KcdsaSigner(const E_KCDSA_KEY& key) noexcept;

    explicit operator bool() const noexcept { return ready_; }
    const Group& group() const noexcept { return group_; }
    Scalars& scalars() noexcept { return scalars_; }

    // Another k, which depends on the hash. False if it is 0.
    bool draw(std::span<const std::uint8_t> hash) noexcept;
    void set_k(std::span<const Word> k) noexcept { scalars_.load(k_, k); }

    // W = g^k mod p, of the words of p. False if there is no memory.
    bool commit(Word* w) noexcept;
    // y = g^(1/x mod q) mod p, of the words of p.
    bool set_public_key(Word* y) noexcept;
    // s = x (k - e) mod q. False if it is 0.
    bool respond(Scalar& s, const Scalar& e) noexcept;

private:
    std::span<const Word> x_words_;
    Group group_;
    bool ready_ = false;
    Scalars scalars_;
    Scalar x_;
    Scalar k_;
};

// W = y^s g^e mod p, of the words of p. False unless y is there and s from 1 to q - 1, or if there is no memory.
bool kcdsa_commitment(Word* w, const Group& group, const ENUM& y, const ENUM& s, const ENUM& e) noexcept;

// The hash of z, the lowest 512 bits of y, and a message. False for a selector that is none.
bool kcdsa_hash_message(RBytes& hash, std::int32_t hash_sel, std::span<const Word> y,
                        std::span<const std::uint8_t> message) noexcept;

// r and s of the newer signature for the signer's k and the hash of z and message. kNoMemory leaves both undefined.
enum class Signing : std::uint8_t { kDone, kTryAgain, kNoMemory };
Signing kcdsa_sign_hash(RBytes& r, Scalar& s, std::int32_t hash_sel, KcdsaSigner& signer, const RBytes& hash) noexcept;

// e = (r XOR hash) mod q.
void load_e(Scalar& e, Scalars& scalars, const RBytes& r, std::span<const std::uint8_t> hash) noexcept;

}  // namespace morvane::pk
