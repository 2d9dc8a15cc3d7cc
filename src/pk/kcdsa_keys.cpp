// KCDSA domains and key pairs.
#include "bignum/record.h"
#include "bignum/work_record.h"
#include "pk/domain.h"
#include "pk/group.h"

#include <morvane/kcdsa.h>
#include <morvane/prime.h>

#include <string_view>

using namespace morvane;
using namespace morvane::bignum;
using namespace morvane::pk;

namespace {

constexpr std::string_view kP =
    "d7b9afc104f4d53f737db88d6bf77e12cd7ec3d71cbe3cb74cd224bff348154afba6bfed797044dfc655dcc20c952c0e"
    "c43a97e1ad67e687d10729caf622845d162afca8f0248cc412b3596c4c5d3384f7e25ee644ba87bb09b164fb465477b8"
    "7fdba5eaa400ffa0925714ae19464ffacead3a9750d121948ab2d8d65c82379f";
constexpr std::string_view kQ = "c3ddd3717bf05b8f8dd725c162f0b9432c6f77fb";
constexpr std::string_view kG =
    "50e414c7a56892d1ad633e42d5cd8346f2c09808111c772cc30b0c544102c27e7b5f9bec57b9df2a153128919d795e46"
    "652b2a072e1f2517f2a3afff5815253aaefe35724cfa1af6afce3a6b41e3d0e13bed0eff54383c4665e69b47ba79bbc3"
    "339f86b9be2b58894a18b201afc41fe3a0d93d3125efda79bc50dbbb2c3ab639";

void load_hex(ENUM& x, std::string_view digits) noexcept {
    std::uint8_t octets[kP.size() / 2];
    const auto value = [](char digit) { return digit <= '9' ? digit - '0' : digit - 'a' + 10; };
    for (std::size_t i = 0; i < digits.size() / 2; ++i) {
        octets[i] = static_cast<std::uint8_t>(value(digits[2 * i]) << 4 | value(digits[2 * i + 1]));
    }
    EN_U8ToENUM(&x, octets, static_cast<std::uint32_t>(digits.size() / 2));
}

constexpr std::int32_t kReportBytes = 20;

// x from the X9.31-named generator, which reports what it did.
bool generate_reported_pair(E_KCDSA_KEY& key, std::int32_t q_bits, std::uint8_t* xkey, std::uint32_t* xkey_len,
                            std::uint8_t* xseed, std::uint32_t* xseed_len) noexcept {
    if (!are_bits(q_bits)) return false;
    SecretArray<std::uint8_t, 4 * kGroupWords> octets;
    WorkRecord random(kGroupWords);
    const std::int32_t count = (q_bits + 7) / 8;
    for (int i = 0; i < kAttempts; ++i) {
        E_X9_31RandomBytes2(octets.items.data(), count, xkey, xseed, nullptr);
        EN_U8ToENUM(random.get(), octets.items.data(), static_cast<std::uint32_t>(count));
        if (!set_pair(key, *random, PublicKey::kOfInverse)) continue;
        *xkey_len = kReportBytes;
        *xseed_len = kReportBytes;
        return true;
    }
    return false;
}

}  // namespace

void E_KCDSA_GenerateKey(E_KCDSA_KEY* key, std::int32_t p_bits, std::int32_t q_bits) {
    WorkKey made;
    if (are_sizes(p_bits, q_bits) && generate_domain(made.key, p_bits, q_bits) &&
        generate_pair(made.key, q_bits, PublicKey::kOfInverse)) {
        made.give(*key);
    }
}

void E_KCDSA_GenerateKey2(E_KCDSA_KEY* key, std::int32_t p_bits, std::int32_t q_bits, std::uint8_t* xkey,
                          std::uint32_t* xkey_len, std::uint8_t* xseed, std::uint32_t* xseed_len) {
    WorkKey made;
    if (are_sizes(p_bits, q_bits) && generate_domain(made.key, p_bits, q_bits) &&
        generate_reported_pair(made.key, q_bits, xkey, xkey_len, xseed, xseed_len)) {
        made.give(*key);
    }
}

void E_KCDSA_GenerateKey3(E_KCDSA_KEY* key, std::int32_t /*p_bits*/, std::int32_t q_bits, std::uint8_t* xkey,
                          std::uint32_t* xkey_len, std::uint8_t* xseed, std::uint32_t* xseed_len) {
    WorkKey made;
    made.take_domain(*key);
    if (Group(made.key) && generate_reported_pair(made.key, q_bits, xkey, xkey_len, xseed, xseed_len)) {
        made.give(*key);
    }
}

void E_KCDSA_GenerateKey_fixParam(E_KCDSA_KEY* key, std::int32_t /*unused*/, std::int32_t q_bits) {
    WorkKey made;
    load_hex(made.key.p, kP);
    load_hex(made.key.q, kQ);
    load_hex(made.key.g, kG);
    if (generate_pair(made.key, q_bits, PublicKey::kOfInverse)) made.give(*key);
}

void E_KCDSA_GenerateXY(E_KCDSA_KEY* key, std::int32_t /*unused*/, std::int32_t q_bits) {
    WorkKey made;
    made.take_domain(*key);
    if (generate_pair(made.key, q_bits, PublicKey::kOfInverse)) made.give(*key);
}
