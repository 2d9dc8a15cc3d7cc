// What all rows of the curve schemes share: curves, keys, the message, and how a library is put to them.
#pragma once

#include "numbers.h"

namespace morvane::bench {

struct NamedCurve {
    std::int32_t id;
    const char* name;
    std::size_t bits;
};

inline constexpr NamedCurve kCurves[] = {{3, "sect163k1", 163}, {5, "c2pnb163v1", 163}, {7, "secp160r1", 160}};

// d with the octets of a coordinate, a point encoded without compression.
struct EcKeyPair {
    Octets d, q;
};

// The same for every library.
struct EcKey {
    NamedCurve curve;
    EcKeyPair pair;        // q = d G
    EcKeyPair kcdsa_pair;  // q = (1 / d) G
    Octets other_q;        // of somebody else
    Octets message;
};

const EcKey& ec_key(const NamedCurve& curve);

// Six rows for each curve. `Schemes` is made from an EcKey and holds it in the form of its library. sign() makes a
// signature of the message, verify() tells whether it is one; the first argument is whether they are those of EC-KCDSA, for
// which a library that does not know it takes ECDSA. agree() gives the shared secret. generate() makes a key pair and
// returns its point.
template <typename Schemes>
void add_ec_schemes(Rows& all, const char* library) {
    struct Side {
        explicit Side(const EcKey& key) : schemes(key) {}
        Schemes schemes;
        Octets result;
    };
    for (const NamedCurve& curve : kCurves) {
        const EcKey& key = ec_key(curve);
        const auto add = [&](const char* operation, auto work, auto checked) {
            const auto side = std::make_shared<Side>(key);
            Row row{std::string(operation) + "-" + curve.name, library,
                    [side, work](std::uint8_t*, const std::uint8_t*, std::size_t) { side->result = work(side->schemes); },
                    Kind::kNumber};
            row.bits = curve.bits;
            row.result = [side, checked] { return checked(side->schemes, side->result); };
            all.push_back(std::move(row));
        };
        const auto as_it_is = [](Schemes&, const Octets& result) { return result; };
        const auto add_signatures = [&](const char* sign, const char* verify, bool is_kcdsa) {
            const auto made = [is_kcdsa](Schemes& schemes) { return schemes.sign(is_kcdsa); };
            const auto check = [is_kcdsa](Schemes& schemes, const Octets& signature) {
                return Octets{static_cast<std::uint8_t>(schemes.verify(is_kcdsa, signature))};
            };
            add(sign, made, check);
            const Octets signature = Schemes(key).sign(is_kcdsa);
            add(
                verify, [check, signature](Schemes& schemes) { return check(schemes, signature); }, as_it_is);
        };
        add_signatures("ecdsa-sign", "ecdsa-verify", false);
        add_signatures("eckcdsa-sign", "eckcdsa-verify", true);
        add(
            "ecdh", [](Schemes& schemes) { return schemes.agree(); }, as_it_is);
        add(
            "ec-keygen", [](Schemes& schemes) { return schemes.generate(); },
            [](Schemes&, const Octets& point) { return Octets{static_cast<std::uint8_t>(point.size())}; });
    }
}

}  // namespace morvane::bench
