#include "ecc/signature_block.h"

#include <morvane/ecc_schemes.h>

#include "asn1/der.h"

#include <algorithm>

namespace morvane::ecc {
namespace {

// What stands in an EC-KCDSA block before r and before s. The lengths are short: s has 21 octets at most.
constexpr std::size_t kHashOctets = E_ECKCDSA_HASH_OCTETS;
constexpr std::size_t kEckcdsaFrame = 6;
struct EckcdsaFrame {
    explicit EckcdsaFrame(std::size_t s_size) noexcept
        : before_r{0x30, static_cast<std::uint8_t>(kHashOctets + s_size + 4), 0x04, kHashOctets},
          before_s{0x04, static_cast<std::uint8_t>(s_size)} {}

    std::uint8_t before_r[4];
    std::uint8_t before_s[2];
};

}  // namespace

void put_ecdsa_block(TORVA_V1_OPAQUE8& out, Word* r, Word* s) noexcept {
    const ENUM r_number = {0, kWords, r};
    const ENUM s_number = {0, kWords, s};
    out.count = asn1::encode(out.octets, [&](asn1::Writer& writer) {
        writer.put(asn1::kSequence, [&](asn1::Writer& pair) {
            pair.put_number(r_number);
            pair.put_number(s_number);
        });
    });
}

bool read_ecdsa_block(Octets& r, Octets& s, Octets block) noexcept {
    asn1::Reader reader(block.data(), block.size());
    asn1::Reader pair;
    return reader.get(asn1::kSequence, pair) && reader.at_end() && pair.get_magnitude(r) && pair.get_magnitude(s) &&
           pair.at_end();
}

void put_eckcdsa_block(TORVA_V1_OPAQUE8& out, Octets r, Octets s) noexcept {
    const EckcdsaFrame frame(s.size());
    std::uint8_t* end = out.octets;
    for (const Octets part : {Octets(frame.before_r), r, Octets(frame.before_s), s})
        end = std::copy(part.begin(), part.end(), end);
    out.count = static_cast<std::int32_t>(end - out.octets);
}

bool read_eckcdsa_block(Octets& r, Octets& s, std::int32_t curve, Octets block) noexcept {
    constexpr std::size_t kWithoutS = kEckcdsaFrame + kHashOctets;
    if (block.size() != kWithoutS + coordinate_octets(curve) && block.size() != kWithoutS + kOrderOctets) return false;
    const std::size_t s_size = block.size() - kWithoutS;
    const EckcdsaFrame frame(s_size);
    r = block.subspan(sizeof frame.before_r, kHashOctets);
    s = block.last(s_size);
    return std::equal(std::begin(frame.before_r), std::end(frame.before_r), block.begin()) &&
           std::equal(std::begin(frame.before_s), std::end(frame.before_s), r.end());
}

}  // namespace morvane::ecc
